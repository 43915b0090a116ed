#import "UploadStatusWindowController.h"

#include <dispatch/dispatch.h>

#include <chrono>
#include <cstdio>

#import "Alert.h"
#include "ExceptionGuard.h"
#include "ExportState.h"
#include "MainThread.h"
#include "PlatformString.h"
#import "PluginBundle.h"
#import "ServiceAnswer.h"
#include "WorkflowState.h"

// libcurl reports progress thousands of times a second. Each drawing takes more than a millisecond here and as much in
// the window server, which a fast upload needs itself, and nobody reads numbers that change more often than this.
static const NSTimeInterval kSecondsBetweenDrawings = 1.0 / 10;

static const CGFloat kDistanceFromScreenEdge = 24;

// "3.2 MB of 45.0 MB (7 %)"
static NSString *ProgressText(double total, double done) {
  const double megabyte = 1000.0 * 1000.0;
  return [NSString stringWithFormat:@"Uploading to Orvane: %.1f MB of %.1f MB (%d %%)", done / megabyte,
                                    total / megabyte, static_cast<int>(100.0 * done / total)];
}

@interface UploadStatusWindowController ()
- (void)runUpload;
- (void)upload;
- (void)uploadSucceededWithLink:(NSString *)link;
- (void)uploadRefusedWithMessage:(NSString *)message;
- (void)uploadEnded;
- (void)moveIntoCorner;
- (void)stopShowingProgress;
- (void)tellWhatIsLeft;
- (void)drawLatestProgress;
- (void)showTotal:(double)total now:(double)done;
@end

@implementation UploadStatusWindowController

@synthesize uploadStatusWindow;
@synthesize uploadLabel;
@synthesize rateLabel;
@synthesize progressBar;

- (id)initWithProjectsApiPointer:(OrvaneProjectsAPI *)client {
  if ((self = [super initWithWindow:nil])) {
    orvane = client;
    topLevelObjects = [LoadInterfaceFile(@"UploadStatusWindowController", self) retain];
    if (!topLevelObjects) NSLog(@"#orvanevorrel UploadStatusWindowController failed to load xib");
  }
  return self;
}

- (void)dealloc {
  [uploadStatusWindow setDelegate:nil];
  [uploadStatusWindow orderOut:nil];
  [orvaneIcon release];
  [progressBar release];
  [topLevelObjects release];
  [super dealloc];
}

- (void)awakeFromNib {
  Awake([self] {
    orvaneIcon = [PluginImage(@"OrvaneIcon1.png") retain];
    [uploadStatusWindow setBackgroundColor:[NSColor whiteColor]];
    [progressBar setAccessibilityLabel:@"Upload progress"];
  });
}

- (void)showWindow {
  [self moveIntoCorner];
  [uploadStatusWindow makeKeyAndOrderFront:nil];
  [uploadStatusWindow setLevel:NSFloatingWindowLevel];
  [self startUpload];
}

// It stays above other windows, so it keeps out of their middle.
- (void)moveIntoCorner {
  const NSRect screen = [[NSScreen mainScreen] visibleFrame];
  const CGFloat x = NSMaxX(screen) - NSWidth([uploadStatusWindow frame]) - kDistanceFromScreenEdge;
  [uploadStatusWindow setFrameOrigin:NSMakePoint(x, NSMinY(screen) + kDistanceFromScreenEdge)];
}

- (void)startUpload {
  activity = [[[NSProcessInfo processInfo] beginActivityWithOptions:NSActivityUserInitiated
                                                             reason:@"Uploading to Orvane"] retain];
  progressTimer = RepeatOnMainThread(kSecondsBetweenDrawings, self, @selector(drawLatestProgress));
  // The block does not retain the controller: the last release must come on the main thread, in uploadEnded.
  [self retain];
  __block UploadStatusWindowController *controller = self;
  g_export.activity = ExportState::Activity::kUpload;
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), ^{
      @autoreleasepool {
        [controller runUpload];
      }
  });
}

- (void)runUpload {
  RunGuarded([self] { [self upload]; });
  RunOnMainThreadAndWait([self] { [self uploadEnded]; });
}

// On the background queue.
- (void)upload {
  NSLog(@"#orvanevorrel starting upload: prj %s, fld %s, file %s", g_prj.c_str(), g_fld.c_str(), g_fpath.c_str());
  const std::string answer = orvane->uploadFile(g_prj, g_fld, g_fpath);
  NSDictionary *root = AnswerRoot(answer);
  NSString *status = TextMember(root, @"status");
  NSString *message = TextMember(root, @"message");
  NSString *link = TextMember(ObjectMember(root, @"payload"), @"link");
  if ([status isEqualToString:@"success"]) {
    dispatch_async(dispatch_get_main_queue(), ^{
        RunGuarded([self, link] { [self uploadSucceededWithLink:link]; });
    });
    return;
  }
  NSLog(@"#orvanevorrel Upload error returned from Orvane - res: %@", FromUtf8(Shortened(answer, kMaxShownBytes)));
  // The alert belongs to this block, which waits for it; windows are only safe on the main thread.
  RunOnMainThreadAndWait([self, message] { RunGuarded([self, message] { [self uploadRefusedWithMessage:message]; }); });
}

- (void)uploadSucceededWithLink:(NSString *)link {
  g_export.activity = ExportState::Activity::kNone;
  NSLog(@"#orvanevorrel upload finished");
  [uploadStatusWindow orderOut:nil];
  [NSApp stopModal];
  remove(g_fpath.c_str());
  g_pCompleteFunc(ToUtf8(link));
}

- (void)uploadRefusedWithMessage:(NSString *)message {
  [self stopShowingProgress];
  [self tellWhatIsLeft];
  NSString *text = FromUtf8(Shortened(ToUtf8(message), kMaxShownBytes));
  RunAlert(NSAlertStyleWarning, @"There was an error uploading to Orvane.",
           [NSString stringWithFormat:@"The system returned this message: \"%@\"", text], orvaneIcon);
  g_export.activity = ExportState::Activity::kNone;
}

// The label takes the place of bar and rate. Its text can be copied.
- (void)tellWhatIsLeft {
  NSString *file = FromUtf8(g_fpath);
  const BOOL isKept = file && [[NSFileManager defaultManager] fileExistsAtPath:file];
  NSString *text = isKept ? [@"The film was not uploaded. It is kept at\n" stringByAppendingString:file]
                          : @"The film was not uploaded, as it was not rendered. Export the sequence again.";
  [progressBar setHidden:YES];
  [rateLabel setHidden:YES];
  NSRect frame = NSUnionRect([uploadLabel frame], [rateLabel frame]);
  [uploadLabel setFrame:frame];
  [[uploadLabel cell] setLineBreakMode:NSLineBreakByCharWrapping];
  [uploadLabel setSelectable:YES];
  [uploadLabel setStringValue:text];
  // Below alerts, and the editor's own windows may cover it.
  [uploadStatusWindow setLevel:NSNormalWindowLevel];
}

// The background queue is done with the controller.
- (void)uploadEnded {
  [self stopShowingProgress];
  [[NSProcessInfo processInfo] endActivity:activity];
  [activity release];
  activity = nil;
  [self release];
}

- (void)stopShowingProgress {
  if (!progressTimer) return;
  [self drawLatestProgress];
  [progressTimer invalidate];
  progressTimer = nil;
}

- (void)updateProgressBarWithTotal:(double)total now:(double)done {
  if ([NSThread isMainThread]) {
    [self showTotal:total now:done];
    return;
  }
  std::lock_guard<std::mutex> lock(progressMutex);
  latestTotal = total;
  latestDone = done;
}

- (void)drawLatestProgress {
  std::unique_lock<std::mutex> lock(progressMutex);
  const double total = latestTotal;
  const double done = latestDone;
  lock.unlock();
  [self showTotal:total now:done];
  const std::chrono::duration<double> time = std::chrono::steady_clock::now().time_since_epoch();
  rate.Add(time.count(), done);
  [rateLabel setStringValue:FromUtf8(rate.Text(total))];
}

- (void)showTotal:(double)total now:(double)done {
  if (!(total > 0)) return;  // the size is not known yet
  [progressBar setMaxValue:total];
  [progressBar setDoubleValue:done];
  [uploadLabel setStringValue:ProgressText(total, done)];
}

- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo {
}

- (BOOL)windowShouldClose:(id)sender {
  return g_export.activity != ExportState::Activity::kUpload;
}

@end
