#include "Answers.h"

namespace orvane_service {
namespace {

void Answer(httplib::Response& response, const nlohmann::json& root) {
  // Text of unknown origin could be invalid UTF-8, which must not stop an answer.
  const auto invalid = nlohmann::json::error_handler_t::replace;
  response.set_content(nlohmann::json{{"root", root}}.dump(-1, ' ', false, invalid), "application/json");
  response.set_header("Cache-Control", "no-store");
}

}  // namespace

void AnswerSuccess(httplib::Response& response, const nlohmann::json& members) {
  nlohmann::json root = members;
  root["status"] = "success";
  response.status = 200;
  Answer(response, root);
}

void AnswerRefusal(httplib::Response& response, const Refusal& refusal) {
  response.status = refusal.status;
  Answer(response, {{"status", "error"}, {"message", refusal.message}, {"payload", nlohmann::json::array()}});
}

}  // namespace orvane_service
