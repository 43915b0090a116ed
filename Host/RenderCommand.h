// How FFmpeg is told to render a sequence.
#pragma once

#include <string>
#include <vector>

#include "Preset.h"
#include "Sequence.h"

namespace orvane_host {

/// The size of the encoded frame in pixels, both sides even.
std::pair<int, int> EncodedSize(const Sequence& sequence, const Preset& preset);

/// The arguments, the program's name first, that encode the sequence by the preset into an MPEG-4 file at destination.
/// FFmpeg then writes its progress to its standard output. The film's picture keeps its aspect and is padded.
std::vector<std::string> RenderCommand(const Sequence& sequence, const Preset& preset, const std::string& destination);

}  // namespace orvane_host
