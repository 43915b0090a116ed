// The folder that holds everything the service keeps, used by one service at a time.
#pragma once

#include <filesystem>

namespace orvane_service {

class DataFolder {
 public:
  /// Makes the folder (0700) if needed and locks it. Throws std::runtime_error if it cannot be used, or if another
  /// service is using it.
  explicit DataFolder(const std::filesystem::path& path);

  /// Unlocks it.
  ~DataFolder();
  DataFolder(const DataFolder&) = delete;
  DataFolder& operator=(const DataFolder&) = delete;

  /// Absolute.
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
  int lock_ = -1;
};

}  // namespace orvane_service
