#include "Console.h"

#include <cstdio>

namespace orvane_host {

namespace {

std::string OnOneLine(const std::string& text) {
  std::string line;
  for (const char character : text) {
    if (character == '\n') {
      line += "\\n";
    } else {
      line += character;
    }
  }
  return line;
}

// Loads and starts one plug-in; complains and returns nothing when that fails.
std::optional<size_t> LoadOne(HostSession& session, const std::string& path) {
  try {
    const size_t plugin = session.Load(path);
    session.Startup();
    Say("loaded \"" + session.DisplayName(plugin) + "\" from " + path);
    return plugin;
  } catch (const PluginError& error) {
    Complain(error.what());
    return std::nullopt;
  }
}

}  // namespace

void Say(const std::string& text) {
  printf("orvane-host: %s\n", OnOneLine(text).c_str());
  fflush(stdout);
}

void Complain(const std::string& text) {
  fprintf(stderr, "orvane-host: %s\n", OnOneLine(text).c_str());
}

std::string Describe(const RenderedFile& file) {
  char seconds[32];
  snprintf(seconds, sizeof seconds, "%g", file.seconds);
  return "rendered " + file.path + " (" + std::to_string(file.bytes) + " bytes, sha256 " + file.sha256 + ", " +
         std::to_string(file.width) + "x" + std::to_string(file.height) + ", " + seconds + " s)";
}

std::string Describe(const ErrorEvent& event) {
  return "error event " + std::to_string(event.type) + " \"" + event.title + "\" \"" + event.text + "\"";
}

std::optional<Sequence> OpenSequence(const Options& options) {
  try {
    return MakeSequence(options.sequence);
  } catch (const MediaError& error) {
    Complain(error.what());
    return std::nullopt;
  }
}

std::vector<size_t> LoadPlugins(HostSession& session, const Options& options) {
  std::vector<std::string> paths{options.plugin};
  if (options.plugin.empty()) paths = FindPluginBundles(kMediaCoreFolder);
  if (paths.empty()) Complain(std::string("there are no plug-ins in ") + kMediaCoreFolder);
  std::vector<size_t> started;
  for (const std::string& path : paths) {
    if (const auto plugin = LoadOne(session, path)) started.push_back(*plugin);
  }
  return started;
}

}  // namespace orvane_host
