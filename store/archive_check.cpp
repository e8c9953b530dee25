#include "store/archive_check.h"

#include <algorithm>
#include <vector>

#include "archive/archive.h"
#include "archive/format.h"
#include "lib/fixed_coding.h"
#include "store/content_sum.h"
#include "store/held_buf.h"
#include "store/version_expand.h"
#include "store/version_io.h"

namespace {

// One occupied run of the data area: a block segment (ver set) or a free
// extent (ver null).
struct Run {
  int32_t pos;
  int32_t size;
  TVer* ver;
};

class Checker {
 public:
  Checker(TArchive& archive, FCheckFault fault, void* context)
      : archive_(archive), fault_(fault), context_(context) {}

  void checkTree();
  void checkFreeChain();
  void checkOverlaps();
  TCheckTotals totals;

 private:
  void checkFile(TFile* file);
  void readBack(TVer* ver, TKnownBlock& newer);
  void collectSegments(TVer* ver);
  void walkFreeChain();
  bool insideData(int32_t pos, int64_t size) const {
    return pos >= kHeaderSize && pos % kAlignment == 0 && size > 0 &&
           pos + size <= archive_.treePos;
  }
  LStr describe(const Run& run) const;
  LStr versionName(TVer* ver) const;
  void report(const LStr& text) {
    totals.faults++;
    fault_(text.ptr, context_);
  }

  TArchive& archive_;
  FCheckFault fault_;
  void* context_;
  std::vector<Run> runs_;
  // Kept from one version to the next, so that a long chain is read without
  // taking and giving back memory for each version.
  THeldBuf held_;
  THeldBuf raw_;
};

LStr Checker::versionName(TVer* ver) const {
  LStr name;
  ver->displayPath(name);
  name.format(" V%d", ver->IndexInFile(false) + 1);
  return name;
}

LStr Checker::describe(const Run& run) const {
  if (run.ver == nullptr) return LStr().format("空き領域 %d (%d バイト)", run.pos, run.size);
  LStr text = versionName(run.ver);
  text.format(" のブロック %d (%d バイト)", run.pos, run.size);
  return text;
}

void Checker::checkTree() {
  // Folders wait on a list rather than in recursion: a deep tree costs no
  // stack.
  LArrOf<TRecF*> pending;
  pending.add(archive_.root);
  while (pending.count > 0) {
    TRecF* folder = pending.pop();
    for (TRec* child : folder->children) {
      if (child->isFile())
        checkFile(static_cast<TFile*>(child));
      else
        pending.add(static_cast<TRecF*>(child));
    }
  }
}

void Checker::checkFile(TFile* file) {
  totals.files++;
  // From the newest down, each older version is rebuilt from the one read
  // just before it, so that a file's check costs one decode per version
  // rather than one per version and step of its chain.
  TKnownBlock newer;
  for (int32_t i = file->childCount() - 1; i >= 0; i--) {
    TVer* ver = file->version(i);
    totals.versions++;
    collectSegments(ver);
    readBack(ver, newer);
  }
}

void Checker::readBack(TVer* ver, TKnownBlock& newer) {
  try {
    FReadBlock(held_, archive_, ver->dataPos, newer.pos > 0 ? &newer : nullptr);
    FExpandRaw(THeldView(held_), ver->size, raw_);
    newer.pos = ver->dataPos;
    newer.held.swap(held_);
    uint16_t sum = FSum16(raw_.data(), raw_.size());
    if (sum != ver->checksum)
      report(versionName(ver).format(": チェックサムが一致しません (%04X, 記録 %04X)", sum,
                                     ver->checksum));
  } catch (int) {
    report(versionName(ver).append(": 内容を読み出せません"));
  }
}

void Checker::collectSegments(TVer* ver) {
  // More segments than the data area can hold means the chain loops.
  int32_t left = archive_.treePos / kAlignment;
  bool first = true;
  try {
    for (int32_t pos = ver->dataPos; pos > 0; first = false) {
      if (!insideData(pos, kAlignment) || --left < 0) {
        report(versionName(ver).format(": ブロックの位置 %d が正しくありません", pos));
        return;
      }
      archive_.seek(pos);
      int32_t length = FReadI32(archive_);
      int32_t next = FReadI32(archive_);
      int32_t least = first ? kFirstSegmentHead : kSegmentHead;
      if (length < least || !insideData(pos, FRoundUp64(length))) {
        report(versionName(ver).format(": ブロック %d の長さ %d が正しくありません", pos, length));
        return;
      }
      runs_.push_back(Run{pos, FRoundUp64(length), ver});
      pos = next;
    }
  } catch (int) {
    report(versionName(ver).append(": ブロックを読み出せません"));
  }
}

void Checker::checkFreeChain() {
  try {
    walkFreeChain();
  } catch (int) {
    report(LStr("空き領域の一覧を読み出せません"));
  }
}

void Checker::walkFreeChain() {
  archive_.seek(kOffsetFreeHead);
  int32_t pos = FReadI32(archive_);
  int32_t left = archive_.treePos / kAlignment;
  while (pos != 0) {
    if (!insideData(pos, kAlignment) || --left < 0) {
      report(LStr().format("空き領域の位置 %d が正しくありません", pos));
      return;
    }
    archive_.seek(pos);
    int32_t size = FReadI32(archive_);
    int32_t next = FReadI32(archive_);
    totals.extents++;
    if (size % kAlignment != 0 || !insideData(pos, size)) {
      report(LStr().format("空き領域 %d の大きさ %d が正しくありません", pos, size));
      return;
    }
    runs_.push_back(Run{pos, size, nullptr});
    pos = next;
  }
}

void Checker::checkOverlaps() {
  std::sort(runs_.begin(), runs_.end(), [](const Run& a, const Run& b) { return a.pos < b.pos; });
  // The run that reaches furthest so far: a long run may cover several later
  // ones, each of which overlaps it.
  const Run* reach = nullptr;
  for (const Run& run : runs_) {
    if (reach != nullptr && static_cast<int64_t>(reach->pos) + reach->size > run.pos)
      report(describe(*reach).append(" と ").append(describe(run)).append(" が重なっています"));
    if (reach == nullptr ||
        static_cast<int64_t>(run.pos) + run.size > static_cast<int64_t>(reach->pos) + reach->size)
      reach = &run;
  }
}

}  // namespace

TCheckTotals FCheckArchive(TArchive& archive, FCheckFault fault, void* context) {
  Checker checker(archive, fault, context);
  checker.checkTree();
  checker.checkFreeChain();
  checker.checkOverlaps();
  return checker.totals;
}
