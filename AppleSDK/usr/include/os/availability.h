// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

// Since when macOS has a declaration, and since when it should no longer be used. The compiler compares both with the
// deployment target.
#define API_AVAILABLE(platform) __attribute__((availability(__API_AVAILABLE_##platform)))
#define API_DEPRECATED(text, platform) __attribute__((availability(__API_DEPRECATED_##platform, message = text)))
#define API_DEPRECATED_WITH_REPLACEMENT(name, platform) \
  __attribute__((availability(__API_DEPRECATED_##platform, replacement = name)))

#define __API_AVAILABLE_macos(version) macos, introduced = version
#define __API_DEPRECATED_macos(version, end) macos, introduced = version, deprecated = end
