#include <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>

#include <cstring>

namespace {

NSStringEncoding FoundationEncoding(CFStringEncoding encoding) {
  return encoding == kCFStringEncodingUTF32LE ? NSUTF32LittleEndianStringEncoding : NSUTF8StringEncoding;
}

NSString *String(CFStringRef string) {
  return reinterpret_cast<NSString *>(const_cast<__CFString *>(string));
}
NSURL *Url(CFURLRef url) {
  return reinterpret_cast<NSURL *>(const_cast<__CFURL *>(url));
}

}  // namespace

void CFRelease(CFTypeRef object) {
  [static_cast<id>(const_cast<void *>(object)) release];
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8 *bytes, CFIndex count, CFStringEncoding encoding,
                                    Boolean) {
  NSString *string = [[NSString alloc] initWithBytes:bytes
                                              length:static_cast<NSUInteger>(count)
                                            encoding:FoundationEncoding(encoding)];
  return reinterpret_cast<CFStringRef>(string);
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar *units, CFIndex count) {
  return reinterpret_cast<CFStringRef>([[NSString alloc] initWithCharacters:units
                                                                     length:static_cast<NSUInteger>(count)]);
}

CFIndex CFStringGetLength(CFStringRef string) {
  return static_cast<CFIndex>([String(string) length]);
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar *buffer) {
  [String(string)
      getCharacters:buffer
              range:NSMakeRange(static_cast<NSUInteger>(range.location), static_cast<NSUInteger>(range.length))];
}

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8, Boolean, UInt8 *buffer,
                         CFIndex capacity, CFIndex *used) {
  NSString *text = String(string);
  const NSUInteger end = static_cast<NSUInteger>(range.location + range.length);
  NSUInteger position = static_cast<NSUInteger>(range.location);
  CFIndex bytes = 0;
  while (position < end) {
    const NSUInteger units = [text rangeOfComposedCharacterSequenceAtIndex:position].length;
    NSData *character =
        [[text substringWithRange:NSMakeRange(position, units)] dataUsingEncoding:FoundationEncoding(encoding)];
    const CFIndex length = static_cast<CFIndex>([character length]);
    if (bytes + length > capacity) break;
    memcpy(buffer + bytes, [character bytes], static_cast<size_t>(length));
    bytes += length;
    position += units;
  }
  if (used) *used = bytes;
  return static_cast<CFIndex>(position) - range.location;
}

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle, Boolean isFolder) {
  if ([String(path) length] == 0) return nullptr;
  NSURL *url = [[NSURL alloc] initFileURLWithPath:String(path) isDirectory:isFolder != 0];
  return reinterpret_cast<CFURLRef>(url);
}

CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle) {
  return reinterpret_cast<CFStringRef>([[Url(url) path] copy]);
}

Boolean CFURLResourceIsReachable(CFURLRef url, CFErrorRef *error) {
  if (error) *error = nullptr;
  return [[NSFileManager defaultManager] fileExistsAtPath:[Url(url) path]] ? 1 : 0;
}
