#include "store/add_command.h"

#include "archive/archive.h"
#include "archive/update_file.h"
#include "lib/fail.h"
#include "lib/file_time.h"
#include "lib/file_util.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "lib/strfunc.h"
#include "store/add_cond.h"
#include "store/add_store.h"
#include "store/cond.h"
#include "store/folder_entries.h"
#include "store/progress.h"
#include "store/ver_info.h"
#include "store/version_io.h"
#include "store/work_set.h"

namespace {

struct AddRun {
  TCond* cond;
  const TAddOptions& options;
  TAddStore& store;
};

// Adds the file or folder at path, named `name` in the archive.
int32_t addEntry(const char* path, const char* name, TRecF* parent, const SysFileInfo& info,
                 AddRun& run);

// Leaves an entry out with a warning, counted as refused; returns the 0
// versions it gave.
int32_t notAdded(const char* text, const char* path, const char* reason = "") {
  FMsg(kMsgWarning, text, path, reason);
  FWorkSet()->refused++;
  return 0;
}

LStr treePath(const TRec* rec) {
  LStr out;
  rec->displayPath(out);
  return out;
}

// The joined path of a folder entry.
LStr childPath(const char* folder, const LStr& name) {
  LStr path(folder);
  FAddSep(path);
  path.append(name);
  return path;
}

int32_t addFolder(const char* path, const char* name, TRecF* parent, const SysFileInfo& info,
                  AddRun& run) {
  if (FWorkSet()->stopState != kStopRun) FCheckStop();
  TRec* existing = parent->findChild(name);
  if (existing != nullptr && !existing->isFolder())
    FError(kMsgErrorBox, "「%s」はファイルとしてすでに存在します", treePath(existing).ptr);
  TFolder* folder = static_cast<TFolder*>(existing);
  // A new folder is owned here until it has a version below it, so that a
  // failure in the walk does not leave it behind.
  struct FreshFolder {
    TFolder* folder = nullptr;
    ~FreshFolder() { delete folder; }
  } fresh;
  if (folder == nullptr) {
    folder = fresh.folder = new TFolder;
    folder->setName(name);
    folder->time = FToUnixTime(info.created);
    folder->parent = parent;  // for paths while the walk runs
  }
  int32_t added = 0;
  TFolderEntries entries;
  FFolderEntries(path, entries);
  for (const TFolderEntry* entry : entries) {
    FCheckStop();
    LStr entryPath = childPath(path, entry->name);
    added += addEntry(entryPath.ptr, entry->name.ptr, folder, entry->info, run);
  }
  // No empty folders: a new folder that gave no version leaves no trace.
  if (fresh.folder != nullptr && added > 0) {
    parent->addChild(folder);
    fresh.folder = nullptr;
  }
  return added;
}

int32_t addFile(const char* path, const char* name, TRecF* parent, const SysFileInfo& info,
                AddRun& run) {
  TWorkSet* work = FWorkSet();
  work->seen++;
  int64_t modified = FToUnixTime(FCleanTime(info.modified));
  TFile* file = FFileItem(parent, name, /*create=*/false);
  TVer* newest = file ? file->latestVer() : nullptr;
  // Same date and size as the newest version: skipped without reading.
  if (run.options.skipEquDtF && newest != nullptr && newest->size == info.size &&
      newest->time == modified) {
    work->skipped++;
    return 0;
  }
  if (run.cond != nullptr) {
    TAddCandidate candidate{name, modified, info.size, path, FAttrBits(info.attributes),
                            file != nullptr};
    if (!FAddCondTest(candidate, *run.cond)) return 0;
  }
  // A file that cannot be read would fail the whole add at its turn, or,
  // when empty, become a version with nothing read.
  if (!SysCanReadFile(path)) {
    LStr reason;
    SysErrorText(SysLastError(), reason);
    work->seen--;  // counted as not added, not as excluded
    return notAdded("「%s」は読み出せないので追加しません (%s)", path, reason.ptr);
  }
  if (file == nullptr) file = FFileItem(parent, name, /*create=*/true);

  TVer* ver = new TVer;
  ver->flags = kVerNew;
  TVerInfo* verInfo = work->NewInfo(ver);
  file->addChild(ver);
  work->versions.add(ver);
  verInfo->srcPath = new LStr(path);
  ver->time = modified;
  verInfo->createTime = FToUnixTime(info.created);
  verInfo->accessTime = FToUnixTime(info.accessed);
  if (info.size >= 2147483648LL) FError(kMsgErrorBox, "%s のサイズが大きすぎます", path);
  ver->size = static_cast<int32_t>(info.size);
  if (run.cond != nullptr && !run.cond->addComment.empty())
    verInfo->commentId = static_cast<int32_t>(FStrings().lookupOrAdd(run.cond->addComment.ptr));
  verInfo->userId = static_cast<int32_t>(FStrings().lookupOrAdd(run.options.userTag.ptr));
  verInfo->storeTime = work->storeTime;
  verInfo->storeNo = work->storeNo;
  verInfo->attrs = FAttrBits(info.attributes);
  run.store.take(ver);
  return 1;
}

int32_t addEntry(const char* path, const char* name, TRecF* parent, const SysFileInfo& info,
                 AddRun& run) {
  // A link that is still marked as one leads to a folder or nowhere: a link
  // to a file is described by its target.
  if (info.attributes & kSysAttrLink) {
    if (info.attributes & kSysAttrDirectory)
      return notAdded("「%s」はフォルダへのリンクなので追加しません", path);
    return notAdded("「%s」はリンク先のないリンクなので追加しません", path);
  }
  if (info.attributes & kSysAttrDevice)
    return notAdded("「%s」は通常のファイルではないので追加しません", path);
  if (info.attributes & kSysAttrDirectory) {
    if (!parent->isFolder()) FError(kMsgErrorBox, "フォルダをファイルに追加することはできません");
    return addFolder(path, name, parent, info, run);
  }
  return addFile(path, name, parent, info, run);
}

void addPath(const char* given, TRecF* target, AddRun& run) {
  LStr path(given);
  int32_t suffix = static_cast<int32_t>(sizeof kFolderSuffix) - 1;
  if (path.length >= suffix && path.find(kFolderSuffix, suffix, path.length - suffix) >= 0)
    path.truncate(path.length - suffix);
  if (path.length > 1) FDropSep(path);
  SysFileInfo info;
  if (!SysStat(path.ptr, &info))
    FError(kMsgErrorBox, "ファイル/フォルダ「%s」が見つかりません", path.ptr);
  const LStr name = FNameOf(path.ptr);
  addEntry(path.ptr, name.ptr, target, info, run);
}

}  // namespace

uint8_t FAttrBits(uint32_t attributes) {
  uint8_t bits = 0;
  if (attributes & kSysAttrReadOnly) bits |= kAttrReadOnly;
  if (attributes & kSysAttrArchive) bits |= kAttrArchive;
  if (attributes & kSysAttrHidden) bits |= kAttrHidden;
  if (attributes & kSysAttrSystem) bits |= kAttrSystem;
  return bits;
}

TFile* FFileItem(TRecF* parent, const char* name, bool create) {
  if (parent->isFile()) return static_cast<TFile*>(parent);
  TRec* existing = parent->findChild(name);
  if (existing != nullptr) {
    if (!existing->isFile()) {
      LStr shown;
      existing->displayPath(shown);
      FError(kMsgErrorBox, "「%s」はフォルダとしてすでに存在します", shown.ptr);
    }
    return static_cast<TFile*>(existing);
  }
  if (!create) return nullptr;
  TFile* file = new TFile;
  file->setName(name);
  parent->addChild(file);
  FWorkSet()->created++;
  return file;
}

void FCmdAdd(TRec* target, const LStrs& paths, TCond* cond, const TAddOptions& options) {
  TArchive& archive = *FArchive();
  TWorkSet* work = FWorkSet();
  if (work->storeTime == 0) work->storeTime = FToUnixTime(SysNow());
  work->storeNo = archive.lastStoreNo + 1;
  TAddStore store(*work, options);
  AddRun run{cond, options, store};
  TRecF* into = static_cast<TRecF*>(target);
  for (const LStr* path : paths) {
    if (archive.firstAddPath.empty()) archive.firstAddPath = *path;
    addPath(path->ptr, into, run);
  }

  TUpdateFile& update = archive.beginUpdate();
  store.run();

  FCommit(archive, update, work->storeNo);
  update.close();
  FApplyUpdate(archive, update);
  for (TVer* ver : work->versions)
    ver->flags = static_cast<uint8_t>((ver->flags & ~kVerNew) | kVerStored);
  archive.lastStoreNo++;
  // The next scan must count the new versions.
  archive.stats.level = 0;
  archive.stats.resetRanges();
}

LStr FNotAddedReport(int32_t refused) {
  LStr text;
  text.format("追加しなかった項目: %d", refused);
  return text;
}

bool FAddTargetTakes(TRec* target, const LStrs& paths, LStr& question) {
  question.clear();
  if (!target->isFile() || paths.count == 0) return true;
  if (paths.count > 1) {
    FMsg(kMsgWarning, "複数の項目をファイルに追加することはできません");
    return false;
  }
  const char* path = paths[0]->ptr;
  if (FExists(path) == kExistsFolder) {
    FMsg(kMsgWarning, "フォルダをファイルに追加することはできません");
    return false;
  }
  LStr name = FNameOf(path);
  if (FStrCmp(name.ptr, target->name(), true) != 0)
    question.format("%s を %s として追加します。よろしいですか？", name.ptr, target->name());
  return true;
}
