// Unicode characters in the UTF-16 code units of a text.
#pragma once

#import <Foundation/Foundation.h>

/// The first character that takes two code units.
constexpr UTF32Char kFirstSupplementaryCharacter = 0x10000;

/// Returns the character that begins at the index, which must lie in the text, and sets length to the number of its
/// code units. Half of a pair counts as a character of one.
inline UTF32Char CharacterAt(NSString *text, NSUInteger index, NSUInteger *length) {
  const unichar first = [text characterAtIndex:index];
  *length = 1;
  if ((first & 0xfc00) != 0xd800 || index + 1 >= [text length]) return first;
  const unichar second = [text characterAtIndex:index + 1];
  if ((second & 0xfc00) != 0xdc00) return first;
  *length = 2;
  return kFirstSupplementaryCharacter + ((first & 0x3ffu) << 10) + (second & 0x3ffu);
}

/// Returns a string of these characters.
inline NSString *StringOfCharacters(const UTF32Char *characters, NSUInteger count) {
  const NSStringEncoding encoding =
      NSHostByteOrder() == NS_LittleEndian ? NSUTF32LittleEndianStringEncoding : NSUTF32BigEndianStringEncoding;
  return [[[NSString alloc] initWithBytes:characters length:count * sizeof *characters encoding:encoding] autorelease];
}

/// Whether the character only says how others are drawn: joiners, direction marks and variation selectors.
inline bool IsInvisible(UTF32Char character) {
  return (character >= 0x200b && character <= 0x200f) || (character >= 0x202a && character <= 0x202e) ||
         (character >= 0x2060 && character <= 0x206f) || (character >= 0xfe00 && character <= 0xfe0f) ||
         character == 0xfeff;
}
