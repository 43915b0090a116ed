// orvane-gallery as the program that it is. What its window shows is compared in WindowPictures_test.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>

namespace {

// Runs the shell's commands, in which "$gallery" is the program. Returns their exit status.
int RunShell(const std::string& commands) {
  const int status = system(("gallery='" ORVANE_GALLERY_PROGRAM "'; " + commands).c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

TEST(Gallery, EndsWellWhenItsWindowIsClosed) {
  EXPECT_EQ(RunShell(R"("$gallery" & pid=$!
                   until wmctrl -c "Orvane Gallery" 2>/dev/null || ! kill -0 $pid; do sleep 0.1; done
                   wait $pid)"),
            0);
}

TEST(Gallery, EndsWhereItCannotOpen) {
  EXPECT_EQ(RunShell("\"$gallery\" --help | grep -q controls"), 0);
  EXPECT_EQ(RunShell("\"$gallery\" something"), 2);
  EXPECT_EQ(RunShell("unset DISPLAY; \"$gallery\""), 1);
  EXPECT_EQ(RunShell("DISPLAY=:9999 \"$gallery\" 2>&1 | grep -q 'display \":9999\" cannot be opened'"), 0);
  EXPECT_EQ(RunShell("DISPLAY=:9999 \"$gallery\""), 1);
}
