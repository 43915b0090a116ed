// Gives the reader of encoding presets files of libFuzzer's making. A file is a preset with usable numbers or a
// PresetError.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "Preset.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const int file = memfd_create("preset", 0);
  if (file < 0 || write(file, data, size) != static_cast<ssize_t>(size)) std::abort();
  try {
    const orvane_host::Preset preset = orvane_host::ReadPreset("/proc/self/fd/" + std::to_string(file));
    if (!preset.follow_size && (preset.width <= 0 || preset.height <= 0)) std::abort();
    if (!(preset.target_mbit > 0) || preset.audio_rate <= 0 || preset.audio_channels <= 0) std::abort();
  } catch (const orvane_host::PresetError&) {
  }
  close(file);
  return 0;
}
