#include <Block.h>
#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

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

TEST(BlocksRuntime, ACopyOutlivesTheFrameUntilItsLastReference) {
  Number block = CopiedBlock(2);
  OverwriteStack();
  EXPECT_EQ(block(), 42);
  Number same = Block_copy(block);
  EXPECT_EQ(same, block) << "copying a copy takes one more reference";
  Block_release(block);
  OverwriteStack();
  EXPECT_EQ(same(), 42);
  Block_release(same);
}

TEST(BlocksRuntime, BlocksShareABlockVariable) {
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
TEST(BlocksRuntime, CppObjectsAreDestroyedOnce) {
  live_counters = 0;
  {
    Counter captured;
    __block Counter shared;
    Number block = Block_copy(^{
        return ++shared.value + captured.value;
    });
    const int with_block = live_counters;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([block] {
        for (int round = 0; round < 200000; ++round) Block_release(Block_copy(block));
      });
    }
    for (std::thread &thread : threads) thread.join();
    EXPECT_EQ(live_counters, with_block);
    EXPECT_EQ(block(), 15);
    Block_release(block);
    EXPECT_LT(live_counters, with_block);
    EXPECT_EQ(shared.value, 8) << "the frame still has the variable";
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
    Number outer = Block_copy(^{
        return 10 * block();
    });
    Block_release(block);
    EXPECT_EQ([object retainCount], before + 1) << "the outer block keeps the inner one, which keeps the object";
    EXPECT_EQ(outer(), 20);
    Block_release(outer);
    EXPECT_EQ([object retainCount], before);
    [object release];
  }
}
