// The alerts of the plug-in: a message, a smaller text and one default button.
#pragma once

#import <Cocoa/Cocoa.h>

/// Runs the alert and returns when it has been dismissed. Without an icon it has the application's. [main-thread]
void RunAlert(NSAlertStyle style, NSString *message, NSString *informative, NSImage *icon);

/// Shows the alert as a sheet on the window. The delegate, which must live until the sheet has ended, then gets
/// alertDidEnd:returnCode:contextInfo:. [main-thread]
void ShowAlertSheet(NSWindow *window, id delegate, NSString *message, NSString *informative, NSImage *icon);
