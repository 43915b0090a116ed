#include "DataFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace orvane_service {

namespace fs = std::filesystem;

DataFolder::DataFolder(const fs::path& path) : path_(fs::absolute(path)) {
  std::error_code error;
  const bool created = fs::create_directories(path_, error);
  if (error) throw std::runtime_error("cannot make the data folder " + path_.string() + ": " + error.message());
  if (created) fs::permissions(path_, fs::perms::owner_all);
  lock_ = open((path_ / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (lock_ < 0) throw std::runtime_error("cannot use the data folder " + path_.string() + ": " + strerror(errno));
  if (flock(lock_, LOCK_EX | LOCK_NB) != 0) {
    close(lock_);
    throw std::runtime_error("another service is using the data folder " + path_.string());
  }
}

DataFolder::~DataFolder() {
  close(lock_);
}

}  // namespace orvane_service
