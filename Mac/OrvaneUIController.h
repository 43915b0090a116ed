// The login window.
#pragma once

#import <Cocoa/Cocoa.h>

#include "OrvaneProjectsAPI.h"

/// Runs the login window modally and tells of a newer release. On a successful login it sets g_sd, g_un, g_pw and
/// g_step "upload"; when the user closes the window without one it calls the clean-up hook. [main-thread]
@interface OrvaneUIController : NSObject {
  NSWindow *orvaneWindow;
  NSButton *loginBtn;
  NSProgressIndicator *spinnerLogin;
  NSButton *rememberMeCheckbox;
  NSView *versionCheckBox;
  NSTextField *versionCheckLabel;
  NSButton *versionCheckDownloadBtn;
  OrvaneProjectsAPI *orvane;
  NSImage *orvaneIcon;
  NSTextField *inputSubdomain;
  NSTextField *inputUsername;
  NSTextField *inputPassword;
  NSArray *topLevelObjects;
}

@property(nonatomic, assign) IBOutlet NSWindow *orvaneWindow;
@property(nonatomic, assign) IBOutlet NSButton *loginBtn;
@property(nonatomic, assign) IBOutlet NSProgressIndicator *spinnerLogin;
@property(nonatomic, assign) IBOutlet NSButton *rememberMeCheckbox;
@property(nonatomic, assign) IBOutlet NSView *versionCheckBox;
@property(nonatomic, assign) IBOutlet NSTextField *versionCheckLabel;
@property(nonatomic, assign) IBOutlet NSButton *versionCheckDownloadBtn;
@property(nonatomic, retain) IBOutlet NSTextField *inputSubdomain;
@property(nonatomic, retain) IBOutlet NSTextField *inputUsername;
@property(nonatomic, retain) IBOutlet NSTextField *inputPassword;

/// The client is not owned and must outlive the window.
- (id)initWithProjectsApiPointer:(OrvaneProjectsAPI *)api;

/// Runs the window modally. Returns the modal loop's result.
- (NSInteger)showWindow;

- (void)windowWillClose:(NSNotification *)notification;
- (IBAction)loginBtn:(id)sender;
- (IBAction)versionCheckDownloadBtn:(id)sender;
- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo;

@end
