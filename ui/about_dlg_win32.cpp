#include "ui/about_dlg_win32.h"

#include "ui/resource_ids.h"

TAboutDlg::TAboutDlg(const LStrs& lines)
    : LDialog("ABOUT_DLG"),
      name_(*this, IDC_ABOUT_NAME, *lines[0]),
      path_(*this, IDC_ABOUT_PATH, *lines[1]),
      rights_(*this, IDC_ABOUT_RIGHTS, *lines[2]),
      home_(*this, IDC_ABOUT_HOME, *lines[3]) {
  centredOnOwner = true;
}
