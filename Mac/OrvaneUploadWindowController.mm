#import "OrvaneUploadWindowController.h"

#import <QuartzCore/QuartzCore.h>
#include <objc/runtime.h>

#import "Alert.h"
#import "ButtonTitle.h"
#import "DialogWindow.h"
#include "ExceptionGuard.h"
#import "OrderedDictionary.h"
#include "PlatformString.h"
#import "PluginBundle.h"
#import "SavedLogin.h"
#import "ServiceAnswer.h"
#import "TagsView.h"
#include "WorkflowState.h"

static NSString *const kProjectPlaceholder = @"Select a project...";
static NSString *const kFolderPlaceholder = @"Select a folder...";

// Where the listing of a project's folders ends, so that a service whose folders hold themselves or never end cannot
// hold up the application for good. What has been listed by then stays.
static const NSUInteger kMaxFolderDepth = 50;
static const NSUInteger kMaxFolders = 10000;

// The id of a placeholder: nothing is chosen.
static NSString *const kNoChoice = @"0";

// The titles differ from each other, so none has to be looked for among all before it, as addItemsWithTitles: does.
static void SetTitles(NSPopUpButton *chooser, NSArray *titles) {
  NSMenu *menu = [[[NSMenu alloc] initWithTitle:@""] autorelease];
  for (NSString *title in titles) [menu addItemWithTitle:title action:NULL keyEquivalent:@""];
  [chooser setMenu:menu];
  [chooser selectItemAtIndex:0];
}

@interface OrvaneUploadWindowController ()
- (void)styleWindow;
- (void)describeControls;
- (void)fillProjects;
- (void)fillFoldersOfProject:(NSString *)projectID;
- (NSString *)choiceOf:(NSPopUpButton *)chooser in:(NSDictionary *)identifiers;
- (void)addFolders:(NSArray *)entries
           project:(NSString *)projectID
            format:(NSString *)format
                to:(MutableOrderedDictionary *)folders;
- (BOOL)mayEnterFolder:(NSString *)folderID;
- (void)logListingEndedAt:(NSString *)reason;
- (void)confirmUpload;
- (void)logOut;
- (void)showError:(NSString *)text;
@end

@implementation OrvaneUploadWindowController

@synthesize orvaneUploadWindow;
@synthesize uploadBtn;
@synthesize logoutBtn;
@synthesize inputProject;
@synthesize inputFolder;
@synthesize fileDescription;
@synthesize tagView;
@synthesize spinnerFolderSelect;
@synthesize inputTitle;
@synthesize folderHint;

- (id)initWithProjectsApiPointer:(OrvaneProjectsAPI *)api {
  if ((self = [super initWithWindow:nil])) {
    orvane = api;
    openFolders = [[NSMutableArray alloc] init];
    NSApplicationLoad();
    topLevelObjects = [LoadInterfaceFile(@"OrvaneUploadWindowController", self) retain];
    if (!topLevelObjects) NSLog(@"#orvanevorrel OrvaneUploadWindowController failed to load xib");
  }
  return self;
}

- (void)dealloc {
  [orvaneUploadWindow setDelegate:nil];
  [fileDescription setDelegate:nil];
  [ProjectDict release];
  [FolderDict release];
  [openFolders release];
  [orvaneIcon release];
  [inputProject release];
  [inputFolder release];
  [fileDescription release];
  [tagView release];
  [spinnerFolderSelect release];
  [inputTitle release];
  [topLevelObjects release];
  [super dealloc];
}

- (void)awakeFromNib {
  Awake([self] {
    [self styleWindow];
    [self describeControls];
    [self fillProjects];
    g_prj = "0";
    g_fld = "0";
  });
}

- (void)styleWindow {
  [orvaneUploadWindow setBackgroundColor:[NSColor colorWithPatternImage:PluginImage(@"UploadBG.png")]];
  SetButtonTitleColor(uploadBtn, [NSColor whiteColor]);
  orvaneIcon = [PluginImage(@"OrvaneIcon1.png") retain];
  [fileDescription setFont:[NSFont systemFontOfSize:[NSFont systemFontSize]]];
}

// For screen readers.
- (void)describeControls {
  [inputProject setAccessibilityLabel:@"Project"];
  [inputFolder setAccessibilityLabel:@"Folder"];
  [spinnerFolderSelect setAccessibilityLabel:@"Listing folders"];
  [inputTitle setAccessibilityLabel:@"Title"];
  [fileDescription setAccessibilityLabel:@"Description"];
  [uploadBtn setAccessibilityLabel:@"Upload the film"];
  [logoutBtn setAccessibilityLabel:@"Log out of Orvane"];
}

- (void)fillProjects {
  NSArray *entries = ListMember(AnswerRoot(orvane->getProjectList()), @"payload");
  ProjectDict = [[NSMutableDictionary alloc] init];
  [ProjectDict setObject:kNoChoice forKey:kProjectPlaceholder];
  for (id entry in entries) {
    NSString *name = TextMember(entry, @"project_name");
    NSString *identifier = TextMember(entry, @"id");
    if (name && identifier) [ProjectDict setObject:identifier forKey:name];
  }
  [inputFolder removeAllItems];
  SetTitles(inputProject, [ProjectDict allKeys]);
}

- (NSInteger)showWindow {
  return RunModalDialog(orvaneUploadWindow);
}

- (void)windowWillClose:(NSNotification *)notification {
  RunGuarded([] {
    [NSApp stopModal];
    if (g_step != "doUpload") g_pCleanupFunc();
  });
}

- (IBAction)selectPrj:(id)sender {
  RunGuarded([self, sender] {
    const WindowAtWork atWork(orvaneUploadWindow);
    [self fillFoldersOfProject:[self choiceOf:sender in:ProjectDict]];
  });
}

// The id of the chooser's selected item; that of a placeholder when it has none.
- (NSString *)choiceOf:(NSPopUpButton *)chooser in:(NSDictionary *)identifiers {
  NSString *label = [chooser titleOfSelectedItem];
  NSString *identifier = label ? [identifiers objectForKey:label] : nil;
  return identifier ? identifier : kNoChoice;
}

- (void)fillFoldersOfProject:(NSString *)projectID {
  [folderHint setHidden:![projectID isEqualToString:kNoChoice]];
  [inputFolder removeAllItems];
  [spinnerFolderSelect startAnimation:self];
  // The main thread is busy until the list is complete.
  [orvaneUploadWindow display];
  [CATransaction flush];
  const std::string answer = orvane->getFolders(ToUtf8(projectID));
  g_prj = ToUtf8(projectID);

  [FolderDict release];
  FolderDict = [[MutableOrderedDictionary alloc] init];
  [FolderDict setObject:kNoChoice forKey:kFolderPlaceholder];
  [openFolders removeAllObjects];
  foldersListed = 0;
  listingWasCut = NO;
  [self addFolders:ListMember(AnswerRoot(answer), @"payload") project:projectID format:@"%@" to:FolderDict];
  g_fld = "0";
  SetTitles(inputFolder, [FolderDict allKeys]);
  [spinnerFolderSelect stopAnimation:self];
}

- (MutableOrderedDictionary *)getSubfoldersForFolderID:(NSString *)folderID project:(NSString *)projectID {
  const std::string answer = orvane->getSubfolders(ToUtf8(projectID), ToUtf8(folderID));
  MutableOrderedDictionary *folders = [[[MutableOrderedDictionary alloc] init] autorelease];
  [openFolders addObject:folderID];
  [self addFolders:ListMember(AnswerRoot(answer), @"payload") project:projectID format:@"   %@" to:folders];
  [openFolders removeLastObject];
  return folders;
}

- (BOOL)mayEnterFolder:(NSString *)folderID {
  NSString *reason = nil;
  if ([openFolders containsObject:folderID]) {
    reason = [NSString stringWithFormat:@"folder %@, which holds itself", folderID];
  } else if ([openFolders count] >= kMaxFolderDepth) {
    reason = [NSString stringWithFormat:@"depth %lu", (unsigned long)kMaxFolderDepth];
  }
  if (reason) [self logListingEndedAt:reason];
  return reason == nil;
}

// Once for each listing.
- (void)logListingEndedAt:(NSString *)reason {
  if (!listingWasCut) NSLog(@"#orvanevorrel not all folders are listed: the listing ends at %@", reason);
  listingWasCut = YES;
}

// Adds each entry and, directly below it, its subtree. The format indents the labels of this level and below.
- (void)addFolders:(NSArray *)entries
           project:(NSString *)projectID
            format:(NSString *)format
                to:(MutableOrderedDictionary *)folders {
  for (id entry in entries) {
    NSString *name = TextMember(entry, @"name");
    NSString *identifier = TextMember(entry, @"id");
    if (!name || !identifier) continue;
    if (foldersListed >= kMaxFolders) {
      [self logListingEndedAt:[NSString stringWithFormat:@"%lu folders", (unsigned long)kMaxFolders]];
      return;
    }
    ++foldersListed;
    [folders setObject:identifier forKey:[NSString stringWithFormat:format, name]];
    if (IntegerMember(entry, @"sub_folders") <= 0 || ![self mayEnterFolder:identifier]) continue;
    MutableOrderedDictionary *subfolders = [self getSubfoldersForFolderID:identifier project:projectID];
    for (NSUInteger i = 0; i < [subfolders count]; ++i) {
      NSString *label = [NSString stringWithFormat:format, [subfolders keyAtIndex:i]];
      [folders setObject:[subfolders objectAtIndex:i] forKey:label];
    }
  }
}

- (IBAction)selectFld:(id)sender {
  RunGuarded([self, sender] {
    const WindowAtWork atWork(orvaneUploadWindow);
    const std::string folder = ToUtf8([self choiceOf:sender in:FolderDict]);
    orvane->getFolders(folder);  // the service expects this request; its answer is not needed
    g_fld = folder;
  });
}

- (IBAction)uploadBtn:(id)sender {
  RunGuarded([self] { [self confirmUpload]; });
}

- (void)confirmUpload {
  NSString *title = [inputTitle stringValue];
  if ([title isEqualToString:@""]) {
    [self showError:@"You must enter a title."];
    return;
  }
  g_title = ToUtf8(title);
  if (g_prj == "0") {
    [self showError:@"You must select a project."];
    return;
  }
  if (g_fld == "0") {
    [self showError:@"You must select a folder."];
    return;
  }
  g_desc = ToUtf8([fileDescription string]);
  g_tags.clear();
  for (NSString *tag in [tagView tags]) g_tags.push_back(ToUtf8(tag));
  g_step = "doUpload";
  [NSApp stopModal];
}

- (IBAction)logoutBtn:(id)sender {
  RunGuarded([self] { [self logOut]; });
}

- (void)logOut {
  NSError *error = nil;
  if (!ForgetSavedLogin(&error)) {
    NSLog(@"#orvanevorrel KEYCHAIN ERROR whle attempting to delete saved credentials: %@", error);
  }
  // The export ends here: a later close of the window must not end it again.
  [orvaneUploadWindow setDelegate:nil];
  g_pCleanupFunc();
  [NSApp stopModal];
}

// A description has no use for tabs: the key goes on to the next control, as in the fields around it.
- (BOOL)textView:(NSTextView *)textView doCommandBySelector:(SEL)command {
  NSView *next = nil;
  if (sel_isEqual(command, @selector(insertTab:))) next = [textView nextValidKeyView];
  if (sel_isEqual(command, @selector(insertBacktab:))) next = [textView previousValidKeyView];
  return next != nil && [[textView window] makeFirstResponder:next];
}

- (void)showError:(NSString *)text {
  ShowAlertSheet(orvaneUploadWindow, self, @"Error", text, orvaneIcon);
}

- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo {
}

@end
