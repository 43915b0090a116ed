// What GNUstep's event loop needs to notice that something has changed beside it, such as the end of a modal session.
#pragma once

#import <AppKit/AppKit.h>

/// Posts an event without meaning to the application, so that its event loop goes round once. Main thread.
inline void WakeEventLoop() {
  [NSApp postEvent:[NSEvent otherEventWithType:NSApplicationDefined
                                      location:NSZeroPoint
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                       subtype:0
                                         data1:0
                                         data2:0]
           atStart:NO];
}
