#import <Cocoa/Cocoa.h>

#include "OrvaneUI.h"

#include <cstdio>

#import "KcKeychain/KcKeychainQuery.h"
#import "OrvaneUIController.h"
#import "OrvaneUploadWindowController.h"
#import "SavedLogin.h"
#import "UploadCompleteWindowController.h"
#import "UploadStatusWindowController.h"
#include "PlatformString.h"
#include "WorkflowState.h"

namespace {

NSString *const kHighPresetPath =
    @"/Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore/OrvaneVorrel/Orvane.epr";

// The keychain's status for an item that does not exist.
constexpr NSInteger kItemNotFound = -25300;

void RunAlert(NSAlertStyle style, NSString *message, NSString *informative) {
  NSAlert *alert = [[[NSAlert alloc] init] autorelease];
  [alert setAlertStyle:style];
  [alert setMessageText:message];
  [alert setInformativeText:informative];
  [alert runModal];
}

// A dictionary of the saved login's texts, or nil when the secret is not one.
NSDictionary *DecodeLogin(NSString *secret) {
  NSData *text = [secret dataUsingEncoding:NSUTF8StringEncoding];
  if (!text) return nil;
  id login = [NSJSONSerialization JSONObjectWithData:text options:NSJSONReadingMutableLeaves error:NULL];
  return [login isKindOfClass:[NSDictionary class]] ? login : nil;
}

std::string LoginText(NSDictionary *login, NSString *key) {
  id text = [login objectForKey:key];
  return [text isKindOfClass:[NSString class]] ? ToUtf8(text) : std::string();
}

}  // namespace

OrvaneUI::OrvaneUI() : statusController(nil), projectsApi(nullptr) {
  fprintf(stderr, "[orvanevorrel: creating projects api instance]\n");
  projectsApi = new OrvaneProjectsAPI();
}

OrvaneUI::~OrvaneUI() {
  fprintf(stderr, "[orvanevorrel: destroying projects api instance]\n");
  delete projectsApi;
  [statusController release];
}

void OrvaneUI::Launch() {
  if (!PresetIsInstalled()) {
    RunAlert(NSAlertStyleCritical,
             @"The Orvane encoding configuration is missing. Orvane Vorrel will not function without this file.",
             @"The plugin may not have installed correctly. Try uninstalling and re-installing it.\n\n('Orvane.epr' "
             @"not found in '/Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore/OrvaneVorrel')");
    g_pCleanupFunc();  // destroys this object
    return;
  }
  if (!LoginWithSavedCredentials()) RunLoginWindow();
}

bool OrvaneUI::PresetIsInstalled() {
  return [[NSFileManager defaultManager] fileExistsAtPath:kHighPresetPath];
}

// Returns whether the user is logged in now. A saved login that the service refuses is deleted.
bool OrvaneUI::LoginWithSavedCredentials() {
  KcKeychainQuery *query = SavedLoginQuery();
  NSError *error = nil;
  if (![query fetch:&error]) {
    if (error && [error code] != kItemNotFound) {
      NSLog(@"#orvanevorrel error retrieving stored login data - fetch returned err: %@", error);
    }
    return false;
  }
  NSDictionary *login = DecodeLogin([query password]);
  const std::string subdomain = LoginText(login, kSavedSubdomainKey);
  const std::string username = LoginText(login, kSavedUsernameKey);
  const std::string password = LoginText(login, kSavedPasswordKey);
  if (projectsApi->login(subdomain, username, password) == "success") {
    g_sd = subdomain;
    g_un = username;
    g_pw = password;
    g_step = "upload";
    return true;
  }
  if (![query deleteItem:&error]) NSLog(@"#orvanevorrel KEYCHAIN deleteItem returned err: %@", error);
  RunAlert(NSAlertStyleWarning, @"Error",
           @"The saved Orvane username and/or password is invalid. Please log in again.");
  return false;
}

void OrvaneUI::RunLoginWindow() {
  OrvaneUIController *controller = [[[OrvaneUIController alloc] initWithProjectsApiPointer:projectsApi] autorelease];
  [controller showWindow];
}

void OrvaneUI::UploadDlg() {
  OrvaneUploadWindowController *controller =
      [[[OrvaneUploadWindowController alloc] initWithProjectsApiPointer:projectsApi] autorelease];
  [controller showWindow];
}

void OrvaneUI::Upload() {
  statusController = [[UploadStatusWindowController alloc] initWithProjectsApiPointer:projectsApi];
  [statusController showWindow];
}

void OrvaneUI::Complete(std::string link) {
  UploadCompleteWindowController *controller =
      [[[UploadCompleteWindowController alloc] initWithLink:FromUtf8(link)] autorelease];
  [controller showWindow];
}

void OrvaneUI::UpdateProgress(double total, double now) {
  [statusController updateProgressBarWithTotal:total now:now];
}
