#include "OrvaneUI.h"

#import <Cocoa/Cocoa.h>
#import <Security/Security.h>

#include <cstdio>

#import "Alert.h"
#include "Deployment.h"
#import "OrvaneUIController.h"
#import "OrvaneUploadWindowController.h"
#include "PlatformString.h"
#import "SavedLogin.h"
#import "UploadCompleteWindowController.h"
#import "UploadStatusWindowController.h"
#include "WorkflowState.h"

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
             @"The plugin may not have installed correctly. Try uninstalling and re-installing it.\n\n"
             @"('" ORVANE_HIGH_PRESET @"' not found in '" ORVANE_PLUGIN_FOLDER @"')",
             nil);
    g_pCleanupFunc();  // destroys this object
    return;
  }
  if (!LoginWithSavedCredentials()) RunLoginWindow();
}

bool OrvaneUI::PresetIsInstalled() {
  return [[NSFileManager defaultManager] fileExistsAtPath:@ORVANE_PLUGIN_FOLDER @"/" ORVANE_HIGH_PRESET];
}

// Returns whether the user is logged in now. A saved login that the service refuses is deleted.
bool OrvaneUI::LoginWithSavedCredentials() {
  SavedLogin login;
  NSError *error = nil;
  if (!ReadSavedLogin(&login, &error)) {
    if ([error code] != errSecItemNotFound) {
      NSLog(@"#orvanevorrel error retrieving stored login data - fetch returned err: %@", error);
    }
    return false;
  }
  if (projectsApi->login(login.subdomain, login.username, login.password) == "success") {
    SetLoggedIn(login.subdomain, login.username, login.password);
    return true;
  }
  if (!ForgetSavedLogin(&error)) NSLog(@"#orvanevorrel KEYCHAIN deleteItem returned err: %@", error);
  RunAlert(NSAlertStyleWarning, @"Error", @"The saved Orvane username and/or password is invalid. Please log in again.",
           nil);
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
