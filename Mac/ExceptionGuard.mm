#include "ExceptionGuard.h"

#import <Foundation/Foundation.h>

#include "PlatformString.h"
#include "WorkflowState.h"

// Inside of the frame that catches C++ exceptions: there, some systems catch these as "anything else".
static bool CatchObjectiveCExceptions(const std::function<void()> &body, std::string *message) {
  @try {
    body();
    return true;
  } @catch (NSException *exception) {
    *message = ToUtf8([exception reason]);
  }
  return false;
}

bool CatchExceptions(const std::function<void()> &body, std::string *message) noexcept {
  bool ended = false;
  return CatchCppExceptions([&] { ended = CatchObjectiveCExceptions(body, message); }, message) && ended;
}

bool RunGuarded(const std::function<void()> &body) noexcept {
  std::string message;
  if (CatchExceptions(body, &message)) return true;
  if (g_pFailureFunc) {
    g_pFailureFunc(message);
  } else {
    NSLog(@"#orvanevorrel failed outside of an export: %@", FromUtf8(message));
  }
  return false;
}
