// A view's accessibility label. GNUstep declares it without keeping it for views.
#import <Cocoa/Cocoa.h>

#include "Replacements.h"

namespace {

void (*original_dealloc)(id, SEL);

// The label of each view that has one. The views are not retained: each takes its entry with it. Main thread.
NSMapTable *Labels() {
  static NSMapTable *labels = NSCreateMapTable(NSNonOwnedPointerMapKeyCallBacks, NSObjectMapValueCallBacks, 16);
  return labels;
}

void ForgetLabelAndDealloc(id view, SEL selector) {
  [Labels() removeObjectForKey:view];
  original_dealloc(view, selector);
}

}  // namespace

const Replacement dealloc("NSView", "dealloc", ForgetLabelAndDealloc, &original_dealloc);

@implementation NSView (AccessibilityLabel)

- (NSString *)accessibilityLabel {
  return [Labels() objectForKey:self];
}

- (void)setAccessibilityLabel:(NSString *)label {
  [Labels() removeObjectForKey:self];
  if (label) [Labels() setObject:[[label copy] autorelease] forKey:self];
}

@end
