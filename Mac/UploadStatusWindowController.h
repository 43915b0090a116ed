// The upload progress window.
#pragma once

#import <Cocoa/Cocoa.h>

#include <mutex>

#include "OrvaneProjectsAPI.h"

/// Shows the progress window and uploads g_fpath in the background. On success it deletes that file and calls the
/// completion hook on the main thread; on a refusal it shows an alert and stays on the screen.
@interface UploadStatusWindowController : NSWindowController {
  NSWindow *uploadStatusWindow;
  NSTextField *uploadLabel;
  OrvaneProjectsAPI *orvane;
  NSImage *orvaneIcon;
  NSProgressIndicator *progressBar;
  NSArray *topLevelObjects;
  BOOL uploading;

  // The newest progress, from any thread; it is drawn on the main thread at intervals.
  std::mutex progressMutex;
  double latestTotal;
  double latestDone;
  BOOL progressIsNew;
  BOOL drawingIsScheduled;
}

@property(nonatomic, assign) IBOutlet NSWindow *uploadStatusWindow;
@property(nonatomic, assign) IBOutlet NSTextField *uploadLabel;
@property(nonatomic, retain) IBOutlet NSProgressIndicator *progressBar;

/// The client must be logged in, is not owned and must outlive the upload.
- (id)initWithProjectsApiPointer:(OrvaneProjectsAPI *)client;

/// Shows the window above others and starts the upload. Returns at once. Main thread.
- (void)showWindow;

/// Starts the upload on the background queue. Main thread.
- (void)startUpload;

/// The bytes to send and the bytes sent. Any thread: on the main thread they are shown at once, from another one as
/// soon as the main thread gets to it, the newest amounts only.
- (void)updateProgressBarWithTotal:(double)total now:(double)done;

- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo;

/// The window cannot be closed while the upload runs.
- (BOOL)windowShouldClose:(id)sender;

@end
