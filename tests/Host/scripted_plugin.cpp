// An export controller that does what the test asks for, well-behaved or not.
//
// ORVANE_SCRIPT names the behaviour; ORVANE_PRESET and ORVANE_DESTINATION are the paths of its export.
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>

#include "PrSDKErrorSuite.h"
#include "PrSDKExportController.h"
#include "PrSDKExportControllerSuite.h"
#include "PrSDKTimeSuite.h"

namespace {

bool Script(const char* name) {
  const char* script = getenv("ORVANE_SCRIPT");
  return script && strcmp(script, name) == 0;
}

// ASCII only.
void Widen(const std::string& text, prUTF16Char* buffer) {
  for (const char character : text) *buffer++ = static_cast<prUTF16Char>(character);
  *buffer = 0;
}

std::string Setting(const char* name) {
  const char* value = getenv(name);
  return value ? value : "";
}

SPBasicSuite* Basic(ecStdParms* parms) {
  return parms->piSuites->utilFuncs->getSPBasicSuite();
}

template <class Suite>
Suite* Acquire(ecStdParms* parms, const char* name, csSDK_int32 version) {
  const void* suite = nullptr;
  if (Basic(parms)->AcquireSuite(name, version, &suite) != 0) return nullptr;
  return static_cast<Suite*>(const_cast<void*>(suite));
}

void Release(ecStdParms* parms, const char* name, csSDK_int32 version) {
  Basic(parms)->ReleaseSuite(name, version);
}

csSDK_int32 Startup(ecStdParms* parms, ExportControllerInitRec* record) {
  if (Script("start-up fails")) return 7;
  Widen("Scripted", record->displayName);
  // Through a pointer that the compiler cannot follow, as a real overrun would be.
  prUTF16Char* volatile units = record->displayName;
  if (Script("overrun")) units[EXPORT_CONTROLLER_TEXT_UNITS] = 'x';
  if (Script("unknown version")) Acquire<void>(parms, kPrSDKTimeSuite, 2);
  if (Script("unreleased")) Acquire<void>(parms, kPrSDKTimeSuite, kPrSDKTimeSuiteVersion);
  if (Script("released twice")) Release(parms, kPrSDKTimeSuite, kPrSDKTimeSuiteVersion);
  if (Script("throws")) throw std::runtime_error("lost");
  if (Script("unfreed")) {
    void* block = nullptr;
    Basic(parms)->AllocateBlock(10, &block);
  }
  return 0;
}

csSDK_int32 Render(ecStdParms* parms, const ExportControllerTimelineInfoRec& timeline) {
  auto* suite =
      Acquire<PrSDKExportControllerSuite>(parms, kPrSDKExportControllerSuite, kPrSDKExportControllerSuiteVersion);
  prUTF16Char destination[EXPORT_CONTROLLER_TEXT_UNITS] = {};
  prUTF16Char preset[EXPORT_CONTROLLER_TEXT_UNITS] = {};
  Widen(Setting("ORVANE_DESTINATION"), destination);
  Widen(Setting("ORVANE_PRESET"), preset);
  if (Script("endless path")) {
    for (prUTF16Char& unit : destination) unit = '/';
  }
  ExportControllerExportRec record{destination, preset};
  const csSDK_int64 handle = timeline.timelineData + (Script("wrong handle") ? 1 : 0);
  const csSDK_int32 answer = suite->ExportTimeline(handle, timeline.timelineID, &record);
  Release(parms, kPrSDKExportControllerSuite, kPrSDKExportControllerSuiteVersion);
  return answer;
}

csSDK_int32 AskOnAnotherThread(ecStdParms* parms) {
  SPBasicSuite* basic = Basic(parms);
  csSDK_int32 answer = 0;
  std::thread([&] {
    const void* suite = nullptr;
    answer = basic->AcquireSuite(kPrSDKTimeSuite, kPrSDKTimeSuiteVersion, &suite);
  }).join();
  return answer;
}

csSDK_int32 RaiseEvent(ecStdParms* parms) {
  auto* suite = Acquire<PrSDKErrorSuite3>(parms, kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3);
  prUTF16Char title[] = {'T', 0x00FC, 0};
  prUTF16Char text[] = {0xD83C, 0xDFAC, 0};  // a clapper board
  suite->SetEventStringUnicode(kEventTypeError, title, text);
  Release(parms, kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3);
  return -1;
}

csSDK_int32 Export(ecStdParms* parms, const ExportControllerTimelineInfoRec& timeline) {
  if (Script("user cancels")) return 0;
  if (Script("wrong thread")) return AskOnAnotherThread(parms);
  if (Script("event")) return RaiseEvent(parms);
  return Render(parms, timeline);
}

}  // namespace

PREMPLUGENTRY xExportControllerEntry(csSDK_int32 selector, ecStdParms* parms, void* param) {
  switch (selector) {
    case ecSelStartup:
      return Startup(parms, static_cast<ExportControllerInitRec*>(param));
    case ecSelExportTimeline:
      return Export(parms, *static_cast<ExportControllerTimelineInfoRec*>(param));
    case ecSelShutdown:
      return 0;
    default:
      return -100;
  }
}
