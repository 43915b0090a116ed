// Adding items to a pop-up button compares each title with every item that is there and lays the menu out anew each
// time: a list of a thousand takes half a second.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

using AddItemsWithTitles = void (*)(id, SEL, NSArray *);
AddItemsWithTitles original_add_items_with_titles;

// Of titles that occur more than once, the last, as when they are added one by one.
NSArray *WithoutEarlierDuplicates(NSArray *titles) {
  NSMutableSet *seen = [NSMutableSet setWithCapacity:[titles count]];
  NSMutableArray *kept = [NSMutableArray arrayWithCapacity:[titles count]];
  for (NSString *title in [titles reverseObjectEnumerator]) {
    if ([seen containsObject:title]) continue;
    [seen addObject:title];
    [kept addObject:title];
  }
  return [[kept reverseObjectEnumerator] allObjects];
}

// An empty button gets a menu that was filled before it is anybody's.
void AddItemsAtOnce(id button, SEL selector, NSArray *titles) {
  if ([button numberOfItems] != 0 || [button pullsDown] || [titles count] == 0) {
    original_add_items_with_titles(button, selector, titles);
    return;
  }
  // One added as usual shows what the button's items are like: they have its action, and no images for their state.
  original_add_items_with_titles(button, selector, [titles subarrayWithRange:NSMakeRange(0, 1)]);
  id<NSMenuItem> model = static_cast<id>([[button itemArray] objectAtIndex:0]);
  NSMenu *menu = [[NSMenu alloc] initWithTitle:[[button menu] title]];
  [menu setAutoenablesItems:[[button menu] autoenablesItems]];
  [menu setMenuChangedMessagesEnabled:NO];
  for (NSString *title in WithoutEarlierDuplicates(titles)) {
    // Complete before it is in the menu, which looks at itself after every change of an item.
    NSMenuItem *item = [[NSMenuItem alloc] initWithTitle:title action:[model action] keyEquivalent:@""];
    [item setTarget:[model target]];
    [item setOnStateImage:[model onStateImage]];
    [item setMixedStateImage:[model mixedStateImage]];
    [menu addItem:item];
    [item release];
  }
  [button setMenu:menu];
  [menu setMenuChangedMessagesEnabled:YES];
  [menu release];
  [button selectItemAtIndex:0];
}

}  // namespace

void InstallPopUpItems() {
  original_add_items_with_titles =
      ReplaceInstanceMethod<AddItemsWithTitles>("NSPopUpButton", "addItemsWithTitles:", AddItemsAtOnce);
}
