#import "OrvaneUIController.h"

#include <gtest/gtest.h>

#import "Controls.h"
#include "ExceptionGuard.h"
#import "PluginBundle.h"
#include "PluginResources.h"
#import "SavedLogin.h"
#include "ScriptedApi.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

// Cannot be made.
@interface BrokenController : OrvaneUIController
@end

@implementation BrokenController
- (void)awakeFromNib {
  Awake([] { [NSException raise:NSGenericException format:@"no such control"]; });
}
@end

namespace {

int cleanups = 0;

NSString *const kTitle = @"Orvane: Log In";

// The login window on a scripted service, with a clean-up hook that counts.
class OrvaneUIControllerTest : public testing::Test {
 protected:
  void SetUp() override {
    UsePluginResources();
    cleanups = 0;
    g_step = "start";
    g_sd = g_un = g_pw = "";
    g_pCleanupFunc = [] { ++cleanups; };
    ForgetSavedLogin(NULL);
  }

  // Opens the window and runs the script on it. The script gets the controller as soon as the window is modal.
  void Run(const std::function<void(Script &, OrvaneUIController *)> &script) {
    OrvaneProjectsAPI client;
    @autoreleasepool {
      OrvaneUIController *controller = [[OrvaneUIController alloc] initWithProjectsApiPointer:&client];
      RunWithScript([controller] { [controller showWindow]; },
                    [controller, &script](Script &actions) {
                      actions.WaitFor("the login window", [] { return IsModal(WindowTitled(kTitle)); });
                      script(actions, controller);
                    });
      EXPECT_FALSE([[controller orvaneWindow] isVisible]);
      [controller release];
    }
  }

  static void Fill(OrvaneUIController *controller, NSString *subdomain, NSString *username, NSString *password) {
    [[controller inputSubdomain] setStringValue:subdomain];
    [[controller inputUsername] setStringValue:username];
    [[controller inputPassword] setStringValue:password];
  }

  // Presses the log-in button and returns the texts of the alert that comes up, which is dismissed.
  static std::string AlertAfterLogin(Script &actions, OrvaneUIController *controller) {
    actions.Post([controller] { Press([controller loginBtn]); });
    const std::string texts = DismissAlertWhenItComes(actions);
    actions.WaitFor("the login window again", [] { return IsModal(WindowTitled(kTitle)); });
    return texts;
  }

  ScriptedApi api_;
};

}  // namespace

// Nothing is thrown into the system's loader, and nobody goes on with half a window.
TEST_F(OrvaneUIControllerTest, AWindowThatCannotBeMadeThrows) {
  std::string message;
  EXPECT_FALSE(CatchExceptions([] { [[BrokenController alloc] initWithProjectsApiPointer:nullptr]; }, &message));
  EXPECT_EQ(message, "a window could not be made: no such control");
}

TEST_F(OrvaneUIControllerTest, NamesTheFirstMissingField) {
  Run([](Script &actions, OrvaneUIController *controller) {
    EXPECT_EQ(AlertAfterLogin(actions, controller), "Error\nYou must enter your Orvane subdomain.\n");
    actions.OnMain([controller] { Fill(controller, @" ", @"", @""); });
    EXPECT_EQ(AlertAfterLogin(actions, controller), "Error\nYou must enter a username.\n");
    actions.OnMain([controller] { Fill(controller, @" ", @"editor", @""); });
    EXPECT_EQ(AlertAfterLogin(actions, controller), "Error\nYou must enter your password.\n");
    actions.OnMain([controller] { [[controller orvaneWindow] performClose:nil]; });
  });
  EXPECT_TRUE(api_.RequestsFor(ScriptedApi::kStep).empty());
}

TEST_F(OrvaneUIControllerTest, TellsAnUnreachableServiceFromAWrongPassword) {
  Run([this](Script &actions, OrvaneUIController *controller) {
    actions.OnMain([controller] { Fill(controller, @"acme", @"editor", @"wrong"); });
    EXPECT_EQ(AlertAfterLogin(actions, controller), "Error\nInvalid username or password.\n");
    api_.Answer(ScriptedApi::kStep, ScriptedApi::Refusal("Unknown customer."));
    EXPECT_EQ(AlertAfterLogin(actions, controller),
              "Error\nCould not connect to the Orvane server. Please ensure that you have entered the correct "
              "subdomain for your Orvane instance.\n");
    EXPECT_EQ(g_step, "start");
    actions.OnMain([controller] { Press(ButtonTitled([controller orvaneWindow], @"Cancel")); });
  });
  EXPECT_EQ(cleanups, 1);
  EXPECT_EQ(g_sd, "");
}

TEST_F(OrvaneUIControllerTest, LogsInWithoutRemembering) {
  bool looks_pressed = false;
  Run([this, &looks_pressed](Script &actions, OrvaneUIController *controller) {
    // The main thread waits for these two answers.
    api_.Server().Route(ScriptedApi::kStep, [&looks_pressed, controller](const orvane_test::Request &) {
      looks_pressed = [[[controller loginBtn] cell] isHighlighted];
      return orvane_test::TextResponse(
          R"({"root":{"status":"success","apiver":"3","auth_key":"key","payload":{"token":"token"}}})");
    });
    actions.OnMain([controller] {
      Fill(controller, @"acme", @"editor", @"secret");
      Press([controller loginBtn]);
      EXPECT_FALSE([[[controller loginBtn] cell] isHighlighted]);
    });
  });
  EXPECT_TRUE(looks_pressed);
  EXPECT_EQ(g_step, "upload");
  EXPECT_EQ(g_sd + "/" + g_un + "/" + g_pw, "acme/editor/secret");
  EXPECT_EQ(cleanups, 0);
  SavedLogin saved;
  EXPECT_FALSE(ReadSavedLogin(&saved, NULL));
}

TEST_F(OrvaneUIControllerTest, AnnouncesOnlyANewerRelease) {
  Run([](Script &actions, OrvaneUIController *controller) {
    actions.OnMain([controller] {
      EXPECT_TRUE([[controller versionCheckBox] isHidden]);
      EXPECT_EQ(TabOrder([controller orvaneWindow]),
                "Orvane subdomain|User name|Password|Remember me|Cancel|Log in to Orvane");
      [[controller orvaneWindow] performClose:nil];
    });
  });
  api_.Answer(ScriptedApi::kVersion, "1.2");
  Run([](Script &actions, OrvaneUIController *controller) {
    actions.OnMain([controller] {
      EXPECT_FALSE([[controller versionCheckBox] isHidden]);
      EXPECT_EQ(TabOrder([controller orvaneWindow]),
                "Orvane subdomain|User name|Password|Remember me|Cancel|Log in to Orvane|Download the new version");
      EXPECT_STREQ([[[controller versionCheckLabel] stringValue] UTF8String], "New version available! (1.2)");
      [[controller orvaneWindow] performClose:nil];
    });
  });
}
