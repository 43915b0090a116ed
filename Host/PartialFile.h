// A file that is written under another name until it is whole.
#pragma once

#include <string>

namespace orvane_host {

/// The file beside the destination that is written to. It goes with this object unless it was moved to its place.
class PartialFile {
 public:
  explicit PartialFile(const std::string& destination);
  ~PartialFile();
  PartialFile(const PartialFile&) = delete;
  PartialFile& operator=(const PartialFile&) = delete;

  const std::string& path() const { return path_; }

  /// Throws std::filesystem::filesystem_error.
  void MoveIntoPlace() const;

 private:
  std::string path_;
  std::string destination_;
};

/// Deletes the partial files of hosts that were ended before they could, from the folder for temporary files.
void RemoveLeftOvers();

}  // namespace orvane_host
