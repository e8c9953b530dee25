// The bytes of an archive file: header offsets, footer tags and the fixed
// values of the format. Every multi-byte fixed field is little-endian and
// every position is a signed 32-bit offset from the start of the file.
#pragma once

#include <cstdint>

// Header: 64 bytes at the start of the file.
const int32_t kHeaderSize = 64;
const char kMagic[4] = {'K', 's', 't', 0};
const char kFormatVersion[4] = {'0', '0', '4', 0};
const int32_t kOffsetTreePos = 8;
const int32_t kOffsetFreeHead = 12;
const int32_t kOffsetLastStoreNo = 16;
// A commit rewrites treePos, freeHead and lastStoreNo: 12 bytes from offset 8.
const int32_t kHeaderCommitLength = 12;

// Blocks and free extents start at multiples of this.
const int32_t kAlignment = 64;
// The size of the tail extent: unbounded, past the end of the file.
const int32_t kTailSize = 2147483647;

// Footer tags.
const uint8_t kTagString = 0xA1;
const uint8_t kTagFile = 0xA2;
const uint8_t kTagFolder = 0xA3;
const uint8_t kTagVersion = 0xA4;
const uint8_t kTagEndOfFile = 0xAE;
const uint8_t kTagEnd = 0xAF;  // end of a folder's children, and of the footer

// The base of folder and version times in the footer: 18 December 2002 in
// Unix seconds.
const int32_t kTimeBase = 0x3E000000;

// A segment begins with its length and the position of the next segment; the
// first segment adds the position of its reference's block.
const int32_t kSegmentHead = 8;
const int32_t kFirstSegmentHead = 12;

// The update file ends with this position.
const int32_t kUpdateEnd = -1;

// A length rounded up to whole units of 64; one too large to round, which
// only damage can give, stays past every position of an archive.
inline int32_t FRoundUp64(int32_t n) {
  return n > INT32_MAX - (kAlignment - 1) ? INT32_MAX
                                          : (n + kAlignment - 1) / kAlignment * kAlignment;
}

// Numbers of the archive format failure for damage that the file's own
// structure cannot rule out, beside those of the number coding (309, 312),
// the tree (242, 263, 338, 425) and the token reader (775 to 892, 1859).
enum : int {
  kFormatBadChain = 339,   // a header position or free extent outside the data area, or a loop
  kFormatBadString = 340,  // a name, comment or user id beyond the string table
  kFormatBadBlock = 895,   // a block or segment outside the data area, or a chain that loops
};
