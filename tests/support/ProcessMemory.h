// What this process has of the memory, as the kernel counts it.
#pragma once

#include <cstdlib>
#include <fstream>
#include <string>

/// A figure of /proc/self/status in KiB, such as VmRSS (in use) or VmHWM (the most that was in use); 0 for no figure.
inline long ProcessMemory(const std::string& name) {
  std::ifstream lines("/proc/self/status");
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(name + ":", 0) == 0) return std::atol(line.c_str() + name.size() + 1);
  }
  return 0;
}

/// From now on VmHWM counts anew.
inline void ResetPeakOfMemory() {
  std::ofstream("/proc/self/clear_refs") << "5";
}
