#include "UploadForm.h"

#include <cerrno>
#include <set>
#include <system_error>

namespace orvane_service {
namespace {

// Forms quote this one character of a file name, since it would end the name.
std::string Unquote(std::string name) {
  for (size_t at = name.find("%22"); at != std::string::npos; at = name.find("%22", at + 1)) name.replace(at, 3, "\"");
  return name;
}

bool IsTextName(const std::string& name) {
  static const std::set<std::string> names = {"auth_token", "auth_key", "folder_id", "title", "description"};
  return names.count(name) > 0;
}

}  // namespace

Refusal TooLarge() {
  return {413, "The file is too large."};
}

bool UploadForm::Refuse(int status, const std::string& message) {
  return Refuse(Refusal{status, message});
}

bool UploadForm::Refuse(const Refusal& refusal) {
  if (!refusal_) refusal_ = refusal;
  // The space is free again at once, however long the client goes on sending.
  file_.reset();
  return false;
}

bool UploadForm::RefuseForSpace() {
  return Refuse(507, "The service has no room for the file.");
}

bool UploadForm::BeginPart(const std::string& name, const std::string& file_name) {
  if (refusal_) return false;
  in_file_ = false;
  current_text_ = nullptr;
  // Names count as well, or a form of empty parts could grow without end.
  text_bytes_ += name.size() + file_name.size() + 1;
  if (text_bytes_ > kMaxTextBytesInAll) return Refuse(413, "The texts of the upload are too long.");
  if (name == "Filedata") return BeginFile(file_name);
  if (name == "tags_array[]") {
    if (tags_.size() == kMaxTags) return Refuse(413, "The upload has too many tags.");
    current_text_ = &tags_.emplace_back();
    return true;
  }
  // Parts that are not known are read and dropped: a later client may send more.
  if (!IsTextName(name)) return true;
  const auto [entry, is_new] = texts_.emplace(name, "");
  if (!is_new) return Refuse(400, "The upload has the field " + name + " twice.");
  current_text_ = &entry->second;
  return true;
}

bool UploadForm::BeginFile(const std::string& file_name) {
  if (file_) return Refuse(400, "The upload has more than one file.");
  if (file_name.empty()) return Refuse(400, "The upload has no file.");
  const std::optional<std::string> key = Text("auth_key");
  const std::optional<std::string> token = Text("auth_token");
  if (key && token) {
    if (!check_(*key, *token)) return Refuse(403, kSessionExpired);
    ticket_.Prove();
  }
  if (!ticket_.MayTake(announced_)) return RefuseForSpace();
  file_name_ = Unquote(file_name);
  in_file_ = true;
  try {
    file_ = store_.Create();
  } catch (const std::system_error&) {
    return Refuse(500, "The service cannot store the file.");
  }
  return true;
}

bool UploadForm::Append(const char* data, size_t size) {
  if (refusal_) return false;
  if (in_file_) return AppendToFile(data, size);
  text_bytes_ += size;
  if (text_bytes_ > kMaxTextBytesInAll) return Refuse(413, "The texts of the upload are too long.");
  if (current_text_ == nullptr) return true;
  if (current_text_->size() + size > kMaxTextBytes) return Refuse(413, "A text of the upload is too long.");
  current_text_->append(data, size);
  return true;
}

bool UploadForm::AppendToFile(const char* data, size_t size) {
  if (file_->Size() + size > kMaxFileBytes) return Refuse(TooLarge());
  if (!ticket_.Take(size)) return RefuseForSpace();
  try {
    file_->Write(data, size);
  } catch (const std::system_error& error) {
    if (error.code().value() == ENOSPC) return RefuseForSpace();
    return Refuse(500, "The service cannot store the file.");
  }
  return true;
}

std::optional<std::string> UploadForm::Text(const std::string& name) const {
  const auto entry = texts_.find(name);
  if (entry == texts_.end()) return std::nullopt;
  return entry->second;
}

}  // namespace orvane_service
