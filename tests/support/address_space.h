// The tests at the top of the 32-bit sizes hold buffers of 2 GiB, for which a
// 32-bit process has no room: there they stop before they start, and such a
// buffer ends in the out-of-memory failure that the allocator's tests cover.
#pragma once

#include <gtest/gtest.h>

#define KST_SKIP_WITHOUT_ROOM_FOR_2_GIB()                                 \
  if (sizeof(void*) < 8) GTEST_SKIP() << "a 32-bit process has no room " \
                                          "for buffers of 2 GiB"
