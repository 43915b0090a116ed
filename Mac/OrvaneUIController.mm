#import "OrvaneUIController.h"

#import "Alert.h"
#import "ButtonTitle.h"
#include "Deployment.h"
#import "DialogWindow.h"
#include "ExceptionGuard.h"
#import "NSString+CompareToVersion.h"
#include "PlatformString.h"
#import "PluginBundle.h"
#import "SavedLogin.h"
#include "WorkflowState.h"

static NSString *const kInstallerAddress =
    @"https://" ORVANE_WEB_HOST @"/downloads/vorrel-premiere/orvane-vorrel-APP.dmg";

@interface OrvaneUIController ()
- (void)styleWindow;
- (void)describeControls;
- (void)announceNewerVersion;
- (void)closeUpNotice;
- (void)logIn;
- (NSString *)complaintAboutInput;
- (BOOL)rememberLogin:(const SavedLogin &)login;
- (void)showError:(NSString *)text;
@end

@implementation OrvaneUIController

@synthesize orvaneWindow;
@synthesize loginBtn;
@synthesize spinnerLogin;
@synthesize rememberMeCheckbox;
@synthesize versionCheckBox;
@synthesize versionCheckLabel;
@synthesize versionCheckDownloadBtn;
@synthesize inputSubdomain;
@synthesize inputUsername;
@synthesize inputPassword;

- (id)initWithProjectsApiPointer:(OrvaneProjectsAPI *)api {
  if ((self = [super init])) {
    orvane = api;
    topLevelObjects = [LoadInterfaceFile(@"OrvaneUI", self) retain];
    if (!topLevelObjects) NSLog(@"#orvanevorrel OrvaneUI failed to load OrvaneUI xib");
  }
  return self;
}

- (void)dealloc {
  [orvaneWindow setDelegate:nil];
  [orvaneIcon release];
  [inputSubdomain release];
  [inputUsername release];
  [inputPassword release];
  [topLevelObjects release];
  [super dealloc];
}

- (void)awakeFromNib {
  Awake([self] {
    [self styleWindow];
    [self describeControls];
    [self announceNewerVersion];
  });
}

- (void)styleWindow {
  [orvaneWindow setBackgroundColor:[NSColor whiteColor]];
  SetButtonTitleColor(loginBtn, [NSColor whiteColor]);
  orvaneIcon = [PluginImage(@"OrvaneIcon1.png") retain];
}

// For screen readers.
- (void)describeControls {
  [inputSubdomain setAccessibilityLabel:@"Orvane subdomain"];
  [inputUsername setAccessibilityLabel:@"User name"];
  [inputPassword setAccessibilityLabel:@"Password"];
  [rememberMeCheckbox setAccessibilityLabel:@"Remember me"];
  [loginBtn setAccessibilityLabel:@"Log in to Orvane"];
  [spinnerLogin setAccessibilityLabel:@"Logging in"];
  [versionCheckDownloadBtn setAccessibilityLabel:@"Download the new version"];
}

- (void)announceNewerVersion {
  const std::string version = orvane->versionCheck();
  NSString *newest = FromUtf8(version);
  if (![newest isNewerThanVersion:@ORVANE_VERSION]) {
    [self closeUpNotice];
    return;
  }
  NSString *shown = FromUtf8(Shortened(version, kMaxShownBytes));
  [versionCheckLabel setStringValue:[NSString stringWithFormat:@"New version available! (%@)", shown]];
  [versionCheckBox setHidden:NO];
}

// The notice stands below everything else: without it the window ends above.
- (void)closeUpNotice {
  NSRect frame = [orvaneWindow frame];
  const CGFloat height = NSMaxY([versionCheckBox frame]);
  frame.origin.y += height;
  frame.size.height -= height;
  [orvaneWindow setFrame:frame display:NO];
}

- (NSInteger)showWindow {
  return RunModalDialog(orvaneWindow);
}

- (void)windowWillClose:(NSNotification *)notification {
  DialogWillClose(g_step != "upload");
}

- (IBAction)loginBtn:(id)sender {
  RunAtWork(orvaneWindow, [self] { [self logIn]; });
}

- (void)logIn {
  NSString *complaint = [self complaintAboutInput];
  if (complaint) {
    [self showError:complaint];
    return;
  }
  const SavedLogin login = {ToUtf8([inputSubdomain stringValue]), ToUtf8([inputUsername stringValue]),
                            ToUtf8([inputPassword stringValue])};
  [loginBtn highlight:YES];
  ShowWaiting(spinnerLogin);
  const std::string result = orvane->login(login.subdomain, login.username, login.password);
  [loginBtn highlight:NO];
  [spinnerLogin stopAnimation:self];
  if (result == "failed") {
    [self showError:@"Could not connect to the Orvane server. Please ensure that you have entered the correct "
                    @"subdomain for your Orvane instance."];
    return;
  }
  if (result != "success") {
    [self showError:@"Invalid username or password."];
    return;
  }
  if ([rememberMeCheckbox state] == NSControlStateValueOn && ![self rememberLogin:login]) return;
  SetLoggedIn(login.subdomain, login.username, login.password);
  [NSApp stopModal];
}

// What is missing in the three fields, first field first; nil when nothing is.
- (NSString *)complaintAboutInput {
  if ([[inputSubdomain stringValue] isEqualToString:@""]) return @"You must enter your Orvane subdomain.";
  if ([[inputUsername stringValue] isEqualToString:@""]) return @"You must enter a username.";
  if ([[inputPassword stringValue] isEqualToString:@""]) return @"You must enter your password.";
  return nil;
}

// Saves the login in the keychain. A refusal is shown, and keeps the user in the window.
- (BOOL)rememberLogin:(const SavedLogin &)login {
  NSError *error = nil;
  if (SaveLogin(login, &error)) return YES;
  NSString *reason = [error localizedDescription];
  NSLog(@"#orvanevorrel KEYCHAIN ERROR whle attempting save: %@", reason);
  ShowAlertSheet(orvaneWindow, self, @"A security error occured while attempting to save the \"Remember me\" setting.",
                 [NSString stringWithFormat:@"The system returned this message: \"%@\"", reason], orvaneIcon);
  return NO;
}

- (void)showError:(NSString *)text {
  ShowAlertSheet(orvaneWindow, self, @"Error", text, orvaneIcon);
}

- (IBAction)versionCheckDownloadBtn:(id)sender {
  RunGuarded([] {
    NSURL *installer = [NSURL URLWithString:kInstallerAddress];
    if (installer) [[NSWorkspace sharedWorkspace] openURL:installer];
  });
}

- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo {
}

@end
