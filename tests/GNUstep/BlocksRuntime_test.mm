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

// Writes over the stack that a returned function's frame has left.
__attribute__((noinline)) int OverwriteStack() {
  volatile char bytes[4096];
  for (size_t i = 0; i < sizeof bytes; ++i) bytes[i] = static_cast<char>(0xa5);
  return bytes[17];
}

__attribute__((noinline)) void MakeSharedCounter(Number *increment, Number *read) {
  __block int count = 100;
  *increment = Block_copy(^{
      return ++count;
  });
  *read = Block_copy(^{
      return count;
  });
  count = 5;  // the frame uses the variable that the blocks share
}

}  // namespace

TEST(BlocksRuntime, BlocksShareAVariableThatOutlivesItsFrame) {
  Number increment = nullptr;
  Number read = nullptr;
  MakeSharedCounter(&increment, &read);
  OverwriteStack();
  EXPECT_EQ(read(), 5);
  EXPECT_EQ(increment(), 6);
  Block_release(increment);
  EXPECT_EQ(read(), 6) << "one block's end leaves the variable to the other";
  Block_release(read);
}

// Also when threads take and give back references at the same time.
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
