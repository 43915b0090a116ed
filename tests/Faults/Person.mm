#import "Person.h"

#include <malloc.h>
#include <sys/types.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#import "Controls.h"
#import "PluginWindows.h"

namespace window_test {

namespace {

// A window is worked when it was the modal one for so many looks: one may go an instant before the next comes.
constexpr int kLooks = 4;
constexpr int kQuietLooks = 20;

// What can be chosen beside the placeholder; nil for nothing.
NSString *Choice(NSPopUpButton *popUp, NSString *placeholder) {
  for (NSString *title in [[popUp itemTitles] reverseObjectEnumerator]) {
    if (![title isEqualToString:placeholder]) return title;
  }
  return nil;
}

size_t Entries(const char *folder) {
  const std::filesystem::directory_iterator entries(folder);
  return static_cast<size_t>(std::distance(begin(entries), end(entries)));
}

}  // namespace

Person::Person(const nlohmann::json &wish, orvane_host::HostSession &host, nlohmann::json &seen)
    : wish_(wish), host_(host), seen_(seen) {}

void Person::BeginExport() {
  logins_ = uploads_ = tries_ = quiet_ = 0;
}

void Person::Act() {
  NoteProgress();
  alert_looks_ = IsModal(AlertPanel()) ? alert_looks_ + 1 : 0;
  if (alert_looks_ > 0) {
    quiet_ = 0;
    if (alert_looks_ >= kLooks && !dismissing_) ReadAlert();
    return;
  }
  NSString *title = nil;
  for (NSString *known in @[ kLoginTitle, kUploadTitle, kCompleteTitle ]) {
    if (IsModal(WindowTitled(known))) title = known;
  }
  if (!title && WindowTitled(kProgressTitle)) title = kProgressTitle;
  if (!title && WindowTitled(kNotUploadedTitle) && !IsDoneWithFailure()) title = kNotUploadedTitle;
  looks_ = title == title_ ? looks_ + 1 : 0;
  title_ = title;
  const bool nothing = !title && ![NSApp modalWindow];
  quiet_ = nothing ? quiet_ + 1 : 0;
  if (!title || busy_ || looks_ < kLooks) return;
  looks_ = 0;
  busy_ = true;  // working a control may go round the event loop
  WorkOn(title);
  busy_ = false;
}

void Person::WorkOn(NSString *title) {
  if (Interrupts(title) || title == kProgressTitle) return;
  if (title == kLoginTitle && logins_ < (wish_.value("again", false) ? 2 : 1)) {
    WorkLogin();
  } else if (title == kUploadTitle && uploads_ == 0) {
    WorkUpload();
  } else if (title == kNotUploadedTitle) {
    WorkFailure();
  } else if (title == kCompleteTitle && wish_.value("open", false)) {
    Press(PluginControl(title, @"openOrvaneBtn"));
  } else {
    [WindowTitled(title) performClose:nil];
  }
}

// Whether it was time for what the wish wants to happen meanwhile.
bool Person::Interrupts(NSString *title) {
  const std::string what = wish_.value("meanwhile", "");
  if (interrupted_ || what.empty() || wish_.value("in", "") != [title UTF8String]) return false;
  interrupted_ = true;
  if (what == "kill") raise(SIGKILL);
  if (what == "shutdown") host_.Shutdown();
  if (what == "end") [NSApp stopModal];
  if (what == "export") seen_["second"] = host_.ExportTimeline();
  std::ofstream(wish_.value("interrupted", ""));
  return true;
}

void Person::WorkLogin() {
  seen_["logins"] = ++logins_;
  if (wish_.value("download", false)) Press(PluginControl(kLoginTitle, @"versionCheckDownloadBtn"));
  LogIn("let-me-in", wish_.value("remember", false) && logins_ == 1);
}

void Person::WorkUpload() {
  ++uploads_;
  NSPopUpButton *projects = PluginControl(kUploadTitle, @"inputProject");
  seen_["projects"] = [projects numberOfItems] - 1;
  if (NSString *project = Choice(projects, @"Select a project...")) ChooseProject(project);
  NSPopUpButton *folders = PluginControl(kUploadTitle, @"inputFolder");
  seen_["folders"] = [folders numberOfItems] - 1;
  if (NSString *folder = Choice(folders, @"Select a folder...")) ChooseFolder(folder);
  const std::string vanishing = wish_.value("vanish", "");
  if (!vanishing.empty()) std::filesystem::remove_all(vanishing);
  Upload(@"Scene 12");
}

bool Person::IsDoneWithFailure() {
  return tries_ >= wish_.value("tries", 0) && !wish_.value("close", false);
}

void Person::WorkFailure() {
  NSButton *close = PluginControl(kNotUploadedTitle, @"closeBtn");
  if ([close isHidden]) return;
  if (tries_ >= wish_.value("tries", 0)) {
    Press(close);
    return;
  }
  ++tries_;
  NoteLevels();
  Press(PluginControl(kNotUploadedTitle, @"tryAgainBtn"));
}

void Person::ReadAlert() {
  dismissing_ = true;
  const std::string texts = AlertTexts();
  seen_["alerts"].push_back(texts.substr(0, 2000));
  DismissAlert();
  dismissing_ = false;
  alert_looks_ = 0;  // it goes in a moment
}

void Person::NoteProgress() {
  NSWindow *failure = WindowTitled(kNotUploadedTitle);
  NSWindow *progress = failure ? failure : WindowTitled(kProgressTitle);
  if (progress) seen_["progress"] = TextsOf(progress).substr(0, 2000);
  if (failure) seen_["another try"] = ![PluginControl(kNotUploadedTitle, @"tryAgainBtn") isHidden];
}

void Person::NoteLevels() {
  seen_["levels"].push_back({mallinfo2().uordblks / 1024, Entries("/proc/self/fd"), Entries("/proc/self/task")});
}

bool Person::ExportIsOver() {
  return quiet_ >= kQuietLooks && !WindowTitled(kProgressTitle);
}

}  // namespace window_test
