// A form with files (multipart/form-data), read as it comes by the web server's library.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "HttpsServer.h"

namespace orvane_service {

/// Some of a part's content. A part without content has one empty piece.
struct FormPiece {
  const char* name;
  /// Null for a text.
  const char* file_name;
  /// True for the first piece of a part. An empty part and one of the same name behind it count as one.
  bool begins;
  const char* data;
  size_t size;
};

/// Takes little memory, whatever comes. Used by one thread.
class FormReader {
 public:
  using Taker = std::function<void(const FormPiece&)>;

  FormReader(const Request& request, Taker take);
  FormReader(const FormReader&) = delete;
  FormReader& operator=(const FormReader&) = delete;

  /// False if the request announces no such form.
  bool IsForm() const { return processor_ != nullptr; }

  /// More of the body. What the taker throws is thrown again. Once the body turns out malformed, nothing more is taken.
  void Feed(const char* data, size_t size);

  /// Call at the end of the body. Returns false if the form was malformed or incomplete.
  bool End();

 private:
  static MHD_Result OnPiece(void* reader, MHD_ValueKind kind, const char* name, const char* file_name,
                            const char* content_type, const char* encoding, const char* data, uint64_t offset,
                            size_t size);

  std::unique_ptr<MHD_PostProcessor, MHD_Result (*)(MHD_PostProcessor*)> processor_{nullptr,
                                                                                    MHD_destroy_post_processor};
  const Taker take_;
  std::exception_ptr thrown_;
  bool malformed_ = false;
  // Until the first part.
  size_t preamble_ = 0;
  bool has_parts_ = false;
  // Of a part whose only piece was empty.
  std::optional<std::string> empty_name_;
};

}  // namespace orvane_service
