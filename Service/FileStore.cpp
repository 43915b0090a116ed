#include "FileStore.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "Secrets.h"

namespace orvane_service {
namespace {

namespace fs = std::filesystem;

// Written data is sent to the disk in steps of this size, so that Finish() has little left to wait for.
constexpr uint64_t kSyncStep = 64 << 20;

[[noreturn]] void Fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

IncomingFile::IncomingFile(fs::path path) : path_(std::move(path)), digest_(EVP_MD_CTX_new(), EVP_MD_CTX_free) {
  if (!digest_ || EVP_DigestInit_ex(digest_.get(), EVP_sha256(), nullptr) != 1) {
    throw std::runtime_error("SHA-256 is not available");
  }
  descriptor_ = open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (descriptor_ < 0) Fail("cannot create the file");
}

IncomingFile::~IncomingFile() {
  if (descriptor_ >= 0) close(descriptor_);
  if (!path_.empty()) unlink(path_.c_str());
}

void IncomingFile::Write(const char* data, size_t size) {
  EVP_DigestUpdate(digest_.get(), data, size);
  for (size_t done = 0; done < size;) {
    const ssize_t count = write(descriptor_, data + done, size - done);
    if (count < 0 && errno != EINTR) Fail("cannot write the file");
    if (count > 0) done += static_cast<size_t>(count);
  }
  size_ += size;
  if (size_ - synced_ < kSyncStep) return;
  sync_file_range(descriptor_, static_cast<off64_t>(synced_), static_cast<off64_t>(size_ - synced_),
                  SYNC_FILE_RANGE_WRITE);
  synced_ = size_;
}

void IncomingFile::Finish() {
  if (fdatasync(descriptor_) != 0) Fail("cannot write the file");
  char digest[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  EVP_DigestFinal_ex(digest_.get(), reinterpret_cast<unsigned char*>(digest), &length);
  sha256_ = Hex({digest, length});
  const int descriptor = descriptor_;
  descriptor_ = -1;
  if (close(descriptor) != 0) Fail("cannot write the file");
}

FileStore::FileStore(const fs::path& folder, std::function<uint64_t()> free_bytes)
    : incoming_(folder / "incoming"), files_(folder / "files"), free_bytes_(std::move(free_bytes)) {
  fs::remove_all(incoming_);
  fs::create_directories(incoming_);
  fs::create_directories(files_);
}

std::unique_ptr<IncomingFile> FileStore::Create() const {
  return std::unique_ptr<IncomingFile>(new IncomingFile(incoming_ / RandomHex(kIdentifierBytes)));
}

void FileStore::Keep(IncomingFile& file, const std::string& id) const {
  fs::rename(file.path_, PathOf(id));
  file.path_ = PathOf(id);
  // The new name is lost in a power cut unless the folder is on the disk too.
  const int folder = open(files_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) Fail("cannot open the folder");
  const int result = fsync(folder);
  close(folder);
  if (result != 0) Fail("cannot write the folder");
}

uint64_t FileStore::FreeBytes() const {
  return free_bytes_ ? free_bytes_() : fs::space(incoming_).available;
}

}  // namespace orvane_service
