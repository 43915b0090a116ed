// GNUstep notices stopModal only when the next event arrives, and raises when no modal session runs. AppKit does
// neither: stopping wakes the loop by itself, and stopping nothing does nothing.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "Replacements.h"
#include "ModalLoop.h"

void orvane_wake_event_loop() {
  NSEvent *event = [NSEvent otherEventWithType:NSApplicationDefined
                                      location:NSZeroPoint
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                       subtype:0
                                         data1:0
                                         data2:0];
  [NSApp postEvent:event atStart:NO];
}

namespace {

using StopModal = void (*)(id, SEL, NSInteger);
StopModal original_stop_modal;

void StopModalAndWake(id application, SEL selector, NSInteger code) {
  if (![application modalWindow]) return;
  original_stop_modal(application, selector, code);
  orvane_wake_event_loop();
}

}  // namespace

void InstallModalLoop() {
  // stopModal sends stopModalWithCode:, so one replacement covers both.
  original_stop_modal = ReplaceInstanceMethod<StopModal>("NSApplication", @selector(stopModalWithCode:),
                                                         StopModalAndWake);
}
