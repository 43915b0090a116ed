// The plug-in's controls, windows and alerts against their pictures in docs/, the windows once with everyday texts and
// once with texts that are as long and as foreign as texts get. With $ORVANE_PICTURES set the pictures are written
// there instead.
#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#import "Controls.h"
#import "ControlsWindow.h"
#import "KcKeychain/KcKeychainQuery.h"
#import "OrvaneUIController.h"
#import "OrvaneUploadWindowController.h"
#import "PictureComparison.h"
#import "RoundedView.h"
#import "SavedLogin.h"
#import "TagsView.h"
#import "UploadCompleteWindowController.h"
#import "UploadStatusWindowController.h"
#include "ExportLifetime.h"
#include "OrvaneUI.h"
#include "PluginResources.h"
#include "ScriptedApi.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

namespace {

// Sixty characters.
#define LONG_FOLDER_NAME "Rohschnitt der zweiten Folge nach der Abnahme vom 14. Januar"

// Wider than the window.
#define LONG_PROJECT_NAME \
  "ماء وضوء – 水與光 – 🎬 – Wasser und Licht, eine Reihe von sechs Filmen für das Frühjahrsprogramm, Teil 4"

// Six folders within each other, all of that name, and beside the innermost another that differs in its last letter.
void AnswerWithDeepFolders(ScriptedApi &api) {
  api.Answer(ScriptedApi::kProjects, ScriptedApi::Success(R"([{"id":"7","project_name":")" LONG_PROJECT_NAME R"("}])"));
  api.Server().Route(std::string(ScriptedApi::kFolders) + "7", [](const orvane_test::Request &request) {
    const size_t at = request.body.find("&folder_id=");
    const int depth = at == std::string::npos ? 0 : std::stoi(request.body.substr(at + 11));
    const std::string id = std::to_string(depth + 1);
    if (depth < 6) {
      return orvane_test::TextResponse(
          ScriptedApi::Success(R"([{"id":")" + id + R"(","name":")" LONG_FOLDER_NAME R"(","sub_folders":1}])"));
    }
    return orvane_test::TextResponse(ScriptedApi::Success(
        R"([{"id":"20","name":")" LONG_FOLDER_NAME R"(","sub_folders":0},{"id":"21","name":")" LONG_FOLDER_NAME
        R"(2","sub_folders":0},{"id":"22","name":"秋のキャンペーン 🎬","sub_folders":0}])"));
  });
}

// Backgrounds lie below other views, the sign that something works lies where its result will stand, and the button
// that adds a tag stands in a free corner of the tags' view.
bool MayOverlap(NSView *view) {
  return [view isKindOfClass:[RoundedView class]] || [view isKindOfClass:[NSProgressIndicator class]] ||
         [view isKindOfClass:[TagsView class]];
}

// Whether every control stands within the view that holds it and beside the others.
void ExpectLaidOut(NSView *parent) {
  NSArray *views = [parent subviews];
  for (NSUInteger i = 0; i < [views count]; ++i) {
    NSView *view = [views objectAtIndex:i];
    if ([view isHidden]) continue;
    EXPECT_TRUE(NSContainsRect([parent bounds], [view frame])) << [[view description] UTF8String];
    for (NSUInteger j = 0; j < i; ++j) {
      NSView *other = [views objectAtIndex:j];
      if ([other isHidden] || MayOverlap(view) || MayOverlap(other)) continue;
      EXPECT_FALSE(NSIntersectsRect([view frame], [other frame]))
          << [[view description] UTF8String] << [[other description] UTF8String];
    }
    if ([view isMemberOfClass:[NSView class]] || [view isKindOfClass:[TagsView class]]) ExpectLaidOut(view);
  }
}

class WindowPictures : public testing::Test {
 protected:
  void SetUp() override {
    UsePluginResources();
    g_step = "start";
    g_prj = g_fld = "0";
    g_pCleanupFunc = [] {};
    ASSERT_EQ(client_->login("acme", "editor", "secret"), "success");
  }

  // Shows the window and compares, or writes, its picture.
  static void ExpectPicture(NSWindow *window, NSString *name) {
    ASSERT_NE(window, nil) << [name UTF8String];
    if (![window isVisible]) [window orderFront:nil];
    [window makeFirstResponder:nil];  // without a cursor, which blinks
    ExpectLaidOut([window contentView]);
    NSBitmapImageRep *found = PictureOf(window);
    const char *folder = getenv("ORVANE_PICTURES");
    if (folder) {
      NSString *path = [NSString stringWithFormat:@"%s/%@.png", folder, name];
      EXPECT_TRUE([[found representationUsingType:NSPNGFileType properties:@{}] writeToFile:path atomically:YES]);
      return;
    }
    NSBitmapImageRep *wanted = ReadPicture([NSString stringWithFormat:@"%s/%@.png", ORVANE_DOCUMENTATION, name]);
    ASSERT_NE(wanted, nil) << [name UTF8String] << " is not in docs/; scripts/pictures makes it";
    EXPECT_EQ(ComparePictures(found, wanted, DifferencesFolder(), name), "") << [name UTF8String];
  }

  // Does what opens an alert, and compares the alert's picture.
  static void ExpectAlert(const std::function<void()> &act, NSString *name) {
    RunWithScript(act, [name](Script &actions) { ExpectAlertWhenItComes(actions, name); });
  }

  static void ExpectAlertWhenItComes(Script &actions, NSString *name) {
    actions.WaitFor("the alert", [] { return IsModal(AlertPanel()); });
    actions.OnMain([name] {
      ExpectPicture(AlertPanel(), name);
      DismissAlert();
    });
    actions.WaitFor("the end of the alert", [] { return AlertPanel() == nil; });
  }

  static void FillLogin(OrvaneUIController *login, NSString *subdomain, NSString *username, NSString *password) {
    [[login inputSubdomain] setStringValue:subdomain];
    [[login inputUsername] setStringValue:username];
    [[login inputPassword] setStringValue:password];
    [[login rememberMeCheckbox] setState:NSControlStateValueOn];
  }

  static void AddTags(OrvaneUploadWindowController *upload, NSArray *tags) {
    for (NSString *tag in tags) {
      [[[upload tagView] tagTextField] setStringValue:tag];
      [[upload tagView] addTagsButtonDidTouch:nil];
    }
  }

  ScriptedApi api_;
  std::unique_ptr<OrvaneProjectsAPI> client_ = std::make_unique<OrvaneProjectsAPI>();
};

// A keyring that cannot be reached refuses to save. This comes first: a connection once made is kept.
TEST_F(WindowPictures, KeychainAlert) {
  const std::string bus = getenv("DBUS_SESSION_BUS_ADDRESS");
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus", 1);
  @autoreleasepool {
    OrvaneUIController *login = [[[OrvaneUIController alloc] initWithProjectsApiPointer:client_.get()] autorelease];
    FillLogin(login, @"acme", @"editor", @"secret");
    ExpectAlert([login] { [login loginBtn:nil]; }, @"alert-keychain");
  }
  setenv("DBUS_SESSION_BUS_ADDRESS", bus.c_str(), 1);
}

TEST_F(WindowPictures, Gallery) {
  NSWindow *window = [MakeControlsWindow() autorelease];
  ExpectPicture(window, @"gallery");
  [window orderOut:nil];
}

TEST_F(WindowPictures, Login) {
  @autoreleasepool {
    OrvaneUIController *login = [[[OrvaneUIController alloc] initWithProjectsApiPointer:client_.get()] autorelease];
    FillLogin(login, @"acme", @"editor", @"correct horse");
    ExpectPicture([login orvaneWindow], @"login");
    FillLogin(login, @"", @"", @"");
    ExpectAlert([login] { [login loginBtn:nil]; }, @"alert-no-subdomain");
    FillLogin(login, @"acme", @"", @"");
    ExpectAlert([login] { [login loginBtn:nil]; }, @"alert-no-username");
    FillLogin(login, @"acme", @"editor", @"");
    ExpectAlert([login] { [login loginBtn:nil]; }, @"alert-no-password");
    FillLogin(login, @"acme", @"editor", @"wrong");
    ExpectAlert([login] { [login loginBtn:nil]; }, @"alert-wrong-password");
    api_.Answer(ScriptedApi::kStep, ScriptedApi::Refusal("Unknown customer."));
    ExpectAlert([login] { [login loginBtn:nil]; }, @"alert-wrong-subdomain");
  }
}

TEST_F(WindowPictures, LoginWithLongTexts) {
  api_.Answer(ScriptedApi::kVersion, "12.345.6789-beta-for-the-customer-in-the-north");
  @autoreleasepool {
    OrvaneUIController *login = [[[OrvaneUIController alloc] initWithProjectsApiPointer:client_.get()] autorelease];
    // A label of a host name has 63 characters at most.
    FillLogin(login, @"gemeinschaftsproduktion-der-filmwerkstatt-an-der-oberen-elbe-20", @"محرر 剪辑师 🎬",
              @"correct horse battery staple, correct horse battery staple");
    ExpectPicture([login orvaneWindow], @"login-long-texts");
  }
}

TEST_F(WindowPictures, LoginWithANewVersion) {
  api_.Answer(ScriptedApi::kVersion, "1.2");
  @autoreleasepool {
    OrvaneUIController *login = [[[OrvaneUIController alloc] initWithProjectsApiPointer:client_.get()] autorelease];
    ExpectPicture([login orvaneWindow], @"login-new-version");
  }
}

// Needs the encoding presets in their place.
TEST_F(WindowPictures, SavedLoginAlert) {
  KcKeychainQuery *saved = SavedLoginQuery();
  [saved setPassword:@"{\"orvaneSubdomain\":\"acme\",\"un\":\"editor\",\"p\":\"of last year\"}"];
  ASSERT_TRUE([saved save:NULL]);
  client_.reset();  // there is one client at a time, and this one is the window side's own
  @autoreleasepool {
    OrvaneUI ui;
    RunWithScript([&ui] { ui.Launch(); },
                  [](Script &actions) {
                    ExpectAlertWhenItComes(actions, @"alert-saved-login");
                    actions.WaitFor("the login window", [] { return IsModal(WindowTitled(@"Orvane: Log In")); });
                    actions.OnMain([] { [WindowTitled(@"Orvane: Log In") performClose:nil]; });
                  });
  }
}

TEST_F(WindowPictures, Upload) {
  @autoreleasepool {
    OrvaneUploadWindowController *upload =
        [[[OrvaneUploadWindowController alloc] initWithProjectsApiPointer:client_.get()] autorelease];
    ExpectAlert([upload] { [upload uploadBtn:nil]; }, @"alert-no-title");
    [[upload inputTitle] setStringValue:@"Opening sequence, second cut"];
    ExpectAlert([upload] { [upload uploadBtn:nil]; }, @"alert-no-project");
    Choose([upload inputProject], @"Feature");
    ExpectAlert([upload] { [upload uploadBtn:nil]; }, @"alert-no-folder");
    Choose([upload inputFolder], @"   B");
    [[upload fileDescription] setString:@"With the new music from 01:20 on.\nPlease look at the titles."];
    AddTags(upload, @[ @"second cut", @"music", @"25 fps" ]);
    ExpectPicture([upload orvaneUploadWindow], @"upload");
  }
}

TEST_F(WindowPictures, UploadWithLongTexts) {
  AnswerWithDeepFolders(api_);
  @autoreleasepool {
    OrvaneUploadWindowController *upload =
        [[[OrvaneUploadWindowController alloc] initWithProjectsApiPointer:client_.get()] autorelease];
    Choose([upload inputProject], @LONG_PROJECT_NAME);
    Choose([upload inputFolder], @"                  " @LONG_FOLDER_NAME @"2");
    EXPECT_EQ(g_fld, "21");
    [[upload inputTitle]
        setStringValue:@"電影《水與光》第二版 – الماء والضوء – 🎬 Wasser und Licht, zweite Fassung mit neuer Musik"];
    // Typed, which makes the text view grow.
    for (NSString *line in @[
           @"这是第二个版本,请检查字幕。", @"هذه هي النسخة الثانية.", @"🎬🎞️ Bitte bis Freitag ansehen.", @"4",
           @"5", @"6", @"7", @"8", @"9"
         ]) {
      [[upload fileDescription] insertText:[line stringByAppendingString:@"\n"]];
    }
    [[upload fileDescription] scrollRangeToVisible:NSMakeRange(0, 0)];
    AddTags(upload, @[
      @"a tag of more than three hundred points, which is cut at two hundred and sixty", @"剪辑", @"مونتاج", @"🎬",
      @"Nachtaufnahme", @"Szene 12", @"Szene 13", @"Farbkorrektur", @"ohne Ton", @"Rohschnitt", @"25 fps"
    ]);
    ExpectPicture([upload orvaneUploadWindow], @"upload-long-texts");
  }
}

TEST_F(WindowPictures, Uploading) {
  @autoreleasepool {
    UploadStatusWindowController *status =
        [[[UploadStatusWindowController alloc] initWithProjectsApiPointer:client_.get()] autorelease];
    [status updateProgressBarWithTotal:203.3e6 now:77.4e6];
    ExpectPicture([status uploadStatusWindow], @"uploading");
    [[status uploadStatusWindow] orderOut:nil];
  }
}

TEST_F(WindowPictures, UploadRefusedAlert) {
  g_prj = "1";
  g_fpath = ORVANE_BUNDLE_PATH "/Contents/Info.plist";  // any file
  NSString *const texts[] = {
      @"The folder is full.",
      @"Le dossier « Étalonnage » n'accepte plus de films depuis le 3 novembre : "
      @"demandez de la place à la production, ou choisissez un autre dossier. "
      @"这个文件夹已满。 المجلد ممتلئ 🎬 "
      @"https://gemeinschaftsproduktion-der-filmwerkstatt-an-der-oberen-elbe-20.orvane.localhost/"
      @"help/quota?folder=d0c0ffee-0000-4000-8000-00000000f00d&project=4711"};
  NSString *const names[] = {@"alert-upload-refused", @"alert-long-text"};
  for (int i = 0; i < 2; ++i) {
    api_.Answer(std::string(ScriptedApi::kUpload) + "1", ScriptedApi::Refusal([texts[i] UTF8String]));
    @autoreleasepool {
      UploadStatusWindowController *status =
          [[UploadStatusWindowController alloc] initWithProjectsApiPointer:client_.get()];
      RunWithScript(
          [status] {
            [status showWindow];
            SpinUntil([] { return !ExportLifetime::UploadIsRunning(); });
          },
          [i, &names](Script &actions) { ExpectAlertWhenItComes(actions, names[i]); });
      [[status uploadStatusWindow] orderOut:nil];
      [status release];
    }
  }
}

TEST_F(WindowPictures, Complete) {
  @autoreleasepool {
    UploadCompleteWindowController *complete =
        [[[UploadCompleteWindowController alloc] initWithLink:@"https://acme.orvane.localhost/review/7"] autorelease];
    ExpectPicture([complete uploadCompleteWindow], @"complete");
  }
}

}  // namespace
