#include <algorithm>

#include "RunningService.h"
#include "Secrets.h"
#include "UploadForm.h"

namespace {

using nlohmann::json;

class UploadTest : public RunningService {
 protected:
  // Replaces the content of a part.
  static std::vector<Part> With(std::vector<Part> parts, const std::string& name, const std::string& content) {
    for (Part& part : parts) {
      if (part.name == name) part.content = content;
    }
    return parts;
  }

  static std::vector<Part> Without(std::vector<Part> parts, const std::string& name) {
    parts.erase(std::remove_if(parts.begin(), parts.end(), [&](const Part& part) { return part.name == name; }),
                parts.end());
    return parts;
  }

  // The details of the file that an upload's answer names.
  orvane_service::FileDetails Details(const json& root) const {
    orvane_service::Database database(data_ / "orvane.db");
    orvane_service::Catalog catalog(database);
    const auto details = catalog.FindFile(catalog.FindCustomer("acme")->id, root["payload"].value("id", ""));
    EXPECT_TRUE(details.has_value()) << root;
    return details.value_or(orvane_service::FileDetails());
  }

  // The start of an upload that announces more than it sends.
  std::string HalfUpload(const std::string& content) const {
    return "POST /api/prjacc/upload_file/1 HTTP/1.1\r\nHost: acme.orvane.localhost\r\n"
           "Content-Type: multipart/form-data; boundary=xyz\r\nContent-Length: 100000000\r\n\r\n"
           "--xyz\r\nContent-Disposition: form-data; name=\"Filedata\"; filename=\"film.mp4\"\r\n\r\n" +
           content;
  }
};

TEST_F(UploadTest, StoresTheFileWithEverythingThatCameWithIt) {
  const std::string name = "Größe \"x\" 東京 🎬 50%.mp4";
  const std::string title = "Tïtle, with 'quotes' & <tags>";
  const std::string description = "First line\r\n\r\n--second line--\n🎬";
  const std::vector<std::string> tags = {"zwei", "eins", "東京", "zwei", "a,b;c"};
  // Several blocks of every buffer on the way, with line ends and dashes as boundaries have them.
  std::string content;
  for (int i = 0; content.size() < 5000000; ++i) content += "\r\n--" + std::to_string(i) + std::string(1, '\0');

  std::vector<Part> parts = With(UploadParts(LogIn(), content), "title", title);
  parts[0].file_name = name;
  parts.push_back({"description", description, {}});
  for (const std::string& tag : tags) parts.push_back({"tags_array[]", tag, {}});
  const json root = client_.PostForm(UploadUrl(), parts).Root();
  ASSERT_EQ(root["status"], "success") << root;

  const orvane_service::StoredFile file = Details(root).file;
  EXPECT_EQ(file.name, name);
  EXPECT_EQ(file.title, title);
  EXPECT_EQ(file.description, description);
  EXPECT_EQ(file.tags, tags);
  EXPECT_EQ(file.size, static_cast<int64_t>(content.size()));
  EXPECT_EQ(file.sha256, orvane_service::Sha256Hex(content));
  const std::string link = root["payload"]["link"];
  EXPECT_EQ(link, Url("acme", "/review/" + root["payload"]["id"].get<std::string>()));
  EXPECT_TRUE(client_.Get(link + "/file").body == content);
  EXPECT_TRUE(Entries(data_ / "incoming").empty());
}

TEST_F(UploadTest, RefusesFormsThatAreNotAccepted) {
  const Login login = LogIn();
  const std::vector<Part> good = UploadParts(login);
  const auto refuse = [&](const char* what, const std::vector<Part>& parts, long status) {
    SCOPED_TRACE(what);
    ExpectRefused(client_.PostForm(UploadUrl(), parts), status);
  };
  refuse("no token", Without(good, "auth_token"), 403);
  refuse("token of another login", With(good, "auth_token", LogIn().token), 403);
  refuse("token of another customer", UploadParts(LogIn("nordlicht")), 403);
  refuse("no folder", Without(good, "folder_id"), 404);
  refuse("unknown folder", With(good, "folder_id", "4000"), 404);
  refuse("folder of another project", With(good, "folder_id", "8"), 404);
  refuse("no title", Without(good, "title"), 400);
  refuse("empty title", With(good, "title", ""), 400);
  refuse("title that is not UTF-8", With(good, "title", "\xff\xfe"), 400);
  refuse("title with a zero", With(good, "title", std::string("a\0b", 3)), 400);
  refuse("no file", Without(good, "Filedata"), 400);
  refuse("empty file", With(good, "Filedata", ""), 400);
  std::vector<Part> twice = good;
  twice.push_back(good[0]);
  refuse("two files", twice, 400);
  twice.back() = {"title", "Another", {}};
  refuse("two titles", twice, 400);
  refuse("long title", With(good, "title", std::string(orvane_service::kMaxTextBytes + 1, 't')), 413);
  std::vector<Part> tagged = good;
  tagged.insert(tagged.end(), orvane_service::kMaxTags + 1, {"tags_array[]", "t", {}});
  refuse("many tags", tagged, 413);
  ExpectRefused(client_.PostForm(UploadUrl("4000"), good), 404);
  ExpectRefused(client_.PostForm(UploadUrl(""), good), 404);
  ExpectRefused(client_.Post(UploadUrl(), login.Body()), 415);
  now_ += orvane_service::kTokenLifetime;
  refuse("expired token", good, 403);
  // The service still takes a good one.
  EXPECT_EQ(client_.PostForm(UploadUrl(), UploadParts(LogIn())).Root()["status"], "success");
}

TEST_F(UploadTest, NoNameInAnyFieldLeadsOutOfTheDataFolder) {
  const Login login = LogIn();
  for (const std::string name : {"../../escaped", "/tmp/escaped", "..", "a/../../../escaped", "..\\..\\escaped"}) {
    SCOPED_TRACE(name);
    std::vector<Part> parts = With(UploadParts(login), "title", name);
    parts[0].file_name = name;
    parts.push_back({"description", name, {}});
    parts.push_back({"tags_array[]", name, {}});
    const json root = client_.PostForm(UploadUrl(), parts).Root();
    ASSERT_EQ(root["status"], "success") << root;
    EXPECT_EQ(Details(root).file.name, name);
    const std::string headers = client_.Get(root["payload"]["link"].get<std::string>() + "/file").headers;
    EXPECT_EQ(headers.find("../"), std::string::npos) << headers;
    EXPECT_NE(client_.PostForm(UploadUrl(), With(parts, "folder_id", name)).Root()["status"], "success");
    EXPECT_NE(client_.PostForm(UploadUrl(name), parts).status, 200);
  }
  EXPECT_EQ(Entries(folder_.Path()), std::vector<std::string>{"data"});
  for (const std::string& stored : Entries(data_ / "files")) EXPECT_TRUE(orvane_service::IsIdentifier(stored));
  EXPECT_EQ(Entries(data_ / "files").size(), 5u);
}

TEST_F(UploadTest, AnUploadThatIsCutOffLeavesNothing) {
  {
    RawConnection connection(Url("acme", ""), service_->AuthorityFile());
    connection.Send(HalfUpload(std::string(3000000, 'v')));
    ASSERT_TRUE(Eventually([&] { return !Entries(data_ / "incoming").empty(); }));
  }
  ExpectNothingStored();
}

TEST_F(UploadTest, StoppingCutsARunningUpload) {
  RawConnection connection(Url("acme", ""), service_->AuthorityFile());
  connection.Send(HalfUpload(std::string(3000000, 'v')));
  ASSERT_TRUE(Eventually([&] { return !Entries(data_ / "incoming").empty(); }));
  const auto begin = std::chrono::steady_clock::now();
  service_->Stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  ExpectNothingStored();
}

TEST_F(UploadTest, RefusesEarlyWhatTheHeadersTell) {
  const std::vector<Part> large = UploadParts(LogIn(), std::string(64 << 20, 'v'));
  // Under the path of the other version. A client that asks first need not send the body at all.
  const std::string wrong_path = Url("acme", "/v3/api/prjacc/upload_file/1");
  const Reply asked = client_.PostForm(wrong_path, large, {"Expect: 100-continue"});
  ExpectRefused(asked, 404);
  EXPECT_LT(asked.sent, 1 << 20);
  // One that sends at once must still get the answer.
  ExpectRefused(client_.PostForm(wrong_path, large, {"Expect:"}), 404);

  RawConnection connection(Url("acme", ""), service_->AuthorityFile());
  connection.Send(
      "POST /api/prjacc/upload_file/1 HTTP/1.1\r\nHost: acme.orvane.localhost\r\n"
      "Content-Type: multipart/form-data; boundary=xyz\r\nContent-Length: " +
      std::to_string(orvane_service::kMaxUploadBytes + 1) + "\r\n\r\n");
  const std::string answer = connection.ReadToEnd();
  EXPECT_EQ(answer.rfind("HTTP/1.1 413 ", 0), 0u) << answer;
}

TEST_F(UploadTest, RefusesEverythingWithTheMessageItWasGiven) {
  options_.refuse_uploads = "Maintenance until 5 o'clock – übermorgen";
  Restart();
  const Reply reply = client_.PostForm(UploadUrl(), UploadParts(LogIn()));
  ExpectRefused(reply, 503);
  EXPECT_EQ(reply.Root()["message"], *options_.refuse_uploads);
}

}  // namespace
