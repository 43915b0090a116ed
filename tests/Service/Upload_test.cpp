#include "Upload.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "RunningService.h"
#include "Secrets.h"

namespace {

using nlohmann::json;

const std::string kChunked = std::string(kFormType) + "Transfer-Encoding: chunked\r\n";

std::string InChunks(const std::string& text, size_t size) {
  std::string chunks;
  for (size_t at = 0; at < text.size(); at += size) {
    char head[32];
    snprintf(head, sizeof(head), "%zx\r\n", std::min(size, text.size() - at));
    chunks += head + text.substr(at, size) + "\r\n";
  }
  return chunks + "0\r\n\r\n";
}

// In bytes.
size_t MemoryInUse() {
  size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages >> pages;
  return pages * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

class UploadTest : public RunningService {
 protected:
  // The parts of a good upload with another content of the one of that name.
  Parts With(const std::string& name, const std::string& content) const {
    Parts parts = UploadParts(login_);
    std::find_if(parts.begin(), parts.end(), [&](const Part& part) { return part.name == name; })->content = content;
    return parts;
  }

  // The details of the file that an upload's answer names.
  orvane_service::StoredFile Stored(const json& root) const {
    orvane_service::Database database(data_ / "orvane.db");
    orvane_service::Catalog catalog(database);
    return catalog.FindFile(catalog.FindCustomer("acme")->id, root["payload"].value("id", "")).value().file;
  }

  // Begins a request that announces more than it sends.
  Connection Begin(const std::string& path, const std::string& headers, const std::string& body) const {
    Connection connection(Url("acme", ""), service_->AuthorityFile());
    connection.Send("POST " + path + " HTTP/1.1\r\nHost: acme.orvane.localhost\r\n" + headers + "\r\n" + body);
    return connection;
  }

  Login login_ = LogIn();
};

TEST_F(UploadTest, StoresTheFileWithEverythingThatCameWithIt) {
  // Several blocks of every buffer on the way, with line ends and dashes as boundaries have them.
  std::string content;
  for (int i = 0; content.size() < 5000000; ++i) content += "\r\n--" + std::to_string(i) + std::string(1, '\0');
  const std::string title = "Tïtle, with 'quotes' & <tags>";
  const std::string description = "First line\r\n\r\n--second line--\n🎬";
  const std::vector<std::string> tags = {"zwei", "eins", "東京", "zwei", "a,b;c"};
  Parts parts = With("title", title);
  parts[0] = {"Filedata", content, "Größe 東京 🎬 %22 50%.mp4"};
  parts.push_back({"description", description, ""});
  for (const std::string& tag : tags) parts.push_back({"tags_array[]", tag, ""});
  const json root = client_.PostForm(UploadUrl(), parts).Root();
  ASSERT_EQ(root["status"], "success") << root;

  const orvane_service::StoredFile file = Stored(root);
  EXPECT_EQ(file.name, "Größe 東京 🎬 \" 50%.mp4");
  EXPECT_EQ(file.title, title);
  EXPECT_EQ(file.description, description);
  EXPECT_EQ(file.tags, tags);
  EXPECT_EQ(file.size, static_cast<int64_t>(content.size()));
  EXPECT_EQ(file.sha256, orvane_service::Sha256Hex(content));
  EXPECT_TRUE(client_.Get(root["payload"]["link"].get<std::string>() + "/file").body == content);
  EXPECT_TRUE(Entries(data_ / "incoming").empty());
}

TEST_F(UploadTest, RefusesFormsThatAreNotAccepted) {
  const struct {
    const char* name;
    // In place of the part of that name; without one, the part is left out.
    std::optional<std::string> content;
    int status;
  } cases[] = {{"auth_token", std::nullopt, 403},
               {"auth_token", LogIn().token, 403},
               {"auth_token", LogIn("nordlicht").token, 403},
               {"folder_id", std::nullopt, 404},
               {"folder_id", "8", 404},  // of another project
               {"title", "", 400},
               {"title", "\xff\xfe", 400},
               {"title", std::string("a\0b", 3), 400},
               {"title", std::string(orvane_service::kMaxTextBytes + 1, 't'), 413},
               {"Filedata", std::nullopt, 400},
               {"Filedata", "", 400}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Parts parts = With(c.name, c.content.value_or(""));
    const auto is_named = [&c](const Part& part) { return part.name == c.name; };
    if (!c.content) parts.erase(std::find_if(parts.begin(), parts.end(), is_named));
    ExpectRefused(client_.PostForm(UploadUrl(), parts), c.status);
  }
  const Parts good = UploadParts(login_);
  for (const auto& [part, count, status] : {std::tuple(good[0], 1, 400), std::tuple(good[4], 1, 400),
                                            std::tuple(Part{"tags_array[]", "t", ""}, 60000, 413)}) {
    Parts parts = good;
    parts.insert(parts.end(), static_cast<size_t>(count), part);
    ExpectRefused(client_.PostForm(UploadUrl(), parts), status);
  }
  ExpectRefused(client_.PostForm(UploadUrl("4000"), good), 404);
  ExpectRefused(client_.Post(UploadUrl(), login_.Body()), 415);
}

TEST_F(UploadTest, NoNameInAnyFieldLeadsOutOfTheDataFolder) {
  for (const std::string name : {"../../escaped", "/tmp/escaped", ".."}) {
    SCOPED_TRACE(name);
    Parts parts = With("title", name);
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
  const std::string length = std::string(kFormType) + "Content-Length: 100000000\r\n";
  const std::string film = FormText({{"Filedata", std::string(3000000, 'v'), "film.mp4"}});
  const auto has_come = [this] { return !Entries(data_ / "incoming").empty(); };
  {
    const Connection connection = Begin("/api/prjacc/upload_file/1", length, film);
    ASSERT_TRUE(Eventually(has_come));
  }
  ExpectNothingStored();
  const Connection connection = Begin("/api/prjacc/upload_file/1", length, film);
  ASSERT_TRUE(Eventually(has_come));
  service_->Stop();
  ExpectNothingStored();
}

TEST_F(UploadTest, TakesFormsInPiecesAndNoMalformedOnes) {
  const std::string form = FormText(UploadParts(login_));
  for (const std::string& bad : {form, form + "--xy--\r\n", std::string("no form"), std::string(200000, '-')}) {
    SCOPED_TRACE(bad.substr(0, 100));
    ExpectRefused(client_.Ask("POST", UploadUrl(), kChunked, InChunks(bad, 5000)), 400);
  }
  for (const std::string boundary : {"\"", "\"\"", ""}) {
    ExpectRefused(client_.Post(UploadUrl(), "", "Content-Type: multipart/form-data; boundary=" + boundary + "\r\n"),
                  415);
  }
  for (const size_t size : {size_t{1}, size_t{7}, form.size()}) {
    EXPECT_EQ(client_.Ask("POST", UploadUrl(), kChunked, InChunks(form + kFormEnd, size)).status, 200) << size;
  }
}

// What the head tells is answered before the body has come, if the client asks.
TEST_F(UploadTest, RefusesEarlyWhatTheHeadTells) {
  const auto ask = [this](const std::string& url, uint64_t length) {
    const std::string asking = "Expect: 100-continue\r\nContent-Length: " + std::to_string(length) + "\r\n";
    return client_.Ask("POST", url, kFormType + asking, "");
  };
  ExpectRefused(ask(Url("nordlicht", "/v3/api/prjacc/upload_file/4"), 1000000), 403);  // nobody is logged in there
  ExpectRefused(ask(Url("acme", "/v3/api/prjacc/upload_file/1"), 1000000), 404);
  ExpectRefused(ask(UploadUrl(), orvane_service::kMaxUploadBytes + 1), 413);
  options_.free_bytes = [] { return orvane_service::kReservedBytes + 8000000; };
  Restart();
  ExpectRefused(ask(UploadUrl(), 8000001), 507);
  ExpectRefused(client_.PostForm(UploadUrl(), With("Filedata", std::string(9000000, 'v'))), 507);
  EXPECT_EQ(client_.PostForm(UploadUrl(), With("Filedata", std::string(7000000, 'v'))).status, 200);
}

TEST_F(UploadTest, RefusesAFilmThatFillsTheDiskWhileItArrives) {
  options_.free_bytes = [this] {
    return orvane_service::kReservedBytes + (Entries(data_ / "incoming").empty() ? 1000 : -1);
  };
  Restart();
  const std::string film = FormText(With("Filedata", std::string(3000000, 'v'))) + kFormEnd;
  ExpectRefused(client_.Ask("POST", UploadUrl(), kChunked, InChunks(film, 5000)), 507);
}

TEST_F(UploadTest, NothingThatIsSentFillsTheMemory) {
  const std::string endless = "Content-Length: 200000000\r\n";
  const std::string dashes(1 << 20, '-');
  for (const Part& part : Parts{{"title", "", ""}, {"unknown", "", ""}, {"tags_array[]", "", ""}, {"", "", ""}}) {
    SCOPED_TRACE(part.name);
    // Without a name: dashes where a form, or a call of the API, should be.
    const std::string call = part.name.empty() ? "get_project_list" : "upload_file/1";
    const std::string head = part.name.empty() ? "" : FormText({part});
    Connection connection = Begin("/api/prjacc/" + call, kFormType + endless, head.substr(0, head.size() - 2));
    const size_t before = MemoryInUse();
    for (int i = 0; i < 90; ++i) ASSERT_TRUE(connection.Send(dashes));
    EXPECT_LT(MemoryInUse(), before + (64 << 20));
  }
}

}  // namespace
