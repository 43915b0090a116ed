// Comparing dotted version numbers such as 1.1 and 1.10.2.
#pragma once

#import <Foundation/Foundation.h>

/// Components compare as numbers, from the left; a missing one counts as 0, as does one without leading digits.
@interface NSString (CompareToVersion)

/// NSOrderedDescending when the receiver is newer than the version.
- (NSComparisonResult)compareToVersion:(NSString *)version;

- (BOOL)isOlderThanVersion:(NSString *)version;
- (BOOL)isNewerThanVersion:(NSString *)version;
- (BOOL)isEqualToVersion:(NSString *)version;
- (BOOL)isEqualOrOlderThanVersion:(NSString *)version;
- (BOOL)isEqualOrNewerThanVersion:(NSString *)version;

@end
