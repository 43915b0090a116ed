#include "PluginRun.h"

#include <cstdlib>

#import "Controls.h"
#include "LocalTrust.h"
#import "PluginWindows.h"
#include "SavedItem.h"
#include "ScriptedServer.h"
#include "Secrets.h"

namespace window_test {

namespace {

bool PluginWindowIsOpen() {
  return WindowTitled(kLoginTitle) || WindowTitled(kUploadTitle) || WindowTitled(kProgressTitle) ||
         WindowTitled(kCompleteTitle) || AlertPanel();
}

}  // namespace

void PluginRun::SetUp() {
  std::filesystem::create_directory(folder_ / "temporary");
  orvane_test::ScriptedServer::AuthorityFile();  // lives as long as the process, so not in this test's folder
  setenv("TMPDIR", (folder_ / "temporary").c_str(), 1);
  orvane_service::ServiceOptions options;
  options.data = folder_ / "service";
  options.port = 0;
  options.demo_password = kPassword;
  service_ = std::make_unique<orvane_service::Service>(options);
  service_->Start();
  orvane_host::SetTrustedAuthority(service_->AuthorityFile());
  orvane_host::SetConnectPort(service_->Port());
  ForgetItem();
  orvane_host::Sequence sequence;
  sequence.width = 320;
  sequence.height = 180;
  sequence.seconds = 0.5;
  host_ = std::make_unique<orvane_host::HostSession>(sequence);
  host_->Load(ORVANE_BUNDLE_PATH);
  host_->Startup();
}

void PluginRun::TearDown() {
  if (host_) host_->Shutdown();
  host_.reset();
  orvane_host::SetConnectPort(0);
  orvane_host::SetTrustedAuthority("");
  service_.reset();
  setenv("TMPDIR", outer_.c_str(), 1);
}

csSDK_int32 PluginRun::Export(const std::function<void(Script &)> &script) {
  csSDK_int32 answer = -2;
  bool script_is_through = false;
  RunWithScript(
      [this, &answer, &script_is_through] {
        answer = host_->ExportTimeline();
        SpinUntil([&script_is_through] { return script_is_through || !PluginWindowIsOpen(); });
      },
      [&script, &script_is_through](Script &actions) {
        script(actions);
        actions.OnMain([&script_is_through] { script_is_through = true; });
      });
  return answer;
}

void PluginRun::LogInAndRemember(Script &actions) {
  actions.WaitFor("the login window", [] { return IsModal(WindowTitled(kLoginTitle)); });
  actions.Post([] { LogIn(kPassword, true); });
}

void PluginRun::ChooseAndUpload(Script &actions) {
  actions.WaitFor("the upload window", [] { return IsModal(WindowTitled(kUploadTitle)); });
  actions.OnMain([] {
    ChooseProject(@"東京ドキュメンタリー");
    ChooseFolder(@"      最終版 🎬");
    Upload(@"Scene 12");
  });
}

void PluginRun::CloseComplete(Script &actions) {
  actions.WaitFor("the complete window", [] { return IsModal(WindowTitled(kCompleteTitle)); });
  CloseWindow(actions, kCompleteTitle);
}

void PluginRun::UploadAndClose(Script &actions) {
  ChooseAndUpload(actions);
  CloseComplete(actions);
}

void PluginRun::CloseWindow(Script &actions, NSString *title) {
  actions.WaitFor("the window to close", [title] { return WindowTitled(title) != nil; });
  actions.OnMain([title] { [WindowTitled(title) performClose:nil]; });
}

void PluginRun::SaveLogin() {
  ASSERT_TRUE(SaveItem(std::string(R"({"orvaneSubdomain":"acme","un":"editor","p":")") + kPassword + "\"}"));
}

bool PluginRun::LoginIsSaved() {
  return ItemIsSaved();
}

std::vector<std::string> PluginRun::TemporaryFiles() const {
  std::vector<std::string> names;
  for (const auto &entry : std::filesystem::directory_iterator(folder_ / "temporary")) {
    if (entry.path().filename().string().rfind("VorrelExport_", 0) == 0) names.push_back(entry.path().filename());
  }
  return names;
}

std::vector<std::string> PluginRun::StoredDigests() const {
  std::vector<std::string> digests;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(service_->Data() / "files")) {
    if (entry.is_regular_file()) digests.push_back(orvane_service::Sha256Hex(ReadFile(entry.path())));
  }
  return digests;
}

}  // namespace window_test
