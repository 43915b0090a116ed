// Replacing single methods of GNUstep's classes where their behaviour differs from AppKit's.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <functional>

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

/// Replaces methods as soon as there is an application: when this code is in a bundle, at once, and when it is in the
/// program itself, before the application finishes launching. Earlier would be too early: a class whose method is
/// replaced before its first use is used without having been initialised.
struct Replacement {
  /// Has the function called then. It uses no class and no selector of its own file, which may not be registered yet.
  explicit Replacement(const std::function<void()>& install);

  /// Replaces a method of the class's instances, or of the class itself when the selector's name begins with a plus,
  /// and puts what stood there into original unless that is null.
  template <typename Function>
  Replacement(const char* class_name, const char* selector_name, Function replacement, Function* original = nullptr)
      : Replacement([=] {
          const bool of_class = *selector_name == '+';
          Class kind = static_cast<Class>(objc_getClass(class_name));
          if (of_class) kind = object_getClass(kind);
          Function old = ReplaceMethod(kind, selector_name + of_class, replacement);
          if (original) *original = old;
        }) {}
};

/// The reader of JSON, which programs without an application install by themselves.
void InstallJsonReader();
