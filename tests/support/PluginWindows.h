// The plug-in's windows as a person knows them: by their titles. Main thread.
#pragma once

#import <Cocoa/Cocoa.h>

namespace window_test {

extern NSString *const kLoginTitle;
extern NSString *const kUploadTitle;
extern NSString *const kProgressTitle;
extern NSString *const kNotUploadedTitle;
extern NSString *const kCompleteTitle;

/// The control that the controller of the visible window of that title knows under the name; nil when there is none.
id PluginControl(NSString *title, NSString *name);

/// Types a log-in as the user "editor" of the customer "acme", and presses the button.
void LogIn(const char *password, bool remember = false);

/// Chooses a project, or a folder, from its menu in the upload window.
void ChooseProject(NSString *title);
void ChooseFolder(NSString *title);

/// Types the film's title in the upload window, and presses the button.
void Upload(NSString *title);

}  // namespace window_test
