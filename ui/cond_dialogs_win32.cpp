#include "ui/cond_dialogs_win32.h"

#include <initializer_list>

#include "app/app.h"
#include "app/worker.h"
#include "archive/archive.h"
#include "store/archive_stats.h"
#include "store/cond.h"
#include "ui/cond_expand.h"
#include "ui/cond_form.h"
#include "ui/help_page_win32.h"
#include "ui/pickers_win32.h"
#include "ui/resource_ids.h"
#include "win/button.h"
#include "win/check_box.h"
#include "win/combo_box.h"
#include "win/dialog.h"
#include "win/radio_group.h"
#include "win/spin_box.h"
#include "win/tri_check_box.h"

namespace {

// The third choice of each match mode; its label holds a character that
// the template cannot carry.
const char kRegexLabel[] = "正規表現";
// The count of versions to find goes up to this in its spin control.
const int32_t kMaxVersionsLimit = 9999;

// What both condition dialogs share: a TCondForm between the controls and
// the conditions, the rows of text fields, the attribute boxes and the path
// mode; each dialog binds the parts that its template has.
class TCondDlg : public THelpedDialog {
 public:
  TCondDlg(const char* templateName, const char* helpPage, TCond& cond)
      : THelpedDialog(templateName, helpPage), cond_(cond) {
    form_.load(cond);
    centredOnOwner = true;
  }

  int onOk() override { return form_.save(cond_, *FApp()) ? 1 : 0; }

 protected:
  // A field's box with its history, and its exclude box.
  LComboBox* bindField(int32_t field) {
    LComboBox* box = own(new LComboBox(*this, IDC_COND_TEXT + field, form_.texts[field],
                                       FApp()->*FCondFieldRow(field).history));
    own(new LCheckBox(*this, IDC_COND_EXCL + field, form_.excl[field]));
    return box;
  }
  void bindAttributes() {
    for (int32_t i = 0; i < 4; i++)
      own(new LTriCheckBox(*this, IDC_COND_ATTR + i, form_.attrWant[i]));
  }
  void bindPathMode() { own(new LRadioGroup(*this, IDC_COND_PATH_MODE, 3, form_.pathMode)); }
  template <typename T>
  T* own(T* ctrl) {
    owned_.add(ctrl);
    return ctrl;
  }
  int onInit() override {
    SetDlgItemTextA(hwnd, IDC_COND_PATH_MODE + kCondRegex, kRegexLabel);
    return 1;
  }

  TCond& cond_;
  TCondForm form_;

 private:
  LArrOf<LCtrl*, LDelete<LCtrl*>> owned_;
};

class TLimitDlg;

// The "指定..." button of a field: its picker writes into the field's box.
class TPickButton : public LButton {
 public:
  TPickButton(TLimitDlg& dialog, int32_t field);
  int onClick() override;

 private:
  TLimitDlg& owner_;
  int32_t field_;
};

// "SCH_COND_DLG": every field, most with a picker, and the expanded part
// shown or hidden.
class TLimitDlg : public TCondDlg {
 public:
  TLimitDlg(TCond& cond, int32_t& expanded, const char* dialogTitle)
      : TCondDlg("SCH_COND_DLG", "conditions", cond), expanded_(expanded) {
    if (dialogTitle != nullptr) title = dialogTitle;
    for (int32_t field = 0; field < kFieldCount; field++) {
      boxes_[field] = bindField(field);
      if (FCondFieldRow(field).picker != kPickNone) own(new TPickButton(*this, field));
    }
    bindAttributes();
    own(new LSpinBox(*this, IDC_COND_MAX_SPIN, form_.maxVersions, 0, kMaxVersionsLimit));
    own(new LCheckBox(*this, IDC_COND_FROM_OLDEST, form_.fromOldest));
    own(new LRadioGroup(*this, IDC_COND_COMMENT_MODE, 3, form_.commentMode));
    own(new LCheckBox(*this, IDC_COND_COMMENT_CASE, form_.commentCase));
    bindPathMode();
    own(new LCheckBox(*this, IDC_COND_PATH_CASE, form_.pathCase));
  }

  int onInit() override {
    TCondDlg::onInit();
    SetDlgItemTextA(hwnd, IDC_COND_COMMENT_MODE + kCondRegex, kRegexLabel);
    collectExpandedPart();
    RECT part = {0, 0, 0, kExpandedUnits};
    MapDialogRect(hwnd, &part);
    extraHeight_ = part.bottom;
    if (expanded_ == 0) showExpandedPart(-extraHeight_);
    SetDlgItemTextA(hwnd, IDC_COND_EXPAND, FExpandButtonText(expanded_));
    return 1;
  }

  int onCommand(int id, int code) override {
    if (id != IDC_COND_EXPAND || code != BN_CLICKED) return 1;
    showExpandedPart(FToggleExpanded(expanded_, extraHeight_));
    SetDlgItemTextA(hwnd, IDC_COND_EXPAND, FExpandButtonText(expanded_));
    return 0;
  }

  void pick(int32_t field) {
    LStr text;
    if (FRunPicker(hwnd, field, stats(FCondFieldRow(field).picker), text))
      boxes_[field]->setText(text.ptr);
  }

 private:
  // The archive's statistics, scanned as deep as the picker needs. While
  // a command runs the worker owns the archive: there are none then.
  const TStats* stats(int32_t picker) {
    if (FThread() != nullptr) return nullptr;
    TArchive& archive = *FArchive();
    FScanStats(archive, picker == kPickValues ? 2 : 1);
    return &archive.stats;
  }

  // The controls from the size row down, as the template has them open.
  void collectExpandedPart() {
    RECT first;
    GetWindowRect(GetDlgItem(hwnd, IDC_COND_TEXT + kFieldSize), &first);
    for (HWND child = GetWindow(hwnd, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
      RECT r;
      GetWindowRect(child, &r);
      if (r.bottom > first.top) expandedPart_.add(child);
    }
  }

  // Shows the part when the dialog grows (a positive change), hides it
  // when it shrinks.
  void showExpandedPart(int32_t heightChange) {
    for (HWND child : expandedPart_) ShowWindow(child, heightChange > 0 ? SW_SHOW : SW_HIDE);
    RECT r;
    GetWindowRect(hwnd, &r);
    int height = r.bottom - r.top + heightChange;
    // A dialog that grows past the bottom of the screen moves up.
    RECT work;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    int top = r.top + height > work.bottom ? work.bottom - height : r.top;
    if (top < work.top) top = work.top;
    SetWindowPos(hwnd, nullptr, r.left, top, r.right - r.left, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  }

  LComboBox* boxes_[kFieldCount] = {};
  int32_t& expanded_;
  int32_t extraHeight_ = 0;
  LArrOf<HWND> expandedPart_;
};

TPickButton::TPickButton(TLimitDlg& dialog, int32_t field)
    : LButton(dialog, IDC_COND_PICK + field), owner_(dialog), field_(field) {}

int TPickButton::onClick() {
  owner_.pick(field_);
  return 0;
}

// "ADD_COND_DLG": the conditions that files on disk can meet. It has no
// pickers: their candidates come from the archive, not from the files to
// add.
class TAddCondDlg : public TCondDlg {
 public:
  explicit TAddCondDlg(TCond& cond) : TCondDlg("ADD_COND_DLG", "add_conditions", cond) {
    for (int32_t field : {kFieldName, kFieldDate, kFieldSize, kFieldPath}) bindField(field);
    bindAttributes();
    own(new LCheckBox(*this, IDC_COND_EXISTING, form_.existingOnly));
    bindPathMode();
  }
};

}  // namespace

bool FRunLimitDialog(HWND owner, TCond& cond, int32_t& expanded, const char* title,
                     const TRecList& /*selection*/) {
  TLimitDlg dialog(cond, expanded, title != nullptr && *title != 0 ? title : nullptr);
  return dialog.run(owner) == IDOK;
}

bool FRunAddCondDialog(HWND owner, TCond& cond) {
  TAddCondDlg dialog(cond);
  return dialog.run(owner) == IDOK;
}
