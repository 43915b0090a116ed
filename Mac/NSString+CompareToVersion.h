// Comparing dotted version numbers such as 1.1 and 1.10.2.
#pragma once

#import <Foundation/Foundation.h>

/// Components compare as numbers, from the left; a missing one counts as 0, as does one without leading digits.
///
/// A category is the whole process's: when the host or another plug-in adds a method of the same name, all callers get
/// the one that was loaded last, the plug-in included. Its notice of a newer version is then as right as that one.
@interface NSString (CompareToVersion)

/// NSOrderedDescending when the receiver is newer than the version.
- (NSComparisonResult)compareToVersion:(NSString *)version;

- (BOOL)isOlderThanVersion:(NSString *)version;
- (BOOL)isNewerThanVersion:(NSString *)version;
- (BOOL)isEqualToVersion:(NSString *)version;
- (BOOL)isEqualOrOlderThanVersion:(NSString *)version;
- (BOOL)isEqualOrNewerThanVersion:(NSString *)version;

@end
