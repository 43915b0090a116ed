// The call of the API that takes a file. The parts of its form are taken as they arrive: the file goes to the disk at
// once, the texts are kept.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Answers.h"
#include "Catalog.h"
#include "FileStore.h"
#include "FormReader.h"
#include "HttpsServer.h"
#include "Sessions.h"

namespace orvane_service {

/// Largest file, in bytes: hours of finished video, and still far from filling a disk by mistake.
constexpr uint64_t kMaxFileBytes = 64ull << 30;
/// Largest texts of all parts together, in bytes, and what a part counts for beside its text.
constexpr size_t kMaxTextBytes = 3 << 20;
constexpr size_t kPartBytes = 64;
/// Largest body of an upload: that file, and all texts with what a form puts around them.
constexpr uint64_t kMaxUploadBytes = kMaxFileBytes + 4 * kMaxTextBytes;
/// What no upload may take of the disk.
constexpr uint64_t kReservedBytes = 16 << 20;

/// What is said of a longer one, and when the disk is full.
Refusal TooLarge();
Refusal NoRoom();

/// Takes the parts in any order. Used by one thread at a time.
class UploadForm {
 public:
  /// Throws Refusal if the request announces no form.
  UploadForm(const Request& request, const FileStore& store);

  /// More of the body. Throws Refusal, or std::system_error when the file cannot be written.
  void Feed(const char* data, size_t size) { reader_.Feed(data, size); }

  /// Call at the end of the body. Throws Refusal if the form was malformed or incomplete.
  void End();

  /// A text ("auth_token", "auth_key", "folder_id", "title", "description"), or the empty text.
  std::string Text(const std::string& name) const;

  /// The parts "tags_array[]" in the order in which they came.
  const std::vector<std::string>& Tags() const { return tags_; }

  /// The part "Filedata", or null if it did not come; and the file's name as the client gave it.
  IncomingFile* File() const { return file_.get(); }
  const std::string& FileName() const { return file_name_; }

 private:
  void Take(const FormPiece& piece);
  void TakeFile(const FormPiece& piece);
  void TakeText(const FormPiece& piece);

  const FileStore& store_;
  FormReader reader_;
  std::unique_ptr<IncomingFile> file_;
  std::string file_name_;
  std::map<std::string, std::string> texts_;
  std::vector<std::string> tags_;
  size_t text_bytes_ = 0;
};

/// A file is stored completely or not at all. May be used by any thread.
class Upload {
 public:
  /// With a refusal message every upload is refused with it.
  Upload(Catalog& catalog, Sessions& sessions, FileStore& files, Clock clock, std::optional<std::string> refusal)
      : catalog_(catalog), sessions_(sessions), files_(files), clock_(std::move(clock)), refusal_(std::move(refusal)) {}

  /// A form for the body. Throws Refusal for what can be told from the head.
  std::unique_ptr<UploadForm> Begin(const Request& request);

  /// Stores what the form holds and answers with the "link" and the "id" of the stored file. The port is that of the
  /// service, for the link. Throws Refusal or another exception, and then nothing is stored.
  Response Finish(const Request& request, const std::string& project, UploadForm& form, int port);

 private:
  StoredFile Check(const Customer& customer, const std::string& project_id, const UploadForm& form);

  Catalog& catalog_;
  Sessions& sessions_;
  FileStore& files_;
  Clock clock_;
  std::optional<std::string> refusal_;
};

}  // namespace orvane_service
