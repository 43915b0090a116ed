#include "Options.h"

#include <CLI/CLI.hpp>

// Not in main.mm: in Objective-C++ functions, a C++ exception is not caught with GCC's runtime.
std::optional<int> ReadOptions(int argc, char** argv) {
  constexpr int kUsageError = 2;
  CLI::App app(
      "Shows the plug-in's controls in all their states in a window, to look at and to press. It ends when the window "
      "is closed.",
      "orvane-gallery");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& end) {
    return app.exit(end) == 0 ? 0 : kUsageError;
  }
  return std::nullopt;
}
