// The workflow with a facade of this test, through its entry, as somebody sees it who includes its header and no other.
#include <gtest/gtest.h>

#include <stdexcept>

#include "Deployment.h"
#include "ExceptionGuard.h"
#include "ExportController.h"
#include "OrvaneUI.h"

namespace {

int launches = 0;
int dialogs = 0;
int uploads = 0;
int facades = 0;
std::string step_before_launch;
std::string link_shown;
double sent = 0;
bool fails = false;

}  // namespace

OrvaneUI::OrvaneUI() {
  ++facades;
}
OrvaneUI::~OrvaneUI() {
  --facades;
}
void OrvaneUI::Launch() {
  ++launches;
  step_before_launch = g_step;
  if (fails) RunGuarded([] { throw std::runtime_error("in a window"); });
  g_step = "upload";
}
void OrvaneUI::UploadDlg() {
  ++dialogs;
  g_step = "doUpload";
}
void OrvaneUI::Upload() {
  ++uploads;
}
void OrvaneUI::Complete(std::string link) {
  link_shown = link;
}
void OrvaneUI::UpdateProgress(double, double now) {
  sent = now;
}

namespace {

int renders = 0;
std::string preset_of_render;
prRect frame = {};

prSuiteError FrameRect(PrTimelineID, prRect* rectangle) {
  *rectangle = frame;
  return 0;
}
prSuiteError PixelAspectRatio(PrTimelineID, csSDK_uint32*, csSDK_uint32*) {
  return 0;
}
prSuiteError FrameRate(PrTimelineID, PrTime*) {
  return 0;
}

prSuiteError Query(csSDK_int64, PrTimelineID, csSDK_int64*) {
  return 0;
}
prSuiteError Render(csSDK_int64, PrTimelineID, ExportControllerExportRec* record) {
  ++renders;
  preset_of_render.assign(record->presetPath, record->presetPath + prUTF16CharLength(record->presetPath));
  return 77;
}

csSDK_int32 Export() {
  ecStdParms parameters = {};
  ExportControllerTimelineInfoRec timeline = {};
  return xExportControllerEntry(ecSelExportTimeline, &parameters, &timeline);
}

}  // namespace

// Nothing of this facade calls the clean-up hook.
TEST(ExportControllerAlone, RunsEveryExportWhole) {
  const PrSDKExportControllerSuite suite = {Query, Render};
  for (int i = 1; i <= 9; ++i) {
    sExportControllerSuitePtr = i == 9 ? nullptr : &suite;
    EXPECT_EQ(Export(), i == 9 ? 0 : 77);
    EXPECT_EQ(step_before_launch, "start");
    EXPECT_EQ(g_step, "");
    EXPECT_EQ(launches, i);
    EXPECT_EQ(dialogs, i);
    EXPECT_EQ(uploads, i);
    EXPECT_EQ(facades, 1) << "the facade of the export before is destroyed";
  }
  EXPECT_EQ(renders, 8);
  g_pUpdFunc(2, 1);
  EXPECT_EQ(sent, 1);
  g_pCompleteFunc("link");
  EXPECT_EQ(link_shown, "link");
  EXPECT_EQ(xExportControllerEntry(ecSelShutdown, nullptr, nullptr), 0);
  EXPECT_EQ(facades, 0);
}

TEST(ExportControllerAlone, AnExportThatFailedInAWindowIsTheHostsOnce) {
  const PrSDKExportControllerSuite suite = {Query, Render};
  sExportControllerSuitePtr = &suite;
  for (const bool failing : {true, false}) {
    fails = failing;
    EXPECT_EQ(Export(), failing ? -1 : 77);
  }
  EXPECT_EQ(xExportControllerEntry(ecSelShutdown, nullptr, nullptr), 0);
  sExportControllerSuitePtr = nullptr;
}

TEST(ExportControllerAlone, ChoosesThePresetByTheFrameSize) {
  const struct {
    csSDK_int16 width, height;
    const char *name, *preset;
  } cases[] = {{1920, 1080, "HIGH", ORVANE_HIGH_PRESET},    {1919, 1080, "MEDIUM", ORVANE_MEDIUM_PRESET},
               {1280, 720, "MEDIUM", ORVANE_MEDIUM_PRESET}, {1279, 1279, "LOW", ORVANE_LOW_PRESET},
               {720, 1920, "HIGH", ORVANE_HIGH_PRESET},     {720, 1280, "MEDIUM", ORVANE_MEDIUM_PRESET}};
  const PrSDKExportControllerSuite suite = {Query, Render};
  const PrSDKSequenceInfoSuite sequences = {FrameRect, PixelAspectRatio, FrameRate, nullptr, nullptr, nullptr, nullptr};
  sExportControllerSuitePtr = &suite;
  sSequenceInfoSuitePtr = &sequences;
  for (const auto& item : cases) {
    frame.right = item.width;
    frame.bottom = item.height;
    testing::internal::CaptureStderr();
    EXPECT_EQ(Export(), 77);
    const std::string size = std::to_string(item.width) + " x " + std::to_string(item.height);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("[orvanevorrel: Sequence frame size is " + size + "]\n"), log.npos) << log;
    EXPECT_NE(log.find(std::string("[orvanevorrel: selected ") + item.name + " preset]"), log.npos) << size;
    EXPECT_EQ(preset_of_render, std::string(ORVANE_PLUGIN_FOLDER "/") + item.preset) << size;
  }
  EXPECT_EQ(xExportControllerEntry(ecSelShutdown, nullptr, nullptr), 0);
  sExportControllerSuitePtr = nullptr;
  sSequenceInfoSuitePtr = nullptr;
}

// The names that the header brings beside those of the export.
TEST(ExportControllerAlone, DeclaresItsNames) {
  g_pCompleteFunc = showCompleteWindow;
  g_pUpdFunc = progressUpdate;
  sErrorSuitePtr = nullptr;
  sTimeSuitePtr = nullptr;
  ecStdParms parameters = {};
  ExportControllerInitRec init = {};
  EXPECT_EQ(ecStartup(&parameters, &init) + ecShutdown(&parameters), 0);
  prUTF16Char path[256] = {};
  copyConvertStringLiteralIntoUTF16(L"/name", path);
  EXPECT_EQ(setDestinationPath(path, "/name"), 0);
  EXPECT_FALSE(fileExists(path));
  prUTF16Char copy[256] = {};
  prUTF16CharCopy(copy, path);
  EXPECT_EQ(prUTF16CharLength(copy), prUTF16CharLength(path));
  csSDK_int32 scale = 1, sample_size = 1;
  PrTime time = 1;
  ConvertPrTimeToScaleSampleSize(nullptr, 0, &scale, &sample_size);
  ConvertScaleSampleSizeToPrTime(nullptr, scale, sample_size, &time);
  char narrow[8] = "";
  wchar_t wide[8] = L"";
  safeStrCpy(narrow, sizeof(narrow), timestr(12).c_str());
  safeWcscat(wide, 8, L"12");
  EXPECT_STREQ(narrow, "12");
  EXPECT_STREQ(wide, L"12");
}

TEST(ExportControllerAlone, CleansUpEverything) {
  std::string* const texts[] = {&g_sd, &g_un, &g_pw, &g_step, &g_prj, &g_fld, &g_fpath, &g_title, &g_desc};
  for (std::string* text : texts) *text = "x";
  g_tags = {"x"};
  simUiPtr = new OrvaneUI();
  const int before = facades;
  g_pCleanupFunc = cleanup;
  g_pCleanupFunc();
  for (std::string* text : texts) EXPECT_EQ(*text, "");
  EXPECT_TRUE(g_tags.empty());
  EXPECT_EQ(facades, before - 1);
}
