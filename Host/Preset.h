// The encoding presets that the plug-in hands to the host.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace orvane_host {

/// The settings of a preset that this host can follow: H.264 and AAC in MPEG-4.
struct Preset {
  enum class Profile { kMain = 1, kHigh = 3 };  ///< the numbers are those of the file
  enum class BitrateMode { kConstant = 0, kVariable = 1 };

  std::string name;
  bool follow_size = false;  ///< encode in the sequence's frame size rather than in width and height
  bool follow_rate = false;  ///< encode at the sequence's frame rate rather than at ticks_per_frame
  int width = 0;             ///< pixels, even
  int height = 0;            ///< pixels, even
  std::int64_t ticks_per_frame = 0;
  Profile profile = Profile::kHigh;
  int level = 0;  ///< ten times the level: 41 for 4.1
  BitrateMode bitrate_mode = BitrateMode::kVariable;
  double target_mbit = 0;     ///< Mbit/s
  double maximum_mbit = 0;    ///< Mbit/s
  int keyframe_distance = 0;  ///< frames; 0 leaves it to the encoder
  int audio_kbit = 0;         ///< kbit/s
  int audio_rate = 0;         ///< samples a second
  int audio_channels = 0;
};

/// A preset that is missing, damaged or beyond this host; what() is a sentence that names the file.
class PresetError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads the preset file at path (UTF-8). Throws PresetError.
Preset ReadPreset(const std::string& path);

}  // namespace orvane_host
