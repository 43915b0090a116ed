#import "NSString+CompareToVersion.h"

static NSInteger NumberAt(NSArray *components, NSUInteger index) {
  return index < [components count] ? [[components objectAtIndex:index] integerValue] : 0;
}

@implementation NSString (CompareToVersion)

- (NSComparisonResult)compareToVersion:(NSString *)version {
  if (version && [self isEqualToString:version]) return NSOrderedSame;
  NSArray *mine = [self componentsSeparatedByString:@"."];
  NSArray *others = [version componentsSeparatedByString:@"."];
  NSUInteger count = MAX([mine count], [others count]);
  for (NSUInteger i = 0; i < count; ++i) {
    NSInteger x = NumberAt(mine, i);
    NSInteger y = NumberAt(others, i);
    if (x < y) return NSOrderedAscending;
    if (x > y) return NSOrderedDescending;
  }
  return NSOrderedSame;
}

- (BOOL)isOlderThanVersion:(NSString *)version {
  return [self compareToVersion:version] == NSOrderedAscending;
}

- (BOOL)isNewerThanVersion:(NSString *)version {
  return [self compareToVersion:version] == NSOrderedDescending;
}

- (BOOL)isEqualToVersion:(NSString *)version {
  return [self compareToVersion:version] == NSOrderedSame;
}

- (BOOL)isEqualOrOlderThanVersion:(NSString *)version {
  return [self compareToVersion:version] != NSOrderedDescending;
}

- (BOOL)isEqualOrNewerThanVersion:(NSString *)version {
  return [self compareToVersion:version] != NSOrderedAscending;
}

@end
