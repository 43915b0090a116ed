// The event loop of AppKit on GNUstep: its modes, and events that no person makes.
#pragma once

#import <AppKit/AppKit.h>

/// The modes in which the main thread's loop runs: by itself, for a modal window, and while the mouse is down. GNUstep
/// does not take NSRunLoopCommonModes for them.
inline NSArray *EventLoopModes() {
  return @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
}

/// Posts an event of the application's own. Main thread.
inline void PostApplicationEvent(short subtype, NSInteger data) {
  [NSApp postEvent:[NSEvent otherEventWithType:NSApplicationDefined
                                      location:NSZeroPoint
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                       subtype:subtype
                                         data1:data
                                         data2:0]
           atStart:NO];
}

/// Has the event loop go round once, so that it notices what has changed beside it, such as the end of a modal session.
/// Main thread.
inline void WakeEventLoop() {
  PostApplicationEvent(0, 0);
}
