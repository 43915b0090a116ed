// Dictionaries that keep their keys in the order in which they were added. The window sets entries and reads them in
// order; the rest makes them whole, as dictionaries are.
#pragma once

#import <Foundation/Foundation.h>

#include "RuntimeName.h"

/// An immutable dictionary with access by position. Wherever the platform's dictionary enumerates, it goes in order.
ORV_RUNTIME_NAME("OrvOrderedDictionary")
@interface OrderedDictionary : NSDictionary {
  NSArray *_values;
  NSOrderedSet *_keys;
}

/// Reads a property list; the order is that of the plain dictionary in it. nil when there is none.
+ (id)dictionaryWithContentsOfFile:(NSString *)path;
+ (id)dictionaryWithContentsOfURL:(NSURL *)url;
- (id)initWithContentsOfFile:(NSString *)path;
- (id)initWithContentsOfURL:(NSURL *)url;

/// The index of the key, or NSNotFound.
- (NSUInteger)indexOfKey:(id)key;

/// Here and below, an index past the end raises NSRangeException, and nothing has changed then.
- (id)keyAtIndex:(NSUInteger)index;
- (id)objectAtIndex:(NSUInteger)index;
- (id)objectAtIndexedSubscript:(NSUInteger)index;

- (NSEnumerator *)reverseKeyEnumerator;
- (NSEnumerator *)reverseObjectEnumerator;

/// Calls the block with each key, its value and its index, in order, until the block sets *stop.
- (void)enumerateKeysAndObjectsWithIndexUsingBlock:(void (^)(id key, id object, NSUInteger index, BOOL *stop))block;

@end

/// A dictionary whose entries can be set, moved and removed.
ORV_RUNTIME_NAME("OrvMutableOrderedDictionary")
@interface MutableOrderedDictionary : OrderedDictionary

+ (id)dictionaryWithCapacity:(NSUInteger)capacity;
- (id)initWithCapacity:(NSUInteger)capacity;

/// Replaces the value of a key that is there, which keeps its position; appends one that is not. Here and below, a nil
/// key or object raises NSInvalidArgumentException, and nothing has changed then.
- (void)setObject:(id)object forKey:(id)key;
- (void)setObject:(id)object forKeyedSubscript:(id)key;

/// As setObject:forKey:; nil removes the key.
- (void)setValue:(id)value forKey:(NSString *)key;

- (void)addEntriesFromDictionary:(NSDictionary *)other;

/// Removes the key, if it is there, then inserts it at the index: that counts without the key, and the number of the
/// others appends. With an index past that the key stays removed.
- (void)insertObject:(id)object forKey:(id)key atIndex:(NSUInteger)index;

- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(id)object;
- (void)setObject:(id)object atIndexedSubscript:(NSUInteger)index;

/// Swaps two entries; each key keeps its value.
- (void)exchangeObjectAtIndex:(NSUInteger)first withObjectAtIndex:(NSUInteger)second;

- (void)removeObjectAtIndex:(NSUInteger)index;

/// Removing a key that is not there changes nothing.
- (void)removeObjectForKey:(id)key;
- (void)removeObjectsForKeys:(NSArray *)keys;
- (void)removeAllObjects;

/// Takes over the other dictionary's entries in place of its own.
- (void)setDictionary:(NSDictionary *)other;

@end
