// Opening a web address: GNUstep looks for an application of its own and blocks with an alert when it finds none. The
// desktop's xdg-open knows the person's browser.
#import <Cocoa/Cocoa.h>
#include <spawn.h>
#include <sys/wait.h>

#include <string>
#include <thread>

#include "Replacements.h"

extern char **environ;

namespace {

// Starts xdg-open without a shell and leaves a thread to reap it. Returns whether it could be started.
bool StartBrowser(std::string address) {
  std::string program = "xdg-open";
  char *arguments[] = {program.data(), address.data(), nullptr};
  pid_t child = 0;
  if (posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0) return false;
  std::thread([child] { waitpid(child, nullptr, 0); }).detach();
  return true;
}

BOOL OpenInBrowser(id, SEL, NSURL *url) {
  NSString *scheme = [[url scheme] lowercaseString];
  // Only the web: the address comes from the service, and must not start anything else on this machine.
  if (![scheme isEqualToString:@"http"] && ![scheme isEqualToString:@"https"]) return NO;
  return StartBrowser([[url absoluteString] UTF8String]) ? YES : NO;
}

}  // namespace

const Replacement open_url("NSWorkspace", "openURL:", OpenInBrowser);
