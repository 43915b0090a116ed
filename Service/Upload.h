// The call of the API that takes a file.
#pragma once

#include <httplib.h>

#include <optional>
#include <string>

#include "Catalog.h"
#include "FileStore.h"
#include "Sessions.h"
#include "UploadForm.h"

namespace orvane_service {

/// The header in which CheckHeaders() and Receive() find what the client sent as Content-Type. The library would take a
/// multipart form apart itself, in a way that lets a client fill the memory.
constexpr const char* kUploadType = "Upload-Type";

/// A file is stored completely or not at all. May be used by any thread.
class Upload {
 public:
  /// With a refusal message every upload is refused with it.
  Upload(Catalog& catalog, Sessions& sessions, FileStore& files, UnprovenUploads& unproven, Clock clock,
         std::optional<std::string> refusal_message)
      : catalog_(catalog),
        sessions_(sessions),
        files_(files),
        unproven_(unproven),
        clock_(std::move(clock)),
        refusal_message_(std::move(refusal_message)) {}

  /// What can be told from the headers, before a byte of the body has come. Throws Refusal.
  void CheckHeaders(const httplib::Request& request);

  /// Takes the form and answers with the "link" and the "id" of the stored file. The project's id is the first group
  /// of the matched path; the port is that of the service, for the link. Throws Refusal, and then nothing is stored.
  void Receive(const httplib::Request& request, httplib::Response& response, const httplib::ContentReader& reader,
               int port);

 private:
  StoredFile Check(const httplib::Request& request, const Customer& customer, const UploadForm& form);
  void Store(StoredFile& stored, IncomingFile& file);

  Catalog& catalog_;
  Sessions& sessions_;
  FileStore& files_;
  UnprovenUploads& unproven_;
  Clock clock_;
  std::optional<std::string> refusal_message_;
};

}  // namespace orvane_service
