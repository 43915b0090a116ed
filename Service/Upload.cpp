#include "Upload.h"

#include <glib.h>

#include <cstdlib>

#include "Customers.h"
#include "HostNames.h"
#include "Secrets.h"

namespace orvane_service {
namespace {

// Zero characters are refused, too: they would cut the text short elsewhere.
void RequireText(const std::string& text) {
  if (!g_utf8_validate_len(text.data(), text.size(), nullptr)) {
    throw Refusal{400, "A text of the upload is not valid UTF-8."};
  }
}

}  // namespace

std::unique_ptr<UploadForm> Upload::Begin(const Request& request) {
  const Customer customer = CallerOf(request, catalog_);
  if (refusal_message_) throw Refusal{503, *refusal_message_};
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
  Store(stored, *form.File());
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

void Upload::Store(StoredFile& stored, IncomingFile& file) {
  stored.id = RandomHex(kIdentifierBytes);
  file.Finish();
  stored.size = static_cast<int64_t>(file.Size());
  stored.sha256 = file.Sha256();
  stored.uploaded_at = clock_();
  try {
    catalog_.AddFile(stored, [&] { files_.Keep(file, stored.id); });
  } catch (...) {
    files_.Remove(stored.id);
    throw;
  }
}

}  // namespace orvane_service
