#include "store/version_io.h"

#include <algorithm>
#include <cstring>

#include "archive/archive.h"
#include "archive/format.h"
#include "archive/update_file.h"
#include "lib/fail.h"
#include "lib/file_stream.h"
#include "lib/fixed_coding.h"
#include "lib/lhash.h"
#include "lib/mem_stream.h"
#include "lib/msg.h"
#include "lib/num_coding.h"
#include "store/codec_scratch.h"
#include "store/content_sum.h"
#include "store/pack_bytes.h"
#include "store/token_format.h"
#include "store/ver_info.h"
#include "store/version_encoder.h"
#include "store/version_expand.h"
#include "store/version_ratio.h"
#include "store/work_set.h"

namespace {

const TCodecSettings kDefaultSettings;
const TCodecSettings* gSettings = &kDefaultSettings;

// A difference from the modification time, kept in 32 bits.
uint32_t timeDiff(int64_t value, int64_t base) { return static_cast<uint32_t>(value - base); }
int64_t timeBack(uint32_t diff, int64_t base) {
  return static_cast<int32_t>(diff + static_cast<uint32_t>(base));
}

struct BlockHead {
  KST_POOLED_NEW
  int32_t pos;
  int32_t length;
  int32_t next;
  int32_t parent;
  int32_t rawSize;
  int32_t dataStart;  // archive position of the first data byte
};

void checkSegment(const TArchive& archive, int32_t pos, int32_t length, int32_t head) {
  if (pos < kHeaderSize || pos % kAlignment != 0 || pos >= archive.treePos || length < head ||
      length > archive.treePos - pos)
    FFormatError(kFormatBadBlock);
}

BlockHead readHead(TArchive& archive, int32_t pos) {
  checkSegment(archive, pos, kFirstSegmentHead, 0);
  archive.seek(pos);
  BlockHead head;
  head.pos = pos;
  head.length = FReadI32(archive);
  head.next = FReadI32(archive);
  head.parent = FReadI32(archive);
  FReadVerHeader(archive, nullptr);
  head.rawSize = static_cast<int32_t>(FReadNum(archive));
  head.dataStart = archive.tell();
  checkSegment(archive, pos, head.length, head.dataStart - pos);
  if (head.rawSize < 0) FFormatError(425);
  return head;
}

// The stored form of one block: the data of all its segments in order.
void readStored(TArchive& archive, const BlockHead& head, LStr& stored) {
  archive.seek(head.dataStart);
  archive.readInto(stored, head.length - (head.dataStart - head.pos));
  int32_t left = archive.treePos / kAlignment;
  for (int32_t next = head.next; next > 0;) {
    if (--left < 0) FFormatError(kFormatBadBlock);
    checkSegment(archive, next, kSegmentHead, 0);
    archive.seek(next);
    int32_t length = FReadI32(archive);
    int32_t following = FReadI32(archive);
    checkSegment(archive, next, length, kSegmentHead);
    archive.readInto(stored, length - kSegmentHead);
    next = following;
  }
}

TArchive& archive() { return *FArchive(); }

// A held form longer than its version's raw size allows comes from a
// damaged archive.
void checkHeldLength(int64_t heldLength, int32_t size) {
  if (heldLength > static_cast<int64_t>(size) + kHeldSlack) FFormatError(kBadHeldLength);
}

// The room to reserve for an encoder's output from n bytes of input: the
// input and a margin, as far as a string reaches (its terminator takes the
// last byte that 32 bits give).
int32_t outputRoom(int32_t n) {
  return static_cast<int32_t>(std::min<int64_t>(int64_t{n} + 64, INT32_MAX - 1));
}

}  // namespace

const TCodecSettings& FCodecSettings() { return *gSettings; }
void FSetCodecSettings(const TCodecSettings* settings) {
  gSettings = settings ? settings : &kDefaultSettings;
}

void FWriteVerHeader(LStream& stream, TVer* ver) {
  const TVerInfo* info = ver->FindInfo(true);
  uint8_t bytes[3] = {info->uniqueRatio, info->compRatio, info->attrs};
  stream.write(bytes, 3);
  FWriteDiff(stream, timeDiff(info->createTime, ver->time), 0);
  FWriteDiff(stream, timeDiff(info->accessTime, ver->time), 0);
  FWriteDiff(stream, timeDiff(info->storeTime, ver->time), 0);
  FWriteNum(stream, static_cast<uint32_t>(info->storeNo));
  FWriteNum(stream, static_cast<uint32_t>(info->commentId));
  FWriteNum(stream, static_cast<uint32_t>(info->userId));
  FWriteNum(stream, static_cast<uint32_t>(info->checkoutId));
}

void FReadVerHeader(LSrm& srm, TVer* ver) {
  uint8_t bytes[3];
  for (uint8_t& b : bytes) {
    int c = srm.getByte();
    if (c < 0) FFormatError(kFormatEndOfData);
    b = static_cast<uint8_t>(c);
  }
  uint32_t create = FReadDiff(srm, 0);
  uint32_t access = FReadDiff(srm, 0);
  uint32_t store = FReadDiff(srm, 0);
  uint32_t storeNo = FReadNum(srm);
  uint32_t commentId = FReadNum(srm);
  uint32_t userId = FReadNum(srm);
  uint32_t checkoutId = FReadNum(srm);
  if (ver == nullptr) return;
  uint32_t strings = static_cast<uint32_t>(FStrings().count());
  if (commentId > strings || userId > strings || checkoutId > strings)
    FFormatError(kFormatBadString);
  TVerInfo* info = FWorkSet()->NewInfo(ver);
  info->uniqueRatio = bytes[0];
  info->compRatio = bytes[1];
  info->attrs = bytes[2];
  info->createTime = timeBack(create, ver->time);
  info->accessTime = timeBack(access, ver->time);
  info->storeTime = timeBack(store, ver->time);
  info->storeNo = static_cast<int32_t>(storeNo);
  info->commentId = static_cast<int32_t>(commentId);
  info->userId = static_cast<int32_t>(userId);
  info->checkoutId = static_cast<int32_t>(checkoutId);
}

namespace {
void readBlockInto(THeldBuf& result, TArchive& archive, int32_t pos, const TKnownBlock* known) {
  // The chain from this block up to the newest version, which has no
  // parent, or up to the known block. Walked first and decoded from the top
  // down, so that the depth of a chain costs no stack, and a loop is found
  // instead of followed.
  LArrOf<BlockHead*, LDelete<BlockHead*>> chain;
  LHash seen(LHash::kInts);
  bool fromKnown = false;
  for (int32_t at = pos; at > 0; at = chain.last()->parent) {
    if (known != nullptr && at == known->pos) {
      fromKnown = true;
      break;
    }
    if (seen.containsInt(at)) FFormatError(kFormatBadBlock);
    seen.addInt(at);
    chain.add(new BlockHead(readHead(archive, at)));
  }
  if (fromKnown && chain.count == 0) {
    result.assign(known->held.data(), known->held.size());
    return;
  }
  // The result and one more buffer take turns as the reference and the
  // next result, so that a long chain allocates no more than one, and a
  // caller that reads block after block into the same result allocates
  // none once it has the room.
  THeldBuf reference;
  for (int32_t i = chain.count - 1; i >= 0; i--) {
    const BlockHead& head = *chain[i];
    FPollStop();
    LStr& stored = FCodecScratch().blockBytes();
    readStored(archive, head, stored);
    bool top = i == chain.count - 1;
    THeldView view(top && fromKnown ? known->held : reference);
    FExpandStored(reinterpret_cast<const uint8_t*>(stored.ptr), stored.length, head.rawSize,
                  top && !fromKnown ? nullptr : &view, result);
    if (i > 0) reference.swap(result);
  }
}
}  // namespace

bool FReadStandalone(TVer* ver, LStr& stored, int32_t* rawSize) {
  if (!(ver->flags & kVerStored) || ver->HasHeld()) return false;
  const BlockHead head = readHead(archive(), ver->dataPos);
  if (head.parent > 0) return false;
  stored.truncate(0);
  readStored(archive(), head, stored);
  *rawSize = head.rawSize;
  return true;
}

void FExpandHeld(const LStr& stored, int32_t rawSize, int32_t size, THeldBuf& held) {
  FExpandStored(reinterpret_cast<const uint8_t*>(stored.ptr), stored.length, rawSize,
                /*reference=*/nullptr, held);
  checkHeldLength(held.size(), size);
}

void FReadBlock(THeldBuf& result, TArchive& archive, int32_t pos, const TKnownBlock* known) {
  try {
    readBlockInto(result, archive, pos, known);
  } catch (int) {
    // Never a step of the chain, nor an earlier block, in place of this one.
    result.prepare(0);
    throw;
  }
}

int32_t FWriteBlock(TVer* ver, const LStr& stored, TVer* reference) {
  TArchive& arc = archive();
  TUpdateFile& update = arc.update ? *arc.update : arc.beginUpdate();
  int32_t keep = 0;
  if (ver->dataPos > 0) {
    FReleaseBlock(arc, ver->dataPos, /*keepStart=*/true);
    keep = ver->dataPos;
  }
  LStr head;
  LMemOutStream out(head);
  FWriteI32(out, 0);  // the parent, patched at commit
  FWriteVerHeader(out, ver);
  FWriteNum(out, static_cast<uint32_t>(ver->size));
  int32_t parentAt = 0;
  int32_t pos = FWriteSegments(arc, update, keep, head.ptr, head.length, stored.ptr, stored.length,
                               &parentAt);
  if (reference != nullptr) update.addFixup(parentAt, reference);
  return pos;
}

bool FReadHeld(const char* path, int32_t size, bool report, THeldBuf& held, uint16_t* checksum) {
  // One read of the listed size into a buffer that holds it already (a text
  // could not hold the largest file with its terminator), and one more byte
  // to see a file that grew: reading in chunks into a growing text was half
  // of the time of encoding a single large file.
  THeldBuf& raw = FCodecScratch().rawBytes();
  uint8_t* into = raw.prepare(size);
  int32_t got = 0;
  bool grew = false;
  {
    LFile file;
    // A file that does not open is never an empty version: the add left out
    // what it could not open when it listed it, so this one went away since.
    // Without the report it is left to the caller, who may read it again
    // with one.
    if (file.open(path, 'r', /*mustExist=*/report, /*ignoreBreak=*/false) != 0) return false;
    // In parts, with a stop taken between them: a large file on a busy disk
    // must not keep a stop waiting.
    const int32_t kPart = 4 << 20;
    while (got < size) {
      FPollStop();
      int32_t n = file.read(into + got, std::min(kPart, size - got));
      if (n <= 0) break;
      got += n;
    }
    char extra;
    grew = file.read(&extra, 1) > 0;
  }
  raw.setSize(got);
  if (got != size || grew) return false;
  *checksum = FSum16(raw.data(), got);
  // Room for incompressible bytes up front, so that the held form is written
  // where it stays without a copy.
  held.prepare(outputRoom(got));
  THeldOutStream out(held);
  FPackBytes(raw.data(), got, out, FCodecSettings());
  return true;
}

void FReadFileIn(TVer* ver) {
  TVerInfo* info = ver->FindInfo(true);
  THeldBuf* held = new THeldBuf;
  if (!FReadHeld(info->srcPath->ptr, ver->size, /*report=*/true, *held, &ver->checksum)) {
    delete held;
    FError(kMsgErrorBox, "ファイル %s の読み出しエラーです", info->srcPath->ptr);
  }
  FTakeHeld(ver, held);
}

void FTakeHeld(TVer* ver, THeldBuf* held) {
  TVerInfo* info = ver->FindInfo(true);
  delete info->held;
  info->held = held;
  info->heldLen = held->size();
}

TVerInfo* TVer::FindInfo(bool mustExist) const {
  TVerInfo* info = FWorkSet()->findInfo(this);
  if (info == nullptr && mustExist) FInternalBox(1910);
  return info;
}

TVerInfo* TVer::Info() {
  if (TVerInfo* info = FindInfo(false)) return info;
  if (!(flags & kVerStored)) FInternalBox(1910);
  // A stored version whose position leaves the data area came from a
  // damaged tree.
  TArchive& arc = archive();
  checkSegment(arc, dataPos, kFirstSegmentHead, 0);
  arc.seek(dataPos + kFirstSegmentHead);
  FReadVerHeader(arc, this);
  return FindInfo(true);
}

bool TVer::HasHeld() const {
  const TVerInfo* info = FindInfo(false);
  return info != nullptr && info->held != nullptr;
}

const THeldBuf& TVer::Hold() {
  TVerInfo* info = Info();
  info->holds++;
  if (info->held == nullptr) {
    if (flags & kVerStored) {
      THeldBuf* held = new THeldBuf;
      info->held = held;
      FReadBlock(*held, archive(), dataPos);
      info->heldLen = held->size();
    } else if (flags & kVerNew) {
      FReadFileIn(this);
    } else {
      FInternalBox(893);
    }
    checkHeldLength(info->heldLen, size);
  }
  return *info->held;
}

void TVer::Release() {
  TVerInfo* info = FindInfo(true);
  if (--info->holds > 0) return;
  info->holds = 0;
  delete info->held;
  info->held = nullptr;
  info->heldLen = -1;
}

void FReadRaw(TVer* ver, THeldBuf& raw) {
  FExpandRaw(THeldView(ver->Hold()), ver->size, raw);
  ver->Release();
}

void FEncodeDelta(const THeldBuf& target, const THeldBuf& reference, TDeltaForm& delta) {
  delta.stored.truncate(0);
  delta.stored.reserve(outputRoom(target.size()));
  LMemOutStream out(delta.stored);
  THeldView targetView(target);
  THeldView referenceView(reference);
  delta.matched = FEncodeVersion(targetView, &referenceView, out, FCodecSettings());
  delta.targetSize = target.size();
  delta.same = delta.matched == target.size() && target.size() == reference.size() &&
               std::memcmp(target.data(), reference.data(), target.size()) == 0;
}

void FApplyDelta(TVer* older, TVer* newer, bool dropIfSame, const TDeltaForm& delta) {
  if (delta.same) {
    if (dropIfSame)
      newer->flags |= kVerDrop;
    else
      older->flags |= kVerSame;
  }
  // Nothing is stored when the newer version is dropped, nor when the two
  // share under 5 percent: the older one then keeps its block as it is.
  const int32_t targetSize = delta.targetSize;
  if (!(newer->flags & kVerDrop) && static_cast<int64_t>(delta.matched) * 20 >= targetSize) {
    TVerInfo* info = older->FindInfo(true);
    if (older->flags & kVerSame) {
      info->uniqueRatio = 0;
      info->compRatio = 0;
    } else {
      info->uniqueRatio = FUniqueRatio(targetSize, delta.matched);
      info->compRatio = FCompRatio(delta.stored.length, older->size);
    }
    older->dataPos = FWriteBlock(older, delta.stored, newer);
    older->flags |= kVerEncoded;
  }
}

void FStoreDelta(TVer* older, TVer* newer, bool dropIfSame) {
  const THeldBuf& target = older->Hold();
  const THeldBuf& reference = newer->Hold();
  TDeltaForm& delta = FCodecScratch().delta();
  FEncodeDelta(target, reference, delta);
  FApplyDelta(older, newer, dropIfSame, delta);
  older->Release();
  newer->Release();
}

void FEncodeWhole(const THeldBuf& held, LStr& stored) {
  stored.truncate(0);
  stored.reserve(outputRoom(held.size()));
  LMemOutStream out(stored);
  THeldView view(held);
  FEncodeVersion(view, nullptr, out, FCodecSettings());
}

void FApplyWhole(TVer* ver, const LStr& stored) {
  TVerInfo* info = ver->FindInfo(true);
  info->uniqueRatio = 100;
  info->compRatio = FCompRatio(stored.length, ver->size);
  ver->dataPos = FWriteBlock(ver, stored, nullptr);
}

void FStoreWhole(TVer* ver) {
  LStr& stored = FCodecScratch().delta().stored;
  FEncodeWhole(ver->Hold(), stored);
  FApplyWhole(ver, stored);
  ver->Release();
}
