// The login window when the keychain refuses to save the login.
#import "OrvaneUIController.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

#import "Controls.h"
#include "PluginResources.h"
#include "ScriptedApi.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

namespace {

NSString *const kTitle = @"Orvane: Log In";
int cleanups = 0;

// Points the process to a session bus that is not there. The connection is made at the first use of the keyring.
class MissingBus {
 public:
  MissingBus() {
    if (const char *before = getenv(kVariable)) before_ = before;
    setenv(kVariable, "unix:path=/nonexistent/bus", 1);
  }
  ~MissingBus() {
    if (before_) {
      setenv(kVariable, before_->c_str(), 1);
    } else {
      unsetenv(kVariable);
    }
  }

 private:
  static constexpr const char *kVariable = "DBUS_SESSION_BUS_ADDRESS";
  std::optional<std::string> before_;
};

void LogInToBeRemembered(OrvaneUIController *controller) {
  [[controller inputSubdomain] setStringValue:@"acme"];
  [[controller inputUsername] setStringValue:@"editor"];
  [[controller inputPassword] setStringValue:@"secret"];
  [[controller rememberMeCheckbox] setState:NSControlStateValueOn];
  Press([controller loginBtn]);
}

}  // namespace

TEST(LoginWindow, RefusedKeychainKeepsTheWindowOpen) {
  MissingBus bus;
  ScriptedApi api;
  OrvaneProjectsAPI client;
  UsePluginResources();
  g_step = "start";
  g_sd = "";
  g_pCleanupFunc = [] { ++cleanups; };
  std::string texts;
  @autoreleasepool {
    OrvaneUIController *controller = [[OrvaneUIController alloc] initWithProjectsApiPointer:&client];
    RunWithScript([controller] { [controller showWindow]; },
                  [controller, &texts](Script &actions) {
                    actions.WaitFor("the login window", [] { return IsModal(WindowTitled(kTitle)); });
                    actions.Post([controller] { LogInToBeRemembered(controller); });
                    actions.WaitFor("the alert", [] { return IsModal(AlertPanel()); });
                    actions.OnMain([&texts] {
                      texts = AlertTexts();
                      DismissAlert();
                    });
                    actions.WaitFor("the login window again", [] { return IsModal(WindowTitled(kTitle)); });
                    actions.OnMain([controller] {
                      EXPECT_EQ(g_step, "start");
                      EXPECT_EQ(g_sd, "");
                      EXPECT_EQ(cleanups, 0);
                      [[controller orvaneWindow] performClose:nil];
                    });
                  });
    EXPECT_FALSE([[controller orvaneWindow] isVisible]);
    [controller release];
  }
  EXPECT_EQ(cleanups, 1);
  EXPECT_EQ(texts,
            "A security error occured while attempting to save the \"Remember me\" setting.\n"
            "The system returned this message: \"No keychain is available. You may need to restart your computer.\"\n");
}

// Without the wish to be remembered the keychain is not asked.
TEST(LoginWindow, LogsInWithoutTheKeychain) {
  MissingBus bus;
  ScriptedApi api;
  OrvaneProjectsAPI client;
  UsePluginResources();
  g_step = "start";
  @autoreleasepool {
    OrvaneUIController *controller = [[OrvaneUIController alloc] initWithProjectsApiPointer:&client];
    RunWithScript([controller] { [controller showWindow]; },
                  [controller](Script &actions) {
                    actions.WaitFor("the login window", [] { return IsModal(WindowTitled(kTitle)); });
                    actions.OnMain([controller] {
                      [[controller inputSubdomain] setStringValue:@"acme"];
                      [[controller inputUsername] setStringValue:@"editor"];
                      [[controller inputPassword] setStringValue:@"secret"];
                      Press([controller loginBtn]);
                    });
                  });
    [controller release];
  }
  EXPECT_EQ(g_step, "upload");
}
