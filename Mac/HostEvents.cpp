#include "HostEvents.h"

#include <CoreFoundation/CoreFoundation.h>

#include <vector>

#include "HostSuites.h"

namespace {

// Zero-terminated UTF-16 of a UTF-8 text; empty when it is not UTF-8.
std::vector<prUTF16Char> HostText(const std::string& text) {
  std::vector<prUTF16Char> units;
  CFStringRef string = CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
                                               static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false);
  if (string) {
    const CFIndex length = CFStringGetLength(string);
    units.resize(static_cast<size_t>(length));
    CFStringGetCharacters(string, CFRangeMake(0, length), reinterpret_cast<UniChar*>(units.data()));
    CFRelease(string);
  }
  units.push_back(0);
  return units;
}

}  // namespace

void ReportHostEvent(HostEventType type, const std::string& title, const std::string& text) {
  if (!sErrorSuitePtr) return;
  std::vector<prUTF16Char> host_title = HostText(title);
  std::vector<prUTF16Char> host_text = HostText(text);
  sErrorSuitePtr->SetEventStringUnicode(static_cast<csSDK_uint32>(type), host_title.data(), host_text.data());
}
