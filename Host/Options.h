// The command line.
#pragma once

#include <optional>
#include <string>

#include "Renderer.h"
#include "Sequence.h"

namespace orvane_host {

struct Options {
  std::string plugin;  ///< path of a bundle; empty loads those of the media-core folder
  SequenceWish sequence;
  bool export_at_once = false;
  std::string authority;  ///< PEM file; empty for libcurl's default
  int connect_port = 0;   ///< 0 for none
  RenderFault fault = RenderFault::kNone;
};

/// Reads the command line. Returns nothing when the program has to end with `status`: after --help, printed to the
/// standard output, or after a wrong option, told on the standard error.
std::optional<Options> ParseOptions(int argc, char** argv, int& status);

}  // namespace orvane_host
