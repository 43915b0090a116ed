// GNUstep notices stopModal only when the next event arrives, and may raise when no modal session runs. AppKit does
// neither: stopping wakes the loop by itself, and stopping nothing does nothing.
#import <Cocoa/Cocoa.h>
#import <EventLoop.h>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

void (*original_stop_modal)(id, SEL, NSInteger);

void StopModalAndWake(id application, SEL selector, NSInteger code) {
  if (![application modalWindow]) return;
  original_stop_modal(application, selector, code);
  WakeEventLoop();
}

}  // namespace

const Replacement replacement([] {
  // stopModal sends stopModalWithCode:, so one replacement covers both.
  original_stop_modal = ReplaceInstanceMethod("NSApplication", "stopModalWithCode:", StopModalAndWake);
});
