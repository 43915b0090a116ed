// Reading JSON as Foundation does. GNUstep makes every number a double, so that a long id loses digits, calls itself
// for each level, and takes what is no JSON text.
#import <Foundation/Foundation.h>
#include <nlohmann/json.hpp>

#include <string>

#include "Replacements.h"

namespace {

// Builds Foundation's objects while the library reads. Each function returns whether to read on.
class Builder : public nlohmann::json_sax<nlohmann::json> {
 public:
  Builder() : open_([[NSMutableArray alloc] init]), keys_([[NSMutableArray alloc] init]) {}
  ~Builder() override {
    [open_ release];
    [keys_ release];
    [root_ release];
  }
  Builder(const Builder &) = delete;
  Builder &operator=(const Builder &) = delete;

  id Root() const { return [[root_ retain] autorelease]; }

  bool null() override { return Add([NSNull null]); }
  bool boolean(bool value) override { return Add([NSNumber numberWithBool:value]); }
  bool number_integer(number_integer_t value) override { return Add([NSNumber numberWithLongLong:value]); }
  bool number_unsigned(number_unsigned_t value) override { return Add([NSNumber numberWithUnsignedLongLong:value]); }
  bool number_float(number_float_t value, const string_t &) override { return Add([NSNumber numberWithDouble:value]); }
  bool string(string_t &value) override { return Add(Text(value)); }
  bool binary(binary_t &) override { return false; }
  bool key(string_t &value) override {
    [keys_ addObject:Text(value)];
    return true;
  }
  bool start_object(size_t) override { return Open([NSMutableDictionary dictionary]); }
  bool start_array(size_t) override { return Open([NSMutableArray array]); }
  bool end_object() override { return Close(); }
  bool end_array() override { return Close(); }
  bool parse_error(size_t, const std::string &, const nlohmann::detail::exception &) override { return false; }

 private:
  static NSString *Text(const string_t &text) {
    return [[[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding] autorelease];
  }

  bool Add(id value) {
    id container = [open_ lastObject];
    if (!container) {
      root_ = [value retain];
    } else if ([container isKindOfClass:[NSMutableArray class]]) {
      [container addObject:value];
    } else {
      [container setObject:value forKey:[keys_ lastObject]];
      [keys_ removeLastObject];
    }
    return true;
  }

  bool Open(id container) {
    Add(container);
    [open_ addObject:container];
    return true;
  }

  bool Close() {
    [open_ removeLastObject];
    return true;
  }

  NSMutableArray *open_;
  NSMutableArray *keys_;
  id root_ = nil;
};

id ReadStrictly(id, SEL, NSData *data, NSJSONReadingOptions options, NSError **error) {
  Builder builder;
  const char *text = static_cast<const char *>([data bytes]);
  bool is_json = nlohmann::json::sax_parse(text, text + [data length], &builder);
  id root = builder.Root();
  const BOOL is_container = [root isKindOfClass:[NSArray class]] || [root isKindOfClass:[NSDictionary class]];
  if (!(options & NSJSONReadingAllowFragments) && !is_container) is_json = false;
  if (!is_json && error) *error = [NSError errorWithDomain:NSCocoaErrorDomain code:3840 userInfo:nil];
  return is_json ? root : nil;
}

}  // namespace

void InstallJsonReader() {
  ReplaceMethod(object_getClass(objc_getClass("NSJSONSerialization")),
                "JSONObjectWithData:options:error:", ReadStrictly);
}
