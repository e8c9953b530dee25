#include "lib/file_util.h"

#include "lib/chartype.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "lib/sys.h"

LStr FFullPath(const char* path) {
  LStr full;
  if (!SysFullPath(path, full)) {
    FMsg(kMsgSystem, "GetFullPathName() failed");
    return LStr(path);
  }
  return full;
}

int FExists(const char* path) {
  uint32_t attributes;
  if (path == nullptr || !SysGetAttributes(path, &attributes)) return kExistsNone;
  return (attributes & kSysAttrDirectory) ? kExistsFolder : kExistsFile;
}

int64_t FFileSize(const char* path) {
  // A folder can be opened on some systems; it still has no size.
  if (FExists(path) != kExistsFile) return -1;
  SysFile file = SysOpenFile(path, 'r');
  if (file == kSysNoFile) return -1;
  int64_t size;
  bool found = SysSeekFile(file, -1, &size);
  SysCloseFile(file);
  return found ? size : -1;
}

namespace {
// Makes sure the first n bytes of path name a folder, parents first. The
// parents are made in one pass from the left, not by recursion from the
// right: a path of very many levels costs neither stack nor a copy per level.
void makeFolder(const char* path, int32_t n) {
  if (n <= 0) return;
  LStr folder(path, n);
  if (FExists(folder.ptr) != kExistsNone) return;
  bool missing = false;
  bool afterSeparator = true;  // a leading separator names no folder to make
  for (int32_t i = 0; i <= n; i++) {
    if (i < n && FIsLeadByte(static_cast<unsigned char>(folder[i])) && i + 1 < n) {
      i++;
      afterSeparator = false;
      continue;
    }
    bool end = i == n || FIsSeparator(folder[i]);
    bool makeHere = end && !afterSeparator;
    afterSeparator = end;
    if (!makeHere) continue;
    char kept = folder[i];
    folder.ptr[i] = 0;
    if (missing || FExists(folder.ptr) == kExistsNone) {
      missing = true;
      // Below a folder that could not be made nothing can be: the rest of a
      // path too long for the system is not tried level by level.
      if (!SysMakeFolder(folder.ptr)) return;
    }
    folder.ptr[i] = kept;
  }
}
}  // namespace

void FMakeDirs(const char* path) {
  LPathParts parts(path);
  makeFolder(parts.path.ptr, parts.dirEnd);
}

bool FRemoveTree(const char* path) {
  LStr prefix(path);
  FAddSep(prefix);
  {
    SysFolderScan scan(path);
    LStr name;
    SysFileInfo info;
    while (scan.isOpen() && scan.next(name, info)) {
      LStr child(prefix);
      child.append(name);
      bool link = (info.attributes & kSysAttrLink) != 0;
      if ((info.attributes & kSysAttrDirectory) && !link) {
        FRemoveTree(child.ptr);
        continue;
      }
      if (info.attributes & kSysAttrReadOnly) SysSetAttributes(child.ptr, kSysAttrNormal);
      // A link to a folder is a file to one system and a folder to another.
      if (!SysDeleteFile(child.ptr) && link) SysRemoveFolder(child.ptr);
    }
  }
  if (SysRemoveFolder(path)) return true;
  FMsg(kMsgSystem, "RemoveDirectory()");
  return false;
}

int FRenameOrCopy(const char* from, const char* to, bool mustWork) {
  if (SysRenameFile(from, to)) return 0;
  bool copied = false;
  if (FExists(from) != kExistsFile) {
    FMsg(kMsgSystemWarning, "Cannot find file '%s'", from);
  } else if (!SysCopyFile(from, to, /*failIfExists=*/false)) {
    FMsg(kMsgSystemWarning, "CopyFile() '%s' to '%s'", from, to);
  } else {
    copied = true;
  }
  if (!copied) {
    if (mustWork) FMsg(kMsgGeneral, "cannot rename %s to %s\n", from, to);
    return -1;
  }
  if (SysDeleteFile(from)) return 0;
  if (mustWork) FMsg(kMsgErrno, "rename()");
  return 1;
}
