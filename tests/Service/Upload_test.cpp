#include "Upload.h"

#include <algorithm>
#include <sstream>

#include "RunningService.h"
#include "Secrets.h"

namespace {

const std::string kChunked = kFormType + "Transfer-Encoding: chunked\r\n";

std::string InChunks(const std::string& text, size_t size) {
  std::ostringstream chunks;
  for (size_t at = 0; at < text.size(); at += size) {
    chunks << std::hex << std::min(size, text.size() - at) << "\r\n" << text.substr(at, size) << "\r\n";
  }
  return chunks.str() + "0\r\n\r\n";
}

class UploadTest : public RunningService {
 protected:
  // The parts of a good upload with another content of the one of that name, or without it.
  Parts With(const std::string& name, const std::optional<std::string>& content) const {
    Parts parts = UploadParts(login_);
    Part& part = *std::find_if(parts.begin(), parts.end(), [&](const Part& other) { return other.name == name; });
    part = content ? Part{name, *content, part.file_name} : Part{"another", "", ""};
    return parts;
  }

  Login login_ = LogIn();
};

// Names that would lead out of the data folder are names like others.
TEST_F(UploadTest, StoresTheFileWithEverythingThatCameWithIt) {
  // Several blocks of every buffer on the way, with line ends and dashes as boundaries have them.
  std::string content;
  for (int i = 0; content.size() < 5000000; ++i) content += "\r\n--" + std::to_string(i) + std::string(1, '\0');
  const std::string description = "../../First line\r\n\r\n--second line--\n🎬";
  const std::vector<std::string> tags = {"zwei", "eins", "東京", "zwei", "a,b;c"};
  Parts parts = With("title", "/tmp/Tïtle, with 'quotes' & <tags>");
  parts[0] = {"Filedata", content, "../../Größe 東京 🎬 %22 50%.mp4"};
  parts.push_back({"description", description, ""});
  for (const std::string& tag : tags) parts.push_back({"tags_array[]", tag, ""});
  const nlohmann::json root = client_.PostForm(UploadUrl(), parts).Root();
  ASSERT_EQ(root["status"], "success") << root;

  orvane_service::Database database(data_ / "orvane.db");
  orvane_service::Catalog catalog(database);
  const auto file = catalog.FindFile(catalog.FindCustomer("acme")->id, root["payload"]["id"])->file;
  EXPECT_EQ(file.name, "../../Größe 東京 🎬 \" 50%.mp4");
  EXPECT_EQ(file.title, parts[4].content);
  EXPECT_EQ(file.description, description);
  EXPECT_EQ(file.tags, tags);
  EXPECT_EQ(file.size, static_cast<int64_t>(content.size()));
  EXPECT_EQ(file.sha256, orvane_service::Sha256Hex(content));
  const Reply stored = client_.Get(root["payload"]["link"].get<std::string>() + "/file");
  EXPECT_TRUE(stored.body == content);
  EXPECT_EQ(stored.Header("Content-Disposition").find("../"), std::string::npos);
  EXPECT_TRUE(NothingIsComing());
  for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) EXPECT_EQ(entry.path(), data_);
}

TEST_F(UploadTest, RefusesFormsThatAreNotAccepted) {
  // A part's name, what comes in place of it, if anything, and the answer.
  const std::tuple<std::string, std::optional<std::string>, int> cases[] = {
      {"auth_token", std::nullopt, 403},
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
  for (const auto& [name, content, status] : cases) {
    SCOPED_TRACE(name);
    ExpectRefused(client_.PostForm(UploadUrl(), With(name, content)), status);
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

TEST_F(UploadTest, AnUploadThatIsCutOffLeavesNothing) {
  const std::string film = FormText({{"Filedata", std::string(3000000, 'v'), "film.mp4"}});
  for (const bool by_the_client : {true, false}) {
    std::optional connection = client_.Begin("POST", UploadUrl(), kFormType + "Content-Length: 9999999\r\n", film);
    ASSERT_TRUE(Eventually([this] { return !NothingIsComing(); }));
    by_the_client ? connection.reset() : service_->Stop();
    ExpectNothingStored();
  }
}

TEST_F(UploadTest, TakesFormsInPiecesAndNoMalformedOnes) {
  const std::string form = FormText(UploadParts(login_));
  for (const std::string& bad : {form, form + "--xy--\r\n", std::string(200000, '-') + "\r\n" + form + kFormEnd}) {
    SCOPED_TRACE(bad.substr(0, 100));
    ExpectRefused(client_.Begin("POST", UploadUrl(), kChunked, InChunks(bad, 5000)).ReadToEnd(), 400);
  }
  for (const size_t size : {size_t{1}, size_t{7}, form.size()}) {
    EXPECT_EQ(client_.Begin("POST", UploadUrl(), kChunked, InChunks(form + kFormEnd, size)).ReadToEnd().status, 200)
        << size;
  }
}

// What the head tells is answered before the body has come, if the client asks.
TEST_F(UploadTest, RefusesEarlyWhatWillNotFit) {
  const auto ask = [this](const std::string& url, uint64_t length) {
    const std::string asking = "Expect: 100-continue\r\nContent-Length: " + std::to_string(length) + "\r\n";
    return client_.Begin("POST", url, kFormType + asking, "").ReadToEnd();
  };
  ExpectRefused(ask(Url("nordlicht", "/v3/api/prjacc/upload_file/4"), 1000000), 403);  // nobody is logged in there
  ExpectRefused(ask(Url("acme", "/v3/api/prjacc/upload_file/1"), 1000000), 404);
  ExpectRefused(ask(UploadUrl(), orvane_service::kMaxUploadBytes + 1), 413);
  options_.free_bytes = [] { return orvane_service::kReservedBytes + 8000000; };
  Restart();
  ExpectRefused(ask(UploadUrl(), 8000001), 507);
  ExpectRefused(client_.PostForm(UploadUrl(), With("Filedata", std::string(9000000, 'v'))), 507);
}

}  // namespace
