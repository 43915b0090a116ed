#import "OHostApplication.h"

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
