#include "Upload.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "RunningService.h"
#include "Secrets.h"

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
  static std::string Head(const std::string& more, const std::string& base = "/api/prjacc") {
    return "POST " + base + "/upload_file/1 HTTP/1.1\r\nHost: acme.orvane.localhost\r\nConnection: close\r\n" +
           "Content-Type: multipart/form-data; boundary=xyz\r\n" + more + "\r\n\r\n";
  }

  // The head of a part of its form.
  static std::string PartHead(const Part& part) {
    const std::string file = part.file_name.empty() ? "" : "; filename=\"" + part.file_name + "\"";
    return "--xyz\r\nContent-Disposition: form-data; name=\"" + part.name + "\"" + file + "\r\n\r\n";
  }

  RawConnection Connect() const { return {Url("acme", ""), service_->AuthorityFile()}; }

  std::string Answer(const std::string& bytes) const {
    RawConnection connection = Connect();
    EXPECT_TRUE(connection.Send(bytes));
    return connection.ReadToEnd();
  }

  // Begins an upload that announces more than it sends, and waits until some of it has come.
  void SendHalf(RawConnection& connection) const {
    connection.Send(Head("Content-Length: 100000000") + PartHead({"Filedata", "", "film.mp4"}) +
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
  parts[0].file_name = name;
  parts.push_back({"description", description, ""});
  for (const std::string& tag : tags) parts.push_back({"tags_array[]", tag, ""});
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
  tagged.insert(tagged.end(), orvane_service::kMaxTextBytes / orvane_service::kPartBytes, {"tags_array[]", "t", ""});
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
    parts[0].file_name = name;
    const json root = client_.PostForm(UploadUrl(), parts).Root();
    ASSERT_EQ(root["status"], "success") << root;
    EXPECT_EQ(Stored(root).name, name);
    Reply file = client_.Get(root["payload"]["link"].get<std::string>() + "/file");
    EXPECT_EQ(file.headers["content-disposition"].find("../"), std::string::npos);
    EXPECT_NE(client_.PostForm(UploadUrl(name), parts).status, 200);
  }
  EXPECT_EQ(Entries(folder_.Path()), std::vector<std::string>{"data"});
}

TEST_F(UploadTest, AnUploadThatIsCutOffLeavesNothing) {
  LogIn();
  {
    RawConnection connection = Connect();
    SendHalf(connection);
  }
  ExpectNothingStored();
  RawConnection connection = Connect();
  SendHalf(connection);
  const auto begin = std::chrono::steady_clock::now();
  service_->Stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  ExpectNothingStored();
}

TEST_F(UploadTest, TakesFormsInPiecesAndNoMalformedOnes) {
  const auto in_chunks = [](const std::string& form, size_t size) {
    std::string chunks;
    for (size_t at = 0; at < form.size(); at += size) {
      char head[32];
      snprintf(head, sizeof(head), "%zx\r\n", std::min(size, form.size() - at));
      chunks += head + form.substr(at, size) + "\r\n";
    }
    return chunks + "0\r\n\r\n";
  };
  std::string form;
  for (const Part& part : UploadParts(LogIn())) form += PartHead(part) + part.content + "\r\n";
  const std::string chunked = Head("Transfer-Encoding: chunked");
  for (const std::string& bad : {form, form + "--xy--\r\n", std::string("no form"), std::string(200000, '-')}) {
    SCOPED_TRACE(bad.substr(0, 100));
    EXPECT_EQ(Answer(chunked + in_chunks(bad, 5000)).rfind("HTTP/1.1 400 ", 0), 0u);
  }
  // A boundary of nothing but quotes, and none.
  for (const std::string type : {"boundary=\"", "boundary=\"\"", "boundary="}) {
    std::string head = Head("Content-Length: 0");
    head.replace(head.find("boundary=xyz"), 12, type);
    EXPECT_EQ(Answer(head).rfind("HTTP/1.1 415 ", 0), 0u) << type;
  }
  ExpectNothingStored();
  for (const size_t size : {size_t{1}, size_t{7}, form.size()}) {
    EXPECT_EQ(Answer(chunked + in_chunks(form + "--xyz--\r\n", size)).rfind("HTTP/1.1 200 ", 0), 0u) << size;
  }
}

// What the head tells is answered before the body has come, if the client asks.
TEST_F(UploadTest, RefusesEarlyWhatTheHeadTells) {
  const std::string asking = "Expect: 100-continue\r\nContent-Length: ";
  const std::string too_large = std::to_string(orvane_service::kMaxUploadBytes + 1);
  EXPECT_EQ(Answer(Head(asking + "1000000")).rfind("HTTP/1.1 403 ", 0), 0u) << "nobody is logged in";
  const Login login = LogIn();
  EXPECT_EQ(Answer(Head(asking + "1000000", "/v3/api/prjacc")).rfind("HTTP/1.1 404 ", 0), 0u);
  EXPECT_EQ(Answer(Head(asking + too_large)).rfind("HTTP/1.1 413 ", 0), 0u);
  options_.free_bytes = [] { return orvane_service::kReservedBytes + 8000000; };
  Restart();
  EXPECT_EQ(Answer(Head(asking + "8000001")).rfind("HTTP/1.1 507 ", 0), 0u);
  ExpectRefused(client_.PostForm(UploadUrl(), UploadParts(login, std::string(9000000, 'v'))), 507);
  EXPECT_EQ(client_.PostForm(UploadUrl(), UploadParts(login, std::string(7000000, 'v'))).status, 200);
}

TEST_F(UploadTest, RefusesAFilmThatFillsTheDiskWhileItArrives) {
  LogIn();
  options_.free_bytes = [this] {
    return orvane_service::kReservedBytes + (Entries(data_ / "incoming").empty() ? 1000 : -1);
  };
  Restart();
  const std::string film = PartHead({"Filedata", "", "film.mp4"}) + std::string(3000000, 'v');
  char size[32];
  snprintf(size, sizeof(size), "%zx\r\n", film.size());
  const std::string answer = Answer(Head("Transfer-Encoding: chunked") + size + film + "\r\n0\r\n\r\n");
  EXPECT_EQ(answer.rfind("HTTP/1.1 507 ", 0), 0u) << answer;
  ExpectNothingStored();
}

// In bytes.
size_t MemoryInUse() {
  size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages >> pages;
  return pages * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

TEST_F(UploadTest, NothingThatIsSentFillsTheMemory) {
  LogIn();
  const std::string endless = "Content-Length: 200000000";
  for (const std::string& begun :
       {Head(endless) + PartHead({"title", "", ""}), Head(endless) + "--damaged\r\n",
        Head(endless) + PartHead({"unknown", "", ""}),
        Head("Transfer-Encoding: chunked") + "5f5e100\r\n" + PartHead({"tags_array[]", "", ""}),
        "POST /api/prjacc/prjacc HTTP/1.1\r\nHost: a\r\n" + endless + "\r\n\r\n"}) {
    SCOPED_TRACE(begun);
    RawConnection connection = Connect();
    ASSERT_TRUE(connection.Send(begun));
    const size_t before = MemoryInUse();
    const std::string piece(1 << 20, '-');
    for (int i = 0; i < 90; ++i) ASSERT_TRUE(connection.Send(piece));
    EXPECT_LT(MemoryInUse(), before + (64 << 20));
  }
}

}  // namespace
