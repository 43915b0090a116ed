// Uploaded files on the disk. A file grows in the folder "incoming" and is moved to "files" when it is complete. Its
// name there is its random id: nothing that a client sends ever becomes part of a path.
#pragma once

#include <openssl/evp.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace orvane_service {

/// A file that is arriving. Used by one thread. Deleted with this object unless FileStore::Keep() has moved it.
class IncomingFile {
 public:
  ~IncomingFile();
  IncomingFile(const IncomingFile&) = delete;
  IncomingFile& operator=(const IncomingFile&) = delete;

  /// Appends bytes. Throws std::system_error, for instance when the disk is full.
  void Write(const char* data, size_t size);

  /// Writes out what is buffered and waits until everything is on the disk. Throws std::system_error.
  void Finish();

  /// Bytes written.
  uint64_t Size() const { return size_; }

  /// SHA-256 of the whole file in hexadecimal. Valid after Finish().
  const std::string& Sha256() const { return sha256_; }

 private:
  friend class FileStore;
  explicit IncomingFile(std::filesystem::path path);
  void Flush();

  struct DigestDeleter {
    void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
  };

  std::filesystem::path path_;
  int descriptor_ = -1;
  std::unique_ptr<EVP_MD_CTX, DigestDeleter> digest_;
  std::vector<char> buffer_;
  size_t buffered_ = 0;
  uint64_t size_ = 0;
  uint64_t synced_ = 0;
  std::string sha256_;
};

/// May be used by any thread.
class FileStore {
 public:
  /// Makes the folders if needed and removes what an earlier run left in "incoming". Throws
  /// std::filesystem::filesystem_error.
  explicit FileStore(const std::filesystem::path& folder);

  /// Begins a new file. Throws std::system_error.
  std::unique_ptr<IncomingFile> Create() const;

  /// Moves a finished file in place under the id (see RandomHex). Throws std::filesystem::filesystem_error.
  void Keep(IncomingFile& file, const std::string& id) const;

  /// Undoes Keep().
  void Remove(const std::string& id) const;

  /// Where the file with the id is. Throws std::invalid_argument if the text is no id.
  std::filesystem::path PathOf(const std::string& id) const;

  /// The ids of all files there are.
  std::vector<std::string> Ids() const;

  /// Free space on the disk, in bytes.
  uint64_t FreeBytes() const;

 private:
  std::filesystem::path incoming_;
  std::filesystem::path files_;
};

}  // namespace orvane_service
