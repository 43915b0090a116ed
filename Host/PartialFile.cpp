#include "PartialFile.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

namespace orvane_host {

namespace {

namespace fs = std::filesystem;

// Before the number of the process that writes.
constexpr const char* kEnding = ".orvane-host.part";

// The process that writes a file of this name; 0 when it is no partial file.
pid_t Writer(const std::string& name) {
  const size_t at = name.rfind(kEnding);
  return at == std::string::npos ? 0 : static_cast<pid_t>(atol(name.c_str() + at + std::string(kEnding).size()));
}

}  // namespace

PartialFile::PartialFile(const std::string& destination)
    : path_(destination + kEnding + std::to_string(getpid())), destination_(destination) {}

PartialFile::~PartialFile() {
  std::error_code ignored;
  fs::remove(path_, ignored);
}

void PartialFile::MoveIntoPlace() const {
  fs::rename(path_, destination_);
}

void RemoveLeftOvers() {
  std::error_code error;
  fs::directory_iterator entry(fs::temp_directory_path(error), error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const pid_t writer = Writer(entry->path().filename());
    std::error_code ignored;
    if (writer > 0 && kill(writer, 0) != 0 && errno == ESRCH) fs::remove(entry->path(), ignored);
  }
}

}  // namespace orvane_host
