#include <Block.h>
#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

int live_counters = 0;

// A captured C++ object: how many of its kind live shows whether each copy is destroyed once.
struct Counter {
  Counter() { ++live_counters; }
  Counter(const Counter &other) : value(other.value) { ++live_counters; }
  ~Counter() { --live_counters; }
  int value = 7;
};

using Number = int (^)();

}  // namespace

// Each copy holds what it captures, also when threads take and give back references at the same time.
TEST(BlocksRuntime, WhatABlockCapturesGoesWithItsLastReference) {
  NSObject *object = [[NSObject alloc] init];
  const NSUInteger references = [object retainCount];
  {
    Counter captured;
    Number inner = Block_copy(^{
        return [object isProxy] ? 0 : captured.value;
    });
    Number block = Block_copy(^{
        return 10 * inner();
    });
    Block_release(inner);
    const int with_block = live_counters;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([block] {
        for (int round = 0; round < 200000; ++round) Block_release(Block_copy(block));
      });
    }
    for (std::thread &thread : threads) thread.join();
    EXPECT_EQ(live_counters, with_block);
    EXPECT_EQ([object retainCount], references + 1) << "the outer block keeps the inner one, which keeps the object";
    EXPECT_EQ(block(), 70);
    Block_release(block);
    EXPECT_EQ(live_counters, with_block - 1);
    EXPECT_EQ([object retainCount], references);
  }
  EXPECT_EQ(live_counters, 0);
  [object release];
}
