// TCondForm: the values of a condition dialog while it is open. The dialog
// binds its controls to these and not to the TCond itself, so that a Cancel
// (or an OK refused by the parser) leaves the conditions as they were.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "ui/cond_fields.h"

class TApp;
class TCond;

class TCondForm {
 public:
  LStr texts[kFieldCount];
  int32_t excl[kFieldCount] = {};
  int32_t attrWant[4] = {};
  int32_t existingOnly = 0;
  int32_t maxVersions = 1;
  int32_t fromOldest = 0;
  int32_t commentMode = 0;
  int32_t pathMode = 0;
  int32_t commentCase = 0;
  int32_t pathCase = 0;

  void load(const TCond& cond);
  // The OK of the dialog: each text is normalised, the conditions are
  // parsed, and only when they parse are they stored in cond and each text
  // remembered in its history (at most app.memItemNum entries). False keeps
  // the dialog open: the parser has told the user why.
  bool save(TCond& cond, TApp& app);

 private:
  void storeInto(TCond& cond) const;
};
