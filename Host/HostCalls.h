// What the functions of the suites ask of the host. The suites are tables of plain C functions without a context, so
// they reach the one running host of the process through this.
#pragma once

#include <string>

#include "PrSDKExportController.h"
#include "SPBasic.h"
#include "Sequence.h"

namespace orvane_host {

/// An event that the plug-in reported.
struct ErrorEvent {
  csSDK_uint32 type = 0;  ///< kEventTypeInformational, kEventTypeWarning or kEventTypeError
  std::string title;
  std::string text;
};

/// function is the C name of the suite's function, for messages. All but CheckThread are called on the main thread.
class HostCalls {
 public:
  virtual ~HostCalls() = default;

  /// Reports a violation on any thread but the main thread.
  virtual void CheckThread(const char* function) = 0;

  virtual const void* Acquire(const char* name, csSDK_int32 version) = 0;
  virtual void Release(const char* name, csSDK_int32 version) = 0;

  /// The sequence with that identifier; reports a violation when it is not the open one's.
  virtual const Sequence& FindSequence(PrTimelineID timeline, const char* function) = 0;

  /// As FindSequence, and checks the handle, too.
  virtual void CheckTimeline(csSDK_int64 data, PrTimelineID timeline, const char* function) = 0;

  /// Renders. record is not null.
  virtual prSuiteError Export(const ExportControllerExportRec& record) = 0;

  virtual void Raise(const ErrorEvent& event) = 0;
};

}  // namespace orvane_host
