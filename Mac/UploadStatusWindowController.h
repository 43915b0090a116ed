// The upload progress window.
#pragma once

#import <Cocoa/Cocoa.h>

#include <mutex>

#include "OrvaneProjectsAPI.h"
#include "RuntimeName.h"
#include "TransferRate.h"

/// Shows the progress window and uploads g_fpath in the background. On success it deletes that file and calls the
/// completion hook on the main thread; on a refusal it shows an alert, stays on the screen, tells where the film is and
/// offers to upload it again. Closing it then ends the export through the clean-up hook; the film stays.
ORV_RUNTIME_NAME("OrvUploadStatusWindowController")
@interface UploadStatusWindowController : NSWindowController {
  NSWindow *uploadStatusWindow;
  NSTextField *filmLabel;
  NSTextField *uploadLabel;
  NSTextField *rateLabel;
  NSButton *tryAgainBtn;
  NSButton *closeBtn;
  OrvaneProjectsAPI *orvane;
  NSImage *orvaneIcon;
  NSProgressIndicator *progressBar;
  NSArray *topLevelObjects;
  CGFloat ownHeight;        // of the window's inside while it uploads, in points
  CGFloat marginAboveText;  // in it, in points
  BOOL hasFailed;           // the upload that is ending
  BOOL waitsForUser;        // after a failed upload
  BOOL isAnotherTry;        // the session may have ended meanwhile

  // The newest progress, from any thread. The timer draws it while the upload runs, on the main thread.
  std::mutex progressMutex;
  double latestTotal;
  double latestDone;
  NSTimer *progressTimer;
  TransferRate rate;

  // Keeps the system awake while the upload runs.
  id activity;
}

@property(nonatomic, assign) IBOutlet NSWindow *uploadStatusWindow;
@property(nonatomic, assign) IBOutlet NSTextField *filmLabel;
@property(nonatomic, assign) IBOutlet NSTextField *uploadLabel;
@property(nonatomic, assign) IBOutlet NSTextField *rateLabel;
@property(nonatomic, assign) IBOutlet NSButton *tryAgainBtn;
@property(nonatomic, assign) IBOutlet NSButton *closeBtn;
@property(nonatomic, retain) IBOutlet NSProgressIndicator *progressBar;

/// The client must be logged in, is not owned and must outlive the upload.
- (id)initWithProjectsApiPointer:(OrvaneProjectsAPI *)client;

/// Shows the window above others, in a corner of the screen, and starts the upload. Returns at once. [main-thread]
- (void)showWindow;

/// Starts the upload on the background queue. [main-thread]
- (void)startUpload;

/// The bytes to send and the bytes sent. On the main thread they are shown at once, from another one within a tenth of
/// a second while the upload runs, the newest amounts only. [any-thread]
- (void)updateProgressBarWithTotal:(double)total now:(double)done;

/// After a failed upload: logs in again as g_un, since the session may have ended, and uploads the film again.
- (IBAction)tryAgain:(id)sender;

/// Ends the export, as every other way of closing the window does.
- (IBAction)closeWindow:(id)sender;

- (BOOL)windowShouldClose:(id)sender;
- (void)windowWillClose:(NSNotification *)notification;
- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo;

@end
