#include "MultipartParser.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using orvane_service::BoundaryOf;
using orvane_service::MultipartParser;

// The parts as "name|file=content;", or why there are none.
std::string Read(std::string_view form, size_t piece) {
  std::string parts;
  MultipartParser parser(
      "xyz",
      [&](const std::string& name, const std::string& file_name) {
        parts += ";" + name + "|" + file_name + "=";
        return true;
      },
      [&](const char* data, size_t size) {
        parts.append(data, size);
        return true;
      });
  for (; !form.empty(); form.remove_prefix(std::min(piece, form.size()))) {
    if (!parser.Feed(form.data(), std::min(piece, form.size()))) return "malformed";
  }
  return parser.IsComplete() ? parts : "incomplete";
}

std::string Part(const std::string& parameters, const std::string& content = "v") {
  return "--xyz\r\nContent-Disposition: form-data" + parameters + "\r\n\r\n" + content + "\r\n";
}

TEST(MultipartParserTest, ReadsFormsInPiecesOfAnySize) {
  const std::string end = "--xyz--\r\n";
  const std::pair<std::string, std::string> cases[] = {
      {Part("; name=\"a\"") + Part("; name=\"b\"; filename=\"f.mp4\"", "\r\n--xy\r\r\n") + end,
       ";a|=v;b|f.mp4=\r\n--xy\r\r\n"},
      {Part("; name=\"a\"", "") + end, ";a|="},
      {Part("; name=\"q; \\\"x\\\"; filename=y\"") + end, ";q; \"x\"; filename=y|=v"},
      {Part("; filename=\"C:\\x.mp4\"; name=plain ;") + end, ";plain|C:\\x.mp4=v"},
      {"before\r\n" + Part("; name=\"a\"") + "--xyz--after", ";a|=v"},
      {"--xyz\r\nX: y\r\ncontent-disposition: Form-Data; NAME=\"a\"\r\n\r\nv\r\n" + end, ";a|=v"},
      {Part("; name=\"a\""), "incomplete"},
      {"--xyz", "incomplete"},
      {Part("; name=\"a\"") + "--xyzz" + std::string(100, 'v'), "malformed"},
      {Part("") + end, "malformed"},
      {Part("; name=\"a") + end, "malformed"},
      {Part("; name=\"a\"; name=\"b\"") + end, "malformed"},
      {Part("; name=\"a\" filename=\"b\"") + end, "malformed"},
      {"--xyz\r\n\r\nv\r\n" + end, "malformed"},
      {"--xyz\r\nX: " + std::string(orvane_service::kMaxPartHeadBytes + 1, 'y'), "malformed"}};
  for (const auto& [form, expected] : cases) {
    SCOPED_TRACE(form.substr(0, 100));
    for (size_t piece : {form.size(), size_t{1}, size_t{2}, size_t{7}, size_t{40}}) {
      EXPECT_EQ(Read(form, piece), expected) << "in pieces of " << piece;
    }
  }
}

TEST(MultipartParserTest, TakesTheBoundaryFromTheContentType) {
  const std::string longest(orvane_service::kMaxBoundaryBytes, 'b');
  const std::pair<std::string, std::optional<std::string>> cases[] = {
      {"multipart/form-data; boundary=xyz", "xyz"},
      {"Multipart/Form-Data;charset=utf-8 ; Boundary=\"x y\"", "x y"},
      {"multipart/form-data; boundary=" + longest, longest},
      {"multipart/form-data; boundary=" + longest + "b", std::nullopt},
      {"multipart/form-data; boundary=", std::nullopt},
      {"multipart/form-data", std::nullopt},
      {"multipart/mixed; boundary=xyz", std::nullopt},
      {"text/plain; boundary=multipart/form-data", std::nullopt}};
  for (const auto& [type, boundary] : cases) EXPECT_EQ(BoundaryOf(type), boundary) << type;
}

}  // namespace
