// The upload settings window.
#pragma once

#import <Cocoa/Cocoa.h>

#include "OrvaneProjectsAPI.h"

@class MutableOrderedDictionary;
@class TagsView;

/// Lets the user choose project and folder and describe the upload. Its result goes to g_prj, g_fld, g_title, g_desc
/// and g_tags, with g_step "doUpload" when the user confirmed. Logging out and closing the window call the clean-up
/// hook. The main thread waits while lists are fetched. [main-thread]
@interface OrvaneUploadWindowController : NSWindowController {
  NSWindow *orvaneUploadWindow;
  NSButton *uploadBtn;
  NSButton *logoutBtn;
  OrvaneProjectsAPI *orvane;
  NSMutableDictionary *ProjectDict;
  MutableOrderedDictionary *FolderDict;
  NSImage *orvaneIcon;
  NSPopUpButton *inputProject;
  NSPopUpButton *inputFolder;
  NSTextView *fileDescription;
  TagsView *tagView;
  NSProgressIndicator *spinnerFolderSelect;
  NSTextField *inputTitle;
  NSTextField *folderHint;
  NSTextField *accountLabel;
  NSArray *topLevelObjects;
}

@property(nonatomic, assign) IBOutlet NSWindow *orvaneUploadWindow;
@property(nonatomic, assign) IBOutlet NSButton *uploadBtn;
@property(nonatomic, assign) IBOutlet NSButton *logoutBtn;
@property(nonatomic, retain) IBOutlet NSPopUpButton *inputProject;
@property(nonatomic, retain) IBOutlet NSPopUpButton *inputFolder;
@property(nonatomic, retain) IBOutlet NSTextView *fileDescription;
@property(nonatomic, retain) IBOutlet TagsView *tagView;
@property(nonatomic, retain) IBOutlet NSProgressIndicator *spinnerFolderSelect;
@property(nonatomic, retain) IBOutlet NSTextField *inputTitle;

/// Says what to do while no project is chosen, and what the list of folders leaves out.
@property(nonatomic, assign) IBOutlet NSTextField *folderHint;
@property(nonatomic, assign) IBOutlet NSTextField *accountLabel;

/// The client must be logged in, is not owned and must outlive the window.
- (id)initWithProjectsApiPointer:(OrvaneProjectsAPI *)api;

/// Runs the window modally. Returns the modal loop's result.
- (NSInteger)showWindow;

- (void)windowWillClose:(NSNotification *)notification;
- (IBAction)selectPrj:(id)sender;
- (IBAction)selectFld:(id)sender;
- (IBAction)uploadBtn:(id)sender;
- (IBAction)logoutBtn:(id)sender;
- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo;

/// The whole tree below a folder, autoreleased: what a FolderListing of its own makes of it.
- (MutableOrderedDictionary *)getSubfoldersForFolderID:(NSString *)folderID project:(NSString *)projectID;

@end
