#include <vector>

#import "NSString+TrimmingAdditions.h"

namespace {

// The string's units: on the stack for the length of a tag, on the heap for longer ones.
class Units {
 public:
  explicit Units(NSString *string) {
    NSUInteger length = [string length];
    units_ = local_;
    if (length > kLocalUnits) {
      heap_.resize(length);
      units_ = heap_.data();
    }
    [string getCharacters:units_ range:NSMakeRange(0, length)];
  }

  unichar operator[](NSUInteger index) const { return units_[index]; }

 private:
  static constexpr NSUInteger kLocalUnits = 1024;
  unichar local_[kLocalUnits];
  std::vector<unichar> heap_;
  unichar *units_;
};

}  // namespace

@implementation NSString (TrimmingAdditions)

- (NSString *)orv_stringByTrimmingLeadingCharactersInSet:(NSCharacterSet *)set {
  const NSUInteger length = [self length];
  const Units units(self);
  NSUInteger start = 0;
  while (start < length && [set characterIsMember:units[start]]) ++start;
  return [self substringWithRange:NSMakeRange(start, length - start)];
}

- (NSString *)orv_stringByTrimmingTrailingCharactersInSet:(NSCharacterSet *)set {
  const Units units(self);
  NSUInteger end = [self length];
  while (end > 0 && [set characterIsMember:units[end - 1]]) --end;
  return [self substringWithRange:NSMakeRange(0, end)];
}

- (NSString *)stringByTrimmingLeadingCharactersInSet:(NSCharacterSet *)set {
  return [self orv_stringByTrimmingLeadingCharactersInSet:set];
}

- (NSString *)stringByTrimmingTrailingCharactersInSet:(NSCharacterSet *)set {
  return [self orv_stringByTrimmingTrailingCharactersInSet:set];
}

@end
