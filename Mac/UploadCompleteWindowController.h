// The window that tells of a finished upload.
#pragma once

#import <Cocoa/Cocoa.h>

#include "RuntimeName.h"

/// Runs the complete window modally. It shows g_title and the uploaded file's link, whatever that is, and its button
/// opens it in the browser if it is an address of the web; the button and the window's close button both end the export
/// through the clean-up hook, once. [main-thread]
ORV_RUNTIME_NAME("OrvUploadCompleteWindowController")
@interface UploadCompleteWindowController : NSWindowController {
  NSWindow *uploadCompleteWindow;
  NSButton *openOrvaneBtn;
  NSTextField *filmLabel;
  NSTextField *messageLabel;
  NSTextField *linkLabel;
  NSString *orvaneLink;
  NSArray *topLevelObjects;
}

@property(nonatomic, assign) IBOutlet NSWindow *uploadCompleteWindow;
@property(nonatomic, assign) IBOutlet NSButton *openOrvaneBtn;
@property(nonatomic, assign) IBOutlet NSTextField *filmLabel;
@property(nonatomic, assign) IBOutlet NSTextField *messageLabel;
@property(nonatomic, assign) IBOutlet NSTextField *linkLabel;

/// The link of the uploaded file, which is copied; nil when the service gave none.
- (id)initWithLink:(NSString *)link;

/// Runs the window modally. Returns the modal loop's result. Without a window the export ends at once.
- (NSInteger)showWindow;

- (void)windowWillClose:(NSNotification *)notification;
- (IBAction)openFileInOrvane:(id)sender;

@end
