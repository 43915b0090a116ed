#import "UploadCompleteWindowController.h"

#import "ButtonTitle.h"
#import "DialogWindow.h"
#include "ExceptionGuard.h"
#include "PlatformString.h"
#import "PluginBundle.h"
#include "WorkflowState.h"

// No address of a film is longer.
static const NSUInteger kMaxLinkLength = 2000;

// The link as an address of the web; nil for anything else: it comes from the service, and must start no other program
// than the browser.
static NSURL *WebAddress(NSString *link) {
  if ([link length] == 0 || [link length] > kMaxLinkLength) return nil;
  NSURL *address = [NSURL URLWithString:link];
  NSString *scheme = [[address scheme] lowercaseString];
  const BOOL isWeb = [scheme isEqualToString:@"http"] || [scheme isEqualToString:@"https"];
  return isWeb && [[address host] length] > 0 ? address : nil;
}

@interface UploadCompleteWindowController ()
- (void)showLink;
@end

@implementation UploadCompleteWindowController

@synthesize uploadCompleteWindow;
@synthesize openOrvaneBtn;
@synthesize filmLabel;
@synthesize messageLabel;
@synthesize linkLabel;

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
  Awake([self] {
    [uploadCompleteWindow setBackgroundColor:[NSColor whiteColor]];
    SetButtonTitleColor(openOrvaneBtn, [NSColor whiteColor]);
    [self showLink];
  });
}

- (void)showLink {
  [filmLabel setStringValue:FromUtf8(Shortened(g_title, kMaxShownBytes))];
  [linkLabel setStringValue:orvaneLink ? orvaneLink : @""];
  [linkLabel setAccessibilityLabel:@"Address of the film"];
  if (WebAddress(orvaneLink)) {
    [openOrvaneBtn setAccessibilityLabel:@"Open the film in Orvane"];
    return;
  }
  [messageLabel setStringValue:[orvaneLink length] > 0
                                   ? @"Your film is on Orvane, at an address that cannot be opened:"
                                   : @"Your film is on Orvane, which gave no address to open it at."];
  [openOrvaneBtn setTitle:@"Close"];
  SetButtonTitleColor(openOrvaneBtn, [NSColor whiteColor]);
}

- (NSInteger)showWindow {
  if (!uploadCompleteWindow) {
    NSLog(@"#orvanevorrel the film is at %@", orvaneLink);
    g_pCleanupFunc();
    return NSRunAbortedResponse;
  }
  // The user may have gone on to another application meanwhile.
  [NSApp requestUserAttention:NSInformationalRequest];
  return RunModalDialog(uploadCompleteWindow);
}

- (void)windowWillClose:(NSNotification *)notification {
  DialogWillClose(true);
}

- (IBAction)openFileInOrvane:(id)sender {
  RunGuarded([self] {
    // The export ends here: a later close of the window must not end it again.
    [uploadCompleteWindow setDelegate:nil];
    NSURL *address = WebAddress(orvaneLink);
    if (address) [[NSWorkspace sharedWorkspace] openURL:address];
    [NSApp stopModal];
    g_pCleanupFunc();
  });
}

@end
