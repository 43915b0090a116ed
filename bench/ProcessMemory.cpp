#include "ProcessMemory.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace bench {

namespace {

constexpr long long kKibibyte = 1024;

long long StatusField(const std::string& name) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.compare(0, name.size() + 1, name + ":") == 0) return std::stoll(line.substr(name.size() + 1)) * kKibibyte;
  }
  throw std::runtime_error("the kernel does not tell " + name);
}

}  // namespace

long long ResidentBytes() {
  return StatusField("VmRSS");
}

void ResetPeak() {
  std::ofstream references("/proc/self/clear_refs");
  references << "5";
  if (!references.flush()) throw std::runtime_error("the peak of memory cannot be reset");
}

long long PeakResidentBytes() {
  return StatusField("VmHWM");
}

}  // namespace bench
