// The alerts of the plug-in's windows.
#pragma once

#import <Cocoa/Cocoa.h>

/// Shows an alert with one default button as a sheet on the window. The delegate, which must live until the sheet has
/// ended, then gets alertDidEnd:returnCode:contextInfo:. Main thread.
void ShowAlertSheet(NSWindow *window, id delegate, NSString *message, NSString *informative, NSImage *icon);
