#include "archive/archive.h"

#include "archive/archive_host.h"
#include "archive/update_file.h"
#include "lib/file_util.h"
#include "lib/path_parts.h"

namespace {
TArchive* gArchive = nullptr;
}

TArchive* FArchive() { return gArchive; }
void FSetArchive(TArchive* archive) { gArchive = archive; }
TStringTable& FStrings() { return gArchive->strings; }

void TStats::clear() {
  level = 0;
  names.clear();
  comments.clear();
  users.clear();
  checkouts.clear();
  resetRanges();
}

void TStats::resetRanges() {
  timeMin = storeMin = sizeMin = INT32_MAX;
  timeMax = storeMax = sizeMax = 0;
  maxVersions = versions = files = folders = 0;
}

TArchive::TArchive(TArchiveHost* host) : host_(host) {}

TArchive::~TArchive() {
  discardUpdate();
  delete root;
  delete writer;
}

void TArchive::setPath(const char* newPath) {
  path.assign(newPath);
  fullPath = FFullPath(newPath);
  folder = FDirOf(fullPath.ptr, /*keepSep=*/false);
}

bool TArchive::isUntitled() const {
  LStr untitled;
  host_->untitledPath(untitled);
  return path.equals(untitled.ptr, false);
}

void TArchive::loadArchive(const char* newPath, bool addToRecent, bool keepTree) {
  if (newPath != nullptr) setPath(newPath);
  if (path.empty()) {
    LStr untitled;
    host_->untitledPath(untitled);
    setPath(untitled.ptr);
  }
  bool untitled = isUntitled();
  if (addToRecent && !untitled) host_->addRecent(fullPath.ptr);
  try {
    FLoadArchive(*this);
  } catch (int thrown) {
    // The user has seen the box: fall back on the untitled archive, unless
    // that is what failed, which leaves nothing to fall back on.
    if (thrown == 0) return;
    host_->removeRecent(fullPath.ptr);
    if (untitled) throw;
    clearTree();
    LStr fallback;
    host_->untitledPath(fallback);
    setPath(fallback.ptr);
    reloadArchive();
    return;
  }
  if (!untitled) host_->setArchiveFolder(folder.ptr);
  if (!keepTree) host_->treeLoaded(root);
}

void TArchive::clearTree() {
  FResetWork();
  close();
  delete root;
  root = nullptr;
  freeList.clear();
  strings.clear();
  stats.clear();
  removedRecords.clear();
  loaded = TArchiveStamp();
  delete writer;
  writer = nullptr;
  headerRead = treePos = treeEnd = treeDirty = lastStoreNo = 0;
}

int TArchive::closeArchive(bool keepTree, bool commit) {
  if (treeDirty && commit) {
    try {
      FCommitTree(*this);
    } catch (int) {
      FResetWork();
      return 0;
    }
  }
  if (!keepTree) host_->treeClosing();
  clearTree();
  path.clear();
  fullPath.clear();
  folder.clear();
  firstAddPath.clear();
  return 1;
}

void TArchive::reloadArchive() {
  LStr copy(path);
  bool keep = treeDirty == 0;
  closeArchive(keep, false);
  loadArchive(copy.ptr, false, keep);
  treeDirty = 0;
}

TUpdateFile& TArchive::beginUpdate() {
  discardUpdate();
  LStr updatePath;
  host_->updatePath(updatePath);
  update = new TUpdateFile(updatePath.ptr);
  return *update;
}

void TArchive::discardUpdate() {
  if (update == nullptr) return;
  update->discard();
  delete update;
  update = nullptr;
}

void FResetWork() {
  gArchive->discardUpdate();
  gArchive->host()->resetWork();
}
