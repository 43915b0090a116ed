#import "OHostApplication.h"

#import <EventLoop.h>

@implementation OHostApplication

+ (void)postOrder:(OHostOrder)order data:(NSInteger)data {
  PostApplicationEvent(order, data);
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
