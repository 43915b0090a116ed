// Reading the service's JSON answers. Whatever an answer holds, reading it raises nothing: what is not there, or is of
// another type, reads as nil. [any-thread]
#pragma once

#import <Foundation/Foundation.h>

#include <string>

/// The member "root" of an answer, autoreleased; nil when the answer is not a JSON object that holds one.
NSDictionary *AnswerRoot(const std::string &answer);

/// A member that is an object; nil for anything else. container may be nil or of any type.
NSDictionary *ObjectMember(id container, NSString *key);

/// A member that is a list; nil for anything else.
NSArray *ListMember(id container, NSString *key);

/// A member that is a number, or a text that begins with one, as an integer; 0 for anything else.
NSInteger IntegerMember(id container, NSString *key);

/// A member that is a string, or a number as its decimal text; nil for anything else, true and false included.
NSString *TextMember(id container, NSString *key);
