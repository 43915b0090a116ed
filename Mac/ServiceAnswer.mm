#import "ServiceAnswer.h"

namespace {

id Member(id container, NSString *key, Class type) {
  if (![container isKindOfClass:[NSDictionary class]]) return nil;
  id member = [container objectForKey:key];
  return [member isKindOfClass:type] ? member : nil;
}

}  // namespace

NSDictionary *AnswerRoot(const std::string &answer) {
  NSData *text = [NSData dataWithBytes:answer.data() length:answer.size()];
  id object = [NSJSONSerialization JSONObjectWithData:text options:NSJSONReadingMutableContainers error:NULL];
  return ObjectMember(object, @"root");
}

NSDictionary *ObjectMember(id container, NSString *key) {
  return Member(container, key, [NSDictionary class]);
}

NSArray *ListMember(id container, NSString *key) {
  return Member(container, key, [NSArray class]);
}

NSString *TextMember(id container, NSString *key) {
  NSString *text = Member(container, key, [NSString class]);
  return text ? text : [Member(container, key, [NSNumber class]) stringValue];
}
