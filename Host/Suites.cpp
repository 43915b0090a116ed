#include "Suites.h"

#include <cstdlib>
#include <cstring>
#include <set>

#include "Fenced.h"
#include "PrSDKErrorSuite.h"
#include "PrSDKExportControllerSuite.h"
#include "PrSDKSequenceInfoSuite.h"
#include "PrSDKTimeSuite.h"
#include "SuiteStatus.h"
#include "Ticks.h"
#include "Utf16.h"
#include "Violation.h"

namespace orvane_host {

namespace {

HostCalls* host = nullptr;

// The start of every function: a host is there, and the thread is its main thread.
void Enter(const char* function) {
  if (!host) ReportViolation(std::string(function) + " was called while no host runs");
  host->CheckThread(function);
}

// As Enter, for the functions with a result: the plug-in must say where to put it.
void EnterWith(const void* result, const char* function) {
  Enter(function);
  if (!result) ReportViolation(std::string(function) + " was called without a place for its result");
}

// ---- the basic suite

std::set<void*>& Blocks() {
  static std::set<void*> blocks;
  return blocks;
}

SPErr AcquireSuite(const char* name, csSDK_int32 version, const void** suite) {
  EnterWith(suite, "AcquireSuite");
  EnterWith(name, "AcquireSuite");
  *suite = host->Acquire(name, version);
  return kSuiteSuccess;
}

SPErr ReleaseSuite(const char* name, csSDK_int32 version) {
  EnterWith(name, "ReleaseSuite");
  host->Release(name, version);
  return kSuiteSuccess;
}

csSDK_int32 IsEqual(const char* token1, const char* token2) {
  Enter("IsEqual");
  return token1 && token2 && strcmp(token1, token2) == 0;
}

SPErr AllocateBlock(size_t size, void** block) {
  EnterWith(block, "AllocateBlock");
  *block = malloc(size ? size : 1);
  if (!*block) return kSuiteFailed;
  Blocks().insert(*block);
  return kSuiteSuccess;
}

void ForgetBlock(void* block, const char* function) {
  if (Blocks().erase(block) == 0) {
    ReportViolation(std::string(function) + " was given a block that is not the host's");
  }
}

SPErr FreeBlock(void* block) {
  Enter("FreeBlock");
  ForgetBlock(block, "FreeBlock");
  free(block);
  return kSuiteSuccess;
}

SPErr ReallocateBlock(void* block, size_t new_size, void** new_block) {
  EnterWith(new_block, "ReallocateBlock");
  if (block) ForgetBlock(block, "ReallocateBlock");
  void* larger = realloc(block, new_size ? new_size : 1);
  if (larger || block) Blocks().insert(larger ? larger : block);
  if (!larger) return kSuiteFailed;
  *new_block = larger;
  return kSuiteSuccess;
}

SPErr Undefined() {
  return kSuiteNotAvailable;
}

// ---- the export-controller suite

prSuiteError QueryTimeline(csSDK_int64 data, PrTimelineID timeline, csSDK_int64* info) {
  EnterWith(info, "QueryTimeline");
  host->CheckTimeline(data, timeline, "QueryTimeline");
  *info = 0;
  return kSuiteSuccess;
}

prSuiteError ExportTimeline(csSDK_int64 data, PrTimelineID timeline, ExportControllerExportRec* record) {
  EnterWith(record, "ExportTimeline");
  host->CheckTimeline(data, timeline, "ExportTimeline");
  return host->Export(*record);
}

// ---- the error suite

prSuiteError SetEventStringUnicode(csSDK_uint32 type, prUTF16Char* title, prUTF16Char* description) {
  EnterWith(title, "SetEventStringUnicode");
  EnterWith(description, "SetEventStringUnicode");
  const auto title_text = ReadUtf16(title, EXPORT_CONTROLLER_TEXT_UNITS);
  // The description has no buffer of a known size; this is far beyond a readable message.
  const auto text = ReadUtf16(description, 16384);
  if (!title_text || !text || type < kEventTypeInformational || type > kEventTypeError) {
    ReportViolation("SetEventStringUnicode was given an unknown type or a text that is not UTF-16 or has no end");
  }
  host->Raise({type, *title_text, *text});
  return kSuiteSuccess;
}

// ---- the sequence-info suite

// Puts out what read makes of the sequence.
template <class Result, class Reader>
prSuiteError Tell(PrTimelineID timeline, Result* result, const char* function, Reader read) {
  EnterWith(result, function);
  *result = read(host->FindSequence(timeline, function));
  return kSuiteSuccess;
}

prSuiteError GetFrameRect(PrTimelineID timeline, prRect* rect) {
  return Tell(timeline, rect, "GetFrameRect", [](const Sequence& sequence) {
    return prRect{0, 0, static_cast<csSDK_int16>(sequence.height), static_cast<csSDK_int16>(sequence.width)};
  });
}

prSuiteError GetPixelAspectRatio(PrTimelineID timeline, csSDK_uint32* numerator, csSDK_uint32* denominator) {
  EnterWith(denominator, "GetPixelAspectRatio");
  return Tell(timeline, numerator, "GetPixelAspectRatio", [denominator](const Sequence& sequence) {
    *denominator = static_cast<csSDK_uint32>(sequence.pixel_aspect.denominator);
    return static_cast<csSDK_uint32>(sequence.pixel_aspect.numerator);
  });
}

prSuiteError GetFrameRate(PrTimelineID timeline, PrTime* ticks) {
  return Tell(timeline, ticks, "GetFrameRate", [](const Sequence& sequence) { return TicksPerFrame(sequence.rate); });
}

// Everything is rendered progressive, from time 0, without dropped time codes or proxies.
prSuiteError GetFieldType(PrTimelineID timeline, prFieldType* type) {
  return Tell(timeline, type, "GetFieldType", [](const Sequence&) { return prFieldType{0}; });
}

prSuiteError GetZeroPoint(PrTimelineID timeline, PrTime* zero) {
  return Tell(timeline, zero, "GetZeroPoint", [](const Sequence&) { return PrTime{0}; });
}

prSuiteError GetTimecodeDropFrame(PrTimelineID timeline, prBool* drop) {
  return Tell(timeline, drop, "GetTimecodeDropFrame", [](const Sequence&) { return prBool{0}; });
}

prSuiteError GetProxyFlag(PrTimelineID timeline, prBool* proxy) {
  return Tell(timeline, proxy, "GetProxyFlag", [](const Sequence&) { return prBool{0}; });
}

// ---- the time suite

prSuiteError GetTicksPerSecond(PrTime* ticks) {
  EnterWith(ticks, "GetTicksPerSecond");
  *ticks = kTicksPerSecond;
  return kSuiteSuccess;
}

prSuiteError GetTicksPerVideoFrame(PrVideoFrameRates code, PrTime* ticks) {
  EnterWith(ticks, "GetTicksPerVideoFrame");
  const auto rate = RateOfCode(static_cast<int>(code));
  if (!rate) return kSuiteBadArgument;
  *ticks = TicksPerFrame(*rate);
  return kSuiteSuccess;
}

prSuiteError GetTicksPerAudioSample(float rate, PrTime* ticks) {
  EnterWith(ticks, "GetTicksPerAudioSample");
  const auto per_sample = TicksPerSample(rate);
  if (!per_sample) return kSuiteBadArgument;
  *ticks = *per_sample;
  return kSuiteSuccess;
}

// ---- the tables

const PrSDKExportControllerSuite export_controller_suite{QueryTimeline, ExportTimeline};
const PrSDKErrorSuite3 error_suite{SetEventStringUnicode};
const PrSDKSequenceInfoSuite sequence_info_suite{GetFrameRect, GetPixelAspectRatio,  GetFrameRate, GetFieldType,
                                                 GetZeroPoint, GetTimecodeDropFrame, GetProxyFlag};
const PrSDKTimeSuite time_suite{GetTicksPerSecond, GetTicksPerVideoFrame, GetTicksPerAudioSample};

void OtherUtility() {
  ReportViolation("a utility function was called that is not for export controllers");
}
SPBasicSuite* GetSpBasicSuite();

// The three tables that reach the plug-in through pointers to non-const.
struct WritableTables {
  SPBasicSuite basic{AcquireSuite, ReleaseSuite, IsEqual, AllocateBlock, FreeBlock, ReallocateBlock, Undefined};
  PlugUtilFuncs utilities{OtherUtility, OtherUtility, OtherUtility,    OtherUtility, OtherUtility,
                          OtherUtility, OtherUtility, GetSpBasicSuite, OtherUtility};
  piSuites standard{PR_PISUITES_VERSION, nullptr, nullptr, nullptr, nullptr, nullptr};
};

Fenced<WritableTables>& Tables() {
  static Fenced<WritableTables> tables;
  return tables;
}

SPBasicSuite* GetSpBasicSuite() {
  Enter("getSPBasicSuite");
  return &Tables().value().basic;
}

}  // namespace

void SetHostCalls(HostCalls* calls) {
  host = calls;
  for (void* block : Blocks()) free(block);
  Blocks().clear();
  Tables() = Fenced<WritableTables>();
  Tables().value().standard.utilFuncs = &Tables().value().utilities;
}

piSuitesPtr StandardSuites() {
  return &Tables().value().standard;
}

const void* FindSuite(const std::string& name, csSDK_int32 version) {
  const auto is = [&](const char* known, csSDK_int32 known_version) {
    return name == known && version == known_version;
  };
  if (is(kPrSDKExportControllerSuite, kPrSDKExportControllerSuiteVersion)) return &export_controller_suite;
  if (is(kPrSDKErrorSuite, kPrSDKErrorSuiteVersion3)) return &error_suite;
  if (is(kPrSDKSequenceInfoSuite, kPrSDKSequenceInfoSuiteVersion)) return &sequence_info_suite;
  if (is(kPrSDKTimeSuite, kPrSDKTimeSuiteVersion)) return &time_suite;
  return nullptr;
}

bool TablesIntact() {
  WritableTables& tables = Tables().value();
  WritableTables pristine;
  pristine.standard.utilFuncs = &tables.utilities;
  return Tables().Intact() && memcmp(&tables.basic, &pristine.basic, sizeof(pristine.basic)) == 0 &&
         memcmp(&tables.utilities, &pristine.utilities, sizeof(pristine.utilities)) == 0 &&
         memcmp(&tables.standard, &pristine.standard, sizeof(pristine.standard)) == 0;
}

size_t LiveBlocks() {
  return Blocks().size();
}

}  // namespace orvane_host
