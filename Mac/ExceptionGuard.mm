#include "ExceptionGuard.h"

#import <Foundation/Foundation.h>

#include <cstdio>

#include "PlatformString.h"
#include "WorkflowState.h"

// The two kinds of exceptions need frames of their own: one frame cannot catch both.
bool CatchExceptions(const std::function<void()> &body, std::string *message) noexcept {
  @try {
    return CatchCppExceptions(body, message);
  } @catch (NSException *exception) {
    *message = ToUtf8([exception reason]);
  }
  return false;
}

bool RunGuarded(const std::function<void()> &body) noexcept {
  std::string message;
  if (CatchExceptions(body, &message)) return true;
  if (g_pFailureFunc) {
    g_pFailureFunc(message);
  } else {
    fprintf(stderr, "[orvanevorrel: failed outside of an export: %s]\n", message.c_str());
  }
  return false;
}
