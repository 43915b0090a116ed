#import "OrvaneUploadWindowController.h"

#include <gtest/gtest.h>

#import "Controls.h"
#include "FolderListing.h"
#import "OrderedDictionary.h"
#include "PluginResources.h"
#import "SavedLogin.h"
#include "ScriptedApi.h"
#import "TagsPage.h"
#import "TagsView.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

namespace {

int cleanups = 0;

NSString *const kTitle = @"Orvane: Upload";

std::string Titles(NSPopUpButton *popUp) {
  return [[[popUp itemTitles] componentsJoinedByString:@"|"] UTF8String];
}

// The upload settings window of a user who is logged in, on a scripted service.
class OrvaneUploadWindowControllerTest : public testing::Test {
 protected:
  void SetUp() override {
    UsePluginResources();
    cleanups = 0;
    g_sd = "acme";
    g_un = "editor";
    g_step = "upload";
    g_prj = g_fld = g_title = g_desc = "unset";
    g_tags = {"unset"};
    g_pCleanupFunc = [] { ++cleanups; };
  }

  void Run(const std::function<void(Script &, OrvaneUploadWindowController *)> &script) {
    OrvaneProjectsAPI client;
    ASSERT_EQ(client.login("acme", "editor", "secret"), "success");
    @autoreleasepool {
      OrvaneUploadWindowController *controller =
          [[OrvaneUploadWindowController alloc] initWithProjectsApiPointer:&client];
      RunWithScript([controller] { [controller showWindow]; },
                    [controller, &script](Script &actions) {
                      actions.WaitFor("the upload window", [] { return IsModal(WindowTitled(kTitle)); });
                      script(actions, controller);
                    });
      EXPECT_FALSE([[controller orvaneUploadWindow] isVisible]);
      [controller release];
    }
  }

  static std::string AlertAfterUpload(Script &actions, OrvaneUploadWindowController *controller) {
    actions.Post([controller] { Press([controller uploadBtn]); });
    const std::string texts = DismissAlertWhenItComes(actions);
    actions.WaitFor("the upload window again", [] { return IsModal(WindowTitled(kTitle)); });
    return texts;
  }

  static std::string Hint(OrvaneUploadWindowController *controller) {
    return [[[controller folderHint] stringValue] UTF8String];
  }

  static void AddTag(OrvaneUploadWindowController *controller, NSString *tag) {
    [[[controller tagView] tagTextField] setStringValue:tag];
    [[controller tagView] addTagsButtonDidTouch:nil];
  }

  ScriptedApi api_;
};

}  // namespace

TEST_F(OrvaneUploadWindowControllerTest, ListsTheFolderTreeDepthFirstWithIndentation) {
  Run([](Script &actions, OrvaneUploadWindowController *controller) {
    actions.OnMain([controller] {
      EXPECT_STREQ([[[controller accountLabel] stringValue] UTF8String], "editor at acme");
      EXPECT_EQ(Titles([controller inputFolder]), "");
      const std::string hint = "Choose a project to see its folders.";
      EXPECT_EQ(Hint(controller), hint);
      Choose([controller inputProject], @"Feature");
      EXPECT_EQ(Hint(controller), "");
      EXPECT_EQ(Titles([controller inputFolder]), "Select a folder...|A|   B|      C|D");
      EXPECT_STREQ([[[controller inputFolder] titleOfSelectedItem] UTF8String], "Select a folder...");
      EXPECT_EQ(g_prj + "," + g_fld, "1,0");
      Choose([controller inputFolder], @"      C");
      EXPECT_EQ(g_fld, "12");
      // Another project starts without a folder.
      Choose([controller inputProject], @"Trailer");
      EXPECT_EQ(g_prj + "," + g_fld, "2,0");
      Choose([controller inputProject], @"Select a project...");
      EXPECT_EQ(Hint(controller), hint);
      [[controller orvaneUploadWindow] performClose:nil];
    });
  });
  EXPECT_EQ(cleanups, 1);
  // Choosing a folder asks for that id in the place of a project.
  EXPECT_EQ(api_.RequestsFor(std::string(ScriptedApi::kFolders) + "12").size(), 1u);
}

TEST_F(OrvaneUploadWindowControllerTest, ListsAreTakenAsTheyComeHoweverOdd) {
  api_.Answer(ScriptedApi::kProjects, ScriptedApi::Success(R"([{"id":7,"project_name":"Numeric"},{"id":"8"},"text",null,
                                       {"id":"9","project_name":"Twice"},{"id":"10","project_name":"Twice"},
                                       {"id":"4","project_name":"Z"},{"id":"5","project_name":"B"}])"));
  api_.Answer(std::string(ScriptedApi::kFolders) + "7", "<html>no folders today</html>");
  api_.Answer(std::string(ScriptedApi::kFolders) + "10",
              ScriptedApi::Success(R"([{"id":"1","name":"Übergänge","sub_folders":"0"},
                                      {"id":"2","name":"M","sub_folders":"1"},{"id":"3","name":"A"}])"));
  Run([](Script &actions, OrvaneUploadWindowController *controller) {
    actions.OnMain([controller] {
      EXPECT_EQ(Titles([controller inputProject]), "Select a project...|Numeric|Twice|Z|B");
      EXPECT_EQ([[controller inputProject] indexOfSelectedItem], 0);
      Choose([controller inputProject], @"Numeric");
      EXPECT_EQ(g_prj, "7");
      EXPECT_EQ(Titles([controller inputFolder]), "Select a folder...");
      Choose([controller inputProject], @"Twice");
      EXPECT_EQ(Titles([controller inputFolder]), "Select a folder...|Übergänge|M|   Übergänge|   M|   A|A");
      [[controller orvaneUploadWindow] performClose:nil];
    });
  });
}

// A service that does not look at the folder's id answers every request with the same folders.
TEST_F(OrvaneUploadWindowControllerTest, AFolderThatHoldsItselfIsListedAndNotEntered) {
  api_.Answer(std::string(ScriptedApi::kFolders) + "1",
              ScriptedApi::Success(R"([{"id":"1","name":"A","sub_folders":1},{"id":"2","name":"B","sub_folders":1}])"));
  Run([this](Script &actions, OrvaneUploadWindowController *controller) {
    actions.OnMain([this, controller] {
      Choose([controller inputProject], @"Feature");
      EXPECT_EQ(Titles([controller inputFolder]), "Select a folder...|A|   A|   B|      A|      B|B");
      EXPECT_EQ(api_.RequestsFor(std::string(ScriptedApi::kFolders) + "1").size(), 5u);
      EXPECT_EQ(Hint(controller), "Not all folders are listed: \"A\" holds itself.");
      Choose([controller inputFolder], @"      B");
      EXPECT_EQ(g_fld, "2");
      Choose([controller inputProject], @"Trailer");
      EXPECT_EQ(Hint(controller), "");
      [[controller orvaneUploadWindow] performClose:nil];
    });
  });
}

TEST_F(OrvaneUploadWindowControllerTest, ListsSoManyFoldersAndNoMore) {
  std::string folders;
  for (size_t i = 0; i <= FolderListing::kMaxFolders; ++i) {
    folders += (i == 0 ? "" : ",") + (R"({"id":"1","name":"F)" + std::to_string(i) + "\"}");
  }
  api_.Answer(std::string(ScriptedApi::kFolders) + "1", ScriptedApi::Success("[" + folders + "]"));
  Run([](Script &actions, OrvaneUploadWindowController *controller) {
    actions.OnMain([controller] {
      Choose([controller inputProject], @"Feature");
      EXPECT_EQ([[controller inputFolder] numberOfItems], 1 + static_cast<NSInteger>(FolderListing::kMaxFolders));
      EXPECT_EQ(Hint(controller), "Not all folders are listed: only the first 10000 are.");
      [[controller orvaneUploadWindow] performClose:nil];
    });
  });
}

TEST_F(OrvaneUploadWindowControllerTest, ChecksTitleProjectAndFolderInThatOrder) {
  Run([](Script &actions, OrvaneUploadWindowController *controller) {
    EXPECT_EQ(AlertAfterUpload(actions, controller), "Error\nYou must enter a title.\n");
    EXPECT_EQ(g_title, "unset");
    actions.OnMain([controller] { [[controller inputTitle] setStringValue:@" "]; });
    EXPECT_EQ(AlertAfterUpload(actions, controller), "Error\nYou must select a project.\n");
    EXPECT_EQ(g_title, " ");
    actions.OnMain([controller] { Choose([controller inputProject], @"Feature"); });
    EXPECT_EQ(AlertAfterUpload(actions, controller), "Error\nYou must select a folder.\n");
    EXPECT_EQ(g_desc, "unset");
    actions.OnMain([controller] { Press(ButtonTitled([controller orvaneUploadWindow], @"Cancel")); });
  });
  EXPECT_EQ(cleanups, 1);
  EXPECT_EQ(g_step, "upload");
}

TEST_F(OrvaneUploadWindowControllerTest, HandsOverWhatWasEntered) {
  Run([](Script &actions, OrvaneUploadWindowController *controller) {
    actions.OnMain([controller] {
      Choose([controller inputProject], @"Feature");
      Choose([controller inputFolder], @"   B");
      [[controller inputTitle] setStringValue:@"Szene 12 – Küche"];
      [[controller fileDescription] setString:@"Second cut.\nMusic is temporary."];
      AddTag(controller, @"rough cut");
      AddTag(controller, @" grün ");
      AddTag(controller, @"night");
      EXPECT_EQ(TabOrder([controller orvaneUploadWindow]),
                "Project|Folder|Title|Description|New tag|Add the tag|Remove tag rough cut|Remove tag grün|"
                "Remove tag night|Log out of Orvane|Cancel|Upload the film");
      NSWindow *window = [controller orvaneUploadWindow];
      [window makeFirstResponder:[controller fileDescription]];
      PressKey(window, @"\t");
      EXPECT_EQ([[[controller tagView] tagTextField] currentEditor], [window firstResponder]) << "no tab in the text";
      [window makeFirstResponder:[controller fileDescription]];
      PressKey(window, @"\x19", NSShiftKeyMask);
      EXPECT_EQ([[controller inputTitle] currentEditor], [window firstResponder]);
      Press([controller uploadBtn]);
    });
  });
  EXPECT_EQ(g_step, "doUpload");
  EXPECT_EQ(g_prj + "," + g_fld, "1,11");
  EXPECT_EQ(g_title, "Szene 12 – Küche");
  EXPECT_EQ(g_desc, "Second cut.\nMusic is temporary.");
  EXPECT_EQ(g_tags, (std::vector<std::string>{"rough cut", "grün", "night"}));
  EXPECT_EQ(cleanups, 0);
}

TEST_F(OrvaneUploadWindowControllerTest, LoggingOutForgetsTheLoginAndEndsTheExportOnce) {
  for (const int exports : {1, 2}) {
    if (exports == 1) ASSERT_TRUE(SaveLogin({}, NULL));  // the second time there is nothing to forget
    Run([exports](Script &actions, OrvaneUploadWindowController *controller) {
      actions.OnMain([exports, controller] {
        Press([controller logoutBtn]);
        EXPECT_EQ(cleanups, exports);
        [[controller orvaneUploadWindow] performClose:nil];
      });
    });
    EXPECT_EQ(cleanups, exports) << "a close does not end it again";
    EXPECT_EQ(g_step, "upload");
    SavedLogin saved;
    EXPECT_FALSE(ReadSavedLogin(&saved, NULL));
  }
}

// Each of these tags takes a row.
TEST_F(OrvaneUploadWindowControllerTest, EveryTagComesIntoViewAndCanBeRemoved) {
  Run([](Script &actions, OrvaneUploadWindowController *controller) {
    actions.OnMain([controller] {
      NSWindow *window = [controller orvaneUploadWindow];
      TagsView *tags = [controller tagView];
      NSView *page = [tags page];
      NSTextField *field = [tags tagTextField];
      const NSRect frame = [tags frame];
      for (NSUInteger rows : {1, 4, 5, 9}) {
        while ([[tags tags] count] < rows) {
          AddTag(controller, [NSString stringWithFormat:@"%zu, a tag of more than three hundred points",
                                                        static_cast<size_t>([[tags tags] count])]);
        }
        const NSRect first = [[[tags tagButtons] objectAtIndex:0] frame];
        EXPECT_EQ(NSMinY([[tags tagTextFieldBackground] frame]) - NSMaxY(first), 10) << rows;
        EXPECT_EQ(NSHeight([page frame]) > NSHeight([[page superview] bounds]), rows > 4) << rows;
        NSView *newest = [[tags tagButtons] lastObject];
        EXPECT_TRUE(NSEqualRects([newest visibleRect], [newest bounds])) << rows;
        EXPECT_TRUE(NSEqualRects([field visibleRect], [field bounds])) << "it does not scroll";
        [window makeFirstResponder:[tags addButton]];
        for (NSUInteger row = 0; row < rows; ++row) {
          [window selectNextKeyView:nil];
          NSButton *chip = [[tags tagButtons] objectAtIndex:row];
          EXPECT_EQ([window firstResponder], chip);
          EXPECT_TRUE(NSEqualRects([chip visibleRect], [chip bounds])) << row << " of " << rows;
        }
        // The last, by a click.
        NSView *last = [[tags tagButtons] lastObject];
        const NSPoint middle = [last convertPoint:NSMakePoint(20, 13) toView:nil];
        for (NSEventType type : {NSLeftMouseDown, NSLeftMouseUp}) SendMouse(window, type, middle);
        EXPECT_EQ([[tags tags] count], rows - 1);
        EXPECT_EQ(NSMaxY([[tags superview] visibleRect]), NSHeight([[tags superview] bounds])) << "it stays at its end";
      }
      EXPECT_TRUE(NSEqualRects([tags frame], frame)) << "the view itself stays";
      [window performClose:nil];
    });
  });
}
