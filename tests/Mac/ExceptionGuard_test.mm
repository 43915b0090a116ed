#include "ExceptionGuard.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <vector>

#include "WorkflowState.h"

namespace {

std::vector<std::string> failures;

// The guard with a failure hook that notes what it is told.
class ExceptionGuard : public testing::Test {
 protected:
  void SetUp() override {
    failures.clear();
    g_pFailureFunc = [](const std::string &message) { failures.push_back(message); };
  }
  void TearDown() override { g_pFailureFunc = nullptr; }
};

// Counts how often it is destroyed: unwinding must not skip frames.
struct Counted {
  int &destroyed;
  ~Counted() { ++destroyed; }
};

}  // namespace

TEST_F(ExceptionGuard, TellsTheHookOfEveryKindOfException) {
  bool ran = false;
  EXPECT_TRUE(RunGuarded([&ran] { ran = true; }));
  EXPECT_TRUE(ran);
  EXPECT_TRUE(failures.empty());

  int destroyed = 0;
  EXPECT_FALSE(RunGuarded([&destroyed] {
    Counted counted{destroyed};
    throw std::runtime_error("the JSON is odd");
  }));
  EXPECT_EQ(destroyed, 1);
  EXPECT_FALSE(RunGuarded([] { throw std::bad_alloc(); }));
  EXPECT_FALSE(RunGuarded([] { throw 5; }));
  EXPECT_FALSE(RunGuarded([] { [NSException raise:NSRangeException format:@"index %d", 7]; }));
  EXPECT_FALSE(RunGuarded([] { throw std::runtime_error(""); }));
  const std::vector<std::string> expected = {"the JSON is odd", "std::bad_alloc", "an exception of unknown type",
                                             "index 7", ""};
  EXPECT_EQ(failures, expected);
}

TEST_F(ExceptionGuard, WithoutAHookTheMessageIsLogged) {
  g_pFailureFunc = nullptr;
  testing::internal::CaptureStderr();
  EXPECT_FALSE(RunGuarded([] { throw std::runtime_error("too early"); }));
  EXPECT_NE(testing::internal::GetCapturedStderr().find("too early"), std::string::npos);
}
