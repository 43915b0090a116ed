// Renders a sequence into a file.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "Preset.h"
#include "Sequence.h"

namespace orvane_host {

/// A fault that a test wants.
enum class RenderFault {
  kNone,
  kRender,  ///< FFmpeg is given an encoder that does not exist
  kCancel   ///< as if the person had pressed Cancel at the first progress
};

/// Receives how much is done (0 to 1) every few hundredths of a second on the calling thread; false cancels.
using ProgressFunction = std::function<bool(double done)>;

/// A file that was written.
struct RenderedFile {
  std::string path;
  std::uint64_t bytes = 0;
  std::string sha256;  ///< hexadecimal, lower case
  int width = 0;       ///< pixels
  int height = 0;      ///< pixels
  double seconds = 0;  ///< of the sequence
};

enum class RenderOutcome { kRendered, kFailed, kCancelled };

struct RenderResult {
  RenderOutcome outcome = RenderOutcome::kFailed;
  RenderedFile file;   ///< set when rendered
  std::string reason;  ///< a sentence, set when it failed
};

/// Encodes the sequence with FFmpeg by the preset into the file at destination, an absolute path; blocks until that is
/// done. The file appears under its name only when it is whole: a failed or cancelled render leaves nothing, and
/// leaves a file that was there before as it was.
RenderResult Render(const Sequence& sequence, const Preset& preset, const std::string& destination,
                    const ProgressFunction& progress, RenderFault fault = RenderFault::kNone);

}  // namespace orvane_host
