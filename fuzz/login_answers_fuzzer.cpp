// Answers the two requests of a log-in with texts of libFuzzer's making: the first line, and what follows it. A log-in
// ends with one of its results or with the JSON library's exceptions.
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "OrvaneProjectsAPI.h"

namespace {

std::string first_answer;
std::string second_answer;

}  // namespace

void HttpRequest::init() {}
void HttpRequest::cleanup() {}
std::string HttpRequest::get(std::string) {
  return first_answer;
}
std::string HttpRequest::post(std::string, std::string) {
  return second_answer;
}
std::string HttpRequest::upload(std::string, std::string, std::string, std::string, std::string) {
  return "error";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const size_t line = text.find('\n');
  first_answer = text.substr(0, line);
  second_answer = line == std::string::npos ? "" : text.substr(line + 1);
  OrvaneProjectsAPI client;
  try {
    const std::string result = client.login("acme", "editor", "secret");
    if (result != "success" && result != "failed" && result != second_answer) std::abort();
  } catch (const std::runtime_error&) {
  } catch (const std::out_of_range&) {
  }
  return 0;
}
