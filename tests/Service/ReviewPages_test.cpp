#include "RunningService.h"

namespace {

class ReviewPagesTest : public RunningService {
 protected:
  // Uploads and returns the link.
  std::string Upload(const std::string& file_name, const std::string& title) {
    Parts parts = UploadParts(LogIn(), "0123456789");
    parts[0].file_name = file_name;
    parts[4].content = title;
    parts.push_back({"description", title, ""});
    parts.push_back({"tags_array[]", title, ""});
    const nlohmann::json root = client_.PostForm(UploadUrl(), parts).Root();
    EXPECT_EQ(root["status"], "success") << root;
    return root["payload"].is_object() ? root["payload"].value("link", "") : "";
  }
};

TEST_F(ReviewPagesTest, ShowsAPlayerAndEscapesEveryText) {
  const Reply page = client_.Get(Upload("<img src=x>.mp4", "</title><script>alert(1)</script>\"'&"));
  EXPECT_NE(page.body.find("<video controls"), std::string::npos);
  EXPECT_EQ(page.body.find("<script"), std::string::npos);
  EXPECT_EQ(page.body.find("<img"), std::string::npos);
  EXPECT_NE(page.body.find("&lt;/title&gt;&lt;script&gt;alert(1)&lt;/script&gt;&quot;&apos;&amp;"), std::string::npos);
}

TEST_F(ReviewPagesTest, SendsTheFileInParts) {
  const std::string file = Upload("film.MP4", "Film") + "/file";
  const std::string whole = "0123456789", huge(30, '9');
  const std::string tag = client_.Get(file).headers["etag"];
  ASSERT_GT(tag.size(), 60u);
  struct Case {
    std::string headers;
    int status;
    std::string body, content_range;
  };
  const std::vector<Case> cases = {
      {"", 200, whole, ""},
      {"Range: bytes=2-4\r\n", 206, "234", "bytes 2-4/10"},
      {"Range: bytes=8-500\r\n", 206, "89", "bytes 8-9/10"},
      {"Range: bytes=3-18446744073709551615\r\n", 206, "3456789", "bytes 3-9/10"},
      {"Range: bytes=-500\r\n", 206, whole, "bytes 0-9/10"},
      {"Range: bytes=-3\r\n", 206, "789", "bytes 7-9/10"},
      {"Range: bytes=10-\r\n", 416, "", "bytes */10"},
      {"Range: bytes=-0\r\n", 416, "", "bytes */10"},
      {"Range: bytes=0-1,4-5\r\n", 200, whole, ""},
      {"Range: bytes=4-2\r\n", 200, whole, ""},
      {"Range: bytes=0-" + huge + "\r\n", 200, whole, ""},
      {"Range: bytes=-\r\n", 200, whole, ""},
      {"Range: lines=1-2\r\n", 200, whole, ""},
      {"Range: bytes=2-4\r\nIf-Range: " + tag + "\r\n", 206, "234", "bytes 2-4/10"},
      {"Range: bytes=2-4\r\nIf-Range: \"another\"\r\n", 200, whole, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.headers);
    Reply reply = client_.Get(file, c.headers);
    EXPECT_EQ(reply.status, c.status);
    EXPECT_EQ(reply.body, c.body);
    EXPECT_EQ(reply.headers["content-range"], c.content_range);
    EXPECT_EQ(reply.headers["accept-ranges"], "bytes");
    EXPECT_EQ(reply.headers["content-type"], "video/mp4");
  }
}

TEST_F(ReviewPagesTest, NeverShowsAnUploadedPageAsOne) {
  Reply reply = client_.Get(Upload("page.html", "Page") + "/file");
  EXPECT_EQ(reply.headers["content-type"], "application/octet-stream");
  EXPECT_EQ(reply.headers["content-disposition"].rfind("attachment", 0), 0u);
  EXPECT_EQ(reply.headers["x-content-type-options"], "nosniff");
}

TEST_F(ReviewPagesTest, KnowsOnlyFilesOfTheCustomer) {
  const std::string link = Upload("film.mp4", "Film");
  const std::string path = link.substr(link.find("/review/"));
  EXPECT_EQ(client_.Get(Url("acme", path)).status, 200);
  for (const std::string rest : {"", "/file"}) {
    EXPECT_EQ(client_.Get(Url("nordlicht", path + rest)).status, 404);
    for (const std::string id : {"..%2f..%2forvane.db", "%2e%2e", "", "x"}) {
      EXPECT_EQ(client_.Get(Url("acme", "/review/" + id + rest)).status, 404) << id;
    }
  }
}

}  // namespace
