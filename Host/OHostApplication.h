#import <AppKit/AppKit.h>

/// What an event of the host's own carries as its subtype.
typedef NS_ENUM(short, OHostOrder) {
  OHostOrderExport = 1,  ///< data1 is the plug-in's index
  OHostOrderFinish = 2
};

/// Carries the host's own orders through the event queue. An order from a timer would run modal windows inside that
/// timer, where AppKit does not notice their end; from an event they run as if a menu had been used.
@interface OHostApplication : NSApplication

/// Queues an order for the delegate's handleOrder:data:. The order runs in the outermost event loop or in a modal one.
+ (void)postOrder:(OHostOrder)order data:(NSInteger)data;

@end

@protocol OHostOrderHandler
- (void)handleOrder:(OHostOrder)order data:(NSInteger)data;
@end
