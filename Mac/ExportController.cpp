#include "ExportController.h"

#include <curl/curl.h>

#include <cstdio>
#include <ctime>
#include <initializer_list>

#include "Deployment.h"
#include "ExportState.h"
#include "HostEvents.h"
#include "OrvaneUI.h"

namespace {

// Units of the host's path buffers, the terminating zero included.
constexpr size_t kPathUnits = 256;

const wchar_t kDisplayName[] = L"Orvane";

const wchar_t kHighPreset[] = L"" ORVANE_PLUGIN_FOLDER "/" ORVANE_HIGH_PRESET;
const wchar_t kMediumPreset[] = L"" ORVANE_PLUGIN_FOLDER "/" ORVANE_MEDIUM_PRESET;
const wchar_t kLowPreset[] = L"" ORVANE_PLUGIN_FOLDER "/" ORVANE_LOW_PRESET;

// One suite: the name and version that the host knows it by, and the global that holds it.
struct SuiteSlot {
  const char* name;
  csSDK_int32 version;
  const void** held;
};

// In the order in which they are acquired and released.
const SuiteSlot kSuites[] = {
    {"Premiere ExportController Suite", 1, reinterpret_cast<const void**>(&sExportControllerSuitePtr)},
    {"Premiere Error Suite", 3, reinterpret_cast<const void**>(&sErrorSuitePtr)},
    {"MediaCore Sequence Info Suite", 3, reinterpret_cast<const void**>(&sSequenceInfoSuitePtr)},
    {"Premiere Time Suite", 1, reinterpret_cast<const void**>(&sTimeSuitePtr)},
};

// The host's basic suite, or null when the record does not lead to one.
SPBasicSuite* BasicSuite(ecStdParms* stdParms) {
  if (!stdParms || !stdParms->piSuites || !stdParms->piSuites->utilFuncs) return nullptr;
  return stdParms->piSuites->utilFuncs->getSPBasicSuite();
}

// The sequence's size in pixels; zero where the host does not tell.
struct FrameSize {
  csSDK_int16 width = 0;
  csSDK_int16 height = 0;
};

FrameSize InspectSequence(const ExportControllerTimelineInfoRec& timeline) {
  if (sExportControllerSuitePtr) {
    csSDK_int64 information = 0;
    sExportControllerSuitePtr->QueryTimeline(timeline.timelineData, timeline.timelineID, &information);
  }
  FrameSize size;
  if (!sSequenceInfoSuitePtr) return size;
  prRect rectangle = {};
  sSequenceInfoSuitePtr->GetFrameRect(timeline.timelineID, &rectangle);
  csSDK_uint32 aspect_numerator = 0;
  csSDK_uint32 aspect_denominator = 0;
  sSequenceInfoSuitePtr->GetPixelAspectRatio(timeline.timelineID, &aspect_numerator, &aspect_denominator);
  PrTime frame_duration = 0;
  sSequenceInfoSuitePtr->GetFrameRate(timeline.timelineID, &frame_duration);
  csSDK_int32 scale = 0;
  csSDK_int32 sample_size = 0;
  ConvertPrTimeToScaleSampleSize(sTimeSuitePtr, frame_duration, &scale, &sample_size);
  size.width = rectangle.right;
  size.height = rectangle.bottom;
  return size;
}

// The preset for a frame size. The three lines end without a newline.
const wchar_t* ChoosePreset(FrameSize size) {
  if (size.width >= 1920 || size.height >= 1920) {
    fprintf(stderr, "[orvanevorrel: selected HIGH preset]");
    return kHighPreset;
  }
  if (size.width >= 1280 || size.height >= 1280) {
    fprintf(stderr, "[orvanevorrel: selected MEDIUM preset]");
    return kMediumPreset;
  }
  fprintf(stderr, "[orvanevorrel: selected LOW preset]");
  return kLowPreset;
}

// Has the host render the sequence. Returns the host's status, or -1 when there is nothing to render with or to.
csSDK_int32 Render(const ExportControllerTimelineInfoRec& timeline, FrameSize size) {
  prUTF16Char destination[kPathUnits] = {};
  prUTF16Char preset[kPathUnits] = {};
  ExportControllerExportRec record = {destination, preset};

  const std::string name = "/VorrelExport_" + timestr(static_cast<csSDK_int64>(time(nullptr))) + ".mp4";
  const std::wstring wide_name(name.begin(), name.end());
  copyConvertStringLiteralIntoUTF16(wide_name.c_str(), destination);
  copyConvertStringLiteralIntoUTF16(ChoosePreset(size), preset);

  const csSDK_int32 status = setDestinationPath(destination, name);
  const bool preset_exists = fileExists(preset);
  if (status == 0 && preset_exists) {
    return sExportControllerSuitePtr->ExportTimeline(timeline.timelineData, timeline.timelineID, &record);
  }
  ReportHostEvent(HostEventType::kError, "SDK Export Controller error", "No preset found.  Export cancelled.");
  return kOwnFailure;
}

void StartExport() {
  g_export.failed = false;
  g_export.film.clear();
  simUiPtr = new OrvaneUI();
  g_export.open = true;
  g_pUpdFunc = progressUpdate;
  g_pCompleteFunc = showCompleteWindow;
  g_pCleanupFunc = cleanup;
}

// Cleans up what an earlier export has left: the window of a failed upload, or all of it when somebody else has ended
// the modal loop of its window. The windows and the upload of one that is under way use the facade and the one transfer
// handle.
void CleanUpWhatIsLeft() {
  if (g_export.open && g_export.activity == ExportState::Activity::kNone) cleanup();
}

// The steps of one export, from the look at the sequence to the start of the upload.
csSDK_int32 RunWorkflow(const ExportControllerTimelineInfoRec& timeline) {
  csSDK_int32 result = 0;
  const FrameSize size = InspectSequence(timeline);

  // The number belongs to the line, by which the log is searched, and is not the plug-in's version.
  fprintf(stderr, "[orvanevorrel: Starting up (version 1.0)]\n");
  fprintf(stderr, "[orvanevorrel: Sequence frame size is %d x %d]\n", size.width, size.height);
  fprintf(stderr, "[orvanevorrel: curl global init]\n");
  curl_global_init(CURL_GLOBAL_ALL);
  StartExport();

  g_step = "start";
  simUiPtr->Launch();
  if (g_step != "upload") return result;
  simUiPtr->UploadDlg();
  if (g_step != "doUpload") return result;

  if (sExportControllerSuitePtr) result = Render(timeline, size);
  simUiPtr->Upload();
  g_step.clear();
  return result;
}

}  // namespace

csSDK_int32 ecStartup(ecStdParms* stdParms, ExportControllerInitRec* initRec) {
  const std::wstring name = kDisplayName;
  // The display name is the record's first member.
  prUTF16Char* units = reinterpret_cast<prUTF16Char*>(initRec);
  for (size_t i = 0; i < name.size(); ++i) units[i] = static_cast<prUTF16Char>(name[i]);

  SPBasicSuite* basic = BasicSuite(stdParms);
  if (!basic) return 0;
  for (const SuiteSlot& suite : kSuites) basic->AcquireSuite(suite.name, suite.version, suite.held);
  return 0;
}

csSDK_int32 ecShutdown(ecStdParms* stdParms) {
  CleanUpWhatIsLeft();
  SPBasicSuite* basic = BasicSuite(stdParms);
  if (!basic) return 0;
  for (const SuiteSlot& suite : kSuites) {
    if (!*suite.held) continue;
    basic->ReleaseSuite(suite.name, suite.version);
    *suite.held = nullptr;
  }
  return 0;
}

csSDK_int32 ecExportTimeline(ecStdParms*, ExportControllerTimelineInfoRec* timeline) {
  if (g_export.activity != ExportState::Activity::kNone) {
    ReportHostEvent(HostEventType::kWarning, "Orvane",
                    "An export to Orvane is still running. Export again when it has finished.");
    return kOwnFailure;
  }
  CleanUpWhatIsLeft();
  const ExportWindows windows;
  const csSDK_int32 result = RunWorkflow(*timeline);
  // A window that failed has ended its modal loop as if the user had closed it.
  return g_export.failed ? kOwnFailure : result;
}

void progressUpdate(double total, double now) {
  simUiPtr->UpdateProgress(total, now);
}

void showCompleteWindow(std::string link) {
  const ExportWindows windows;
  simUiPtr->Complete(link);
}

void cleanup() {
  g_export.open = false;
  delete simUiPtr;
  fprintf(stderr, "[orvanevorrel: curl global cleanup]\n");
  curl_global_cleanup();
  fprintf(stderr, "[orvanevorrel: clearing variables]\n");
  for (std::string* variable : {&g_sd, &g_un, &g_pw, &g_step, &g_fld, &g_prj, &g_fpath, &g_title, &g_desc}) {
    variable->clear();
  }
  g_tags.clear();
}
