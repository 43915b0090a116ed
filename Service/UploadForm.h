// The parts of an upload's form as they arrive: the file goes to the disk at once, the texts are kept.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Answers.h"
#include "FileStore.h"
#include "UnprovenUploads.h"

namespace orvane_service {

/// Largest file, in bytes: hours of finished video, and still far from filling a disk by mistake.
constexpr uint64_t kMaxFileBytes = 64ull << 30;
/// Largest text of one part, and of all parts together, in bytes.
constexpr size_t kMaxTextBytes = 1 << 20;
constexpr size_t kMaxTextBytesInAll = 3 << 20;
constexpr size_t kMaxTags = 1000;
/// Largest body of an upload: that file, and all texts with what a form puts around them.
constexpr uint64_t kMaxUploadBytes = kMaxFileBytes + 2 * kMaxTextBytesInAll;

/// What is said of a longer one.
Refusal TooLarge();

/// Takes the parts in any order. After a refusal the form takes nothing more. Used by one thread.
class UploadForm {
 public:
  /// Decides whether these credentials may send a file: key, token.
  using CredentialCheck = std::function<bool(const std::string& key, const std::string& token)>;

  /// The check is asked when the file begins, if the credentials have come before it; the plug-in sends them after it.
  /// The ticket must outlive the form. Of the file so many bytes are announced, or 0 if it is not known.
  UploadForm(const FileStore& store, UnprovenUploads::Ticket& ticket, uint64_t announced, CredentialCheck check)
      : store_(store), ticket_(ticket), announced_(announced), check_(std::move(check)) {}

  /// A part begins; text parts have no file name. Returns false if the form is refused.
  bool BeginPart(const std::string& name, const std::string& file_name);

  /// More of the current part. Returns false if the form is refused.
  bool Append(const char* data, size_t size);

  /// Why the form is refused, if it is.
  const std::optional<Refusal>& GetRefusal() const { return refusal_; }

  /// A text, or nothing if the part did not come: "auth_token", "auth_key", "folder_id", "title", "description".
  std::optional<std::string> Text(const std::string& name) const;

  /// The parts "tags_array[]" in the order in which they came.
  const std::vector<std::string>& Tags() const { return tags_; }

  /// The part "Filedata", or null if it did not come; and the file's name as the client gave it.
  IncomingFile* File() const { return file_.get(); }
  const std::string& FileName() const { return file_name_; }

 private:
  bool Refuse(int status, const std::string& message);
  bool Refuse(const Refusal& refusal);
  bool RefuseForSpace();
  bool BeginFile(const std::string& file_name);
  bool AppendToFile(const char* data, size_t size);

  const FileStore& store_;
  UnprovenUploads::Ticket& ticket_;
  const uint64_t announced_;
  CredentialCheck check_;
  std::optional<Refusal> refusal_;
  std::unique_ptr<IncomingFile> file_;
  std::string file_name_;
  std::map<std::string, std::string> texts_;
  std::vector<std::string> tags_;
  std::string* current_text_ = nullptr;
  bool in_file_ = false;
  size_t text_bytes_ = 0;
};

}  // namespace orvane_service
