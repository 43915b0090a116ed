// Between the engine's UTF-8 strings and the platform's string objects.
#pragma once

#import <Foundation/Foundation.h>

#include <string>

/// The string's UTF-8 bytes; empty for nil.
inline std::string ToUtf8(NSString *string) {
  const char *bytes = [string UTF8String];
  return bytes ? std::string(bytes, [string lengthOfBytesUsingEncoding:NSUTF8StringEncoding]) : std::string();
}

/// What is shown or logged of a text that comes from outside, in bytes: it can have any length.
constexpr size_t kMaxShownBytes = 2000;

/// As many whole characters of the UTF-8 text as fit into that many bytes.
inline std::string Shortened(const std::string &text, size_t bytes) {
  if (text.size() <= bytes) return text;
  while (bytes > 0 && (text[bytes] & 0xC0) == 0x80) --bytes;
  return text.substr(0, bytes) + "...";
}

/// An autoreleased string of UTF-8 bytes; nil when they are not UTF-8.
inline NSString *FromUtf8(const std::string &text) {
  return [[[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding] autorelease];
}
