#include <algorithm>

#include "RunningService.h"
#include "Secrets.h"
#include "UploadForm.h"

namespace {

using nlohmann::json;

class UploadTest : public RunningService {
 protected:
  // Replaces the content of a part.
  static Parts With(Parts parts, const std::string& name, const std::string& content) {
    for (auto& part : parts) {
      if (part.name == name) part.content = content;
    }
    return parts;
  }

  static Parts Without(Parts parts, const std::string& name) {
    parts.erase(std::remove_if(parts.begin(), parts.end(), [&](const auto& part) { return part.name == name; }),
                parts.end());
    return parts;
  }

  // The details of the file that an upload's answer names.
  orvane_service::StoredFile Stored(const json& root) const {
    orvane_service::Database database(data_ / "orvane.db");
    orvane_service::Catalog catalog(database);
    const auto details = catalog.FindFile(catalog.FindCustomer("acme")->id, root["payload"].value("id", ""));
    EXPECT_TRUE(details.has_value()) << root;
    return details ? details->file : orvane_service::StoredFile();
  }

  // The head of a request for an upload.
  static std::string Head(const std::string& base, uint64_t length) {
    return "POST " + base + "/upload_file/1 HTTP/1.1\r\nHost: acme.orvane.localhost\r\n" +
           "Content-Type: multipart/form-data; boundary=xyz\r\nContent-Length: " + std::to_string(length) + "\r\n\r\n";
  }

  // Begins an upload that announces more than it sends, and waits until some of it has come.
  void SendHalf(RawConnection& connection, uint64_t announced = 100000000) const {
    connection.Send(Head("/api/prjacc", announced) +
                    "--xyz\r\nContent-Disposition: form-data; name=\"Filedata\"; filename=\"film.mp4\"\r\n\r\n" +
                    std::string(3000000, 'v'));
    ASSERT_TRUE(Eventually([&] { return !Entries(data_ / "incoming").empty(); }));
  }
};

TEST_F(UploadTest, StoresTheFileWithEverythingThatCameWithIt) {
  const std::string name = "Größe 東京 🎬 50%.mp4";
  const std::string title = "Tïtle, with 'quotes' & <tags>";
  const std::string description = "First line\r\n\r\n--second line--\n🎬";
  const std::vector<std::string> tags = {"zwei", "eins", "東京", "zwei", "a,b;c"};
  // Several blocks of every buffer on the way, with line ends and dashes as boundaries have them.
  std::string content;
  for (int i = 0; content.size() < 5000000; ++i) content += "\r\n--" + std::to_string(i) + std::string(1, '\0');

  Parts parts = With(UploadParts(LogIn(), content), "title", title);
  parts[0].filename = name;
  parts.push_back({"description", description, "", ""});
  for (const std::string& tag : tags) parts.push_back({"tags_array[]", tag, "", ""});
  const json root = client_.PostForm(UploadUrl(), parts).Root();
  ASSERT_EQ(root["status"], "success") << root;

  const orvane_service::StoredFile file = Stored(root);
  EXPECT_EQ(file.name, name);
  EXPECT_EQ(file.title, title);
  EXPECT_EQ(file.description, description);
  EXPECT_EQ(file.tags, tags);
  EXPECT_EQ(file.size, static_cast<int64_t>(content.size()));
  EXPECT_EQ(file.sha256, orvane_service::Sha256Hex(content));
  EXPECT_TRUE(client_.Get(root["payload"]["link"].get<std::string>() + "/file").body == content);
  EXPECT_TRUE(Entries(data_ / "incoming").empty());
}

TEST_F(UploadTest, RefusesFormsThatAreNotAccepted) {
  const Login login = LogIn();
  const Parts good = UploadParts(login);
  Parts twice = good;
  twice.push_back(good[0]);
  Parts tagged = good;
  tagged.insert(tagged.end(), orvane_service::kMaxTags + 1, {"tags_array[]", "t", "", ""});
  const struct {
    const char* what;
    Parts parts;
    int status;
  } cases[] = {
      {"no token", Without(good, "auth_token"), 403},
      {"token of another login", With(good, "auth_token", LogIn().token), 403},
      {"token of another customer", UploadParts(LogIn("nordlicht")), 403},
      {"no folder", Without(good, "folder_id"), 404},
      {"folder of another project", With(good, "folder_id", "8"), 404},
      {"empty title", With(good, "title", ""), 400},
      {"title that is not UTF-8", With(good, "title", "\xff\xfe"), 400},
      {"title with a zero", With(good, "title", std::string("a\0b", 3)), 400},
      {"no file", Without(good, "Filedata"), 400},
      {"empty file", With(good, "Filedata", ""), 400},
      {"two files", twice, 400},
      {"long title", With(good, "title", std::string(orvane_service::kMaxTextBytes + 1, 't')), 413},
      {"many tags", tagged, 413},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    ExpectRefused(client_.PostForm(UploadUrl(), c.parts), c.status);
  }
  ExpectRefused(client_.PostForm(UploadUrl("4000"), good), 404);
  ExpectRefused(client_.Post(UploadUrl(), login.Body()), 415);
  now_ += orvane_service::kTokenLifetime;
  ExpectRefused(client_.PostForm(UploadUrl(), good), 403);
}

TEST_F(UploadTest, NoNameInAnyFieldLeadsOutOfTheDataFolder) {
  for (const std::string name : {"../../escaped", "/tmp/escaped", ".."}) {
    SCOPED_TRACE(name);
    Parts parts = With(UploadParts(LogIn()), "title", name);
    parts[0].filename = name;
    const json root = client_.PostForm(UploadUrl(), parts).Root();
    ASSERT_EQ(root["status"], "success") << root;
    EXPECT_EQ(Stored(root).name, name);
    const Reply file = client_.Get(root["payload"]["link"].get<std::string>() + "/file");
    EXPECT_EQ(file.get_header_value("Content-Disposition").find("../"), std::string::npos);
    EXPECT_NE(client_.PostForm(UploadUrl(name), parts).status, 200);
  }
  EXPECT_EQ(Entries(folder_.Path()), std::vector<std::string>{"data"});
  for (const std::string& stored : Entries(data_ / "files")) EXPECT_TRUE(orvane_service::IsIdentifier(stored));
}

TEST_F(UploadTest, AnUploadThatIsCutOffLeavesNothing) {
  LogIn();
  {
    RawConnection connection(Url("acme", ""), service_->AuthorityFile());
    SendHalf(connection);
  }
  ExpectNothingStored();
  RawConnection connection(Url("acme", ""), service_->AuthorityFile());
  SendHalf(connection);
  const auto begin = std::chrono::steady_clock::now();
  service_->Stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  ExpectNothingStored();
}

// The film comes before the credentials: nobody may fill the disk with one.
TEST_F(UploadTest, RefusesFilmsOfUnknownSenders) {
  LogIn("nordlicht");
  RawConnection connection(Url("acme", ""), service_->AuthorityFile());
  connection.Send(Head("/api/prjacc", 599 << 20) + "--xyz\r\n");
  const std::string answer = connection.ReadToEnd();
  EXPECT_EQ(answer.rfind("HTTP/1.1 403 ", 0), 0u) << answer;

  options_.free_bytes = [] { return uint64_t{8000000}; };
  Restart();
  const Login login = LogIn();
  Parts parts = UploadParts(login, std::string(5000000, 'v'));
  ExpectRefused(client_.PostForm(UploadUrl(), parts), 507);
  // A sender that shows its credentials first may use what there is.
  std::rotate(parts.begin(), parts.begin() + 1, parts.end());
  EXPECT_EQ(client_.PostForm(UploadUrl(), parts).Root()["status"], "success");
  EXPECT_EQ(client_.PostForm(UploadUrl(), UploadParts(login, std::string(3000000, 'v'))).Root()["status"], "success");
}

TEST_F(UploadTest, UnknownSendersTogetherTakeHalfOfTheDisk) {
  options_.free_bytes = [] { return uint64_t{10000000}; };
  Restart();
  const Login login = LogIn();
  RawConnection other(Url("acme", ""), service_->AuthorityFile());
  SendHalf(other, 4000000);
  const Parts parts = UploadParts(login, std::string(4500000, 'v'));
  EXPECT_TRUE(Eventually([&] { return client_.PostForm(UploadUrl(), parts).status == 507; }));
}

TEST_F(UploadTest, LimitsTheNumberOfUnknownSenders) {
  const Login login = LogIn();
  {
    std::vector<std::unique_ptr<RawConnection>> begun;
    for (size_t i = 0; i < orvane_service::kMaxUploads; ++i) {
      begun.push_back(std::make_unique<RawConnection>(Url("acme", ""), service_->AuthorityFile()));
      begun.back()->Send(Head("/api/prjacc", 1000000) + "--xyz\r\n");
      if (i == 10) EXPECT_EQ(client_.PostForm(UploadUrl(), UploadParts(login)).status, 200);
      if (client_.PostForm(UploadUrl(), UploadParts(login)).status == 503) break;
    }
    EXPECT_GE(begun.size(), orvane_service::kMaxUnprovenUploads);
    EXPECT_EQ(client_.PostForm(UploadUrl(), UploadParts(login)).status, 503);
  }
  EXPECT_TRUE(Eventually([&] { return client_.PostForm(UploadUrl(), UploadParts(login)).status == 200; }));
}

// What the headers tell is answered before the body has come: a wrong path, a body that is too long.
TEST_F(UploadTest, RefusesEarlyWhatTheHeadersTell) {
  const std::pair<std::string, std::string> cases[] = {
      {Head("/v3/api/prjacc", 64 << 20), "HTTP/1.1 404 "},
      {Head("/api/prjacc", orvane_service::kMaxUploadBytes + 1), "HTTP/1.1 413 "}};
  for (const auto& [head, status] : cases) {
    RawConnection connection(Url("acme", ""), service_->AuthorityFile());
    connection.Send(head + "--xyz\r\n");
    const std::string answer = connection.ReadToEnd();
    EXPECT_EQ(answer.rfind(status, 0), 0u) << answer;
  }
}

}  // namespace
