#include "Poster.h"

#include <cstdlib>

#include "RenderCommand.h"

namespace orvane_host {

namespace fs = std::filesystem;

Poster::Poster(const Sequence& sequence, int width, int height) {
  try {
    std::string pattern = (fs::temp_directory_path() / "orvane-host-XXXXXX").string();
    if (!mkdtemp(pattern.data())) return;
    folder_ = pattern;
    child_ = std::make_unique<ChildProcess>(PosterCommand(sequence, width, height, folder_ / "poster.png"));
  } catch (const std::exception&) {
    // The window does without a picture.
  }
}

Poster::~Poster() {
  child_.reset();
  std::error_code ignored;
  if (!folder_.empty()) fs::remove_all(folder_, ignored);
}

bool Poster::Done() {
  std::string output;
  if (child_ && child_->Read(0, output, output)) return false;
  if (child_ && child_->Wait() == 0) file_ = folder_ / "poster.png";
  child_.reset();
  return true;
}

}  // namespace orvane_host
