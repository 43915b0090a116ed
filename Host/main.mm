// orvane-host: runs export plug-ins without the editing application.
#import <AppKit/AppKit.h>

#include <string>

#include "Console.h"
#include "DisplayIsReachable.h"
#include "ExitStatus.h"
#import "LinuxTheme.h"
#include "LocalTrust.h"
#import "OHostApplication.h"
#import "OHostController.h"
#include "Options.h"
#include "PartialFile.h"

int main(int argc, char **argv, char **environment) {
  int status = 0;
  const auto options = orvane_host::ParseOptions(argc, argv, status);
  if (!options) return status;
  const auto sequence = orvane_host::OpenSequence(*options);
  if (!sequence) return static_cast<int>(orvane_host::ExitStatus::kUsage);
  std::string reason;
  if (!DisplayIsReachable(&reason)) {
    orvane_host::Complain(reason);
    return static_cast<int>(orvane_host::ExitStatus::kUsage);
  }
  orvane_host::RemoveLeftOvers();
  orvane_host::SetTrustedAuthority(options->authority);
  orvane_host::SetConnectPort(options->connect_port);

  @autoreleasepool {
    // AppKit would take a path among the arguments for a document to open.
    [NSProcessInfo initializeWithArguments:argv count:1 environment:environment];
    // Menus and panels show this name.
    [[NSProcessInfo processInfo] setProcessName:@"Orvane Host"];
    UseLinuxTheme();
    [OHostApplication sharedApplication];
    OHostController *controller = [[OHostController alloc] initWithOptions:*options sequence:*sequence];
    [NSApp setDelegate:(id)controller];
    [NSApp run];
  }
  return status;
}
