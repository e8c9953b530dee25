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

bool TCliSession::open(const char* path, bool create) {
  if (!create && FExists(path) != kExistsFile) {
    FMsg(kMsgGeneral, "ファイル/フォルダ「%s」が見つかりません", path);
    return false;
  }
  archive_->loadArchive(path, /*addToRecent=*/false, /*keepTree=*/true);
  // A failure has shown its message and left the untitled archive open.
  return !archive_->isUntitled();
}
