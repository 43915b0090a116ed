// orvane-host: runs export plug-ins without the editing application.
#import <AppKit/AppKit.h>

#import "Looks.h"
#import "OHostApplication.h"
#import "OHostController.h"

#include <cstdlib>

#include "Console.h"
#include "ExitStatus.h"
#include "LocalTrust.h"
#include "Options.h"

int main(int argc, char **argv, char **environment) {
  int status = 0;
  const auto options = orvane_host::ParseOptions(argc, argv, status);
  if (!options) return status;
  const auto sequence = orvane_host::OpenSequence(*options);
  if (!sequence) return static_cast<int>(orvane_host::ExitStatus::kUsage);
  const char *display = getenv("DISPLAY");
  if (!display || !*display) {
    orvane_host::Complain("there is no display to open windows on; set DISPLAY");
    return static_cast<int>(orvane_host::ExitStatus::kUsage);
  }
  orvane_host::SetTrustedAuthority(options->authority);
  orvane_host::SetConnectPort(options->connect_port);

  @autoreleasepool {
    // AppKit would take a path among the arguments for a document to open.
    [NSProcessInfo initializeWithArguments:argv count:1 environment:environment];
    // Menus and panels show this name.
    [[NSProcessInfo processInfo] setProcessName:@"Orvane Host"];
    RegisterLooks();
    [OHostApplication sharedApplication];
    OHostController *controller = [[OHostController alloc] initWithOptions:*options sequence:*sequence];
    [NSApp setDelegate:(id)controller];
    [NSApp run];
  }
  return status;
}
