#include "Upload.h"

#include <cerrno>
#include <system_error>

#include "Answers.h"
#include "Customers.h"
#include "HostNames.h"
#include "MultipartParser.h"
#include "Secrets.h"

namespace orvane_service {
namespace {

// True for UTF-8 without zero characters, which would cut the text short elsewhere.
bool IsText(const std::string& text) {
  if (text.find('\0') != std::string::npos) return false;
  try {
    nlohmann::json(text).dump();
    return true;
  } catch (const nlohmann::json::exception&) {
    return false;
  }
}

void RequireTexts(const StoredFile& file) {
  bool ok = IsText(file.name) && IsText(file.title) && IsText(file.description);
  for (const std::string& tag : file.tags) ok = ok && IsText(tag);
  if (!ok) throw Refusal{400, "A text of the upload is not valid UTF-8."};
}

}  // namespace

void Upload::CheckHeaders(const httplib::Request& request) {
  const Customer customer = CallerOf(request, catalog_);
  if (refusal_message_) throw Refusal{503, *refusal_message_};
  if (!BoundaryOf(request.get_header_value(kUploadType))) throw Refusal{415, "An upload must be a form with a file."};
  const uint64_t length = request.get_header_value<uint64_t>("Content-Length");
  if (length > kMaxUploadBytes) throw TooLarge();
  if (length > files_.FreeBytes()) throw Refusal{507, "The service has no room for the file."};
  // The credentials follow the film. Where nobody is logged in, they cannot be good.
  if (!sessions_.IsAnyoneLoggedIn(customer.id)) throw Refusal{403, kSessionExpired};
}

void Upload::Receive(const httplib::Request& request, httplib::Response& response, const httplib::ContentReader& reader,
                     int port) {
  CheckHeaders(request);
  const Customer customer = CallerOf(request, catalog_);
  const std::unique_ptr<UnprovenUploads::Ticket> ticket = unproven_.Admit();
  if (!ticket) throw Refusal{503, "The service takes too many files at once. Please try again."};
  const uint64_t length = request.get_header_value<uint64_t>("Content-Length");
  UploadForm form(files_, *ticket, length, [&](const std::string& key, const std::string& token) {
    return sessions_.FindUser(customer.id, key, token).has_value();
  });
  MultipartParser parser(
      BoundaryOf(request.get_header_value(kUploadType)).value_or(""),
      [&](const std::string& name, const std::string& file_name) { return form.BeginPart(name, file_name); },
      [&](const char* data, size_t size) { return form.Append(data, size); });
  const bool complete = reader([&](const char* data, size_t size) { return parser.Feed(data, size); });
  if (form.GetRefusal()) throw *form.GetRefusal();
  if (!complete || !parser.IsComplete()) throw Refusal{400, "The upload is incomplete or not a well-formed form."};

  StoredFile stored = Check(request, customer, form);
  Store(stored, *form.File());
  const std::string host = customer.subdomain + "." + std::string(kDomain) + ":" + std::to_string(port);
  AnswerSuccess(response, {{"payload", {{"link", "https://" + host + "/review/" + stored.id}, {"id", stored.id}}}});
}

StoredFile Upload::Check(const httplib::Request& request, const Customer& customer, const UploadForm& form) {
  StoredFile stored;
  const auto user =
      sessions_.FindUser(customer.id, form.Text("auth_key").value_or(""), form.Text("auth_token").value_or(""));
  if (!user) throw Refusal{403, kSessionExpired};
  stored.user_id = *user;
  const int64_t project = ProjectOf(request.matches[1], customer, catalog_);
  stored.folder_id = FolderOf(form.Text("folder_id").value_or(""), project, catalog_);
  stored.title = form.Text("title").value_or("");
  if (stored.title.empty()) throw Refusal{400, "The upload has no title."};
  if (form.File() == nullptr) throw Refusal{400, "The upload has no file."};
  if (form.File()->Size() == 0) throw Refusal{400, "The file is empty."};
  stored.name = form.FileName();
  stored.description = form.Text("description").value_or("");
  stored.tags = form.Tags();
  RequireTexts(stored);
  return stored;
}

void Upload::Store(StoredFile& stored, IncomingFile& file) {
  stored.id = RandomHex(kIdentifierBytes);
  bool moved = false;
  try {
    file.Finish();
    stored.size = static_cast<int64_t>(file.Size());
    stored.sha256 = file.Sha256();
    stored.uploaded_at = clock_();
    catalog_.AddFile(stored, [&] {
      moved = true;
      files_.Keep(file, stored.id);
    });
  } catch (const std::exception& exception) {
    if (moved) files_.Remove(stored.id);
    const auto* error = dynamic_cast<const std::system_error*>(&exception);
    if (error != nullptr && error->code().value() == ENOSPC) {
      throw Refusal{507, "The service has no room for the file."};
    }
    throw;
  }
}

}  // namespace orvane_service
