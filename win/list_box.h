// LListBox: a list box of strings with one selected entry, bound to the
// strings and to the selected index (-1 for none); both must outlive the
// dialog's run. The index follows the user's selection as it changes.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "win/ctrl.h"

class LListBox : public LCtrl {
 public:
  LListBox(LDialog& dialog, int id, const LStrs& items, int32_t& selected)
      : LCtrl(dialog, id), items_(items), selected_(selected) {}
  // Fills the box again from the strings and selects the index.
  void load() override;
  bool save() override;
  int onCommand(int code) override;

 private:
  const LStrs& items_;
  int32_t& selected_;
};
