// The process around one command: the application object with the user's
// settings (read, never written), this process's work folder, the open
// archive and the work set. The destructor takes them down in reverse
// order, the work folder with them, and the shared temporary folder when
// no other copy of the program still has a work folder in it.
#pragma once

#include "app/app_host.h"
#include "lib/lstr.h"

class LMainThread;
class TApp;
class TArchive;

class TCliSession {
 public:
  // settingsPath empty: "Kestrom.ini" in "OrvaSoft" below the per-user local
  // application data folder.
  explicit TCliSession(const char* settingsPath);
  ~TCliSession();
  TCliSession(const TCliSession&) = delete;
  TCliSession& operator=(const TCliSession&) = delete;

  // Opens the archive at path. A missing file is created when `create` is
  // set and is an error otherwise. With `write` the archive is held for
  // writing until the session ends, and another writer waits. False after
  // the failure was reported.
  bool open(const char* path, bool create, bool write);
  TArchive& archive() { return *archive_; }
  TApp& app() { return *app_; }

 private:
  void removeSharedIfEmpty();

  LMainThread* mainThread_;
  TApp* app_;
  TAppHost host_;
  TArchive* archive_;
};

// The settings file in its default place, or "" when the system has no
// per-user folder for it.
LStr FDefaultSettingsPath();
