// Telling the host's user about something through the host's error suite.
#pragma once

#include <string>

#include "PrSDKTypes.h"

/// The host's event types.
enum class HostEventType : csSDK_uint32 { kInformational = 1, kWarning = 2, kError = 3 };

/// Reports an event with a title and a text, both UTF-8. Without the error suite nothing happens. [main-thread]
void ReportHostEvent(HostEventType type, const std::string& title, const std::string& text);
