#include "store/delete_command.h"

#include "archive/archive.h"
#include "archive/archive_host.h"
#include "archive/format.h"
#include "archive/update_file.h"
#include "lib/fail.h"
#include "lib/fixed_coding.h"
#include "lib/io_file.h"
#include "lib/lhash.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "lib/sys.h"
#include "store/progress.h"
#include "store/ver_info.h"
#include "store/version_io.h"
#include "store/work_set.h"

namespace {

bool hasAncestorIn(const TRec* rec, const LHash& selected) {
  for (const TRec* up = rec->parent; up != nullptr; up = up->parent)
    if (selected.containsInt(reinterpret_cast<intptr_t>(up))) return true;
  return false;
}

// The selection without duplicates and without records that a selected
// ancestor takes along anyway, so that nothing is destroyed twice.
void normalise(const LArrOf<TRec*>& records, LArrOf<TRec*>& out) {
  LHash selected(LHash::kInts);
  for (TRec* rec : records) selected.addInt(reinterpret_cast<intptr_t>(rec));
  LHash taken(LHash::kInts);
  for (TRec* rec : records) {
    intptr_t key = reinterpret_cast<intptr_t>(rec);
    if (rec->isRoot() || taken.containsInt(key) || hasAncestorIn(rec, selected)) continue;
    taken.addInt(key);
    out.add(rec);
  }
}

// Walks below rec in tree order (a record before its children) and hands
// each record to visit; only folders are entered when foldersOnly. The
// records wait on a list rather than in recursion: a deep tree costs no
// stack.
template <typename Visit>
void walkDown(TRec* rec, bool foldersOnly, Visit visit) {
  LArrOf<TRec*> pending;
  pending.add(rec);
  while (pending.count > 0) {
    TRec* next = pending.pop();
    visit(next);
    if (!next->isNamed() || (foldersOnly && !next->isFolder())) continue;
    const LArrOf<TRec*>& children = static_cast<TRecF*>(next)->children;
    for (int32_t i = children.count - 1; i >= 0; i--) pending.add(children[i]);
  }
}

void collect(TRec* rec, LArrOf<TVer*>& versions, LArrOf<TRec*>* folders) {
  if (folders != nullptr && rec->isFolder()) folders->add(rec);
  walkDown(rec, false, [&versions](TRec* found) {
    if (found->isVer()) {
      versions.add(static_cast<TVer*>(found));
    } else if (!found->isNamed()) {
      FInternalBox(902);
    }
  });
}

// Unlinks and destroys every folder and file below rec and rec itself, the
// last child's records first, each after everything below it.
void destroyTree(TRec* rec) {
  LArrOf<TRec*> order;
  walkDown(rec, true, [&order](TRec* found) { order.add(found); });
  for (int32_t i = order.count - 1; i >= 0; i--) order[i]->unlinkAndDestroy();
}

void deleteEvacFiles(TWorkSet& work) {
  for (const LStr* path : work.evacFiles) SysDeleteFile(path->ptr);
  work.evacFiles.clear();
}

void evacuate(TWorkSet& work, LArrOf<TVer*>& dependents) {
  for (int32_t i = 0; i < dependents.count; i++) {
    TVer* ver = dependents[i];
    const THeldBuf& held = ver->Hold();
    LStr path = FEvacPath(i);
    work.evacFiles.add(new LStr(path));
    {
      LIoFile file(path.ptr, 'w', false);
      if (!file.isOpen() || file.write(held.data(), held.size()) != held.size())
        FError(kMsgErrorBox, "一時退避ファイル「%s」に書き込めません", path.ptr);
    }
    ver->Release();
    ver->flags &= static_cast<uint8_t>(~kVerEncoded);
  }
}

// Encodes an evacuated version anew against its next newer neighbour, or
// whole, at the block position it had.
void reencode(TVer* ver, int32_t index) {
  TVerInfo* info = ver->FindInfo(true);
  TFile* file = ver->ownerFile();
  int32_t at = ver->IndexInFile(false);
  int32_t remembered = ver->dataPos;
  info->uniqueRatio = kRatioUnset;
  info->compRatio = kRatioUnset;
  LStr path = FEvacPath(index);
  LStr bytes;
  {
    LIoFile evac(path.ptr, 'r', false);
    if (!evac.isOpen()) FError(kMsgErrorBox, "一時退避ファイル「%s」を開けません", path.ptr);
    evac.readAll(bytes);
  }
  delete info->held;
  info->held = new THeldBuf(bytes.ptr, bytes.length);
  info->heldLen = bytes.length;
  info->holds++;
  FPushProgress();
  if (at + 1 < file->childCount()) FStoreDelta(ver, file->version(at + 1), /*dropIfSame=*/false);
  if (!(ver->flags & kVerEncoded)) FStoreWhole(ver);
  FPopProgress();
  delete info->held;
  info->held = nullptr;
  info->heldLen = 0;
  info->holds = 0;
  if (ver->dataPos != remembered) FInternalBox(2085);
}

}  // namespace

void FCollectDeleted(const LArrOf<TRec*>& records, LArrOf<TVer*>& versions,
                     LArrOf<TRec*>* folders) {
  for (TRec* rec : records) collect(rec, versions, folders);
}

void FFindDependents(TRecF* root, LArrOf<TVer*>& dependents) {
  TArchive& archive = *FArchive();
  const LHash& marks = FWorkSet()->marks;
  LArrOf<TRecF*> stack;
  stack.add(root);
  while (stack.count > 0) {
    TRecF* rec = stack.pop();
    // Pushed in reverse, so that the walk meets children in tree order.
    for (int32_t i = rec->children.count - 1; i >= 0; i--) {
      TRec* child = rec->children[i];
      if (child->isVer()) continue;
      if (!child->isNamed()) FInternalBox(2024);
      stack.add(static_cast<TRecF*>(child));
    }
    if (!rec->isFile()) continue;
    for (TRec* child : rec->children) {
      TVer* ver = static_cast<TVer*>(child);
      if ((ver->flags & kVerDeleted) || ver->dataPos <= 0) continue;
      archive.seek(ver->dataPos + kSegmentHead);
      int32_t parent = FReadI32(archive);
      if (parent != 0 && marks.containsInt(parent)) dependents.add(ver);
    }
  }
}

LStr FEvacPath(int32_t index) {
  LStr update;
  FArchive()->host()->updatePath(update);
  LStr path = FDirOf(update.ptr, /*keepSep=*/true);
  path.format("kst-#evac-%04d.tmp", index);
  return path;
}

void FPruneFiles(const LArrOf<TRec*>& records) {
  LHash seen(LHash::kInts);
  LArrOf<TRecF*> files;
  for (TRec* rec : records) {
    if (!rec->isVer() || rec->parent == nullptr) continue;
    intptr_t key = reinterpret_cast<intptr_t>(rec->parent);
    if (seen.containsInt(key)) continue;
    seen.addInt(key);
    files.add(static_cast<TRecF*>(rec->parent));
  }
  for (TRecF* file : files)
    if (file->childCount() == 0) file->unlinkAndDestroy();
}

void FRemoveSelected(const LArrOf<TRec*>& records) {
  for (TRec* rec : records)
    if (!rec->isVer()) destroyTree(rec);
}

int32_t FCmdDelete(const LArrOf<TRec*>& given) {
  TArchive& archive = *FArchive();
  TWorkSet& work = *FWorkSet();
  LArrOf<TRec*> records;
  normalise(given, records);
  LArrOf<TVer*>& deleted = work.versions;
  FCollectDeleted(records, deleted, nullptr);
  // Versions keep their files (parents) until they are destroyed, so that a
  // failure can still tell where they were; see the catch below.
  LArrOf<TVer*> unlinked;
  try {
    for (TVer* ver : deleted) {
      ver->flags |= kVerDeleted;
      work.marks.addInt(ver->dataPos);
    }
    LArrOf<TVer*> dependents;
    FFindDependents(archive.root, dependents);
    for (TVer* ver : dependents) work.evacuated.add(reinterpret_cast<intptr_t>(ver));
    evacuate(work, dependents);

    for (TVer* ver : deleted) FReleaseBlock(archive, ver->dataPos, /*keepStart=*/false);
    for (TVer* ver : deleted) {
      if (ver->parent == nullptr) FInternalBox(1417);
      ver->unlink();
      unlinked.add(ver);
    }
    FPruneFiles(records);
    FRemoveSelected(records);

    TUpdateFile& update = archive.beginUpdate();
    for (int32_t i = 0; i < dependents.count; i++) reencode(dependents[i], i);
    int32_t count = deleted.count;
    work.done = count;
    for (TVer* ver : unlinked) delete ver;
    unlinked.clear();
    deleted.clear();

    FCommit(archive, update, 0);
    update.close();
    FApplyUpdate(archive, update);
    deleteEvacFiles(work);
    archive.stats.level = 0;
    archive.stats.resetRanges();
    return count;
  } catch (int) {
    // The failure path reloads the tree; what was taken out of it goes now,
    // and so do the evacuation files, so that none waits in the work folder.
    for (TVer* ver : unlinked) delete ver;
    deleted.clear();
    deleteEvacFiles(work);
    throw;
  }
}

LStr FDeleteReport(int32_t versions) {
  LStr text;
  text.format("%d 個のバージョンを削除しました", versions);
  return text;
}
