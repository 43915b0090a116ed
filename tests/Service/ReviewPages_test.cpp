#include "RunningService.h"

namespace {

class ReviewPagesTest : public RunningService {
 protected:
  // Uploads and returns the link.
  std::string Upload(const std::string& file_name, const std::string& title) {
    Parts parts = UploadParts(LogIn(), "0123456789");
    parts[0].file_name = file_name;
    parts[3].content = "3";
    parts[4].content = title;
    parts.insert(parts.end(), {{"description", title, ""}, {"tags_array[]", title, ""}});
    const nlohmann::json root = client_.PostForm(UploadUrl(), parts).Root();
    EXPECT_EQ(root["status"], "success") << root;
    return root["payload"].value("link", "");
  }
};

TEST_F(ReviewPagesTest, ShowsAPlayerAndEscapesEveryText) {
  const Reply page = client_.Get(Upload("<img src=x>.mp4", "</title><script>alert(1)</script>\"'&"));
  EXPECT_NE(page.body.find("<video controls"), std::string::npos);
  EXPECT_EQ(page.body.find("<script"), std::string::npos);
  EXPECT_NE(page.body.find(">Rough Cuts / Episode 1 / For the director<"), std::string::npos);
  EXPECT_EQ(page.body.find("<img"), std::string::npos);
  EXPECT_NE(page.body.find("<h1 dir=\"auto\">&lt;/title&gt;&lt;script&gt;alert(1)&lt;/script&gt;&quot;&apos;&amp;"),
            std::string::npos);
}

TEST_F(ReviewPagesTest, SendsTheFileInParts) {
  const std::string file = Upload("film.MP4", "Film") + "/file";
  const std::string whole = "0123456789";
  const std::string tag = client_.Get(file).Header("ETag");
  ASSERT_GT(tag.size(), 60u);
  const std::tuple<std::string, int, std::string, std::string> cases[] = {
      {"", 200, whole, ""},
      {"Range: bytes=2-4\r\n", 206, "234", "bytes 2-4/10"},
      {"Range: bytes=3-18446744073709551615\r\n", 206, "3456789", "bytes 3-9/10"},
      {"Range: bytes=-500\r\n", 206, whole, "bytes 0-9/10"},
      {"Range: bytes=-3\r\n", 206, "789", "bytes 7-9/10"},
      {"Range: bytes=10-\r\n", 416, "", "bytes */10"},
      {"Range: bytes=-0\r\n", 416, "", "bytes */10"},
      {"Range: bytes=0-1,4-5\r\n", 200, whole, ""},
      {"Range: bytes=4-2\r\n", 200, whole, ""},
      {"Range: bytes=2-4\r\nIf-Range: " + tag + "\r\n", 206, "234", "bytes 2-4/10"},
      {"Range: bytes=2-4\r\nIf-Range: \"another\"\r\n", 200, whole, ""}};
  for (const auto& [headers, status, body, range] : cases) {
    SCOPED_TRACE(headers);
    const Reply reply = client_.Get(file, headers);
    EXPECT_EQ(reply.status, status);
    EXPECT_EQ(reply.body, body);
    EXPECT_EQ(reply.Header("Content-Range"), range);
    EXPECT_EQ(reply.Header("Accept-Ranges"), "bytes");
    EXPECT_EQ(reply.Header("Content-Type"), "video/mp4");
  }
}

TEST_F(ReviewPagesTest, ShowsNoUploadedPagesAndNoFilesOfOthers) {
  const std::string link = Upload("page.html", "Page");
  const Reply reply = client_.Get(link + "/file");
  EXPECT_EQ(reply.Header("Content-Type"), "application/octet-stream");
  EXPECT_EQ(reply.Header("Content-Disposition").rfind("attachment", 0), 0u);
  EXPECT_EQ(reply.Header("X-Content-Type-Options"), "nosniff");
  const std::string path = link.substr(link.find("/review/"));
  for (const std::string rest : {"", "/file"}) {
    EXPECT_EQ(client_.Get(Url("acme", path + rest)).status, 200);
    EXPECT_EQ(client_.Get(Url("nordlicht", path + rest)).status, 404);
    for (const std::string id : {"../../orvane.db", "..%2f..%2forvane.db", "", "x"}) {
      EXPECT_EQ(client_.Get(Url("acme", "/review/" + id + rest)).status, 404) << id;
    }
  }
}

}  // namespace
