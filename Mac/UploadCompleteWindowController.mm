#import "UploadCompleteWindowController.h"

#import "ButtonTitle.h"
#import "DialogWindow.h"
#include "ExceptionGuard.h"
#import "PluginBundle.h"
#include "WorkflowState.h"

@implementation UploadCompleteWindowController

@synthesize uploadCompleteWindow;
@synthesize openOrvaneBtn;

- (id)initWithLink:(NSString *)link {
  if ((self = [super initWithWindow:nil])) {
    orvaneLink = [link copy];
    topLevelObjects = [LoadInterfaceFile(@"UploadCompleteWindowController", self) retain];
    if (!topLevelObjects) NSLog(@"#orvanevorrel UploadCompleteWindowController failed to load xib");
  }
  return self;
}

- (void)dealloc {
  [uploadCompleteWindow setDelegate:nil];
  [orvaneLink release];
  [topLevelObjects release];
  [super dealloc];
}

- (void)awakeFromNib {
  failed = !RunGuarded([self] {
    [uploadCompleteWindow setBackgroundColor:[NSColor whiteColor]];
    SetButtonTitleColor(openOrvaneBtn, [NSColor whiteColor]);
    [openOrvaneBtn setAccessibilityLabel:@"Open the film in Orvane"];
  });
}

- (NSInteger)showWindow {
  if (failed) return NSRunAbortedResponse;
  // The user may have gone on to another application meanwhile.
  [NSApp requestUserAttention:NSInformationalRequest];
  return RunModalDialog(uploadCompleteWindow);
}

- (void)windowWillClose:(NSNotification *)notification {
  RunGuarded([] {
    [NSApp stopModal];
    g_pCleanupFunc();
  });
}

- (IBAction)openFileInOrvane:(id)sender {
  RunGuarded([self] {
    // The export ends here: a later close of the window must not end it again.
    [uploadCompleteWindow setDelegate:nil];
    NSURL *address = orvaneLink ? [NSURL URLWithString:orvaneLink] : nil;
    if (address) [[NSWorkspace sharedWorkspace] openURL:address];
    [NSApp stopModal];
    g_pCleanupFunc();
  });
}

@end
