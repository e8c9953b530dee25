// The text fields of the condition dialogs: for each, its label, the
// history of the settings that its box offers, and the picker that its
// "指定..." button opens. The fields stand in the order in which a TCond
// holds its texts.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

class TApp;
class TCond;

enum TCondField : int32_t {
  kFieldName,
  kFieldDate,
  kFieldStoreNo,
  kFieldComment,
  kFieldSize,
  kFieldPath,
  kFieldVer,
  kFieldUser,
  kFieldCheckout,
  kFieldCount
};

enum TPickerKind : int32_t { kPickNone, kPickValues, kPickNumbers, kPickDates };

struct TCondFieldRow {
  const char* label;  // null: the field has no label of its own
  LStr TCond::*text;
  int32_t TCond::*excl;
  LStrs TApp::*history;
  const char* pickTitle;  // what the picker asks for
  TPickerKind picker;
};

const TCondFieldRow& FCondFieldRow(int32_t field);
