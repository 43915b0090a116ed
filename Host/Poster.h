// The still picture of the sequence for the main window.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "ChildProcess.h"
#include "Sequence.h"

namespace orvane_host {

/// Makes the sequence's first frame beside the other work of the thread; the file is deleted with the object.
class Poster {
 public:
  /// Starts to make a PNG file of at most width x height pixels.
  Poster(const Sequence& sequence, int width, int height);
  ~Poster();
  Poster(const Poster&) = delete;
  Poster& operator=(const Poster&) = delete;

  /// Whether the work has ended; never waits.
  bool Done();

  /// The path of the picture once it is done, or an empty string when it could not be made.
  const std::string& File() const { return file_; }

 private:
  std::filesystem::path folder_;
  std::unique_ptr<ChildProcess> child_;
  std::string file_;
};

}  // namespace orvane_host
