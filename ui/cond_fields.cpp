#include "ui/cond_fields.h"

#include "app/app.h"
#include "lib/fail.h"
#include "store/cond.h"

namespace {
const TCondFieldRow kRows[kFieldCount] = {
    {"ファイル名(&F):", &TCond::nameText, &TCond::nameExcl, &TApp::lmFNames, "ファイル名",
     kPickValues},
    {"更新日時(&T):", &TCond::dateText, &TCond::dateExcl, &TApp::lmDts, "日時", kPickDates},
    {"格納番号(&N):", &TCond::storeNoText, &TCond::storeNoExcl, &TApp::lmStnos, "格納番号",
     kPickNumbers},
    {"コメント(&C):", &TCond::commentText, &TCond::commentExcl, &TApp::lmCmts, "コメント",
     kPickValues},
    {"サイズ(&S):", &TCond::sizeText, &TCond::sizeExcl, &TApp::lmSizes, "サイズ（KB単位）",
     kPickNumbers},
    {"パス(&P):", &TCond::pathText, &TCond::pathExcl, &TApp::lmPaths, nullptr, kPickNone},
    {"バージョン(&V):", &TCond::verText, &TCond::verExcl, &TApp::lmVers, "バージョン",
     kPickNumbers},
    {"ユーザー名(&U):", &TCond::userText, &TCond::userExcl, &TApp::lmUsers, "ユーザー名",
     kPickValues},
    {nullptr, &TCond::checkoutText, &TCond::checkoutExcl, &TApp::lmCous, "ユーザー名", kPickValues},
};
}  // namespace

const TCondFieldRow& FCondFieldRow(int32_t field) {
  if (field < 0 || field >= kFieldCount) FInternalBox(1401);
  return kRows[field];
}
