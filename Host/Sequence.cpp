#include "Sequence.h"

#include <nlohmann/json.hpp>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <filesystem>

#include "ChildProcess.h"

namespace orvane_host {

namespace {

using nlohmann::json;

// Reads "30000/1001" and "1:1". Nothing for anything else and for what ffprobe writes when it does not know ("0/0").
std::optional<Rational> ParseRatio(const std::string& text, char separator) {
  Rational ratio;
  long long numerator = 0;
  long long denominator = 0;
  char between = 0;
  if (sscanf(text.c_str(), "%lld%c%lld", &numerator, &between, &denominator) != 3 || between != separator ||
      numerator <= 0 || denominator <= 0 || numerator > 1000000 || denominator > 1000000) {
    return std::nullopt;
  }
  ratio.numerator = numerator;
  ratio.denominator = denominator;
  return ratio;
}

bool IsUsualRate(Rational rate) {
  const double frames = static_cast<double>(rate.numerator) / static_cast<double>(rate.denominator);
  return frames >= 1 && frames <= 240;
}

json Probe(const std::string& path) {
  const ChildResult result = RunChild({"ffprobe", "-v", "error", "-show_streams", "-show_format", "-of", "json",
                                       "file:" + std::filesystem::absolute(path).string()});
  if (result.status != 0) throw MediaError("cannot read " + path + ": " + result.errors);
  return json::parse(result.output, nullptr, false);
}

const json* FirstStream(const json& facts, const char* kind) {
  const auto streams = facts.find("streams");
  if (streams == facts.end()) return nullptr;
  for (const json& stream : *streams) {
    // A cover picture is not a film.
    const bool is_cover = stream.value("/disposition/attached_pic"_json_pointer, 0) != 0;
    if (stream.value("codec_type", "") == kind && !is_cover) return &stream;
  }
  return nullptr;
}

bool IsTurned(const json& stream) {
  for (const json& data : stream.value("side_data_list", json::array())) {
    if (std::abs(data.value("rotation", 0)) % 180 == 90) return true;
  }
  return false;
}

void ReadFilm(const std::string& path, Sequence& sequence) {
  if (access(path.c_str(), R_OK) != 0) throw MediaError("cannot read " + path + ": no such file, or not readable");
  const json facts = Probe(path);
  const json* video = facts.is_object() ? FirstStream(facts, "video") : nullptr;
  if (!video) throw MediaError(path + " has no picture");
  sequence.media = path;
  sequence.width = video->value("width", 0);
  sequence.height = video->value("height", 0);
  sequence.pixel_aspect = ParseRatio(video->value("sample_aspect_ratio", ""), ':').value_or(Rational{1, 1});
  if (IsTurned(*video)) {
    std::swap(sequence.width, sequence.height);
    std::swap(sequence.pixel_aspect.numerator, sequence.pixel_aspect.denominator);
  }
  for (const char* key : {"r_frame_rate", "avg_frame_rate"}) {
    const std::optional<Rational> rate = ParseRatio(video->value(key, ""), '/');
    if (rate && IsUsualRate(*rate)) {
      sequence.rate = *rate;
      break;
    }
  }
  const std::string duration = facts.value("/format/duration"_json_pointer, std::string());
  if (!duration.empty()) sequence.seconds = std::stod(duration);
  sequence.has_sound = FirstStream(facts, "audio") != nullptr;
}

}  // namespace

Sequence MakeSequence(const SequenceWish& wish) {
  Sequence sequence;
  try {
    if (!wish.media.empty()) ReadFilm(wish.media, sequence);
  } catch (const MediaError&) {
    throw;
  } catch (const std::exception& error) {
    throw MediaError("cannot read " + wish.media + " with ffprobe: " + error.what());
  }
  if (wish.size) {
    sequence.width = wish.size->first;
    sequence.height = wish.size->second;
    sequence.pixel_aspect = {1, 1};
  }
  if (wish.rate) sequence.rate = *wish.rate;
  if (wish.seconds) sequence.seconds = *wish.seconds;
  const auto fits = [](int side) { return side >= kSmallestSide && side <= kLargestSide; };
  if (!fits(sequence.width) || !fits(sequence.height)) {
    throw MediaError("the frame size " + std::to_string(sequence.width) + "x" + std::to_string(sequence.height) +
                     " is not supported");
  }
  if (!IsUsualRate(sequence.rate)) throw MediaError("a rate is 1/1 to 240/1 frames a second");
  if (!(sequence.seconds > 0)) throw MediaError("the duration is not known; give it with --seconds");
  return sequence;
}

}  // namespace orvane_host
