#include "RunningService.h"

namespace {

class ReviewPagesTest : public RunningService {
 protected:
  // Uploads and returns the link.
  std::string Upload(const std::string& file_name, const std::string& title) {
    std::vector<Part> parts = UploadParts(LogIn(), "0123456789");
    parts[0].file_name = file_name;
    parts[4].content = title;
    parts.push_back({"description", title, {}});
    parts.push_back({"tags_array[]", title, {}});
    const nlohmann::json root = client_.PostForm(UploadUrl(), parts).Root();
    EXPECT_EQ(root["status"], "success") << root;
    return root["payload"].is_object() ? root["payload"].value("link", "") : "";
  }
};

TEST_F(ReviewPagesTest, ShowsAPlayerAndEscapesEveryText) {
  const std::string hostile = "</title><script>alert(1)</script>\"'&";
  const std::string link = Upload("<img src=x>.mp4", hostile);
  const Reply page = client_.Get(link);
  EXPECT_EQ(page.status, 200);
  EXPECT_NE(page.body.find("<video controls"), std::string::npos);
  EXPECT_EQ(page.body.find("<script"), std::string::npos);
  EXPECT_EQ(page.body.find("<img"), std::string::npos);
  EXPECT_NE(page.body.find("&lt;/title&gt;&lt;script&gt;alert(1)&lt;/script&gt;&quot;&#39;&amp;"), std::string::npos);
  EXPECT_NE(page.headers.find("Content-Security-Policy: default-src 'none'"), std::string::npos);
}

TEST_F(ReviewPagesTest, SendsTheFileInParts) {
  const std::string file = Upload("film.MP4", "Film") + "/file";
  struct Case {
    std::string range;
    long status;
    std::string body, content_range;
  };
  const std::vector<Case> cases = {{"bytes=2-4", 206, "234", "bytes 2-4/10"},
                                   {"bytes=8-500", 206, "89", "bytes 8-9/10"},
                                   {"bytes=-500", 206, "0123456789", "bytes 0-9/10"},
                                   {"bytes=10-", 416, "", "bytes */10"},
                                   {"bytes=0-1,4-5", 200, "0123456789", ""}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.range);
    const Reply reply = client_.Get(file, {"Range: " + c.range});
    EXPECT_EQ(reply.result, CURLE_OK);
    EXPECT_EQ(reply.status, c.status);
    if (c.status != 416) EXPECT_EQ(reply.body, c.body);
    if (!c.content_range.empty()) {
      EXPECT_NE(reply.headers.find("Content-Range: " + c.content_range + "\r\n"), std::string::npos) << reply.headers;
    }
  }
  const Reply whole = client_.Get(file);
  EXPECT_EQ(whole.status, 200);
  EXPECT_EQ(whole.body, "0123456789");
  EXPECT_NE(whole.headers.find("Content-Type: video/mp4"), std::string::npos);
  EXPECT_NE(whole.headers.find("Accept-Ranges: bytes"), std::string::npos);
  // A download is continued only if the file is still the same.
  EXPECT_EQ(client_.Get(file, {"Range: bytes=2-4", "If-Range: \"other\""}).status, 200);
}

TEST_F(ReviewPagesTest, NeverShowsAnUploadedPageAsOne) {
  const Reply reply = client_.Get(Upload("page.html", "Page") + "/file");
  EXPECT_NE(reply.headers.find("Content-Type: application/octet-stream"), std::string::npos) << reply.headers;
  EXPECT_NE(reply.headers.find("Content-Disposition: attachment"), std::string::npos);
  EXPECT_NE(reply.headers.find("X-Content-Type-Options: nosniff"), std::string::npos);
}

TEST_F(ReviewPagesTest, KnowsOnlyFilesOfTheCustomer) {
  const std::string link = Upload("film.mp4", "Film");
  const std::string path = link.substr(link.find("/review/"));
  EXPECT_EQ(client_.Get(Url("acme", path)).status, 200);
  for (const std::string other : {"nordlicht", "www", "nobody"}) {
    EXPECT_EQ(client_.Get(Url(other, path)).status, 404);
    EXPECT_EQ(client_.Get(Url(other, path + "/file")).status, 404);
  }
  for (const std::string id : {"..%2f..%2forvane.db", "%2e%2e", "", "x"}) {
    EXPECT_EQ(client_.Get(Url("acme", "/review/" + id)).status, 404);
    EXPECT_EQ(client_.Get(Url("acme", "/review/" + id + "/file")).status, 404);
  }
}

}  // namespace
