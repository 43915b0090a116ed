// The login window when the keychain refuses to save the login.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#import "Controls.h"
#import "OrvaneUIController.h"
#include "PluginResources.h"
#include "ScriptedApi.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

namespace {

NSString *const kTitle = @"Orvane: Log In";
int cleanups = 0;

// The login window on a system that has no keyring.
class LoginWindow : public testing::Test {
 protected:
  void SetUp() override {
    UsePluginResources();
    // The connection is made at the first use of the keyring.
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    g_step = "start";
    g_sd = "";
    g_pCleanupFunc = [] { ++cleanups; };
    controller_ = [[OrvaneUIController alloc] initWithProjectsApiPointer:&client_];
  }

  void TearDown() override { [controller_ release]; }

  // Opens the window and logs in; then acts.
  void LogIn(bool remember, const std::function<void(Script &)> &act) {
    OrvaneUIController *controller = controller_;
    RunWithScript([controller] { [controller showWindow]; },
                  [controller, remember, &act](Script &actions) {
                    actions.WaitFor("the login window", [] { return IsModal(WindowTitled(kTitle)); });
                    actions.Post([controller, remember] {
                      [[controller inputSubdomain] setStringValue:@"acme"];
                      [[controller inputUsername] setStringValue:@"editor"];
                      [[controller inputPassword] setStringValue:@"secret"];
                      [[controller rememberMeCheckbox]
                          setState:remember ? NSControlStateValueOn : NSControlStateValueOff];
                      Press([controller loginBtn]);
                    });
                    act(actions);
                  });
  }

  ScriptedApi api_;
  OrvaneProjectsAPI client_;
  OrvaneUIController *controller_ = nil;
};

}  // namespace

TEST_F(LoginWindow, RefusedKeychainKeepsTheWindowOpen) {
  std::string texts;
  LogIn(true, [this, &texts](Script &actions) {
    texts = DismissAlertWhenItComes(actions);
    actions.WaitFor("the login window again", [] { return IsModal(WindowTitled(kTitle)); });
    actions.OnMain([this] {
      EXPECT_EQ(g_step, "start");
      EXPECT_EQ(g_sd, "");
      EXPECT_EQ(cleanups, 0);
      [[controller_ orvaneWindow] performClose:nil];
    });
  });
  EXPECT_FALSE([[controller_ orvaneWindow] isVisible]);
  EXPECT_EQ(cleanups, 1);
  EXPECT_EQ(texts,
            "A security error occured while attempting to save the \"Remember me\" setting.\n"
            "The system returned this message: \"No keychain is available. You may need to restart your computer.\"\n");
}

// Without the wish to be remembered the keychain is not asked.
TEST_F(LoginWindow, LogsInWithoutTheKeychain) {
  LogIn(false, [](Script &) {});
  EXPECT_EQ(g_step, "upload");
}
