#include "cli/cli_session.h"

#include "app/app.h"
#include "app/command_line.h"
#include "app/work_dir.h"
#include "archive/archive.h"
#include "lib/file_util.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "lib/sys.h"
#include "lib/thread.h"
#include "store/version_io.h"
#include "store/work_set.h"

LStr FDefaultSettingsPath() { return FResolveSettingsPath(kSettingsName); }

TCliSession::TCliSession(const char* settingsPath)
    : mainThread_(new LMainThread), app_(new TApp), host_(*app_) {
  FSetMainThread(mainThread_);
  FSetApp(app_);
  LStr settings(settingsPath);
  if (settings.empty()) settings = FDefaultSettingsPath();
  if (!settings.empty() && FExists(settings.ptr) != kExistsNone) FLoadSettings(*app_, settings.ptr);
  FSetCodecSettings(&app_->codec);
  FMakeWorkDir(*app_);
  FNewWorkSet();
  archive_ = new TArchive(&host_);
  FSetArchive(archive_);
}

TCliSession::~TCliSession() {
  delete archive_;
  FSetArchive(nullptr);
  FDeleteWorkSet();
  FSetCodecSettings(nullptr);
  FRemoveWorkDir(*app_);
  removeSharedIfEmpty();
  FSetApp(nullptr);
  delete app_;
  FSetMainThread(nullptr);
  delete mainThread_;
}

void TCliSession::removeSharedIfEmpty() {
  // Other copies may be running: the folder goes only when it is empty, and
  // only under the lock that guards choosing work folders.
  FLock(*app_);
  LStr shared(app_->tempBase);
  shared.append(app_->tmpSubdir);
  FDropSep(shared);
  SysRemoveFolder(shared.ptr);
  FUnlock(*app_);
}

bool TCliSession::open(const char* path, bool create, bool write) {
  if (!create && FExists(path) != kExistsFile) {
    FMsg(kMsgGeneral, "ファイル/フォルダ「%s」が見つかりません", path);
    return false;
  }
  // A command that changes the archive holds it from before the load to
  // after the commit. Two commands started a moment apart, from two
  // terminals or a script, are then both carried out, one after the other,
  // as a user expects; without the hold the later one could only find at
  // its commit that the other had changed the archive, and fail after all
  // its work. The wait is announced and the break signal ends it. A file
  // that cannot be held (read-only, say) is left to the commit to report.
  if (write) FHoldWriter(*archive_, path);
  archive_->loadArchive(path, /*addToRecent=*/false, /*keepTree=*/true);
  // A failure has shown its message and left the untitled archive open.
  return !archive_->isUntitled();
}
