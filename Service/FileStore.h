// Uploaded files on the disk. A file grows in the folder "incoming" and is moved to "files" when it is complete. Its
// name there is its random id: nothing that a client sends ever becomes part of a path.
#pragma once

#include <openssl/evp.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace orvane_service {

/// A file that is arriving. Used by one thread at a time. Deleted with this object, unless it is released.
class IncomingFile {
 public:
  ~IncomingFile();
  IncomingFile(const IncomingFile&) = delete;
  IncomingFile& operator=(const IncomingFile&) = delete;

  /// Appends bytes. Throws std::system_error, for instance when the disk is full.
  void Write(const char* data, size_t size);

  /// Waits until everything is on the disk. Throws std::system_error.
  void Finish();

  /// Lets the file stay where it is.
  void Release() { path_.clear(); }

  /// Bytes written.
  uint64_t Size() const { return size_; }

  /// SHA-256 of the whole file in hexadecimal. Valid after Finish().
  const std::string& Sha256() const { return sha256_; }

 private:
  friend class FileStore;
  explicit IncomingFile(std::filesystem::path path);

  std::filesystem::path path_;
  int descriptor_ = -1;
  std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> digest_;
  uint64_t size_ = 0;
  uint64_t synced_ = 0;
  std::string sha256_;
};

/// May be used by any thread.
class FileStore {
 public:
  /// Makes the folders if needed and removes what an earlier run left in "incoming". Throws
  /// std::filesystem::filesystem_error. The function tells how much is free on the disk, in bytes; without one, the
  /// system is asked.
  explicit FileStore(const std::filesystem::path& folder, std::function<uint64_t()> free_bytes = nullptr);

  /// Begins a new file. Throws std::system_error.
  std::unique_ptr<IncomingFile> Create() const;

  /// Moves a finished file in place under the id (see RandomHex). Throws std::system_error.
  void Keep(IncomingFile& file, const std::string& id) const;

  /// Where the file with the id is.
  std::filesystem::path PathOf(const std::string& id) const { return files_ / id; }

  /// Free space on the disk, in bytes.
  uint64_t FreeBytes() const;

 private:
  std::filesystem::path incoming_;
  std::filesystem::path files_;
  std::function<uint64_t()> free_bytes_;
};

}  // namespace orvane_service
