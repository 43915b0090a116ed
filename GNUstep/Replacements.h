// When methods of GNUstep's classes are replaced.
#pragma once

/// Has the function called once, as soon as there is an application: when this code is in a bundle, at once, and when
/// it is in the program itself, before the application finishes launching. Earlier would be too early: a class whose
/// method is replaced before its first use is used without having been initialised. Each file of replacements makes one
/// of these. The function uses no class and no selector of its own file, which may not be registered yet.
struct Replacement {
  explicit Replacement(void (*install)());
};

/// The reader of JSON, which programs without an application install by themselves.
void InstallJsonReader();
