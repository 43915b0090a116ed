// Loading an interface file as AppKit does since macOS 10.8, without what GNUstep's loader leaves behind each time: a
// reference of every top-level object, and the parsed file.
#import <Cocoa/Cocoa.h>

#include "Replacements.h"

namespace {

id (*original_init_with_data)(id, SEL, NSData *, NSUInteger, NSError **);

// The documents that are parsed while an interface file loads; nil at other times. Main thread.
NSMutableArray *parsed_documents = nil;

id InitDocumentAndNote(id document, SEL selector, NSData *data, NSUInteger options, NSError **error) {
  document = original_init_with_data(document, selector, data, options, error);
  if (parsed_documents && document && [NSThread isMainThread]) [parsed_documents addObject:document];
  return document;
}

// Releases the documents that nobody but the list and the loader's lost reference holds.
void ReleaseLostDocuments(NSArray *documents) {
  for (NSXMLDocument *document in documents) {
    if ([document retainCount] == 2) [document release];
  }
}

}  // namespace

const Replacement init_with_data("NSXMLDocument", "initWithData:options:error:", InitDocumentAndNote,
                                 &original_init_with_data);

@implementation NSBundle (TopLevelNibLoading)

- (BOOL)loadNibNamed:(NSString *)name owner:(id)owner topLevelObjects:(NSArray **)topLevelObjects {
  NSMutableArray *outerDocuments = parsed_documents;
  NSMutableArray *documents = [[NSMutableArray alloc] init];
  NSArray *objects = nil;
  BOOL loaded = NO;
  parsed_documents = documents;
  @autoreleasepool {
    NSNib *nib = [[[NSNib alloc] initWithNibNamed:name bundle:self] autorelease];
    loaded = nib != nil && [nib instantiateWithOwner:owner topLevelObjects:&objects];
    [objects retain];
  }
  parsed_documents = outerDocuments;
  ReleaseLostDocuments(documents);
  [documents release];
  if (loaded) [objects makeObjectsPerformSelector:@selector(release)];
  [objects autorelease];
  if (loaded && topLevelObjects) *topLevelObjects = objects;
  return loaded;
}

@end
