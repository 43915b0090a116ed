#include "HttpRequest.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdarg>
#include <cstdlib>
#include <functional>
#include <limits>
#include <sstream>
#include <utility>
#include <vector>

#include "ScriptedServer.h"
#include "TemporaryFolder.h"
#include "TransferRedirect.h"
#include "WorkflowState.h"

#undef curl_easy_setopt

namespace {

// What the transport has set since the last test began, and the option that shall fail.
struct OptionWatch {
  size_t options = 0;
  std::vector<long> timeouts;
  size_t failAt = std::numeric_limits<size_t>::max();
};
OptionWatch watch;

}  // namespace

#pragma GCC diagnostic push
// The option is an enumeration, which va_start may not like; the library's own function is declared that way.
#pragma GCC diagnostic ignored "-Wvarargs"

// Stands in for the library's function: calls on, or fails.
extern "C" CURLcode curl_easy_setopt(CURL* handle, CURLoption option, ...) {
  typedef CURLcode Function(CURL*, CURLoption, ...);
  static auto* const setOption = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "curl_easy_setopt"));
  va_list arguments;
  va_start(arguments, option);
  const bool isLong = option < CURLOPTTYPE_OBJECTPOINT;
  const long number = isLong ? va_arg(arguments, long) : 0;
  void* const pointer = isLong ? nullptr : va_arg(arguments, void*);
  va_end(arguments);
  // These two are the redirection's.
  if (option == CURLOPT_CAINFO || option == CURLOPT_CONNECT_TO) return setOption(handle, option, pointer);
  if (option == CURLOPT_TIMEOUT) watch.timeouts.push_back(number);
  if (watch.options++ == watch.failAt) return CURLE_OUT_OF_MEMORY;
  return isLong ? setOption(handle, option, number) : setOption(handle, option, pointer);
}

#pragma GCC diagnostic pop

// The same for a library that is out of memory.
static bool noHandles = false;
extern "C" CURL* curl_easy_init() {
  static auto* const make = reinterpret_cast<CURL* (*)()>(dlsym(RTLD_NEXT, "curl_easy_init"));
  return noHandles ? nullptr : make();
}

namespace {

using orvane_test::FormPart;
using orvane_test::Request;
using orvane_test::Response;
using orvane_test::ScriptedServer;
using orvane_test::TextResponse;
using orvane_test::TransferRedirect;

const std::string kHost = "https://acme.orvane.localhost:48443";

std::vector<std::pair<double, double>> progress;
void WriteProgress(double total, double now) {
  progress.emplace_back(total, now);
}

class HttpRequestTest : public testing::Test {
 protected:
  void SetUp() override {
    HttpRequest::init();
    watch = OptionWatch();
    progress.clear();
    g_fld = "folder 7";
    g_title = "T\xC3\xADtulo \"1\"";
    g_desc.clear();
    g_tags.clear();
    g_pUpdFunc = WriteProgress;
  }

  void TearDown() override {
    HttpRequest::cleanup();
    for (std::string* text : {&g_fld, &g_title, &g_desc}) text->clear();
    g_tags.clear();
    g_pUpdFunc = nullptr;
  }

  std::string MakeFile(const std::string& content) {
    WriteFile(folder_ / "movie 1.mp4", content);
    return folder_ / "movie 1.mp4";
  }

  std::string Upload(const std::string& file) {
    return HttpRequest::upload(kHost + "/upload", file, "the token", "the key", "not used");
  }

  ScriptedServer server_;
  TemporaryFolder folder_;
};

std::vector<std::string> Names(const std::vector<FormPart>& parts) {
  std::vector<std::string> names;
  for (const FormPart& part : parts) names.push_back(part.name);
  return names;
}

TEST_F(HttpRequestTest, AnyAnswerIsABodyWhateverItsStatus) {
  TransferRedirect redirect(server_);
  const std::string file = MakeFile("movie");
  for (const Response& answer : {TextResponse(std::string("bytes\0\r\n\xFF", 9)), TextResponse(""),
                                 TextResponse("<h1>not here</h1>", 404), TextResponse("<h1>oh no</h1>", 500)}) {
    server_.RouteOthers([answer](const Request&) { return answer; });
    EXPECT_EQ(HttpRequest::get(kHost + "/"), answer.body);
    EXPECT_EQ(HttpRequest::post(kHost + "/", "a=b"), answer.body);
    EXPECT_EQ(Upload(file), answer.body);
  }
  Response moved = TextResponse("moved", 302);
  moved.headers = {{"Location", "/there"}};
  server_.Route("/", moved);
  server_.RouteOthers([](const Request& request) { return TextResponse(request.target); });
  EXPECT_EQ(HttpRequest::get(kHost + "/"), "/there");
}

TEST_F(HttpRequestTest, UploadSendsItsPartsInOrderAndLeavesOutWhatIsEmpty) {
  TransferRedirect redirect(server_);
  server_.Route("/upload", TextResponse("done"));
  g_desc = "two\nlines";
  g_tags = {"b", "a, c", "b"};
  const std::string content("\0movie\r\n--\xFF", 11);
  EXPECT_EQ(Upload(MakeFile(content)), "done");
  const Request request = server_.Requests().at(0);
  const std::vector<FormPart> parts = request.parts;
  const std::vector<std::string> names = {"Filedata",    "auth_token",   "auth_key",     "folder_id",   "title",
                                          "description", "tags_array[]", "tags_array[]", "tags_array[]"};
  ASSERT_EQ(Names(parts), names);
  EXPECT_EQ(parts[0].fileName, "movie 1.mp4");
  EXPECT_EQ(parts[0].content, content);
  const std::vector<std::string> values = {"the token", "the key", "folder 7", g_title, g_desc, "b", "a, c", "b"};
  for (size_t i = 0; i < values.size(); ++i) EXPECT_EQ(parts[i + 1].content, values[i]);

  for (std::string* text : {&g_title, &g_desc}) text->clear();
  g_tags.clear();
  Upload(MakeFile(""));
  EXPECT_EQ(Names(server_.Requests().at(1).parts), std::vector<std::string>(names.begin(), names.begin() + 5));
}

TEST_F(HttpRequestTest, UploadReportsProgressUpToTheWholeForm) {
  TransferRedirect redirect(server_);
  const std::string file = MakeFile(std::string(3000000, 'm'));
  Upload(file);
  ASSERT_EQ(server_.Requests().size(), 1u);
  ASSERT_FALSE(progress.empty());
  const double length = std::stod(server_.Requests()[0].Header("content-length"));
  EXPECT_GT(length, 3000000);
  EXPECT_EQ(progress.back(), std::make_pair(length, length));
  double before = 0;
  for (const auto& [total, now] : progress) {
    EXPECT_TRUE(total == 0 || total == length) << total;
    EXPECT_GE(now, before);
    before = now;
  }
  // Without a hook there is nobody to tell.
  g_pUpdFunc = nullptr;
  server_.Route("/upload", TextResponse("done"));
  EXPECT_EQ(Upload(file), "done");
}

TEST_F(HttpRequestTest, NothingLeaksIntoTheNextTransfer) {
  TransferRedirect redirect(server_);
  server_.RouteOthers([](const Request&) { return TextResponse(std::string(100000, 'x')); });
  const std::string file = MakeFile("movie");
  Upload(file);
  const size_t calls = progress.size();
  HttpRequest::post(kHost + "/post", "a=b");
  HttpRequest::get(kHost + "/get");
  HttpRequest::post(kHost + "/post", "");
  EXPECT_EQ(progress.size(), calls) << "progress of a request that is no upload";
  Upload(file);
  HttpRequest::get(kHost + "/get");
  const std::vector<Request> requests = server_.Requests();
  const std::pair<const char*, const char*> expected[] = {{"POST", "multipart/form-data"},
                                                          {"POST", "application/x-www-form-urlencoded"},
                                                          {"GET", ""},
                                                          {"POST", "application/x-www-form-urlencoded"},
                                                          {"POST", "multipart/form-data"},
                                                          {"GET", ""}};
  ASSERT_EQ(requests.size(), std::size(expected));
  for (size_t i = 0; i < requests.size(); ++i) {
    const std::string type = requests[i].Header("content-type");
    EXPECT_EQ(requests[i].clientPort, requests[0].clientPort) << "the connection is not kept";
    EXPECT_EQ(requests[i].method, expected[i].first) << i;
    EXPECT_EQ(type.substr(0, type.find(';')), expected[i].second) << i;
  }
  EXPECT_EQ(watch.timeouts, (std::vector<long>{0, 30, 30, 30, 0, 30}));
  EXPECT_EQ(requests[1].body, "a=b");
  EXPECT_EQ(requests[2].body, "");
  EXPECT_EQ(requests[3].body, "");
}

TEST_F(HttpRequestTest, CookiesComeBackUntilCleanup) {
  TransferRedirect redirect(server_);
  Response setting = TextResponse("");
  setting.headers = {{"Set-Cookie", "session=42; Path=/; Secure"}};
  server_.Route("/set", setting);
  HttpRequest::get(kHost + "/set");
  HttpRequest::post(kHost + "/post", "a=b");
  HttpRequest::cleanup();
  HttpRequest::init();
  HttpRequest::get(kHost + "/get");
  const std::vector<Request> requests = server_.Requests();
  ASSERT_EQ(requests.size(), 3u);
  EXPECT_EQ(requests[0].Header("cookie"), "");
  EXPECT_EQ(requests[1].Header("cookie"), "session=42");
  EXPECT_EQ(requests[2].Header("cookie"), "");
}

TEST_F(HttpRequestTest, DiscardsThePartOfABodyThatWasCut) {
  TransferRedirect redirect(server_);
  Response cut = TextResponse(std::string(5000, 'x'));
  cut.cutAfter = 3000;
  server_.Route("/", cut);
  std::ostringstream out;
  EXPECT_NE(HttpRequest::curl_read(kHost + "/", out, 0), CURLE_OK);
  EXPECT_FALSE(out.str().empty()) << "the body was not cut in the middle";
  EXPECT_EQ(HttpRequest::get(kHost + "/"), "error");
  EXPECT_EQ(HttpRequest::post(kHost + "/", "a=b"), "error");
}

TEST_F(HttpRequestTest, FailsWhereNobodyListens) {
  int port;
  {
    ScriptedServer gone;
    port = gone.port();
  }
  TransferRedirect redirect(port);
  EXPECT_EQ(HttpRequest::get(kHost + "/"), "error");
  testing::internal::CaptureStderr();
  EXPECT_EQ(Upload(MakeFile("movie")), "error");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "orvanevorrel: [HttpRequest: starting upload]\n"
            "orvanevorrel: [HttpRequest] curl returned Couldn't connect to server [7]\n");
}

TEST_F(HttpRequestTest, StopsAtTheFirstOptionThatFails) {
  TransferRedirect redirect(server_);
  server_.RouteOthers([](const Request&) { return TextResponse("done"); });
  const std::string file = MakeFile("movie");
  const std::function<std::string()> transfers[] = {[] { return HttpRequest::get(kHost + "/"); },
                                                    [] { return HttpRequest::post(kHost + "/", "a=b"); },
                                                    [&] { return Upload(file); }};
  for (const auto& transfer : transfers) {
    watch = OptionWatch();
    EXPECT_EQ(transfer(), "done");
    for (size_t failing = 0, count = watch.options; failing < count; ++failing) {
      watch = OptionWatch();
      watch.failAt = failing;
      EXPECT_EQ(transfer(), "error") << failing;
      EXPECT_EQ(watch.options, failing + 1);
    }
  }
  EXPECT_EQ(server_.Requests().size(), std::size(transfers));
  // What had been set before the failure is gone.
  watch = OptionWatch();
  HttpRequest::get(kHost + "/");
  EXPECT_EQ(server_.Requests().back().method, "GET");
}

// An answer can be of any length, and comes into the memory of the application that the plug-in is loaded in.
TEST_F(HttpRequestTest, RefusesAnAnswerBeyondTheLimit) {
  TransferRedirect redirect(server_);
  const std::string body(HttpRequest::kMaxAnswerBytes + 1, 'x');
  server_.Route("/long", TextResponse(body));
  server_.Route("/longest", TextResponse(body.substr(1)));
  EXPECT_EQ(HttpRequest::get(kHost + "/long"), "error");
  EXPECT_EQ(HttpRequest::post(kHost + "/long", "a=b"), "error");
  EXPECT_EQ(HttpRequest::get(kHost + "/longest").size(), HttpRequest::kMaxAnswerBytes);
}

// After a handle that worked.
TEST_F(HttpRequestTest, WithoutAHandleEveryTransferFails) {
  TransferRedirect redirect(server_);
  server_.Route("/", TextResponse("body"));
  EXPECT_EQ(HttpRequest::get(kHost + "/"), "body");
  HttpRequest::cleanup();
  noHandles = true;
  HttpRequest::init();
  noHandles = false;
  EXPECT_EQ(HttpRequest::get(kHost + "/"), "error");
  EXPECT_EQ(HttpRequest::post(kHost + "/", ""), "error");
  EXPECT_EQ(HttpRequest::upload(kHost + "/", "/etc/hostname", "", "", ""), "error");
  HttpRequest::init();
}

TEST_F(HttpRequestTest, AStreamThatTakesNothingAbortsTheTransfer) {
  TransferRedirect redirect(server_);
  server_.Route("/", TextResponse("body"));
  std::ostream closed(nullptr);
  EXPECT_EQ(HttpRequest::curl_read(kHost + "/", closed, 0), CURLE_WRITE_ERROR);
  std::ostringstream out;
  char bytes[] = "abcdef";
  EXPECT_EQ(HttpRequest::data_write(bytes, 2, 3, nullptr), 0u);
  EXPECT_EQ(HttpRequest::data_write(bytes, 2, 3, &closed), 0u);
  EXPECT_EQ(HttpRequest::data_write(bytes, 2, 3, &out), 6u);
  EXPECT_EQ(HttpRequest::data_write(bytes, 1, 0, &out), 0u);
  EXPECT_EQ(out.str(), "abcdef");
}

TEST_F(HttpRequestTest, ProgressAmountsAreTruncated) {
  constexpr double kLimit = 9223372036854775808.0;
  const auto report = [](double total, double now) {
    progress.clear();
    EXPECT_EQ(HttpRequest::older_progress(nullptr, 11, 12, total, now), 0);
    return progress.empty() ? std::make_pair(-77.0, -77.0) : progress.back();
  };
  EXPECT_EQ(report(1234.9, 0.99), std::make_pair(1234.0, 0.0));
  EXPECT_EQ(report(-1.9, 4294967296.5), std::make_pair(-1.0, 4294967296.0));
  EXPECT_EQ(report(1e300, -1e300), std::make_pair(kLimit, -kLimit));
  EXPECT_EQ(report(kLimit, std::nan("")), std::make_pair(kLimit, 0.0));
  EXPECT_EQ(HttpRequest::progressCallback(nullptr, 1, 2, 30, 20), 0);
  EXPECT_EQ(progress.back(), std::make_pair(30.0, 20.0));
  g_pUpdFunc = nullptr;
  EXPECT_EQ(HttpRequest::older_progress(nullptr, 1, 2, 3, 4), 0);
}

}  // namespace
