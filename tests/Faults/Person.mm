#import "Person.h"

#include <sys/types.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#import "Controls.h"

namespace window_test {

namespace {

NSString *const kLogin = @"Orvane: Log In";
NSString *const kUpload = @"Orvane: Upload";
NSString *const kProgress = @"Orvane: Uploading";
NSString *const kComplete = @"Orvane: Upload Complete";

// A window is worked when it was the modal one for so many looks: one may go an instant before the next comes.
constexpr int kLooks = 4;
constexpr int kQuietLooks = 20;

id Control(NSString *title, NSString *name) {
  return [static_cast<id>([WindowTitled(title) delegate]) valueForKey:name];
}

// The first few titles of a menu.
nlohmann::json Titles(NSPopUpButton *popUp) {
  nlohmann::json titles = nlohmann::json::array();
  for (NSString *title in [popUp itemTitles]) {
    if (titles.size() < 12) titles.push_back(std::string([title UTF8String]).substr(0, 80));
  }
  return titles;
}

// What can be chosen beside the placeholder; nil for nothing.
NSString *Choice(NSPopUpButton *popUp, NSString *placeholder) {
  for (NSString *title in [[popUp itemTitles] reverseObjectEnumerator]) {
    if (![title isEqualToString:placeholder]) return title;
  }
  return nil;
}

}  // namespace

Person::Person(const nlohmann::json &wish, orvane_host::HostSession &host, nlohmann::json &seen)
    : wish_(wish), host_(host), seen_(seen) {}

void Person::BeginExport() {
  logins_ = uploads_ = quiet_ = 0;
  upload_failed_ = false;
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
  for (NSString *known in @[ kLogin, kUpload, kComplete ]) {
    if (IsModal(WindowTitled(known))) title = known;
  }
  if (!title && WindowTitled(kProgress) && !upload_failed_) title = kProgress;
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
  if (Interrupts(title) || title == kProgress) return;
  if (title == kLogin && logins_ < (wish_.value("again", false) ? 2 : 1)) {
    LogIn();
  } else if (title == kUpload && uploads_ == 0) {
    ChooseAndUpload();
  } else if (title == kComplete && wish_.value("open", false)) {
    Press(Control(title, @"openOrvaneBtn"));
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
  if (what == "export") seen_["second"] = host_.ExportTimeline();
  std::ofstream(wish_.value("interrupted", ""));
  return true;
}

void Person::LogIn() {
  ++logins_;
  [Control(kLogin, @"inputSubdomain") setStringValue:@"acme"];
  [Control(kLogin, @"inputUsername") setStringValue:@"editor"];
  [Control(kLogin, @"inputPassword") setStringValue:@"let-me-in"];
  const bool remember = wish_.value("remember", false) && logins_ == 1;
  [Control(kLogin, @"rememberMeCheckbox") setState:remember ? NSOnState : NSOffState];
  Press(Control(kLogin, @"loginBtn"));
}

void Person::ChooseAndUpload() {
  ++uploads_;
  NSPopUpButton *projects = Control(kUpload, @"inputProject");
  seen_["projects"] = [projects numberOfItems] - 1;
  seen_["project_titles"] = Titles(projects);
  if (NSString *project = Choice(projects, @"Select a project...")) Choose(projects, project);
  NSPopUpButton *folders = Control(kUpload, @"inputFolder");
  seen_["folders"] = [folders numberOfItems] - 1;
  seen_["folder_titles"] = Titles(folders);
  if (NSString *folder = Choice(folders, @"Select a folder...")) Choose(folders, folder);
  [Control(kUpload, @"inputTitle") setStringValue:@"Scene 12"];
  const std::string vanishing = wish_.value("vanish", "");
  if (!vanishing.empty()) std::filesystem::remove_all(vanishing);
  Press(Control(kUpload, @"uploadBtn"));
}

void Person::ReadAlert() {
  dismissing_ = true;
  const std::string texts = AlertTexts();
  if (texts.find("error uploading") != std::string::npos) upload_failed_ = true;
  seen_["alerts"].push_back(texts.substr(0, 2000));
  DismissAlert();
  dismissing_ = false;
  alert_looks_ = 0;  // it goes in a moment
}

void Person::NoteProgress() {
  NSWindow *progress = WindowTitled(kProgress);
  if (progress) seen_["progress"] = TextsOf(progress).substr(0, 2000);
  NSWindow *complete = WindowTitled(kComplete);
  if (complete) seen_["complete"] = TextsOf(complete).substr(0, 2000);
}

bool Person::ExportIsOver() {
  const bool upload_is_on = WindowTitled(kProgress) && !upload_failed_;
  return quiet_ >= kQuietLooks && !upload_is_on;
}

}  // namespace window_test
