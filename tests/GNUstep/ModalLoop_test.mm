#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <thread>

#include "BareWindow.h"

// Each event that comes would end a loop that has been stopped, so this goes on for longer than opening the window
// brings some. A loop that waits in vain does not end within the test's time.
TEST(ModalLoop, EndsAtOnceWhenItIsStoppedAndStoppingNothingDoesNothing) {
  const window_test::BareWindow window(NSMakeSize(200, 100));
  [NSApp stopModalWithCode:4711];
  for (int round = 0; round < 100; ++round) {
    std::thread another([] {
      @autoreleasepool {
        [NSApp performSelectorOnMainThread:@selector(stopModal)
                                withObject:nil
                             waitUntilDone:NO
                                     modes:@[ NSModalPanelRunLoopMode ]];
      }
    });
    EXPECT_EQ([NSApp runModalForWindow:window.Window()], NSRunStoppedResponse);
    another.join();
  }
}
