#include "archive/journal.h"

#include <cstring>

#include "archive/format.h"
#include "lib/fail.h"
#include "lib/file_util.h"
#include "lib/fixed_coding.h"
#include "lib/io_file.h"
#include "lib/larr.h"
#include "lib/msg.h"
#include "lib/sys.h"

namespace {

const char kHead[8] = {'K', 's', 't', 'J', 'r', 'n', 'l', '1'};
const char kTail[8] = {'K', 's', 't', 'J', 'e', 'n', 'd', '1'};
const int32_t kChunk = 65536;

// A running checksum over everything the journal holds before its tail.
class Sum {
 public:
  void add(const void* bytes, int32_t n) {
    const unsigned char* p = static_cast<const unsigned char*>(bytes);
    for (int32_t i = 0; i < n; i++) value_ = (value_ ^ p[i]) * 16777619u;
  }
  void addI32(int32_t v) {
    unsigned char b[4];
    FPutI32(b, v);
    add(b, 4);
  }
  int32_t value() const { return static_cast<int32_t>(value_); }

 private:
  uint32_t value_ = 2166136261u;
};

// The ranges of the present archive that the update overwrites, or cuts
// off when it ends the file before the present end, as position and length
// pairs.
bool collectRanges(LIoFile& update, int32_t archiveLength, LInts& ranges) {
  update.seek(0);
  int32_t newEnd = 0;
  for (;;) {
    int64_t pos = update.getDword();
    if (pos < 0) return false;
    if (static_cast<int32_t>(pos) == kUpdateEnd) {
      // The apply cuts the archive behind its last record.
      if (newEnd < archiveLength) {
        ranges.add(newEnd);
        ranges.add(archiveLength - newEnd);
      }
      return true;
    }
    int64_t length = update.getDword();
    if (length < 0 || static_cast<int32_t>(length) < 0 || static_cast<int32_t>(pos) < 0)
      return false;
    int32_t at = static_cast<int32_t>(pos);
    int32_t n = static_cast<int32_t>(length);
    update.seek(update.tell() + n);
    newEnd = at + n;
    if (at >= archiveLength || n == 0) continue;
    ranges.add(at);
    ranges.add(n < archiveLength - at ? n : archiveLength - at);
  }
}

bool copyRange(LIoFile& from, int32_t pos, int32_t n, LIoFile& to, Sum& sum) {
  LStr chunk;
  from.seek(pos);
  while (n > 0) {
    chunk.clear();
    int32_t got = from.readInto(chunk, n < kChunk ? n : kChunk);
    if (got <= 0) return false;
    if (to.write(chunk.ptr, got) != got) return false;
    sum.add(chunk.ptr, got);
    n -= got;
  }
  return true;
}

}  // namespace

LStr FJournalPath(const char* archivePath) {
  LStr path(archivePath);
  path.append("-journal");
  return path;
}

bool FWriteJournal(const char* journalPath, const char* archivePath, LIoFile& update) {
  // Read through a handle of its own: the apply's handle may only write.
  LIoFile archive(archivePath, 'r', false);
  if (!archive.isOpen()) return false;
  int32_t length = archive.seek(-1);
  LInts ranges;
  if (!collectRanges(update, length, ranges)) return true;  // nothing valid to apply
  LIoFile journal(journalPath, 'w', false);
  if (!journal.isOpen()) return false;
  Sum sum;
  journal.write(kHead, 8);
  sum.add(kHead, 8);
  FWriteI32(journal, length);
  sum.addI32(length);
  FWriteI32(journal, ranges.count / 2);
  sum.addI32(ranges.count / 2);
  for (int32_t i = 0; i < ranges.count; i += 2) {
    FWriteI32(journal, ranges[i]);
    FWriteI32(journal, ranges[i + 1]);
    sum.addI32(ranges[i]);
    sum.addI32(ranges[i + 1]);
    if (!copyRange(archive, ranges[i], ranges[i + 1], journal, sum)) return false;
  }
  FWriteI32(journal, sum.value());
  journal.write(kTail, 8);
  journal.flush();
  return true;
}

bool FRollBack(const char* journalPath, LIoFile& archive) {
  LIoFile journal(journalPath, 'r', false);
  if (!journal.isOpen()) return false;
  // The whole journal is checked before a byte of the archive moves.
  Sum sum;
  char head[8];
  if (journal.read(head, 8) != 8 || std::memcmp(head, kHead, 8) != 0) return false;
  sum.add(head, 8);
  int64_t length = journal.getDword();
  int64_t count = journal.getDword();
  if (length < 0 || count < 0) return false;
  sum.addI32(static_cast<int32_t>(length));
  sum.addI32(static_cast<int32_t>(count));
  LInts ranges;
  LInts offsets;
  for (int64_t i = 0; i < count; i++) {
    int64_t pos = journal.getDword();
    int64_t n = journal.getDword();
    if (pos < 0 || n < 0 || static_cast<int32_t>(n) < 0) return false;
    sum.addI32(static_cast<int32_t>(pos));
    sum.addI32(static_cast<int32_t>(n));
    ranges.add(static_cast<int32_t>(pos));
    ranges.add(static_cast<int32_t>(n));
    offsets.add(journal.tell());
    LStr chunk;
    for (int32_t left = static_cast<int32_t>(n); left > 0;) {
      chunk.clear();
      int32_t got = journal.readInto(chunk, left < kChunk ? left : kChunk);
      if (got <= 0) return false;
      sum.add(chunk.ptr, got);
      left -= got;
    }
  }
  int64_t stored = journal.getDword();
  char tail[8];
  if (stored < 0 || static_cast<int32_t>(stored) != sum.value() || journal.read(tail, 8) != 8 ||
      std::memcmp(tail, kTail, 8) != 0)
    return false;
  for (int32_t i = 0; i < ranges.count; i += 2) {
    journal.seek(offsets[i / 2]);
    archive.seek(ranges[i]);
    LStr chunk;
    for (int32_t left = ranges[i + 1]; left > 0;) {
      chunk.clear();
      int32_t got = journal.readInto(chunk, left < kChunk ? left : kChunk);
      archive.write(chunk.ptr, got);
      left -= got;
    }
  }
  archive.truncate(static_cast<int32_t>(length));
  archive.flush();
  return true;
}

void FRecoverArchive(const char* archivePath, LIoFile* writer) {
  LStr journalPath = FJournalPath(archivePath);
  if (FExists(journalPath.ptr) != kExistsFile) return;
  if (FExists(archivePath) == kExistsNone) {
    SysDeleteFile(journalPath.ptr);
    return;
  }
  if (writer != nullptr) {
    FRollBack(journalPath.ptr, *writer);
  } else {
    LIoFile archive(archivePath, 'a', false);
    if (!archive.isOpen())
      FError(kMsgErrorBox, "アーカイブファイル「%s」は他のプロセスが更新中です", archivePath);
    FRollBack(journalPath.ptr, archive);
  }
  SysDeleteFile(journalPath.ptr);
}
