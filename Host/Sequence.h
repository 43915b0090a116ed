// The sequence that is open in the host: one film, or a generated test picture.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "Ticks.h"

namespace orvane_host {

struct Sequence {
  std::string media;            ///< path of the film; empty for the test picture
  int width = 1280;             ///< of the frame, in pixels
  int height = 720;             ///< of the frame, in pixels
  Rational rate{25, 1};         ///< frames a second
  Rational pixel_aspect{1, 1};  ///< width of a pixel over its height
  double seconds = 10;          ///< duration
  bool has_sound = true;        ///< whether the film has sound; the test picture has a tone
};

/// What the person asked for; everything that is left out comes from the film or from the defaults of Sequence.
struct SequenceWish {
  std::string media;
  std::optional<std::pair<int, int>> size;  ///< width, height: kSmallestSide to kLargestSide
  std::optional<Rational> rate;             ///< 1 to 240 frames a second
  std::optional<double> seconds;            ///< more than 0
};

/// The frame's sides in pixels. The rectangle's sides are 16-bit numbers, and H.264 ends at the upper one.
constexpr int kSmallestSide = 16;
constexpr int kLargestSide = 16384;

/// A film that cannot be read; what() is a sentence for the person.
class MediaError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Makes the sequence. Reads the film's facts with the program ffprobe; throws MediaError when that fails.
Sequence MakeSequence(const SequenceWish& wish);

}  // namespace orvane_host
