#include <cstring>

#include "archive/archive.h"
#include "archive/format.h"
#include "archive/update_file.h"
#include "lib/fail.h"
#include "lib/fixed_coding.h"
#include "lib/msg.h"

namespace {
const unsigned char kZeros[kAlignment] = {};
}  // namespace

void FReleaseBlock(TArchive& archive, int32_t pos, bool keepStart) {
  LInts segments;
  if (pos > 0 && archive.update != nullptr && archive.update->takeSegments(pos, segments)) {
    for (int32_t i = 0; i < segments.count; i += 2)
      FPutExtent(archive.freeList, new TExtent{segments[i], segments[i + 1]}, i == 0 && keepStart);
    return;
  }
  bool first = true;
  // More segments than the data area can hold means the chain loops.
  int32_t left = archive.treePos / kAlignment;
  while (pos > 0) {
    if (pos < kHeaderSize || pos % kAlignment != 0 || pos >= archive.treePos || --left < 0)
      FFormatError(kFormatBadBlock);
    archive.seek(pos);
    int32_t length = FReadI32(archive);
    int32_t next = FReadI32(archive);
    if (length < kSegmentHead || length > archive.treePos - pos) FFormatError(kFormatBadBlock);
    FPutExtent(archive.freeList, new TExtent{pos, FRoundUp64(length)}, first && keepStart);
    first = false;
    pos = next;
  }
}

int32_t FWriteSegments(TArchive& archive, TUpdateFile& update, int32_t keepPos, const void* head,
                       int32_t headLen, const void* data, int32_t dataLen, int32_t* parentAt) {
  const unsigned char* bytes = static_cast<const unsigned char*>(data);
  int32_t firstPos = 0;
  int32_t previousNextAt = -1;
  int32_t written = 0;
  bool first = true;
  do {
    TExtent* extent = FTakeExtent(archive.freeList, first ? keepPos : 0);
    if (extent == nullptr) FInternalBox(1153);
    int32_t headBytes = first ? headLen : 0;
    int64_t room = extent->isTail() ? INT32_MAX : extent->size - kSegmentHead - headBytes;
    int32_t n = dataLen - written;
    if (n > room) n = static_cast<int32_t>(room);
    // Summed in 64 bits: a segment of nearly 2 GiB must reach the test
    // below, not wrap around before it.
    const int64_t length64 = int64_t{kSegmentHead} + headBytes + n;
    const int64_t rounded64 = (length64 + kAlignment - 1) / kAlignment * kAlignment;
    if (extent->pos + rounded64 > INT32_MAX) {
      FPutExtent(archive.freeList, extent, false);
      FError(kMsgErrorBox, "アーカイブ ファイルが 2 GB を超えるため、書き込めません");
    }
    const int32_t length = static_cast<int32_t>(length64);
    const int32_t rounded = static_cast<int32_t>(rounded64);

    int32_t recordAt = update.beginRecord(extent->pos, rounded);
    FWriteI32(update.stream(), length);
    FWriteI32(update.stream(), 0);
    if (first) update.write(head, headLen);
    update.write(bytes + written, n);
    update.write(kZeros, rounded - length);
    update.endRecord();
    if (previousNextAt >= 0) update.patchI32(previousNextAt, extent->pos);
    previousNextAt = recordAt + 4;
    if (first) {
      firstPos = extent->pos;
      if (parentAt) *parentAt = recordAt + kSegmentHead;
    }
    update.noteSegment(firstPos, extent->pos, rounded);
    written += n;
    first = false;

    extent->pos += rounded;
    if (!extent->isTail()) extent->size -= rounded;
    if (extent->isTail() || extent->size >= kAlignment)
      FPutExtent(archive.freeList, extent, false);
    else
      delete extent;
  } while (written < dataLen);
  return firstPos;
}
