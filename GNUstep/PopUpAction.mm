// AppKit takes a pop-up button's menu off the screen before it sends the action. GNUstep does it afterwards: the menu
// stays in the way as long as the action works.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "PopUpMenu.h"
#include "Replacements.h"

namespace {

using SendAction = BOOL (*)(id, SEL, SEL, id, id);
SendAction original_send_action;

BOOL CloseMenuAndSendAction(id application, SEL selector, SEL action, id target, id sender) {
  if ([sender isKindOfClass:[NSPopUpButton class]]) [PopUpMenuWindow(sender) orderOut:nil];
  return original_send_action(application, selector, action, target, sender);
}

}  // namespace

void InstallPopUpAction() {
  original_send_action =
      ReplaceInstanceMethod<SendAction>("NSApplication", "sendAction:to:from:", CloseMenuAndSendAction);
}
