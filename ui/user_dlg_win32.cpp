#include "ui/user_dlg_win32.h"

#include "app/app.h"
#include "ui/help_page_win32.h"
#include "ui/resource_ids.h"

TUserDlg::TUserDlg(TApp& app)
    : THelpedDialog("USER_DLG", "register"),
      app_(app),
      name_(app.userName),
      id_(app.userId),
      password_(app.userPwd),
      nameBox_(*this, IDC_USER_NAME, name_),
      idBox_(*this, IDC_USER_ID, id_),
      passwordBox_(*this, IDC_USER_PWD, password_) {
  centredOnOwner = true;
}

int TUserDlg::onOk() {
  app_.userName = name_;
  app_.userId = id_;
  app_.userPwd = password_;
  return 1;
}
