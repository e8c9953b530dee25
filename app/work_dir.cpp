#include "app/work_dir.h"

#include "app/app.h"
#include "lib/chartype.h"
#include "lib/fail.h"
#include "lib/file_util.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "lib/sys.h"

namespace {

// The lock file while it is held. Only one process holds it at a time, and
// it is deleted as it is let go.
SysFile gLock = kSysNoFile;

const int kLockTries = 30;
const int32_t kLockPause = 100;

LStr lockPath(const TApp& app) {
  LStr path(app.tempBase);
  path.append("kst-#lock.tmp");
  return path;
}

// Ends a folder path in a separator (a slash, a backslash or a colon count).
void endInSeparator(LStr& path) {
  if (path.empty()) return;
  char last = path[path.length - 1];
  if ((last == '\\' || last == '/') && !FIsTrailByte(path.ptr, path.length - 1)) return;
  if (last == ':') return;
  path.append(SysPathSeparator());
}

LStr sharedPrefix(const TApp& app) {
  LStr prefix(app.tempBase);
  prefix.append(app.tmpSubdir);
  return prefix;
}

}  // namespace

void FLock(TApp& app) {
  LStr path = lockPath(app);
  FMakeDirs(path.ptr);
  for (int attempt = 0; attempt < kLockTries; attempt++) {
    if (attempt > 0) SysSleep(kLockPause);
    gLock = SysTakeLockFile(path.ptr);
    if (gLock != kSysNoFile) return;
  }
  FInfo(kMsgErrorBox,
        "ファイル「%s」を作成できません。\n[オプション] "
        "で一時ファイルのフォルダ指定を確認してください。",
        path.ptr);
}

void FUnlock(TApp& app) {
  // Without the lock the file is another process's to delete.
  if (gLock == kSysNoFile) return;
  LStr path = lockPath(app);
  bool deleted = SysReleaseLockFile(gLock, path.ptr);
  gLock = kSysNoFile;
  if (!deleted) FMsg(kMsgSystem, "「%s」を削除できませんでした", path.ptr);
}

void FMakeWorkDir(TApp& app) {
  if (app.tmpDirBase.empty()) {
    LStr temp;
    SysTempFolder(temp);
    if (!SysLongPath(temp.ptr, app.tmpDirBase)) app.tmpDirBase = temp;
  }
  endInSeparator(app.tmpDirBase);
  app.tempBase = app.tmpDirBase;
  FLock(app);
  if (app.tmpSubdir.empty()) app.tmpSubdir = "kst_tmp";
  endInSeparator(app.tmpSubdir);
  LStr prefix = sharedPrefix(app);
  for (int32_t n = 0;; n++) {
    LStr folder(prefix);
    folder.format("app-%d", n);
    if (FExists(folder.ptr) != kExistsNone) continue;
    folder.append(SysPathSeparator());
    app.workDir = folder;
    break;
  }
  FMakeDirs(app.workDir.ptr);
  FUnlock(app);
  app.updatePath = app.workDir;
  app.updatePath.append("kst-#update.tmp");
  if (app.userTag.empty()) {
    LStr computer;
    LStr user;
    SysComputerName(computer);
    SysUserName(user);
    app.userTag.format("%s/%s", computer.ptr, user.ptr);
  }
}

void FRemoveWorkDir(TApp& app) {
  if (!app.workDir.empty()) FRemoveTree(app.workDir.ptr);
}

void FRemoveSharedDir(TApp& app) {
  FLock(app);
  LStr prefix = sharedPrefix(app);
  FDropSep(prefix);
  FRemoveTree(prefix.ptr);
  FUnlock(app);
}
