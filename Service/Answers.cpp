#include "Answers.h"

namespace orvane_service {
namespace {

using nlohmann::json;

Response Answer(int status, const json& root) {
  // Text of unknown origin could be invalid UTF-8, which must not stop an answer.
  const std::string text = json{{"root", root}}.dump(-1, ' ', false, json::error_handler_t::replace);
  Response response(status, text, "application/json");
  response.SetHeader("Cache-Control", "no-store");
  return response;
}

}  // namespace

Response SuccessAnswer(json members) {
  members["status"] = "success";
  return Answer(200, members);
}

Response RefusalAnswer(const Refusal& refusal) {
  return Answer(refusal.status, {{"status", "error"}, {"message", refusal.message}, {"payload", json::array()}});
}

}  // namespace orvane_service
