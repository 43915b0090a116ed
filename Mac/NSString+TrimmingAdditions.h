// Trimming a string at one end.
#pragma once

#import <Foundation/Foundation.h>

/// They test UTF-16 units one by one and return an autoreleased string; the receiver stays.
///
/// A category is the whole process's: when the host or another plug-in adds a method of the same name, all callers get
/// the one that was loaded last. The plug-in itself calls those with the prefix, which nobody else has.
@interface NSString (TrimmingAdditions)

- (NSString *)orv_stringByTrimmingLeadingCharactersInSet:(NSCharacterSet *)set;
- (NSString *)orv_stringByTrimmingTrailingCharactersInSet:(NSCharacterSet *)set;

- (NSString *)stringByTrimmingLeadingCharactersInSet:(NSCharacterSet *)set;
- (NSString *)stringByTrimmingTrailingCharactersInSet:(NSCharacterSet *)set;

@end
