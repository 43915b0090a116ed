#import "UploadCompleteWindowController.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#import "Controls.h"
#include "PluginResources.h"
#include "TemporaryFolder.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

namespace {

int cleanups = 0;

// The complete window, with an xdg-open of the test's own that notes what it is asked to open.
class UploadCompleteWindowControllerTest : public testing::Test {
 protected:
  void SetUp() override {
    UsePluginResources();
    cleanups = 0;
    g_pCleanupFunc = [] { ++cleanups; };
    const std::string program = folder_ / "xdg-open";
    WriteFile(program, "#!/bin/sh\nprintf '%s\\n' \"$@\" >>'" + opened_ + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    path_ = getenv("PATH");
    setenv("PATH", (folder_.Path().string() + ":" + path_).c_str(), 1);
  }

  void TearDown() override { setenv("PATH", path_.c_str(), 1); }

  static void Run(NSString *link, const std::function<void(UploadCompleteWindowController *)> &act) {
    @autoreleasepool {
      UploadCompleteWindowController *controller = [[UploadCompleteWindowController alloc] initWithLink:link];
      RunWithScript([controller] { [controller showWindow]; },
                    [controller, &act](Script &actions) {
                      actions.WaitFor("the complete window",
                                      [controller] { return IsModal([controller uploadCompleteWindow]); });
                      actions.OnMain([controller, &act] { act(controller); });
                    });
      EXPECT_FALSE([[controller uploadCompleteWindow] isVisible]);
      [controller release];
    }
  }

  TemporaryFolder folder_;
  const std::string opened_ = folder_ / "opened";
  std::string path_;
};

}  // namespace

TEST_F(UploadCompleteWindowControllerTest, OpensTheLinkAndEndsTheExportOnce) {
  Run(@"https://acme.orvane.localhost:48443/review/7?a=1&b=2", [](UploadCompleteWindowController *controller) {
    EXPECT_STREQ([[[controller linkLabel] stringValue] UTF8String],
                 "https://acme.orvane.localhost:48443/review/7?a=1&b=2");
    EXPECT_TRUE([[controller linkLabel] isSelectable]);
    Press([controller openOrvaneBtn]);
    [[controller uploadCompleteWindow] performClose:nil];
  });
  EXPECT_EQ(cleanups, 1);
  EXPECT_TRUE(
      SpinUntil([this] { return ReadFile(opened_) == "https://acme.orvane.localhost:48443/review/7?a=1&b=2\n"; }));
}

// A link comes from the service: it must not start another program than the browser, and may be missing.
TEST_F(UploadCompleteWindowControllerTest, OpensOnlyAddressesOfTheWebAndNothingWhenItIsClosed) {
  Run(@"https://acme.orvane.localhost:48443/review/7",
      [](UploadCompleteWindowController *controller) { [[controller uploadCompleteWindow] performClose:nil]; });
  NSString *const longLink = [@"https://acme.orvane.localhost/" stringByPaddingToLength:10000
                                                                             withString:@"x"
                                                                        startingAtIndex:0];
  for (NSString *link : {@"file:///etc/passwd", @"javascript:alert(1)", @"no address at all", @"https://", @"/review/7",
                         @"", longLink, static_cast<NSString *>(nil)}) {
    Run(link, [link](UploadCompleteWindowController *controller) {
      EXPECT_STREQ([[[controller messageLabel] stringValue] UTF8String],
                   [link length] > 0 ? "Your film is on Orvane, at an address that cannot be opened:"
                                     : "Your film is on Orvane, which gave no address to open it at.");
      EXPECT_TRUE([[[controller linkLabel] stringValue] isEqualToString:link ? link : @""]) << "it can be copied";
      EXPECT_STREQ([[[controller openOrvaneBtn] title] UTF8String], "Close");
      EXPECT_TRUE([[[[controller openOrvaneBtn] attributedTitle] attribute:NSForegroundColorAttributeName
                                                                   atIndex:0
                                                            effectiveRange:NULL] isEqual:[NSColor whiteColor]]);
      Press([controller openOrvaneBtn]);
    });
  }
  EXPECT_EQ(cleanups, 9);
  EXPECT_FALSE(std::filesystem::exists(opened_));
}
