// TApp: what the program remembers between runs (the settings file) and the
// paths and tuning derived at start-up. One object for the process, made at
// start-up and written back at every exit that reaches shutdown.
#pragma once

#include <cstdint>

#include "app/column.h"
#include "lib/larr.h"
#include "lib/lstr.h"
#include "store/codec_settings.h"

struct TRect32 {
  int32_t left, top, width, height;
};

class TApp {
 public:
  KST_POOLED_NEW
  TApp();
  TApp(const TApp&) = delete;
  TApp& operator=(const TApp&) = delete;

  // The settings, in the order of the settings file.
  TRect32 rcMain;
  int32_t leftWidth = 199;
  TColumns fcols, vcols, scols, fcolsAll, vcolsAll, scolsAll;
  int32_t lvMode = 3040;
  int32_t checkInF = 0;
  int32_t checkOutF = 0;
  LStrs extDirs, lmFNames, lmDts, lmStnos, lmCmts, lmSizes, lmPaths, lmVers, lmUsers, lmCous;
  int32_t memItemNum = 20;
  LStr userName, userId, userPwd;
  LStrs mru;
  LStr arcDlgDir;
  int32_t arcDlgFilterIdx = 0;
  LStr fileDlgDir;
  int32_t skipEquDtF = 1;
  int32_t skipEquF = 1;
  int32_t ovwMode = 1;
  LStr tmpDirBase;
  LStr tmpSubdir;

  // Derived at start-up (work folder and user).
  LStr tempBase;
  LStr workDir;
  LStr updatePath;
  LStr userTag;
  // The tuning of the version codec; not saved.
  TCodecSettings codec;

  // Puts path first in the recent list, without a second entry that differs
  // only in case, keeping at most 10.
  void addRecent(const char* path);
  void removeRecent(const char* path);
  // Fills empty column lists, raises widths and leftWidth to 10, and resets
  // a window rectangle that does not fit the screen.
  void fixSettings(int32_t screenWidth, int32_t screenHeight);

 private:
  // Gives every empty column list its default columns.
  void fillEmptyColumns();
};

extern const TRect32 kDefaultMainRect;
const int32_t kRecentMax = 10;

// The application object of the process.
TApp* FApp();
void FSetApp(TApp* app);

// Reads ("r") or writes ("w") the settings file at path: one table of keys
// serves both directions. Writing creates missing folders; reading a file
// that does not exist leaves the defaults.
void FSettingsFile(TApp& app, const char* path, char mode);
inline void FLoadSettings(TApp& app, const char* path) { FSettingsFile(app, path, 'r'); }
inline void FSaveSettings(TApp& app, const char* path) { FSettingsFile(app, path, 'w'); }
