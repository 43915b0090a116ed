#import "OrvaneUploadWindowController.h"

#include <objc/runtime.h>

#import "Alert.h"
#import "ButtonTitle.h"
#import "DialogWindow.h"
#include "ExceptionGuard.h"
#include "FolderListing.h"
#import "OrderedDictionary.h"
#include "PlatformString.h"
#import "PluginBundle.h"
#import "ProjectDictionary.h"
#import "SavedLogin.h"
#import "ServiceAnswer.h"
#import "TagsView.h"
#include "WorkflowState.h"

static NSString *const kProjectPlaceholder = @"Select a project...";
static NSString *const kFolderPlaceholder = @"Select a folder...";
static NSString *const kFolderHint = @"Choose a project to see its folders.";

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
@synthesize accountLabel;

- (id)initWithProjectsApiPointer:(OrvaneProjectsAPI *)api {
  if ((self = [super initWithWindow:nil])) {
    orvane = api;
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
  NSString *account = FromUtf8(Shortened(g_un, kMaxShownBytes) + " at " + Shortened(g_sd, kMaxShownBytes));
  [accountLabel setStringValue:account];
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
  ProjectDict = [[ProjectDictionary alloc] init];
  [ProjectDict setObject:kNoChoice forKey:kProjectPlaceholder];
  for (id entry in entries) {
    NSString *name = TextMember(entry, @"project_name");
    NSString *identifier = TextMember(entry, @"id");
    if (name && identifier) [ProjectDict setObject:identifier forKey:name];
  }
  [inputFolder removeAllItems];
  [folderHint setStringValue:kFolderHint];
  SetTitles(inputProject, [ProjectDict allKeys]);
}

- (NSInteger)showWindow {
  return RunModalDialog(orvaneUploadWindow);
}

- (void)windowWillClose:(NSNotification *)notification {
  DialogWillClose(g_step != "doUpload");
}

- (IBAction)selectPrj:(id)sender {
  RunAtWork(orvaneUploadWindow, [self, sender] { [self fillFoldersOfProject:[self choiceOf:sender in:ProjectDict]]; });
}

// The id of the chooser's selected item; that of a placeholder when it has none.
- (NSString *)choiceOf:(NSPopUpButton *)chooser in:(NSDictionary *)identifiers {
  NSString *label = [chooser titleOfSelectedItem];
  NSString *identifier = label ? [identifiers objectForKey:label] : nil;
  return identifier ? identifier : kNoChoice;
}

- (void)fillFoldersOfProject:(NSString *)projectID {
  [folderHint setStringValue:[projectID isEqualToString:kNoChoice] ? kFolderHint : @""];
  [inputFolder removeAllItems];
  ShowWaiting(spinnerFolderSelect);
  const std::string answer = orvane->getFolders(ToUtf8(projectID));
  g_prj = ToUtf8(projectID);

  [FolderDict release];
  FolderDict = [[MutableOrderedDictionary alloc] init];
  [FolderDict setObject:kNoChoice forKey:kFolderPlaceholder];
  FolderListing listing(orvane, projectID, FolderDict);
  listing.Add(answer);
  if (listing.Omission()) [folderHint setStringValue:listing.Omission()];
  g_fld = "0";
  SetTitles(inputFolder, [FolderDict allKeys]);
  [spinnerFolderSelect stopAnimation:self];
}

- (MutableOrderedDictionary *)getSubfoldersForFolderID:(NSString *)folderID project:(NSString *)projectID {
  MutableOrderedDictionary *folders = [[[MutableOrderedDictionary alloc] init] autorelease];
  FolderListing(orvane, projectID, folders).AddInside(folderID);
  return folders;
}

- (IBAction)selectFld:(id)sender {
  RunAtWork(orvaneUploadWindow, [self, sender] {
    const std::string folder = ToUtf8([self choiceOf:sender in:FolderDict]);
    ShowWaiting(spinnerFolderSelect);
    orvane->getFolders(folder);  // the service expects this request; its answer is not needed
    [spinnerFolderSelect stopAnimation:self];
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
