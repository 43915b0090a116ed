#import "OHostApplication.h"

#import "OHostIcon.h"

@implementation OHostApplication

+ (void)postOrder:(OHostOrder)order data:(NSInteger)data {
  [NSApp postEvent:[NSEvent otherEventWithType:NSApplicationDefined
                                      location:NSZeroPoint
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                       subtype:order
                                         data1:data
                                         data2:0]
           atStart:NO];
}

// From the start: every window gets the icon that its application had when the first one was made.
- (NSImage *)applicationIconImage {
  static NSImage *const icon = [OHostIcon() retain];
  return icon;
}

- (void)sendEvent:(NSEvent *)event {
  const bool is_order = [event type] == NSApplicationDefined &&
                        ([event subtype] == OHostOrderExport || [event subtype] == OHostOrderFinish);
  if (is_order) {
    [(id<OHostOrderHandler>)[self delegate] handleOrder:static_cast<OHostOrder>([event subtype]) data:[event data1]];
  } else {
    [super sendEvent:event];
  }
}

@end
