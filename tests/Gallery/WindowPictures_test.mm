// The plug-in's controls, windows and alerts against their pictures, the windows once with everyday texts and once with
// texts that are as long as texts get. What README.md shows is in docs/, the others are in pictures/. With
// $ORVANE_MAKE_PICTURES set the pictures are written there instead.
#import <Cocoa/Cocoa.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#import "Controls.h"
#import "ControlsWindow.h"
#include "ExportState.h"
#import "OrvaneUIController.h"
#import "OrvaneUploadWindowController.h"
#import "PictureComparison.h"
#include "PluginResources.h"
#include "ScriptedApi.h"
#import "TagsView.h"
#include "TemporaryFolder.h"
#import "UploadCompleteWindowController.h"
#import "UploadStatusWindowController.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

namespace {

// Sixty characters.
#define LONG_FOLDER_NAME "Rohschnitt der zweiten Folge nach der Abnahme vom 14. Januar"

// Wider than the window.
#define LONG_PROJECT_NAME \
  "Вода и свет – 水與光 – Wasser und Licht, eine Reihe von sechs Filmen für das Frühjahrsprogramm, Teil 4 (neu)"

// Six folders within each other, all of that name, and beside the innermost another that differs in its last letter.
void AnswerWithDeepFolders(ScriptedApi &api) {
  api.Answer(ScriptedApi::kProjects, ScriptedApi::Success(R"([{"id":"7","project_name":")" LONG_PROJECT_NAME R"("}])"));
  api.Server().Route(std::string(ScriptedApi::kFolders) + "7", [](const orvane_test::Request &request) {
    const size_t at = request.body.find("&folder_id=");
    const int depth = at == std::string::npos ? 0 : std::stoi(request.body.substr(at + 11));
    std::string folders = R"([{"id":")" + std::to_string(depth + 1) +
                          R"(","name":")" LONG_FOLDER_NAME R"(","sub_folders":)" + (depth < 6 ? "1}" : "0}");
    if (depth == 6) folders += R"(,{"id":"21","name":")" LONG_FOLDER_NAME R"(2","sub_folders":0})";
    return orvane_test::TextResponse(ScriptedApi::Success(folders + "]"));
  });
}

NSString *PathOf(NSString *name) {
  const bool shown = [@[ @"login", @"upload", @"uploading", @"not-uploaded", @"complete" ] containsObject:name];
  return [NSString stringWithFormat:@"%s/%@.png", shown ? ORVANE_DOCUMENTATION : ORVANE_PICTURES, name];
}

class WindowPictures : public testing::Test {
 protected:
  void SetUp() override {
    UsePluginResources();
    g_step = "start";
    g_prj = g_fld = "0";
    g_sd = "acme";
    g_un = "editor";
    g_title = "Opening sequence, second cut";
    g_pCleanupFunc = [] {};
    ASSERT_EQ(client_.login("acme", "editor", "secret"), "success");
  }

  // Compares the window's picture; empty when it is as it should be.
  static std::string Difference(NSWindow *window, NSString *name) {
    NSBitmapImageRep *wanted = [NSBitmapImageRep imageRepWithContentsOfFile:PathOf(name)];
    if (!wanted) return "there is no such picture; scripts/pictures makes it";
    return ComparePictures(PictureOf(window), wanted, name);
  }

  // Shows the window and compares, or writes, its picture.
  static void ExpectPicture(NSWindow *window, NSString *name) {
    ASSERT_NE(window, nil) << [name UTF8String];
    if (![window isVisible]) [window orderFront:nil];
    [window makeFirstResponder:nil];  // without a cursor, which blinks
    if (getenv("ORVANE_MAKE_PICTURES")) {
      NSData *png = [PictureOf(window) representationUsingType:NSPNGFileType properties:@{}];
      EXPECT_TRUE([png writeToFile:PathOf(name) atomically:YES]) << [PathOf(name) UTF8String];
    }
    EXPECT_EQ(Difference(window, name), "") << [name UTF8String];
  }

  // Does what opens an alert, and compares the alert's picture.
  static void ExpectAlert(const std::function<void()> &act, NSString *name) {
    RunWithScript(act, [name](Script &actions) {
      actions.WaitFor("the alert", [] { return IsModal(AlertPanel()); });
      actions.OnMain([name] {
        ExpectPicture(AlertPanel(), name);
        DismissAlert();
      });
      actions.WaitFor("the end of the alert", [] { return AlertPanel() == nil; });
    });
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

  // Uploads g_fpath to a service that refuses it, and compares the alert's and then the window's picture.
  void ExpectFailedUpload(const std::string &message, NSString *alert, NSString *name) {
    g_prj = "1";
    api_.Answer(std::string(ScriptedApi::kUpload) + "1", ScriptedApi::Refusal(message));
    @autoreleasepool {
      UploadStatusWindowController *status =
          [[[UploadStatusWindowController alloc] initWithProjectsApiPointer:&client_] autorelease];
      ExpectAlert(
          [status] {
            [status showWindow];
            SpinUntil([] { return g_export.activity != ExportState::Activity::kUpload; });
          },
          alert);
      EXPECT_TRUE(SpinUntil([status] { return ![[status closeBtn] isHidden]; }));
      ExpectPicture([status uploadStatusWindow], name);
      [[status uploadStatusWindow] orderOut:nil];
    }
  }

  ScriptedApi api_;
  OrvaneProjectsAPI client_;
};

TEST_F(WindowPictures, Gallery) {
  NSWindow *window = [MakeControlsWindow() autorelease];
  ExpectPicture(window, @"gallery");
  [window orderOut:nil];
}

TEST_F(WindowPictures, Login) {
  @autoreleasepool {
    OrvaneUIController *login = [[[OrvaneUIController alloc] initWithProjectsApiPointer:&client_] autorelease];
    FillLogin(login, @"acme", @"editor", @"correct horse");
    ExpectPicture([login orvaneWindow], @"login");
    [[login inputUsername] setStringValue:@"editer"];
    EXPECT_NE(Difference([login orvaneWindow], @"login"), "") << "a letter makes a difference";
  }
}

TEST_F(WindowPictures, LoginWithLongTextsAndANewVersion) {
  api_.Answer(ScriptedApi::kVersion, "12.345.6789-beta-for-the-customer-in-the-north");
  @autoreleasepool {
    OrvaneUIController *login = [[[OrvaneUIController alloc] initWithProjectsApiPointer:&client_] autorelease];
    // A label of a host name has 63 characters at most.
    FillLogin(login, @"gemeinschaftsproduktion-der-filmwerkstatt-an-der-oberen-elbe-20", @"Редактор 剪辑师 カメラ",
              @"correct horse battery staple, correct horse battery staple");
    ExpectPicture([login orvaneWindow], @"login-long-texts");
  }
}

TEST_F(WindowPictures, Upload) {
  @autoreleasepool {
    OrvaneUploadWindowController *upload =
        [[[OrvaneUploadWindowController alloc] initWithProjectsApiPointer:&client_] autorelease];
    ExpectAlert([upload] { [upload uploadBtn:nil]; }, @"alert-no-title");
    [[upload inputTitle] setStringValue:@"Opening sequence, second cut"];
    Choose([upload inputProject], @"Feature");
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
        [[[OrvaneUploadWindowController alloc] initWithProjectsApiPointer:&client_] autorelease];
    Choose([upload inputProject], @LONG_PROJECT_NAME);
    Choose([upload inputFolder], @"                  " @LONG_FOLDER_NAME @"2");
    EXPECT_EQ(g_fld, "21");
    [[upload inputTitle]
        setStringValue:
            @"電影《水與光》第二版 – Вода и свет – Wasser und Licht, zweite Fassung mit neuer Musik und Ton"];
    // Typed, which makes the text view grow.
    for (NSString *line in @[
           @"这是第二个版本,请检查字幕。", @"Это вторая версия.", @"Bitte bis Freitag ansehen.", @"4", @"5", @"6", @"7",
           @"8", @"9"
         ]) {
      [[upload fileDescription] insertText:[line stringByAppendingString:@"\n"]];
    }
    [[upload fileDescription] scrollRangeToVisible:NSMakeRange(0, 0)];
    AddTags(upload, @[
      @"a tag of more than three hundred points, which is cut at two hundred and sixty", @"剪辑", @"монтаж", @"カメラ",
      @"Nachtaufnahme", @"Szene 12", @"Szene 13", @"Farbkorrektur", @"ohne Ton", @"Rohschnitt", @"25 fps"
    ]);
    ExpectPicture([upload orvaneUploadWindow], @"upload-long-texts");
  }
}

TEST_F(WindowPictures, UploadWithMoreTagsThanFit) {
  @autoreleasepool {
    OrvaneUploadWindowController *upload =
        [[[OrvaneUploadWindowController alloc] initWithProjectsApiPointer:&client_] autorelease];
    [[upload inputProject] selectItemWithTitle:@"Select a project..."];
    NSMutableArray *tags = [NSMutableArray array];
    for (int scene = 1; scene <= 46; ++scene) [tags addObject:[NSString stringWithFormat:@"Szene %d", scene]];
    AddTags(upload, tags);
    ExpectPicture([upload orvaneUploadWindow], @"upload-many-tags");
    [[upload orvaneUploadWindow] makeFirstResponder:[[[upload tagView] tagButtons] lastObject]];
    ExpectPicture([upload orvaneUploadWindow], @"upload-last-tag");
  }
}

TEST_F(WindowPictures, Uploading) {
  @autoreleasepool {
    UploadStatusWindowController *status =
        [[[UploadStatusWindowController alloc] initWithProjectsApiPointer:&client_] autorelease];
    [status updateProgressBarWithTotal:203.3e6 now:77.4e6];
    [[status rateLabel] setStringValue:@"3.1 MB/s, less than a minute left"];
    ExpectPicture([status uploadStatusWindow], @"uploading");
    [[status uploadStatusWindow] orderOut:nil];
  }
}

TEST_F(WindowPictures, AlertsAndFailedUploads) {
  // The path that the picture shows is everybody's on this machine: one at a time.
  const int everybodys = open("/tmp", O_RDONLY | O_CLOEXEC);
  flock(everybodys, LOCK_EX);
  g_fpath = "/tmp/VorrelExport_1795324800.mp4";
  WriteFile(g_fpath, "");
  ExpectFailedUpload("The folder is full.", @"alert-refused", @"not-uploaded");
  std::filesystem::remove(g_fpath);
  close(everybodys);
  g_title = LONG_PROJECT_NAME;
  // A file that is everywhere, by a path as long as that of a film can be.
  g_fpath = "/usr/lib";
  while (g_fpath.size() < 120) g_fpath += "/../../usr/lib";
  g_fpath += "/os-release";
  ExpectFailedUpload(
      "Le dossier « Étalonnage » n'accepte plus de films depuis le 3 novembre : demandez de la place à la "
      "production, ou choisissez un autre dossier. 这个文件夹已满。 Папка заполнена. "
      "https://gemeinschaftsproduktion-der-filmwerkstatt-an-der-oberen-elbe-20.orvane.localhost/"
      "help/quota?folder=d0c0ffee-0000-4000-8000-00000000f00d&project=4711",
      @"alert-long-text", @"not-uploaded-long-texts");
}

TEST_F(WindowPictures, Complete) {
  @autoreleasepool {
    UploadCompleteWindowController *complete =
        [[[UploadCompleteWindowController alloc] initWithLink:@"https://acme.orvane.localhost/review/7"] autorelease];
    ExpectPicture([complete uploadCompleteWindow], @"complete");
  }
}

}  // namespace
