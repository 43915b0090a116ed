// A window from an interface file comes up black on X11 where nothing has been drawn yet. AppKit draws it whole.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

void (*original_make_key_and_order_front)(id, SEL, id);

void DisplayAndOrderFront(id window, SEL selector, id sender) {
  [[window contentView] setNeedsDisplay:YES];
  original_make_key_and_order_front(window, selector, sender);
}

}  // namespace

const Replacement replacement([] {
  original_make_key_and_order_front = ReplaceInstanceMethod("NSWindow", "makeKeyAndOrderFront:", DisplayAndOrderFront);
});
