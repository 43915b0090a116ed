#include "RunScript.h"

#include <exception>

namespace window_test {

bool RunScript(const std::function<void(Script&)>& script, Script& actions, std::string* failure) {
  try {
    script(actions);
    return true;
  } catch (const ScriptFailure& condition) {
    *failure = condition.what;
  } catch (const std::exception& exception) {
    *failure = exception.what();
  }
  return false;
}

}  // namespace window_test
