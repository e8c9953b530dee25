#include "lib/alloc.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "lib/larr.h"
#include "lib/lstr.h"
#include "support/address_space.h"
#include "support/recorder.h"

TEST(Alloc, SizeClassesAtTheirBoundaries) {
  int32_t usable;
  EXPECT_EQ(FRoundSize(0, &usable), 1);
  EXPECT_EQ(usable, 0);
  EXPECT_EQ(FRoundSize(60, &usable), 16);
  EXPECT_EQ(usable, 60);
  EXPECT_EQ(FRoundSize(61, &usable), 21);
  EXPECT_EQ(usable, 76);
  EXPECT_EQ(FRoundSize(252, &usable), 32);
  EXPECT_EQ(usable, 252);
  EXPECT_EQ(FRoundSize(253, &usable), 37);
  EXPECT_EQ(usable, 316);
  EXPECT_EQ(FRoundSize(1020, &usable), 48);
  EXPECT_EQ(FRoundSize(1021, &usable), 53);
  EXPECT_EQ(usable, 1276);
  EXPECT_EQ(FRoundSize(4092, &usable), 64);
  EXPECT_EQ(usable, 4092);
  EXPECT_EQ(FRoundSize(4093, &usable), -1);
  EXPECT_EQ(usable, 8188);
}

TEST(Alloc, NoClassBetweenTheRanges) {
  for (int32_t n = 0; n <= 4092; n++) {
    int index = FRoundSize(n, nullptr);
    EXPECT_FALSE((index >= 17 && index <= 20) || (index >= 33 && index <= 36) ||
                 (index >= 49 && index <= 52))
        << n;
  }
}

TEST(Alloc, BlocksKeepTheirRequestedSizeAndDoNotOverlap) {
  std::vector<void*> blocks;
  for (int32_t n = 0; n < 5000; n += 7) {
    char* block = static_cast<char*>(FAlloc(n));
    ASSERT_EQ(reinterpret_cast<uintptr_t>(block) % 8, 0u) << n;
    EXPECT_EQ(FBlockSize(block), n);
    std::memset(block, n & 0xFF, n);
    blocks.push_back(block);
  }
  int32_t n = 0;
  for (void* block : blocks) {
    for (int32_t i = 0; i < n; i++) ASSERT_EQ(static_cast<unsigned char*>(block)[i], n & 0xFF);
    EXPECT_EQ(FBlockSize(block), n);
    FFree(block);
    n += 7;
  }
  FFree(nullptr);
}

TEST(Alloc, FreedBlockOfAClassIsReused) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "every block comes from the heap under AddressSanitizer";
#else
  void* first = FAlloc(40);
  FFree(first);
  void* second = FAlloc(37);  // the same class
  EXPECT_EQ(first, second);
  EXPECT_EQ(FBlockSize(second), 37);
  FFree(second);
#endif
}

TEST(Alloc, LargeBlocksAreCountedBothWays) {
  FAllocStats before = FAllocTotals();
  void* block = FAlloc(4093);
  FFree(block);
  FAllocStats after = FAllocTotals();
  EXPECT_EQ(after.heapTaken - before.heapTaken, 8192);
  EXPECT_EQ(after.heapReturned - before.heapReturned, 8192);
}

TEST(Alloc, GrowthReachesTheTopOfThirtyTwoBits) {
  int32_t request;
  // The largest block: its usable size is all of 32 bits, less the
  // terminator or sentinel slot.
  EXPECT_EQ(FGrowCapacity(INT32_MAX - 1, 1, &request), INT32_MAX - 1);
  EXPECT_EQ(request, INT32_MAX);
  EXPECT_EQ(FGrowCapacity(2000000000, 1, &request), INT32_MAX - 1);
  // Past it no capacity is enough; the string or array must refuse.
  EXPECT_LT(FGrowCapacity(INT32_MAX, 1, &request), INT32_MAX);
  EXPECT_EQ(FGrowCapacity(INT32_MAX / 8 - 1, 8, &request), INT32_MAX / 8 - 1);
  EXPECT_LT(FGrowCapacity(INT32_MAX / 8, 8, &request), INT32_MAX / 8);
  int32_t usable;
  EXPECT_EQ(FRoundSize(INT32_MAX, &usable), -1);
  EXPECT_EQ(usable, INT32_MAX);
  EXPECT_EQ(FRoundSize(INT32_MAX - 4096, &usable), -1);
  EXPECT_GE(usable, INT32_MAX - 4096);
}

TEST(Alloc, TheLargestBlockIsCountedIn64Bits) {
  KST_SKIP_WITHOUT_ROOM_FOR_2_GIB();
  FAllocStats before = FAllocTotals();
  char* block = static_cast<char*>(FAlloc(INT32_MAX));
  block[INT32_MAX - 1] = 1;
  EXPECT_EQ(FBlockSize(block), INT32_MAX);
  FFree(block);
  FAllocStats after = FAllocTotals();
  EXPECT_EQ(after.heapTaken - before.heapTaken, int64_t{INT32_MAX} + 4);
  EXPECT_EQ(after.heapReturned - before.heapReturned, int64_t{INT32_MAX} + 4);
}

TEST(Alloc, StringsAndArraysRefuseWhatNoBlockHolds) {
  RecorderScope scope;
  LStr text("kept");
  EXPECT_THROW(text.reserve(INT32_MAX), int);
  EXPECT_STREQ(text.ptr, "kept");
  LArr array;
  EXPECT_THROW(array.reserve(INT32_MAX / static_cast<int32_t>(sizeof(intptr_t))), int);
  EXPECT_EQ(array.count, 0);
  ASSERT_EQ(scope.recorder->boxes.count, 2);
  EXPECT_NE(std::string(scope.recorder->boxes[0]->ptr).find("メモリが足りません"),
            std::string::npos);
}

TEST(Alloc, ThreadsThatShareTheFreeListsGetBlocksOfTheirOwn) {
  // Each thread marks its blocks with its own byte and checks the mark
  // before giving them back: a block handed to two threads at once shows
  // the other thread's mark. All of one size class, in a tight loop, so
  // that the threads meet at its free list as often as they can.
  const int kThreads = 4;
  std::vector<int> damaged(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; t++) {
    threads.emplace_back([t, &damaged] {
      char* held[4];
      for (int round = 0; round < 300000; round++) {
        for (char*& block : held) {
          block = static_cast<char*>(FAlloc(24));
          std::memset(block, 'A' + t, 24);
        }
        for (char* block : held) {
          if (block[0] != 'A' + t || block[23] != 'A' + t) damaged[t]++;
          FFree(block);
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 0; t < kThreads; t++) EXPECT_EQ(damaged[t], 0) << "thread " << t;
}
