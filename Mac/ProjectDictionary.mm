#import "ProjectDictionary.h"

#import "OrderedDictionary.h"

// What a subclass of the platform's dictionary has to bring.
@implementation ProjectDictionary

- (id)init {
  if ((self = [super init])) _entries = [[MutableOrderedDictionary alloc] init];
  return self;
}

- (void)dealloc {
  [_entries release];
  [super dealloc];
}

- (NSUInteger)count {
  return [_entries count];
}

- (id)objectForKey:(id)key {
  return [_entries objectForKey:key];
}

- (NSEnumerator *)keyEnumerator {
  return [_entries keyEnumerator];
}

- (void)setObject:(id)object forKey:(id)key {
  [_entries setObject:object forKey:key];
}

- (void)removeObjectForKey:(id)key {
  [_entries removeObjectForKey:key];
}

@end
