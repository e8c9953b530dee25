#include "ui/pickers_win32.h"

#include <ctime>

#include "archive/archive.h"
#include "lib/msg.h"
#include "ui/cond_fields.h"
#include "ui/date_pick.h"
#include "ui/help_page_win32.h"
#include "ui/number_pick.h"
#include "ui/resource_ids.h"
#include "ui/value_picks.h"
#include "win/combo_box.h"
#include "win/date_time_picker.h"
#include "win/dialog.h"
#include "win/edit_box.h"
#include "win/spin_box.h"
#include "win/text_box.h"

namespace {

class TValuePickDlg : public THelpedDialog {
 public:
  TValuePickDlg(const char* what, const LStrs& candidates)
      : THelpedDialog("STR_INPUT", "pickers"),
        candidates_(candidates),
        promptBox_(*this, IDC_PICK_PROMPT, prompt_),
        value_(*this, IDC_PICK_VALUE, chosen, candidates) {
    prompt_.format("%sを選択または入力してください", what);
    value_.takesFocus = true;
    centredOnOwner = true;
  }
  // The "..." of a cut list would search for three dots: the user is asked
  // again for a value, in an emptied box.
  int onOk() override {
    if (!FIsRestEntry(candidates_, chosen.ptr)) return 1;
    FMsg(kMsgWarning, "%s", prompt_.ptr);
    chosen.clear();
    value_.load();
    SetFocus(value_.hwnd);
    return 0;
  }
  LStr chosen;

 private:
  const LStrs& candidates_;
  LStr prompt_;
  LTextBox promptBox_;
  LComboBox value_;
};

class TNumberPickDlg : public THelpedDialog {
 public:
  TNumberPickDlg(const char* what, const TNumberRange& range)
      : THelpedDialog("NUMA_INPUT", "pickers"),
        range_(range),
        promptBox_(*this, IDC_PICK_PROMPT, prompt_),
        lowValue_(range.low),
        highValue_(range.high),
        lowSpin_(*this, IDC_PICK_LOW_SPIN, lowValue_, range.low, range.high),
        highSpin_(*this, IDC_PICK_HIGH_SPIN, highValue_, range.low, range.high),
        low_(*this, IDC_PICK_LOW, lowText_),
        high_(*this, IDC_PICK_HIGH, highText_) {
    prompt_.format("%sの範囲を選択または入力してください", what);
    lowText_.format("%d", range.low);
    highText_.format("%d", range.high);
    centredOnOwner = true;
  }
  int onOk() override {
    LStr error;
    result = FNumberRangeText(lowText_.ptr, highText_.ptr, range_.unit, text, error);
    if (result != kPickRefused) return 1;
    FMsg(kMsgWarning, "%s", error.ptr);
    return 0;
  }
  TPickResult result = kPickUntouched;
  LStr text;

 private:
  TNumberRange range_;
  LStr prompt_;
  LTextBox promptBox_;
  int32_t lowValue_;
  int32_t highValue_;
  LStr lowText_;
  LStr highText_;
  // The spins come first: they set their buddies' texts as they load, and
  // the boxes then show (and on OK give) what the user left there.
  LSpinBox lowSpin_;
  LSpinBox highSpin_;
  LEditBox low_;
  LEditBox high_;
};

class TDatePickDlg : public THelpedDialog {
 public:
  TDatePickDlg(const char* what, const TDateSide& low, const TDateSide& high)
      : THelpedDialog("DTA_INPUT", "pickers"),
        low(low),
        high(high),
        promptBox_(*this, IDC_PICK_PROMPT, prompt_),
        lowDate_(*this, IDC_PICK_LOW_DATE, this->low.at),
        lowTime_(*this, IDC_PICK_LOW_TIME, this->low.at, this->low.withTime),
        highDate_(*this, IDC_PICK_HIGH_DATE, this->high.at),
        highTime_(*this, IDC_PICK_HIGH_TIME, this->high.at, this->high.withTime) {
    prompt_.format("%sの範囲を選択してください", what);
    centredOnOwner = true;
  }
  TDateSide low;
  TDateSide high;

 private:
  LStr prompt_;
  LTextBox promptBox_;
  LDatePicker lowDate_;
  LTimePicker lowTime_;
  LDatePicker highDate_;
  LTimePicker highTime_;
};

void sayNothingToOffer() { FMsg(kMsgWarning, "%s", kNoCandidates); }

bool pickValue(HWND owner, int32_t field, const TStats* stats, LStr& text) {
  LStrs candidates;
  const LHash* ids = stats != nullptr ? FCandidateIds(*stats, field) : nullptr;
  if (ids == nullptr || !FValueCandidates(*ids, FArchive()->strings, candidates)) {
    sayNothingToOffer();
    return false;
  }
  TValuePickDlg dialog(FCondFieldRow(field).pickTitle, candidates);
  if (dialog.run(owner) != IDOK) return false;
  text = dialog.chosen;
  return true;
}

bool pickNumbers(HWND owner, int32_t field, const TStats* stats, LStr& text) {
  TNumberRange range;
  if (!FNumberRange(field, stats, range)) {
    sayNothingToOffer();
    return false;
  }
  TNumberPickDlg dialog(FCondFieldRow(field).pickTitle, range);
  if (dialog.run(owner) != IDOK || dialog.result != kPickTaken) return false;
  text = dialog.text;
  return true;
}

bool pickDates(HWND owner, int32_t field, const TStats* stats, LStr& text) {
  TDateSide low, high;
  if (!FDateRangeStart(stats, static_cast<int64_t>(std::time(nullptr)), low, high)) {
    sayNothingToOffer();
    return false;
  }
  TDatePickDlg dialog(FCondFieldRow(field).pickTitle, low, high);
  if (dialog.run(owner) != IDOK) return false;
  text = FDateRangeText(dialog.low, dialog.high);
  return true;
}

}  // namespace

bool FRunPicker(HWND owner, int32_t field, const TStats* stats, LStr& text) {
  switch (FCondFieldRow(field).picker) {
    case kPickValues:
      return pickValue(owner, field, stats, text);
    case kPickNumbers:
      return pickNumbers(owner, field, stats, text);
    case kPickDates:
      return pickDates(owner, field, stats, text);
    default:
      return false;
  }
}
