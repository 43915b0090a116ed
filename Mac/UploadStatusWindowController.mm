#import "UploadStatusWindowController.h"

#include <dispatch/dispatch.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>

#import "Alert.h"
#import "ButtonTitle.h"
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

// Points.
static const CGFloat kDistanceFromScreenEdge = 24;
static const CGFloat kGapAboveButtons = 18;
static const CGFloat kLineHeight = 17;
static const CGFloat kTallestText = 400;
static const CGFloat kLabelPadding = 2;

static NSString *SizeText(double bytes) {
  // What would be rounded to a thousand megabytes, too.
  if (bytes < 999.95e6) return [NSString stringWithFormat:@"%.1f MB", bytes / 1e6];
  return [NSString stringWithFormat:@"%.2f GB", bytes / 1e9];
}

// "3.2 MB of 45.0 MB (7 %)"
static NSString *ProgressText(double total, double done) {
  return [NSString stringWithFormat:@"Uploading to Orvane: %@ of %@ (%d %%)", SizeText(done), SizeText(total),
                                    static_cast<int>(100.0 * done / total)];
}

static NSString *StallText(double seconds) {
  const time_t since = time(nullptr) - static_cast<time_t>(seconds);
  tm local = {};
  localtime_r(&since, &local);
  return [NSString
      stringWithFormat:@"Waiting for the service since %02d:%02d:%02d", local.tm_hour, local.tm_min, local.tm_sec];
}

static BOOL IsFile(const std::string &path) {
  NSString *file = FromUtf8(path);
  return file && [[NSFileManager defaultManager] fileExistsAtPath:file];
}

// What has become of the film. The lines fit: what is longer than one is a path, and is broken anywhere.
static NSString *TextAboutFilm() {
  if (IsFile(g_fpath)) return [@"The film was not uploaded. It is kept at\n" stringByAppendingString:FromUtf8(g_fpath)];
  if (!IsFile(g_export.film)) {
    return @"The film was not uploaded, as it was not rendered.\nExport the sequence again.";
  }
  return [@"The film was not uploaded, as the path of the folder\nfor temporary files is too long. It is kept at\n"
      stringByAppendingString:FromUtf8(g_export.film)];
}

@interface UploadStatusWindowController ()
- (NSString *)logInAgain;
- (void)upload;
- (void)uploadSucceededWithLink:(NSString *)link;
- (void)completeWithLink:(NSString *)link;
- (void)uploadRefusedWithMessage:(NSString *)message;
- (void)uploadEnded;
- (void)moveIntoCorner;
- (void)stopShowingProgress;
- (void)showProgress;
- (void)tellWhatIsLeft;
- (void)offerAnotherTry;
- (void)setTextHeight:(CGFloat)height;
- (void)drawLatestProgress;
- (void)showTotal:(double)total now:(double)done;
@end

@implementation UploadStatusWindowController

@synthesize uploadStatusWindow;
@synthesize filmLabel;
@synthesize uploadLabel;
@synthesize rateLabel;
@synthesize tryAgainBtn;
@synthesize closeBtn;
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
    ownHeight = NSHeight([[uploadStatusWindow contentView] frame]);
    marginAboveText = ownHeight - NSMaxY([uploadLabel frame]);
    [uploadStatusWindow setBackgroundColor:[NSColor whiteColor]];
    [[uploadLabel cell] setLineBreakMode:NSLineBreakByCharWrapping];
    SetButtonTitleColor(tryAgainBtn, [NSColor whiteColor]);
    [filmLabel setStringValue:FromUtf8(Shortened(g_title, kMaxShownBytes))];
    [progressBar setAccessibilityLabel:@"Upload progress"];
    [tryAgainBtn setAccessibilityLabel:@"Upload the film again"];
    [closeBtn setAccessibilityLabel:@"End the export and keep the film"];
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
        RunGuarded([uploading = controller] { [uploading upload]; });
        RunOnMainThreadAndWait([uploading = controller] { [uploading uploadEnded]; });
      }
  });
}

// What is to be told of it, autoreleased; nil when the user is logged in. On the background queue.
- (NSString *)logInAgain {
  std::string result;
  std::string failure;
  // An answer that cannot be read must not end the export, as it would at its beginning: the film has been rendered.
  if (!CatchExceptions([self, &result] { result = orvane->login(g_sd, g_un, g_pw); }, &failure)) {
    NSLog(@"#orvanevorrel logging in again failed: %@", FromUtf8(failure));
    return @"Something came that the plug-in cannot read.";
  }
  if (result == "success") return nil;
  if (result == "failed") return @"Could not connect to the Orvane server.";
  NSString *message = TextMember(AnswerRoot(result), @"message");
  return message ? message : @"Invalid username or password.";
}

// On the background queue.
- (void)upload {
  NSString *refusal = isAnotherTry ? [self logInAgain] : nil;
  if (refusal) {
    RunOnMainThreadAndWait([self, refusal] { [self uploadRefusedWithMessage:refusal]; });
    return;
  }
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
  RunOnMainThreadAndWait([self, message] { [self uploadRefusedWithMessage:message]; });
}

- (void)uploadSucceededWithLink:(NSString *)link {
  NSLog(@"#orvanevorrel upload finished");
  [uploadStatusWindow orderOut:nil];
  [NSApp stopModal];
  remove(g_fpath.c_str());
  // The hook runs a modal window. In a block of the main queue that would hold up every other block of the host.
  SendOnMainThread(self, @selector(completeWithLink:), link);
}

- (void)completeWithLink:(NSString *)link {
  g_export.activity = ExportState::Activity::kNone;
  RunGuarded([link] { g_pCompleteFunc(ToUtf8(link)); });
}

- (void)uploadRefusedWithMessage:(NSString *)message {
  RunGuarded([self, message] {
    [self stopShowingProgress];
    [self tellWhatIsLeft];
    NSString *text = FromUtf8(Shortened(ToUtf8(message), kMaxShownBytes));
    RunAlert(NSAlertStyleWarning, @"There was an error uploading to Orvane.",
             [NSString stringWithFormat:@"The system returned this message: \"%@\"", text], orvaneIcon);
    g_export.activity = ExportState::Activity::kNone;
    hasFailed = YES;
  });
}

// The background queue is done with the controller.
- (void)uploadEnded {
  [self stopShowingProgress];
  [[NSProcessInfo processInfo] endActivity:activity];
  [activity release];
  activity = nil;
  // Not before: another try must find everything of this one put away.
  if (hasFailed) [self offerAnotherTry];
  [self release];
}

- (IBAction)tryAgain:(id)sender {
  if (!waitsForUser) return;  // a key may reach a button that is hidden
  RunGuarded([self] {
    isAnotherTry = YES;
    waitsForUser = NO;
    latestTotal = latestDone = 0;
    rate = TransferRate();
    [self showProgress];
    [self startUpload];
  });
}

- (void)showProgress {
  [uploadStatusWindow setTitle:@"Orvane: Uploading"];
  [uploadStatusWindow setLevel:NSFloatingWindowLevel];
  for (NSView *view in @[ tryAgainBtn, closeBtn ]) [view setHidden:YES];
  for (NSView *view in @[ progressBar, rateLabel ]) [view setHidden:NO];
  [progressBar setDoubleValue:0];
  [rateLabel setStringValue:@""];
  [uploadLabel setSelectable:NO];
  [uploadLabel setStringValue:@"Uploading to Orvane..."];
  [self setTextHeight:kLineHeight];
}

// The label takes the place of bar and rate. Its text can be copied.
- (void)tellWhatIsLeft {
  [uploadStatusWindow setTitle:@"Orvane: Not Uploaded"];
  // Below alerts, and the editor's own windows may cover it.
  [uploadStatusWindow setLevel:NSNormalWindowLevel];
  for (NSView *view in @[ progressBar, rateLabel ]) [view setHidden:YES];
  [uploadLabel setSelectable:YES];
  [uploadLabel setStringValue:TextAboutFilm()];
  const NSSize room = NSMakeSize(NSWidth([uploadLabel frame]) - 2 * kLabelPadding, kTallestText);
  const NSRect text = [[uploadLabel attributedStringValue] boundingRectWithSize:room
                                                                        options:NSStringDrawingUsesLineFragmentOrigin];
  [self setTextHeight:std::ceil(NSHeight(text))];
  // While the alert is up, nothing else draws it on every system.
  [uploadStatusWindow display];
}

// The text's top keeps its place in the window, which grows upwards by what is missing above the buttons. How tall it
// is to be does not depend on how tall it is, which may lag behind what was asked for.
- (void)setTextHeight:(CGFloat)height {
  NSRect content = [uploadStatusWindow contentRectForFrameRect:[uploadStatusWindow frame]];
  content.size.height = MAX(ownHeight, NSMaxY([closeBtn frame]) + kGapAboveButtons + height + marginAboveText);
  [uploadStatusWindow setFrame:[uploadStatusWindow frameRectForContentRect:content] display:NO];
  NSRect text = [uploadLabel frame];
  text.origin.y = NSHeight([[uploadStatusWindow contentView] frame]) - marginAboveText - height;
  text.size.height = height;
  [uploadLabel setFrame:text];
}

- (void)offerAnotherTry {
  hasFailed = NO;
  waitsForUser = YES;
  [tryAgainBtn setHidden:!IsFile(g_fpath)];
  [closeBtn setHidden:NO];
  [uploadStatusWindow makeKeyAndOrderFront:nil];
}

- (IBAction)closeWindow:(id)sender {
  [uploadStatusWindow performClose:sender];
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
  const double silence = rate.SecondsWithoutBytes();
  const BOOL stalls = silence >= TransferRate::kStallSeconds;
  [rateLabel setStringValue:stalls ? StallText(silence) : FromUtf8(rate.Text(total))];
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

- (void)windowWillClose:(NSNotification *)notification {
  if (!waitsForUser) return;
  waitsForUser = NO;
  [[self retain] autorelease];  // the clean-up releases it, inside of its window's close
  RunGuarded([] { g_pCleanupFunc(); });
}

@end
