// GNUstep notices stopModal only when the next event arrives, and may raise when no modal session runs. AppKit does
// neither: stopping wakes the loop by itself, and stopping nothing does nothing.
#import <Cocoa/Cocoa.h>
#import <EventLoop.h>

#include "Replacements.h"

namespace {

void (*original_stop_modal)(id, SEL, NSInteger);

void StopModalAndWake(id application, SEL selector, NSInteger code) {
  if (![application modalWindow]) return;
  original_stop_modal(application, selector, code);
  WakeEventLoop();
}

}  // namespace

// stopModal sends stopModalWithCode:, so one replacement covers both.
const Replacement stop("NSApplication", "stopModalWithCode:", StopModalAndWake, &original_stop_modal);
