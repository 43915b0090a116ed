#include "Options.h"

#include <getopt.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include "ExitStatus.h"

namespace orvane_host {

namespace {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

const char* const kHelp =
    R"(Usage: orvane-host [OPTION...]

Opens a sequence, loads export plug-ins and offers them under File > Export.

  --plugin PATH         load this bundle instead of those of the media-core folder
  --media FILE          the sequence is this film (default: a test picture with a time code and a tone)
  --size WxH            frame size in pixels (default: the film's, or 1280x720)
  --rate N/D            frame rate (default: the film's, or 25/1)
  --seconds S           duration (default: the film's, or 10)
  --export              export with the first plug-in at once, and end when its windows have closed
  --ca FILE             trust the certificate authority in this PEM file and no other
                        (default: orvane-service/ca/ca.pem in $XDG_DATA_HOME or ~/.local/share, when it is there)
  --connect-port N      connect every transfer to this port of 127.0.0.1
  --fail render|cancel  let the render fail, or cancel it as the user would
  --help                show this help

The exit status is 0 after an export, 2 for wrong options, 3 when the export was cancelled in the plug-in's windows,
4 when the render failed or was cancelled, 5 when the plug-in reported an error, 6 when no plug-in could be loaded and
started, 70 when the plug-in broke the rules of the interface.
)";

// Reads the whole text as a number within the limits.
template <class T>
T Number(std::string_view text, T lowest, T highest, const std::string& option) {
  T value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !(value >= lowest && value <= highest)) {
    throw UsageError(option + " cannot be \"" + std::string(text) + "\"");
  }
  return value;
}

std::pair<std::string_view, std::string_view> Split(std::string_view text, char separator, const std::string& option) {
  const size_t at = text.find(separator);
  if (at == std::string_view::npos) {
    throw UsageError(option + " needs two numbers with '" + separator + "' between them");
  }
  return {text.substr(0, at), text.substr(at + 1)};
}

std::pair<int, int> Size(std::string_view text) {
  const auto [width, height] = Split(text, 'x', "--size");
  return {Number(width, kSmallestSide, kLargestSide, "--size"), Number(height, kSmallestSide, kLargestSide, "--size")};
}

Rational Rate(std::string_view text) {
  const auto [numerator, denominator] = Split(text, '/', "--rate");
  const Rational rate{Number<std::int64_t>(numerator, 1, 1000000, "--rate"),
                      Number<std::int64_t>(denominator, 1, 1000000, "--rate")};
  if (rate.numerator < rate.denominator || rate.numerator > 240 * rate.denominator) {
    throw UsageError("--rate must be between 1 and 240 frames a second");
  }
  return rate;
}

RenderFault Fault(const std::string& text) {
  if (text == "render") return RenderFault::kRender;
  if (text == "cancel") return RenderFault::kCancel;
  throw UsageError("--fail takes render or cancel");
}

// The authority that the service makes for itself, or an empty path.
std::string DefaultAuthority() {
  const char* data = getenv("XDG_DATA_HOME");
  const char* home = getenv("HOME");
  std::string path = data && *data ? data : std::string(home ? home : "") + "/.local/share";
  path += "/orvane-service/ca/ca.pem";
  return access(path.c_str(), R_OK) == 0 ? path : "";
}

std::string ReadableFile(const char* path, const std::string& option) {
  if (access(path, R_OK) != 0) throw UsageError(option + " cannot read " + path);
  return path;
}

enum OptionCode { kPlugin = 1, kMedia, kSize, kRate, kSeconds, kExport, kAuthority, kConnectPort, kFail, kHelpWanted };

const std::array<option, 11> kOptions{{{"plugin", required_argument, nullptr, kPlugin},
                                       {"media", required_argument, nullptr, kMedia},
                                       {"size", required_argument, nullptr, kSize},
                                       {"rate", required_argument, nullptr, kRate},
                                       {"seconds", required_argument, nullptr, kSeconds},
                                       {"export", no_argument, nullptr, kExport},
                                       {"ca", required_argument, nullptr, kAuthority},
                                       {"connect-port", required_argument, nullptr, kConnectPort},
                                       {"fail", required_argument, nullptr, kFail},
                                       {"help", no_argument, nullptr, kHelpWanted},
                                       {nullptr, 0, nullptr, 0}}};

void Apply(int code, Options& options) {
  switch (code) {
    case kPlugin:
      options.plugin = optarg;
      break;
    case kMedia:
      options.sequence.media = ReadableFile(optarg, "--media");
      break;
    case kSize:
      options.sequence.size = Size(optarg);
      break;
    case kRate:
      options.sequence.rate = Rate(optarg);
      break;
    case kSeconds:
      options.sequence.seconds = Number(std::string_view(optarg), 0.01, 86400.0, "--seconds");
      break;
    case kExport:
      options.export_at_once = true;
      break;
    case kAuthority:
      options.authority = ReadableFile(optarg, "--ca");
      break;
    case kConnectPort:
      options.connect_port = Number(std::string_view(optarg), 1, 65535, "--connect-port");
      break;
    case kFail:
      options.fault = Fault(optarg);
      break;
    default:
      throw UsageError("");  // getopt has told the reason
  }
}

}  // namespace

std::optional<Options> ParseOptions(int argc, char** argv, int& status) {
  Options options;
  options.authority = DefaultAuthority();
  try {
    optind = 1;
    for (int code = 0; (code = getopt_long(argc, argv, "", kOptions.data(), nullptr)) != -1;) {
      if (code == kHelpWanted) {
        fputs(kHelp, stdout);
        status = 0;
        return std::nullopt;
      }
      Apply(code, options);
    }
    if (optind < argc) throw UsageError(std::string("there is no use for \"") + argv[optind] + "\"");
    return options;
  } catch (const UsageError& error) {
    if (*error.what()) fprintf(stderr, "orvane-host: %s\n", error.what());
    fputs("orvane-host: see orvane-host --help\n", stderr);
    status = static_cast<int>(ExitStatus::kUsage);
    return std::nullopt;
  }
}

}  // namespace orvane_host
