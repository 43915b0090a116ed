#include "RunningService.h"

namespace {

class ReviewPagesTest : public RunningService {
 protected:
  // Uploads and returns the link.
  std::string Upload(const std::string& file_name, const std::string& title) {
    Parts parts = UploadParts(LogIn(), "0123456789");
    parts[0].filename = file_name;
    parts[4].content = title;
    parts.push_back({"description", title, "", ""});
    parts.push_back({"tags_array[]", title, "", ""});
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
  EXPECT_NE(page.body.find("&lt;/title&gt;&lt;script&gt;alert(1)&lt;/script&gt;&quot;&#39;&amp;"), std::string::npos);
}

TEST_F(ReviewPagesTest, SendsTheFileInParts) {
  const std::string file = Upload("film.MP4", "Film") + "/file";
  struct Case {
    std::string range;
    int status;
    std::string body, content_range;
  };
  const std::vector<Case> cases = {
      {"bytes=2-4", 206, "234", "bytes 2-4/10"},         {"bytes=8-500", 206, "89", "bytes 8-9/10"},
      {"bytes=-500", 206, "0123456789", "bytes 0-9/10"}, {"bytes=10-", 416, "", "bytes */10"},
      {"bytes=0-1,4-5", 200, "0123456789", ""},          {"", 200, "0123456789", ""}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.range);
    const Reply reply = client_.Get(file, c.range.empty() ? httplib::Headers() : httplib::Headers{{"Range", c.range}});
    EXPECT_EQ(reply.status, c.status);
    if (c.status != 416) EXPECT_EQ(reply.body, c.body);
    EXPECT_EQ(reply.get_header_value("Content-Range"), c.content_range);
  }
  EXPECT_EQ(client_.Get(file).get_header_value("Content-Type"), "video/mp4");
}

TEST_F(ReviewPagesTest, NeverShowsAnUploadedPageAsOne) {
  const Reply reply = client_.Get(Upload("page.html", "Page") + "/file");
  EXPECT_EQ(reply.get_header_value("Content-Type"), "application/octet-stream");
  EXPECT_EQ(reply.get_header_value("Content-Disposition").rfind("attachment", 0), 0u);
  EXPECT_EQ(reply.get_header_value("X-Content-Type-Options"), "nosniff");
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
