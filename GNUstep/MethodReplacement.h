// Replacing single methods of GNUstep's classes where their behaviour differs from AppKit's.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

/// Replaces the instance method and returns the implementation that stood there, or null when the class has none.
/// Function is the implementation's type: void (*)(id, SEL, …). The selector is given by its name: while a bundle is
/// being loaded the selectors of its later files are not registered yet.
template <typename Function>
Function ReplaceInstanceMethod(const char* class_name, const char* selector_name, Function replacement) {
  Method method = class_getInstanceMethod(objc_getClass(class_name), sel_registerName(selector_name));
  if (!method) return nullptr;
  return reinterpret_cast<Function>(method_setImplementation(method, reinterpret_cast<IMP>(replacement)));
}

/// The same for a class method.
template <typename Function>
Function ReplaceClassMethod(const char* class_name, const char* selector_name, Function replacement) {
  Method method = class_getClassMethod(objc_getClass(class_name), sel_registerName(selector_name));
  if (!method) return nullptr;
  return reinterpret_cast<Function>(method_setImplementation(method, reinterpret_cast<IMP>(replacement)));
}

/// Gives the class a method of its own in place of one that it inherits, which other classes keep. Returns the
/// inherited implementation, or null when there is none.
template <typename Function>
Function OverrideInstanceMethod(const char* class_name, const char* selector_name, Function replacement) {
  const SEL selector = sel_registerName(selector_name);
  Class kind = objc_getClass(class_name);
  Method inherited = class_getInstanceMethod(kind, selector);
  if (!inherited) return nullptr;
  const IMP implementation = method_getImplementation(inherited);
  class_addMethod(kind, selector, reinterpret_cast<IMP>(replacement), method_getTypeEncoding(inherited));
  return reinterpret_cast<Function>(implementation);
}
