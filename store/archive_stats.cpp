#include "store/archive_stats.h"

#include "archive/archive.h"
#include "store/ver_info.h"

namespace {

void addId(LHash& set, int32_t id) {
  if (id != 0 && !set.containsInt(id)) set.addInt(id);
}

void widen(int32_t value, int32_t& low, int32_t& high) {
  if (value < low) low = value;
  if (value > high) high = value;
}

void scanVersion(TVer* ver, TStats& stats, int32_t level) {
  stats.versions++;
  // The footer keeps times as 32-bit differences, so a version's time fits.
  widen(static_cast<int32_t>(ver->time), stats.timeMin, stats.timeMax);
  widen(ver->size, stats.sizeMin, stats.sizeMax);
  if (level < 2) return;
  const TVerInfo* info = ver->Info();
  widen(info->storeNo, stats.storeMin, stats.storeMax);
  addId(stats.comments, info->commentId);
  addId(stats.users, info->userId);
  addId(stats.checkouts, info->checkoutId);
}

void scanFile(TFile* file, TStats& stats, int32_t level) {
  stats.files++;
  addId(stats.names, static_cast<int32_t>(file->nameIdx));
  if (file->childCount() > stats.maxVersions) stats.maxVersions = file->childCount();
  for (TRec* child : file->children) scanVersion(static_cast<TVer*>(child), stats, level);
}

}  // namespace

void FScanStats(TArchive& archive, int32_t level) {
  TStats& stats = archive.stats;
  if (stats.level >= level || archive.root == nullptr) return;
  stats.resetRanges();
  // Folders wait on a list rather than in recursion: a deep tree costs no
  // stack.
  LArrOf<TRecF*> pending;
  pending.add(archive.root);
  while (pending.count > 0) {
    TRecF* folder = pending.pop();
    for (TRec* child : folder->children) {
      if (child->isFile()) {
        scanFile(static_cast<TFile*>(child), stats, level);
      } else if (child->isFolder()) {
        stats.folders++;
        pending.add(static_cast<TRecF*>(child));
      }
    }
  }
  stats.level = level;
}
