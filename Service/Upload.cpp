#include "Upload.h"

#include <glib.h>

#include <cstdlib>
#include <set>

#include "CertificateAuthority.h"
#include "Customers.h"
#include "Secrets.h"

namespace orvane_service {
namespace {

// How much of a file comes between two looks at the space that is left.
constexpr uint64_t kSpaceStep = 1 << 20;

// Forms quote this one character of a file name, since it would end the name.
std::string Unquote(std::string name) {
  for (size_t at = name.find("%22"); at != std::string::npos; at = name.find("%22", at + 1)) name.replace(at, 3, "\"");
  return name;
}

// Zero characters are refused, too: they would cut the text short elsewhere.
void RequireText(const std::string& text) {
  if (!g_utf8_validate_len(text.data(), text.size(), nullptr)) {
    throw Refusal{400, "A text of the upload is not valid UTF-8."};
  }
}

}  // namespace

Refusal TooLarge() {
  return {413, "The file is too large."};
}

Refusal NoRoom() {
  return {507, "The service has no room for the file."};
}

UploadForm::UploadForm(const Request& request, const FileStore& store)
    : store_(store), reader_(request, [this](const FormPiece& piece) { Take(piece); }) {
  if (!reader_.IsForm()) throw Refusal{415, "An upload must be a form with a file."};
}

void UploadForm::End() {
  if (!reader_.End()) throw Refusal{400, "The upload is incomplete or not a well-formed form."};
}

void UploadForm::Take(const FormPiece& piece) {
  const std::string name = piece.name;
  const bool is_file = name == "Filedata";
  text_bytes_ += (piece.begins ? kPartBytes : 0) + (is_file ? 0 : piece.size);
  if (text_bytes_ > kMaxTextBytes) throw Refusal{413, "The texts of the upload are too long."};
  if (is_file) {
    TakeFile(piece);
  } else {
    TakeText(piece);
  }
}

void UploadForm::TakeFile(const FormPiece& piece) {
  if (piece.begins) {
    if (file_) throw Refusal{400, "The upload has more than one file."};
    file_name_ = Unquote(piece.file_name == nullptr ? "" : piece.file_name);
    if (file_name_.empty()) throw Refusal{400, "The upload has no file."};
    file_ = store_.Create();
  }
  const uint64_t size = file_->Size() + piece.size;
  if (size > kMaxFileBytes) throw TooLarge();
  if (size / kSpaceStep > file_->Size() / kSpaceStep && store_.FreeBytes() < kReservedBytes) throw NoRoom();
  file_->Write(piece.data, piece.size);
}

void UploadForm::TakeText(const FormPiece& piece) {
  const std::string name = piece.name;
  if (name == "tags_array[]") {
    if (piece.begins) tags_.emplace_back();
    tags_.back().append(piece.data, piece.size);
    return;
  }
  // Parts that are not known are read and dropped: a later client may send more.
  static const std::set<std::string> names = {"auth_token", "auth_key", "folder_id", "title", "description"};
  if (names.count(name) == 0) return;
  const auto [entry, is_new] = texts_.emplace(name, "");
  if (piece.begins && !is_new) throw Refusal{400, "The upload has the field " + name + " twice."};
  entry->second.append(piece.data, piece.size);
}

std::string UploadForm::Text(const std::string& name) const {
  const auto entry = texts_.find(name);
  return entry == texts_.end() ? std::string() : entry->second;
}

std::unique_ptr<UploadForm> Upload::Begin(const Request& request) {
  const Customer customer = CallerOf(request, catalog_);
  if (refusal_) throw Refusal{503, *refusal_};
  auto form = std::make_unique<UploadForm>(request, files_);
  // The library has refused what is no number. Without a length the limits hold while the file arrives.
  const uint64_t length = strtoull(request.Header("Content-Length").c_str(), nullptr, 10);
  if (length > kMaxUploadBytes) throw TooLarge();
  if (length + kReservedBytes > files_.FreeBytes()) throw NoRoom();
  // The credentials follow the film. Where nobody is logged in, they cannot be good.
  if (!sessions_.IsAnyoneLoggedIn(customer.id)) throw Refusal{403, kSessionExpired};
  return form;
}

Response Upload::Finish(const Request& request, const std::string& project, UploadForm& form, int port) {
  form.End();
  const Customer customer = CallerOf(request, catalog_);
  StoredFile stored = Check(customer, project, form);
  IncomingFile& file = *form.File();
  file.Finish();
  stored.id = RandomHex(kIdentifierBytes);
  stored.size = static_cast<int64_t>(file.Size());
  stored.sha256 = file.Sha256();
  stored.uploaded_at = clock_();
  catalog_.AddFile(stored, [&] { files_.Keep(file, stored.id); });
  file.Release();
  const std::string host = customer.subdomain + "." + std::string(kDomain) + ":" + std::to_string(port);
  return SuccessAnswer({{"payload", {{"link", "https://" + host + "/review/" + stored.id}, {"id", stored.id}}}});
}

StoredFile Upload::Check(const Customer& customer, const std::string& project_id, const UploadForm& form) {
  StoredFile stored;
  const auto user = sessions_.FindUser(customer.id, form.Text("auth_key"), form.Text("auth_token"));
  if (!user) throw Refusal{403, kSessionExpired};
  stored.user_id = *user;
  stored.folder_id = FolderOf(form.Text("folder_id"), ProjectOf(project_id, customer, catalog_), catalog_);
  stored.title = form.Text("title");
  if (stored.title.empty()) throw Refusal{400, "The upload has no title."};
  if (form.File() == nullptr) throw Refusal{400, "The upload has no file."};
  if (form.File()->Size() == 0) throw Refusal{400, "The file is empty."};
  stored.name = form.FileName();
  stored.description = form.Text("description");
  stored.tags = form.Tags();
  for (const std::string& text : {stored.name, stored.title, stored.description}) RequireText(text);
  for (const std::string& tag : stored.tags) RequireText(tag);
  return stored;
}

}  // namespace orvane_service
