// Replacing single methods of GNUstep's classes where their behaviour differs from AppKit's.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

/// Gives the class that implementation of a method, one that it inherits stays as it is elsewhere, and returns the one
/// that stood there, or null when the class has none and gets none. Function is the implementation's type:
/// void (*)(id, SEL, …). The selector is given by its name: while a bundle is being loaded the selectors of its later
/// files are not registered yet.
template <typename Function>
Function ReplaceMethod(Class kind, const char* selector_name, Function replacement) {
  Method method = class_getInstanceMethod(kind, sel_registerName(selector_name));
  if (!method) return nullptr;
  const IMP original = method_getImplementation(method), added = reinterpret_cast<IMP>(replacement);
  // class_replaceMethod would replace an inherited method where it stands.
  if (!class_addMethod(kind, method_getName(method), added, method_getTypeEncoding(method))) {
    method_setImplementation(method, added);
  }
  return reinterpret_cast<Function>(original);
}

/// The same for the class of that name.
template <typename Function>
Function ReplaceInstanceMethod(const char* class_name, const char* selector_name, Function replacement) {
  return ReplaceMethod(static_cast<Class>(objc_getClass(class_name)), selector_name, replacement);
}

/// The same for a class method.
template <typename Function>
Function ReplaceClassMethod(const char* class_name, const char* selector_name, Function replacement) {
  return ReplaceMethod(object_getClass(objc_getClass(class_name)), selector_name, replacement);
}
