// Trimming a string at one end.
#pragma once

#import <Foundation/Foundation.h>

/// Both test UTF-16 units one by one and return an autoreleased string; the receiver stays.
@interface NSString (TrimmingAdditions)

- (NSString *)stringByTrimmingLeadingCharactersInSet:(NSCharacterSet *)set;
- (NSString *)stringByTrimmingTrailingCharactersInSet:(NSCharacterSet *)set;

@end
