#include "app/app.h"
#include "app/product.h"
#include "lib/file_util.h"
#include "lib/ini.h"
#include "lib/ini_fields.h"
#include "lib/io_file.h"

namespace {

// The one table of keys, for reading and writing alike.
void buildTable(LIni& ini, TApp& app) {
  ini.add("rcMain", &app.rcMain, FIniRect);
  ini.add("leftWidth", &app.leftWidth, FIniInt);
  ini.add("fcols", &app.fcols, FIniColumns);
  ini.add("vcols", &app.vcols, FIniColumns);
  ini.add("scols", &app.scols, FIniColumns);
  ini.add("fcolsAll", &app.fcolsAll, FIniColumns);
  ini.add("vcolsAll", &app.vcolsAll, FIniColumns);
  ini.add("scolsAll", &app.scolsAll, FIniColumns);
  ini.add("lvMode", &app.lvMode, FIniInt);
  ini.add("checkInF", &app.checkInF, FIniInt);
  ini.add("checkOutF", &app.checkOutF, FIniInt);
  ini.add("extDirs", &app.extDirs, FIniTexts);
  ini.add("lmFNames", &app.lmFNames, FIniTexts);
  ini.add("lmDts", &app.lmDts, FIniTexts);
  ini.add("lmStnos", &app.lmStnos, FIniTexts);
  ini.add("lmCmts", &app.lmCmts, FIniTexts);
  ini.add("lmSizes", &app.lmSizes, FIniTexts);
  ini.add("lmPaths", &app.lmPaths, FIniTexts);
  ini.add("lmVers", &app.lmVers, FIniTexts);
  ini.add("lmUsers", &app.lmUsers, FIniTexts);
  ini.add("lmCous", &app.lmCous, FIniTexts);
  ini.add("memItemNum", &app.memItemNum, FIniInt);
  ini.add("userName", &app.userName, FIniText);
  ini.add("userId", &app.userId, FIniText);
  ini.add("userPwd", &app.userPwd, FIniText);
  ini.add("mru", &app.mru, FIniTexts);
  ini.add("arcDlgDir", &app.arcDlgDir, FIniText);
  ini.add("arcDlgFilterIdx", &app.arcDlgFilterIdx, FIniInt);
  ini.add("fileDlgDir", &app.fileDlgDir, FIniText);
  ini.add("skipEquDtF", &app.skipEquDtF, FIniInt);
  ini.add("skipEquF", &app.skipEquF, FIniInt);
  ini.add("ovwMode", &app.ovwMode, FIniInt);
  ini.add("tmpDirBase", &app.tmpDirBase, FIniText);
  ini.add("tmpSubdir", &app.tmpSubdir, FIniText);
}

}  // namespace

void FSettingsFile(TApp& app, const char* path, char mode) {
  LIni ini;
  buildTable(ini, app);
  if (mode == 'w') {
    FMakeDirs(path);
    LIoFile file(path, 'w', true);
    if (!file.isOpen()) return;
    file.printf("; %s %s 設定ファイル\r\n", kProductName, kProductVersion);
    LIniIo io(file, 'w');
    ini.write(io);
    return;
  }
  if (FExists(path) != kExistsFile) return;
  LIoFile file(path, 'r', true);
  if (!file.isOpen()) return;
  LIniIo io(file, 'r');
  ini.read(io);
}
