#include "ViewThread.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include "Replacements.h"

// What a view shows changes with one of these at the end, whichever setter it is.
static void (*set_needs_display)(NSView *, SEL, BOOL);
static void (*set_needs_display_in_rect)(NSView *, SEL, NSRect);

static void ExpectMainThread(NSView *view) {
  EXPECT_TRUE([NSThread isMainThread]) << [[view description] UTF8String] << " is changed on another thread";
}

static void SetNeedsDisplay(NSView *view, SEL selector, BOOL flag) {
  ExpectMainThread(view);
  set_needs_display(view, selector, flag);
}

static void SetNeedsDisplayInRect(NSView *view, SEL selector, NSRect rect) {
  ExpectMainThread(view);
  set_needs_display_in_rect(view, selector, rect);
}

void ExpectViewsOnMainThread() {
  set_needs_display = ReplaceMethod([NSView class], "setNeedsDisplay:", SetNeedsDisplay);
  set_needs_display_in_rect = ReplaceMethod([NSView class], "setNeedsDisplayInRect:", SetNeedsDisplayInRect);
}
