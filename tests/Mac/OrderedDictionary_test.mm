#import "OrderedDictionary.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

MutableOrderedDictionary *Letters() {
  MutableOrderedDictionary *letters = [[[MutableOrderedDictionary alloc] init] autorelease];
  [letters setObject:@"2" forKey:@"b"];
  [letters setObject:@"1" forKey:@"a"];
  [letters setObject:@"3" forKey:@"c"];
  return letters;
}

// "key=value" of every entry, by fast enumeration.
std::string Text(NSDictionary *dictionary) {
  std::string text;
  for (NSString *key in dictionary) {
    text += std::string([key UTF8String]) + "=" + [[dictionary objectForKey:key] UTF8String] + " ";
  }
  return text;
}

// The name of the exception that the body raises, and its reason.
std::string Raised(const std::function<void()> &body) {
  @try {
    body();
  } @catch (NSException *exception) {
    return std::string([[exception name] UTF8String]) + ": " + [[exception reason] UTF8String];
  }
  return "";
}

}  // namespace

TEST(OrderedDictionary, KeepsTheOrderInWhichKeysWereAdded) {
  MutableOrderedDictionary *letters = Letters();
  [letters setObject:@"9" forKey:@"a"];
  EXPECT_EQ(Text(letters), "b=2 a=9 c=3 ");
  EXPECT_EQ([letters indexOfKey:@"c"], 2u);
  EXPECT_EQ([letters indexOfKey:@"z"], static_cast<NSUInteger>(NSNotFound));
  EXPECT_EQ([letters objectForKey:@"z"], nil);
  EXPECT_TRUE([[[letters allKeys] componentsJoinedByString:@""] isEqualToString:@"bac"]);
  EXPECT_TRUE([[[letters allValues] componentsJoinedByString:@""] isEqualToString:@"293"]);
  EXPECT_TRUE([[[[letters reverseKeyEnumerator] allObjects] componentsJoinedByString:@""] isEqualToString:@"cab"]);
  EXPECT_TRUE([[[[letters reverseObjectEnumerator] allObjects] componentsJoinedByString:@""] isEqualToString:@"392"]);
}

TEST(OrderedDictionary, MovesEntriesByPosition) {
  MutableOrderedDictionary *letters = Letters();
  [letters insertObject:@"3" forKey:@"c" atIndex:0];
  EXPECT_EQ(Text(letters), "c=3 b=2 a=1 ");
  [letters insertObject:@"4" forKey:@"c" atIndex:2];
  EXPECT_EQ(Text(letters), "b=2 a=1 c=4 ");
  [letters exchangeObjectAtIndex:0 withObjectAtIndex:1];
  EXPECT_EQ(Text(letters), "a=1 b=2 c=4 ");
  [letters replaceObjectAtIndex:1 withObject:@"7"];
  [letters setObject:@"8" atIndexedSubscript:2];
  EXPECT_EQ(Text(letters), "a=1 b=7 c=8 ");
  [letters removeObjectAtIndex:0];
  [letters removeObjectForKey:@"no such key"];
  [letters removeObjectsForKeys:[letters allKeys]];
  EXPECT_EQ([letters count], 0u);
}

TEST(OrderedDictionary, SetsRemovesAndTakesOverEntries) {
  MutableOrderedDictionary *letters = Letters();
  [letters setValue:nil forKey:@"a"];
  [letters setValue:@"5" forKey:@"d"];
  [letters setObject:@"6" forKeyedSubscript:@"e"];
  EXPECT_EQ(Text(letters), "b=2 c=3 d=5 e=6 ");
  MutableOrderedDictionary *other = [MutableOrderedDictionary dictionaryWithCapacity:2];
  [other setObject:@"x" forKey:@"c"];
  [other addEntriesFromDictionary:letters];
  EXPECT_EQ(Text(other), "c=3 b=2 d=5 e=6 ");
  [other setDictionary:Letters()];
  EXPECT_EQ(Text(other), "b=2 a=1 c=3 ");
  [other removeAllObjects];
  EXPECT_EQ(Text(other), "");
}

TEST(OrderedDictionary, CopiesKeepTheOrder) {
  MutableOrderedDictionary *letters = Letters();
  OrderedDictionary *copy = [[letters copy] autorelease];
  EXPECT_FALSE([copy isKindOfClass:[MutableOrderedDictionary class]]);
  EXPECT_EQ(copy, [[copy copy] autorelease]);
  MutableOrderedDictionary *mutableCopy = [[copy mutableCopy] autorelease];
  [mutableCopy setObject:@"4" forKey:@"d"];
  EXPECT_EQ(Text(copy), "b=2 a=1 c=3 ");
  EXPECT_EQ(Text(mutableCopy), "b=2 a=1 c=3 d=4 ");
  NSDictionary *plain = @{@"a" : @"1", @"b" : @"2", @"c" : @"3"};
  EXPECT_TRUE([copy isEqual:plain]);
}

TEST(OrderedDictionary, ArchivesKeepClassAndOrder) {
  for (NSDictionary *original in @[ Letters(), [[Letters() copy] autorelease] ]) {
    NSData *archive = [NSKeyedArchiver archivedDataWithRootObject:original];
    NSDictionary *decoded = [NSKeyedUnarchiver unarchiveObjectWithData:archive];
    EXPECT_EQ([decoded class], [original class]);
    EXPECT_EQ(Text(decoded), "b=2 a=1 c=3 ");
  }
}

// An initialiser that raises does not release its object.
TEST(OrderedDictionary, RefusesDuplicateKeys) {
  for (Class type in @[ [OrderedDictionary class], [MutableOrderedDictionary class] ]) {
    NSDictionary *twice = [type alloc];
    const std::string raised = Raised([twice] { [twice initWithObjects:@[ @"1", @"2" ] forKeys:@[ @"a", @"a" ]]; });
    EXPECT_NE(raised.find("[_keys count] == [_values count]"), std::string::npos) << raised;
    [twice release];
  }
  OrderedDictionary *twice = [OrderedDictionary alloc];
  const std::string raised = Raised([twice] {
    id objects[] = {@"1", @"2"};
    id<NSCopying> keys[] = {@"a", @"a"};
    [twice initWithObjects:objects forKeys:keys count:2];
  });
  EXPECT_NE(raised.find("[_keys count] == count"), std::string::npos) << raised;
  [twice release];
}

TEST(OrderedDictionary, RaisesBeforeAnythingChanges) {
  MutableOrderedDictionary *letters = Letters();
  const std::function<void()> wrong_indexes[] = {
      [letters] { [letters objectAtIndex:3]; },
      [letters] { [letters objectAtIndexedSubscript:3]; },
      [letters] { [letters keyAtIndex:3]; },
      [letters] { [letters insertObject:@"4" forKey:@"d" atIndex:4]; },
      [letters] { [letters replaceObjectAtIndex:3 withObject:@"x"]; },
      [letters] { [letters setObject:@"x" atIndexedSubscript:3]; },
      [letters] { [letters exchangeObjectAtIndex:0 withObjectAtIndex:3]; },
      [letters] { [letters removeObjectAtIndex:3]; },
  };
  const std::function<void()> nils[] = {
      [letters] { [letters setObject:nil forKey:@"n"]; },
      [letters] { [letters setObject:@"x" forKey:nil]; },
      [letters] { [letters setObject:nil forKey:@"a"]; },
      [letters] { [letters insertObject:nil forKey:@"a" atIndex:0]; },
      [letters] { [letters insertObject:@"x" forKey:nil atIndex:0]; },
      [letters] { [letters replaceObjectAtIndex:0 withObject:nil]; },
  };
  for (const auto &body : wrong_indexes) EXPECT_EQ(Raised(body).find("NSRangeException: "), 0u);
  for (const auto &body : nils) EXPECT_EQ(Raised(body).find("NSInvalidArgumentException: "), 0u);
  EXPECT_EQ(Text(letters), "b=2 a=1 c=3 ");
  [letters insertObject:@"4" forKey:@"d" atIndex:3];
  EXPECT_EQ(Text(letters), "b=2 a=1 c=3 d=4 ");
  // The key is removed before the index is looked at.
  EXPECT_EQ(Raised([letters] { [letters insertObject:@"1" forKey:@"a" atIndex:4]; }).find("NSRangeException: "), 0u);
  EXPECT_EQ(Text(letters), "b=2 c=3 d=4 ");
}

TEST(OrderedDictionary, WalksWithIndexesUntilStopped) {
  __block std::string walked;
  [Letters() enumerateKeysAndObjectsWithIndexUsingBlock:^(id key, id object, NSUInteger index, BOOL *stop) {
      walked += std::to_string(index) + [key UTF8String] + [object UTF8String] + " ";
      *stop = index == 1;
  }];
  EXPECT_EQ(walked, "0b2 1a1 ");
}

TEST(OrderedDictionary, ReadsAPropertyList) {
  NSString *path = [NSTemporaryDirectory() stringByAppendingPathComponent:@"ordered.plist"];
  NSURL *url = [NSURL URLWithString:[@"file://" stringByAppendingString:path]];
  NSDictionary *plain = @{@"a" : @"1", @"b" : @"2"};
  for (const BOOL exists : {YES, NO}) {
    if (exists) ASSERT_TRUE([plain writeToFile:path atomically:YES]);
    OrderedDictionary *const read_each_way[] = {
        [OrderedDictionary dictionaryWithContentsOfFile:path], [OrderedDictionary dictionaryWithContentsOfURL:url],
        [[[OrderedDictionary alloc] initWithContentsOfFile:path] autorelease],
        [[[MutableOrderedDictionary alloc] initWithContentsOfURL:url] autorelease]};
    for (OrderedDictionary *read : read_each_way) {
      EXPECT_EQ([read isEqual:plain], exists);
      EXPECT_EQ([read isKindOfClass:[OrderedDictionary class]], exists);
    }
    [[NSFileManager defaultManager] removeItemAtPath:path error:NULL];
  }
}
