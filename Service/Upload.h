// The call of the API that takes a file.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Catalog.h"
#include "FileStore.h"
#include "HttpsServer.h"
#include "Sessions.h"
#include "UploadForm.h"

namespace orvane_service {

/// A file is stored completely or not at all. May be used by any thread.
class Upload {
 public:
  /// With a refusal message every upload is refused with it.
  Upload(Catalog& catalog, Sessions& sessions, FileStore& files, Clock clock,
         std::optional<std::string> refusal_message)
      : catalog_(catalog),
        sessions_(sessions),
        files_(files),
        clock_(std::move(clock)),
        refusal_message_(std::move(refusal_message)) {}

  /// A form for the body. Throws Refusal for what can be told from the head.
  std::unique_ptr<UploadForm> Begin(const Request& request);

  /// Stores what the form holds and answers with the "link" and the "id" of the stored file. The port is that of the
  /// service, for the link. Throws Refusal or another exception, and then nothing is stored.
  Response Finish(const Request& request, const std::string& project, UploadForm& form, int port);

 private:
  StoredFile Check(const Customer& customer, const std::string& project_id, const UploadForm& form);
  void Store(StoredFile& stored, IncomingFile& file);

  Catalog& catalog_;
  Sessions& sessions_;
  FileStore& files_;
  Clock clock_;
  std::optional<std::string> refusal_message_;
};

}  // namespace orvane_service
