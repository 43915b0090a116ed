#include "Options.h"

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "ExitStatus.h"

namespace orvane_host {

namespace {

const char* const kExitStatuses =
    "The exit status is 0 after an export, 2 for wrong options, 3 when the export was cancelled in the plug-in's\n"
    "windows, 4 when the render failed or was cancelled, 5 when the plug-in reported an error, 6 when no plug-in\n"
    "could be loaded and started, 7 when a window of the plug-in still stood at the end, as that of an upload that\n"
    "failed does, 70 when the plug-in broke the rules of the interface.";

// Checks without a text of their own in the help.
const CLI::Validator kFile = CLI::Validator(CLI::ExistingFile).description("");

// The authority that the service makes for itself, or an empty path.
std::string DefaultAuthority() {
  const char* data = getenv("XDG_DATA_HOME");
  const char* home = getenv("HOME");
  std::string path = data && *data ? data : std::string(home ? home : "") + "/.local/share";
  path += "/orvane-service/ca/ca.pem";
  return access(path.c_str(), R_OK) == 0 ? path : "";
}

void AddOptions(CLI::App& app, Options& options) {
  app.add_option("--plugin", options.plugin, "load this bundle instead of those of the media-core folder")
      ->type_name("PATH");
  app.add_option("--media", options.sequence.media,
                 "the sequence is this film (default: a test picture with a time code and a tone)")
      ->type_name("FILE")
      ->check(kFile);
  app.add_option("--size", options.sequence.size, "frame size in pixels (default: the film's, or 1280x720)")
      ->type_name("WxH")
      ->delimiter('x')
      ->check(CLI::Range(kSmallestSide, kLargestSide).description(""));
  app.add_option_function<std::pair<int, int>>(
         "--rate",
         [&options](const std::pair<int, int>& rate) {
           options.sequence.rate = Rational{rate.first, rate.second};
         },
         "frame rate (default: the film's, or 25/1)")
      ->type_name("N/D")
      ->delimiter('/')
      ->check(CLI::Range(1, 1000000).description(""));
  app.add_option("--seconds", options.sequence.seconds, "duration (default: the film's, or 10)")
      ->type_name("S")
      ->check(CLI::Range(0.01, 86400.0).description(""));
  app.add_flag("--export", options.export_at_once,
               "export with the first plug-in at once, and end when its windows have closed");
  app.add_option("--ca", options.authority,
                 "trust the certificate authority in this PEM file and no other (default: that of the local service)")
      ->type_name("FILE")
      ->check(kFile);
  app.add_option("--connect-port", options.connect_port, "connect every transfer to this port of 127.0.0.1")
      ->type_name("N")
      ->check(CLI::Range(1, 65535).description(""));
  const std::map<std::string, RenderFault> faults = {{"render", RenderFault::kRender},
                                                     {"cancel", RenderFault::kCancel}};
  app.add_option("--fail", options.fault, "let the render fail, or cancel it as the user would")
      ->type_name("render|cancel")
      ->transform(CLI::CheckedTransformer(faults).description(""));
}

}  // namespace

std::optional<Options> ParseOptions(int argc, char** argv, int& status) {
  Options options;
  options.authority = DefaultAuthority();
  CLI::App app("Opens a sequence, loads export plug-ins and offers them under File > Export.", "orvane-host");
  app.footer(kExitStatuses);
  AddOptions(app, options);
  try {
    app.parse(argc, argv);
    return options;
  } catch (const CLI::ParseError& error) {
    status = app.exit(error) == 0 ? 0 : static_cast<int>(ExitStatus::kUsage);
    return std::nullopt;
  }
}

}  // namespace orvane_host
