#include "RenderCommand.h"

#include <filesystem>

#include "ChildProcess.h"

namespace orvane_host {

namespace {

using Arguments = std::vector<std::string>;

void Append(Arguments& arguments, const Arguments& more) {
  arguments.insert(arguments.end(), more.begin(), more.end());
}

std::string Ratio(Rational ratio) {
  return std::to_string(ratio.numerator) + "/" + std::to_string(ratio.denominator);
}

// A running time code over the lower part of the picture. Without a font FFmpeg would refuse to draw; the test
// picture's own counter then has to do.
std::string TimeCodeFilter(const Sequence& sequence) {
  const ChildResult font = RunChild({"fc-match", "-f", "%{file}", "Liberation Sans"});
  if (font.status != 0 || font.output.empty()) return "";
  const std::string size = std::to_string(std::max(12, sequence.height / 10));
  return ",drawtext=fontfile='" + font.output + "':timecode='00\\:00\\:00\\:00':rate=" + Ratio(sequence.rate) +
         ":fontsize=" + size + ":fontcolor=white:box=1:boxcolor=black@0.6:boxborderw=8:x=(w-text_w)/2:y=h-2*text_h";
}

Arguments PictureInput(const Sequence& sequence) {
  if (!sequence.media.empty()) return {"-i", "file:" + std::filesystem::absolute(sequence.media).string()};
  return {"-f", "lavfi", "-i",
          "testsrc2=size=" + std::to_string(sequence.width) + "x" + std::to_string(sequence.height) +
              ":rate=" + Ratio(sequence.rate) + TimeCodeFilter(sequence)};
}

// The tone of the test picture, or silence under a film without sound.
Arguments SoundInput(const Sequence& sequence) {
  if (sequence.media.empty()) return {"-f", "lavfi", "-i", "sine=frequency=440:beep_factor=4:sample_rate=48000"};
  if (!sequence.has_sound) return {"-f", "lavfi", "-i", "anullsrc=channel_layout=stereo:sample_rate=48000"};
  return {};
}

// Scales the picture into a frame of square pixels and fills what is left with black.
std::string Fit(int width, int height) {
  const std::string size = std::to_string(width) + ":" + std::to_string(height);
  return "scale=" + size + ":force_original_aspect_ratio=decrease:force_divisible_by=2,pad=" + size +
         ":(ow-iw)/2:(oh-ih)/2,setsar=1";
}

std::string PictureFilters(const Sequence& sequence, const Preset& preset) {
  const auto [width, height] = EncodedSize(sequence, preset);
  // Films with other than square pixels are stretched to square ones first.
  std::string filters = "scale=trunc(iw*sar/2)*2:trunc(ih/2)*2,setsar=1,";
  // A film in a sequence of another shape gets the sequence's bars before the preset's.
  filters += Fit(sequence.width / 2 * 2, sequence.height / 2 * 2) + "," + Fit(width, height);
  const Rational preset_rate{kTicksPerSecond, preset.ticks_per_frame};
  return filters + ",fps=" + Ratio(preset.follow_rate ? sequence.rate : preset_rate) + ",format=yuv420p";
}

Arguments PictureEncoder(const Preset& preset) {
  const auto bits = [](double mbit) { return std::to_string(static_cast<long>(mbit * 1e6)); };
  const bool constant = preset.bitrate_mode == Preset::BitrateMode::kConstant;
  const std::string maximum = bits(constant ? preset.target_mbit : preset.maximum_mbit);
  Arguments arguments{"-c:v",       "libx264",
                      "-preset",    "veryfast",
                      "-profile:v", preset.profile == Preset::Profile::kHigh ? "high" : "main",
                      "-level:v",   std::to_string(preset.level / 10) + "." + std::to_string(preset.level % 10),
                      "-b:v",       bits(preset.target_mbit),
                      "-maxrate",   maximum,
                      "-bufsize",   maximum};
  if (constant) Append(arguments, {"-minrate", maximum, "-x264-params", "nal-hrd=cbr"});
  if (preset.keyframe_distance > 0) Append(arguments, {"-g", std::to_string(preset.keyframe_distance)});
  return arguments;
}

Arguments SoundEncoder(const Preset& preset) {
  return {"-c:a", "aac",
          "-b:a", std::to_string(preset.audio_kbit) + "k",
          "-ar",  std::to_string(preset.audio_rate),
          "-ac",  std::to_string(preset.audio_channels)};
}

}  // namespace

std::pair<int, int> EncodedSize(const Sequence& sequence, const Preset& preset) {
  if (!preset.follow_size) return {preset.width, preset.height};
  return {sequence.width / 2 * 2, sequence.height / 2 * 2};
}

Arguments RenderCommand(const Sequence& sequence, const Preset& preset, const std::string& destination) {
  Arguments arguments{"ffmpeg", "-nostdin", "-loglevel", "error", "-y", "-progress", "pipe:1", "-stats_period", "0.1"};
  Append(arguments, PictureInput(sequence));
  const Arguments sound = SoundInput(sequence);
  Append(arguments, sound);
  // V: the first picture that is not a cover.
  Append(arguments, {"-map", "0:V:0", "-map", sound.empty() ? "0:a:0" : "1:a:0"});
  Append(arguments, {"-t", std::to_string(sequence.seconds), "-vf", PictureFilters(sequence, preset)});
  Append(arguments, PictureEncoder(preset));
  Append(arguments, SoundEncoder(preset));
  Append(arguments, {"-movflags", "+faststart", "-f", "mp4", "file:" + destination});
  return arguments;
}

}  // namespace orvane_host
