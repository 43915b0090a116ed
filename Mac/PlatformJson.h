// Reading JSON that comes from outside with the platform's reader.
#pragma once

#import <Foundation/Foundation.h>

/// How deep lists and objects may lie in each other, and how many values a text may hold. Readers call themselves for
/// each level and make an object of each value: a text from outside could end the application or take its memory.
constexpr size_t kMaxJsonDepth = 500;
constexpr size_t kMaxJsonValues = 1000000;

/// The text as an object, autoreleased; nil when it is no JSON in UTF-8, or beyond one of the two limits. Raises
/// nothing. The bytes are not copied. [any-thread]
id ParseJson(const void* bytes, size_t length, NSJSONReadingOptions options);
