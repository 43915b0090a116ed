#import "OrderedDictionary.h"

// The containers below differ between systems in what they raise, and one of the two may have changed before the other
// raises: everything is looked at first.
static void RequireIndex(NSUInteger index, NSUInteger limit) {
  if (index < limit) return;
  [NSException raise:NSRangeException
              format:@"index %lu beyond %lu", static_cast<unsigned long>(index), static_cast<unsigned long>(limit)];
}

static void RequireObject(id object, NSString *what) {
  if (!object) [NSException raise:NSInvalidArgumentException format:@"the %@ is nil", what];
}

@implementation OrderedDictionary

+ (id)dictionaryWithContentsOfFile:(NSString *)path {
  NSDictionary *plain = [NSDictionary dictionaryWithContentsOfFile:path];
  return plain ? [self dictionaryWithDictionary:plain] : nil;
}

+ (id)dictionaryWithContentsOfURL:(NSURL *)url {
  NSDictionary *plain = [NSDictionary dictionaryWithContentsOfURL:url];
  return plain ? [self dictionaryWithDictionary:plain] : nil;
}

- (id)initWithContentsOfFile:(NSString *)path {
  return [self initWithPlainDictionary:[NSDictionary dictionaryWithContentsOfFile:path]];
}

- (id)initWithContentsOfURL:(NSURL *)url {
  return [self initWithPlainDictionary:[NSDictionary dictionaryWithContentsOfURL:url]];
}

- (id)initWithPlainDictionary:(NSDictionary *)plain {
  if (plain) return [self initWithDictionary:plain];
  [self release];
  return nil;
}

- (id)initWithObjects:(NSArray *)objects forKeys:(NSArray *)keys {
  if (!(self = [super init])) return nil;
  _values = [objects copy];
  _keys = [[NSOrderedSet alloc] initWithArray:keys];
  NSParameterAssert([_keys count] == [_values count]);
  return self;
}

- (id)initWithObjects:(const id[])objects forKeys:(const id<NSCopying>[])keys count:(NSUInteger)count {
  if (!(self = [super init])) return nil;
  _values = [[NSArray alloc] initWithObjects:objects count:count];
  _keys = [[NSOrderedSet alloc] initWithObjects:keys count:count];
  NSParameterAssert([_values count] == count);
  NSParameterAssert([_keys count] == count);
  return self;
}

- (void)dealloc {
  [_values release];
  [_keys release];
  [super dealloc];
}

- (NSUInteger)count {
  return [_keys count];
}

- (id)objectForKey:(id)key {
  NSUInteger index = [_keys indexOfObject:key];
  return index == NSNotFound ? nil : [_values objectAtIndex:index];
}

- (NSUInteger)indexOfKey:(id)key {
  return [_keys indexOfObject:key];
}

- (id)keyAtIndex:(NSUInteger)index {
  RequireIndex(index, [_keys count]);
  return [_keys objectAtIndex:index];
}

- (id)objectAtIndex:(NSUInteger)index {
  RequireIndex(index, [_values count]);
  return [_values objectAtIndex:index];
}

- (id)objectAtIndexedSubscript:(NSUInteger)index {
  return [self objectAtIndex:index];
}

- (NSArray *)allKeys {
  return [[[_keys array] copy] autorelease];
}

- (NSArray *)allValues {
  return [[_values copy] autorelease];
}

- (NSEnumerator *)keyEnumerator {
  return [_keys objectEnumerator];
}

- (NSEnumerator *)reverseKeyEnumerator {
  return [_keys reverseObjectEnumerator];
}

- (NSEnumerator *)objectEnumerator {
  return [_values objectEnumerator];
}

- (NSEnumerator *)reverseObjectEnumerator {
  return [_values reverseObjectEnumerator];
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id[])buffer
                                    count:(NSUInteger)length {
  return [_keys countByEnumeratingWithState:state objects:buffer count:length];
}

- (void)enumerateKeysAndObjectsWithIndexUsingBlock:(void (^)(id, id, NSUInteger, BOOL *))block {
  BOOL stop = NO;
  for (NSUInteger i = 0; i < [_keys count] && !stop; ++i) {
    block([_keys objectAtIndex:i], [_values objectAtIndex:i], i, &stop);
  }
}

+ (BOOL)supportsSecureCoding {
  return YES;
}

- (Class)classForCoder {
  return [self class];
}

- (void)encodeWithCoder:(NSCoder *)coder {
  [coder encodeObject:_values forKey:@"values"];
  [coder encodeObject:_keys forKey:@"keys"];
}

- (id)initWithCoder:(NSCoder *)coder {
  if (!(self = [super init])) return nil;
  _values = [[coder decodeObjectOfClass:[NSArray class] forKey:@"values"] copy];
  _keys = [[coder decodeObjectOfClass:[NSOrderedSet class] forKey:@"keys"] copy];
  return self;
}

- (id)copyWithZone:(NSZone *)zone {
  return [self retain];
}

- (id)mutableCopyWithZone:(NSZone *)zone {
  return [[MutableOrderedDictionary allocWithZone:zone] initWithDictionary:self];
}

@end

@interface MutableOrderedDictionary ()
- (NSMutableArray *)mutableValues;
- (NSMutableOrderedSet *)mutableKeys;
@end

@implementation MutableOrderedDictionary

+ (id)dictionaryWithCapacity:(NSUInteger)capacity {
  return [[[self alloc] initWithCapacity:capacity] autorelease];
}

- (id)init {
  return [self initWithCapacity:0];
}

- (id)initWithCapacity:(NSUInteger)capacity {
  if (!(self = [super init])) return nil;
  _values = [[NSMutableArray alloc] initWithCapacity:capacity];
  _keys = [[NSMutableOrderedSet alloc] initWithCapacity:capacity];
  return self;
}

- (id)initWithObjects:(NSArray *)objects forKeys:(NSArray *)keys {
  if (!(self = [super init])) return nil;
  _values = [objects mutableCopy];
  _keys = [[NSMutableOrderedSet alloc] initWithArray:keys];
  NSParameterAssert([_keys count] == [_values count]);
  return self;
}

- (id)initWithObjects:(const id[])objects forKeys:(const id<NSCopying>[])keys count:(NSUInteger)count {
  if (!(self = [super init])) return nil;
  _values = [[NSMutableArray alloc] initWithObjects:objects count:count];
  _keys = [[NSMutableOrderedSet alloc] initWithObjects:keys count:count];
  return self;
}

- (id)initWithCoder:(NSCoder *)coder {
  if (!(self = [super init])) return nil;
  _values = [[coder decodeObjectOfClass:[NSMutableArray class] forKey:@"values"] mutableCopy];
  _keys = [[coder decodeObjectOfClass:[NSMutableOrderedSet class] forKey:@"keys"] mutableCopy];
  return self;
}

- (NSMutableArray *)mutableValues {
  return (NSMutableArray *)_values;
}

- (NSMutableOrderedSet *)mutableKeys {
  return (NSMutableOrderedSet *)_keys;
}

- (id)copyWithZone:(NSZone *)zone {
  return [[OrderedDictionary allocWithZone:zone] initWithDictionary:self];
}

- (void)setObject:(id)object forKey:(id)key {
  RequireObject(key, @"key");
  RequireObject(object, @"object");
  // Sets tell quickly whether they hold an object, and not all of them where.
  if ([_keys containsObject:key]) {
    [[self mutableValues] replaceObjectAtIndex:[_keys indexOfObject:key] withObject:object];
  } else {
    [[self mutableValues] addObject:object];
    [[self mutableKeys] addObject:key];
  }
}

- (void)setObject:(id)object forKeyedSubscript:(id)key {
  [self setObject:object forKey:key];
}

- (void)setValue:(id)value forKey:(NSString *)key {
  if (value) {
    [self setObject:value forKey:key];
  } else {
    [self removeObjectForKey:key];
  }
}

- (void)addEntriesFromDictionary:(NSDictionary *)other {
  for (id key in [other allKeys]) [self setObject:[other objectForKey:key] forKey:key];
}

- (void)insertObject:(id)object forKey:(id)key atIndex:(NSUInteger)index {
  RequireObject(key, @"key");
  RequireObject(object, @"object");
  [self removeObjectForKey:key];
  RequireIndex(index, [_keys count] + 1);
  [[self mutableValues] insertObject:object atIndex:index];
  [[self mutableKeys] insertObject:key atIndex:index];
}

- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(id)object {
  RequireObject(object, @"object");
  RequireIndex(index, [_values count]);
  [[self mutableValues] replaceObjectAtIndex:index withObject:object];
}

- (void)setObject:(id)object atIndexedSubscript:(NSUInteger)index {
  [self replaceObjectAtIndex:index withObject:object];
}

- (void)exchangeObjectAtIndex:(NSUInteger)first withObjectAtIndex:(NSUInteger)second {
  RequireIndex(MAX(first, second), [_keys count]);
  [[self mutableKeys] exchangeObjectAtIndex:first withObjectAtIndex:second];
  [[self mutableValues] exchangeObjectAtIndex:first withObjectAtIndex:second];
}

- (void)removeObjectAtIndex:(NSUInteger)index {
  RequireIndex(index, [_keys count]);
  [[self mutableKeys] removeObjectAtIndex:index];
  [[self mutableValues] removeObjectAtIndex:index];
}

- (void)removeObjectForKey:(id)key {
  NSUInteger index = [_keys indexOfObject:key];
  if (index != NSNotFound) [self removeObjectAtIndex:index];
}

- (void)removeObjectsForKeys:(NSArray *)keys {
  for (id key in [[keys copy] autorelease]) [self removeObjectForKey:key];
}

- (void)removeAllObjects {
  [[self mutableKeys] removeAllObjects];
  [[self mutableValues] removeAllObjects];
}

- (void)setDictionary:(NSDictionary *)other {
  NSArray *keys = [other allKeys];
  NSArray *values = [other allValues];
  [[self mutableKeys] removeAllObjects];
  [[self mutableKeys] addObjectsFromArray:keys];
  [[self mutableValues] setArray:values];
}

@end
