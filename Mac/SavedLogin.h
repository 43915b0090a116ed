// The login that "Remember me" keeps in the keychain.
#pragma once

#import <Foundation/Foundation.h>

#include <string>

/// What a user logs in with, UTF-8.
struct SavedLogin {
  std::string subdomain;
  std::string username;
  std::string password;
};

/// What an item holds as text, for nil and whatever else it may be. A text that it lacks, or that is no text there, is
/// empty. [any-thread]
SavedLogin SavedLoginFromText(NSString *text);

/// Reads the saved login. Returns NO with the keychain's error when there is none (errSecItemNotFound) or it cannot be
/// had. [main-thread]
BOOL ReadSavedLogin(SavedLogin *login, NSError **error);

/// Saves the login in place of the one that is there. [main-thread]
BOOL SaveLogin(const SavedLogin &login, NSError **error);

/// Deletes the saved login. Without one that is an error. [main-thread]
BOOL ForgetSavedLogin(NSError **error);
