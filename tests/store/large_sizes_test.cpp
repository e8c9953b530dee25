// The codec at the top of its 32-bit sizes: runs longer than one token's
// length field, buffers of 2 GiB less a byte with their zero tail, and
// versions whose raw size leaves no room for the decoder's slack.
#include <gtest/gtest.h>

#include <string>

#include "lib/mem_stream.h"
#include "store/codec_helpers.h"
#include "store/held_buf.h"
#include "store/token_expander.h"
#include "store/token_format.h"
#include "store/token_writer.h"
#include "store/version_expand.h"
#include "support/address_space.h"

namespace {

const std::string kMax = std::to_string(kTokenMaxLength);

TEST(LargeSizes, RunsLongerThanATokenAreSplit) {
  LStr tokens;
  LMemOutStream out(tokens);
  TTokenWriter writer(out);
  writer.selfCopy(INT32_MAX, 1);
  writer.refCopy(kTokenMaxLength + 1, -7);
  writer.selfCopy(kTokenMaxLength, 3);
  writer.finish();
  Bytes bytes(tokens.ptr, tokens.length);
  EXPECT_EQ(Describe(bytes),
            "S" + kMax + "@1 S" + kMax + "@1 S1@1 R" + kMax + "@-7 R1@-7 S" + kMax + "@3");
}

TEST(LargeSizes, ASplitRunExpandsToItsBytes) {
  KST_SKIP_WITHOUT_ROOM_FOR_2_GIB();
  // A literal "xy" and a self copy one byte longer than a token holds: the
  // second piece reads on where the first stopped.
  LStr tokens;
  LMemOutStream out(tokens);
  TTokenWriter writer(out);
  const uint8_t xy[] = {'x', 'y'};
  writer.literal(xy, 2);
  writer.selfCopy(kTokenMaxLength + 1, 2);
  writer.finish();
  const int32_t size = kTokenMaxLength + 3;
  THeldBuf raw;
  uint8_t* bytes = raw.prepare(size);
  ASSERT_EQ(FExpandTokens(reinterpret_cast<const uint8_t*>(tokens.ptr), tokens.length, bytes, size,
                          nullptr, 0),
            size);
  raw.setSize(size);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes) + size - 5, 5), "yxyxy");
  EXPECT_EQ(bytes[kTokenMaxLength], 'y');
}

TEST(LargeSizes, HeldBuffersReachTheTopWithTheirZeroTail) {
  KST_SKIP_WITHOUT_ROOM_FOR_2_GIB();
  THeldBuf buf;
  uint8_t* bytes = buf.prepare(INT32_MAX);
  bytes[INT32_MAX - 1] = 0xAB;
  buf.setSize(INT32_MAX);
  EXPECT_EQ(buf.size(), INT32_MAX);
  for (int32_t i = 0; i < THeldBuf::kZeroTail; i++)
    EXPECT_EQ(buf.data()[int64_t{INT32_MAX} + i], 0) << i;
  EXPECT_EQ(buf.data()[INT32_MAX - 1], 0xAB);
}

TEST(LargeSizes, TheLargestRawSizeIsNoDamage) {
  KST_SKIP_WITHOUT_ROOM_FOR_2_GIB();
  // The decoder's room is the raw size plus its slack, which passes 32 bits
  // here; the held form itself is two bytes.
  THeldBuf held;
  Bytes stored("\x09xy", 3);
  EXPECT_EQ(FormatFailure([&] { FExpandStored(U8(stored), 3, INT32_MAX, nullptr, held); }), 0);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(held.data()), held.size()), "xy");
}

}  // namespace
