#import "ServiceAnswer.h"

#import "PlatformJson.h"

namespace {

id Member(id container, NSString *key, Class type) {
  if (![container isKindOfClass:[NSDictionary class]]) return nil;
  id member = [container objectForKey:key];
  return [member isKindOfClass:type] ? member : nil;
}

}  // namespace

NSDictionary *AnswerRoot(const std::string &answer) {
  return ObjectMember(ParseJson(answer.data(), answer.size(), NSJSONReadingMutableContainers), @"root");
}

NSDictionary *ObjectMember(id container, NSString *key) {
  return Member(container, key, [NSDictionary class]);
}

NSArray *ListMember(id container, NSString *key) {
  return Member(container, key, [NSArray class]);
}

NSInteger IntegerMember(id container, NSString *key) {
  NSNumber *number = Member(container, key, [NSNumber class]);
  return number ? [number integerValue] : [Member(container, key, [NSString class]) integerValue];
}

NSString *TextMember(id container, NSString *key) {
  NSString *text = Member(container, key, [NSString class]);
  if (text) return text;
  // true and false are numbers, too, of a class of their own.
  NSNumber *number = Member(container, key, [NSNumber class]);
  return [number isKindOfClass:[[NSNumber numberWithBool:YES] class]] ? nil : [number stringValue];
}
