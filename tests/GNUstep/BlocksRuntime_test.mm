#import <Foundation/Foundation.h>

#include <Block.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
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

__attribute__((noinline)) Number CopiedBlock(int base) {
  std::string text(40, 'x');
  return Block_copy(^{
      return base + static_cast<int>(text.size());
  });
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

TEST(BlocksRuntime, ACopyOutlivesTheFrame) {
  Number block = CopiedBlock(2);
  OverwriteStack();
  EXPECT_EQ(block(), 42);
  Number same = Block_copy(block);
  EXPECT_EQ(same, block) << "copying a copy takes one more reference";
  Block_release(block);
  OverwriteStack();
  EXPECT_EQ(same(), 42);
  Block_release(same);
  Block_release(nullptr);
}

TEST(BlocksRuntime, BlocksShareABlockVariable) {
  Number increment = nullptr;
  Number read = nullptr;
  MakeSharedCounter(&increment, &read);
  OverwriteStack();
  EXPECT_EQ(read(), 5);
  EXPECT_EQ(increment(), 6);
  EXPECT_EQ(read(), 6);
  Block_release(increment);
  EXPECT_EQ(read(), 6) << "one block's end leaves the variable to the other";
  Block_release(read);
}

TEST(BlocksRuntime, CppObjectsAreCopiedAndDestroyedOnce) {
  live_counters = 0;
  {
    Counter captured;
    Number block = Block_copy(^{
        return captured.value;
    });
    const int with_block = live_counters;
    EXPECT_GT(with_block, 1);
    Number again = Block_copy(block);
    EXPECT_EQ(live_counters, with_block) << "a second reference copies nothing";
    Block_release(again);
    EXPECT_EQ(block(), 7);
    Block_release(block);
  }
  EXPECT_EQ(live_counters, 0);
  {
    __block Counter shared;
    Number block = Block_copy(^{
        return ++shared.value;
    });
    EXPECT_EQ(block(), 8);
    EXPECT_EQ(shared.value, 8);
    Block_release(block);
    EXPECT_GT(live_counters, 0) << "the frame still has the variable";
  }
  EXPECT_EQ(live_counters, 0);
}

TEST(BlocksRuntime, ObjectsAreRetainedForTheBlocksLife) {
  @autoreleasepool {
    NSObject *object = [[NSObject alloc] init];
    const NSUInteger before = [object retainCount];
    Number block = Block_copy(^{
        return [object isProxy] ? 1 : 2;
    });
    EXPECT_EQ([object retainCount], before + 1);
    Number outer = Block_copy(^{
        return 10 * block();
    });
    Block_release(block);
    EXPECT_EQ([object retainCount], before + 1) << "the outer block keeps the inner one, which keeps the object";
    EXPECT_EQ(outer(), 20);
    Block_release(outer);
    EXPECT_EQ([object retainCount], before);

    __block NSObject *unretained = object;
    Number byref = Block_copy(^{
        return unretained ? 1 : 0;
    });
    EXPECT_EQ([object retainCount], before);
    EXPECT_EQ(byref(), 1);
    Block_release(byref);
    [object release];
  }
}

TEST(BlocksRuntime, ABlockInABlockVariableMayCallItself) {
  __block Number countdown = nullptr;
  __block int left = 3;
  countdown = Block_copy(^{
      return --left > 0 ? countdown() + 1 : 1;
  });
  EXPECT_EQ(countdown(), 3);
  EXPECT_EQ(left, 0);
  Block_release(countdown);
}

TEST(BlocksRuntime, ABlockWithoutCapturesNeedsNoCopy) {
  Number global = ^{
      return 3;
  };
  Number copy = Block_copy(global);
  EXPECT_EQ(copy, global);
  Block_release(copy);
  Block_release(copy);
  EXPECT_EQ(global(), 3);
}

TEST(BlocksRuntime, ReferencesAreCountedAcrossThreads) {
  live_counters = 0;
  {
    Counter captured;
    Number block = Block_copy(^{
        return captured.value;
    });
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([block] {
        for (int round = 0; round < 200000; ++round) {
          Number held = Block_copy(block);
          Block_release(held);
        }
      });
    }
    for (std::thread &thread : threads) thread.join();
    EXPECT_EQ(block(), 7);
    EXPECT_GT(live_counters, 1);
    Block_release(block);
  }
  EXPECT_EQ(live_counters, 0);
}
