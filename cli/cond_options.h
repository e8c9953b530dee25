// The condition options, which fill a TCond as the condition dialogs do:
// the text fields in the dialog's own text forms, each with a "--not-" form
// for the exclude box, and the switches. Two sets: the add command's, which
// tests files on disk, and that of extract and find, which test versions.
// A repeated option lists alternatives, as "," does in the dialog.
#pragma once

#include <cstdint>

class TCliArgs;
class TCond;

// The number of text conditions of a TCond.
const int32_t kTextConds = 9;

class TCliCondOptions {
 public:
  explicit TCliCondOptions(TCond& cond);
  TCliCondOptions(const TCliCondOptions&) = delete;
  TCliCondOptions& operator=(const TCliCondOptions&) = delete;

  // Declares the options; the object must outlive the parse.
  void declareAdd(TCliArgs& args);
  void declareVersions(TCliArgs& args);
  // Builds the condition lists (TCond::Parse); false when a value was
  // refused, after its parser reported it.
  bool finish();

 private:
  struct Binding {
    TCliCondOptions* owner;
    int32_t index;  // into the table of text conditions
    bool negated;
  };
  void declareText(TCliArgs& args, int32_t index);
  static bool applyText(const char* value, void* target);

  TCond& cond_;
  Binding bindings_[kTextConds][2];
  // Which form of each condition came: 0 none, 1 plain, 2 "--not-".
  int32_t used_[kTextConds] = {};
  int32_t caseSwitch_ = 0;
};

// Reads "r+h-": letters of r a h s (read-only, archive, hidden, system),
// each followed by "+" for on or "-" for off, into the four wanted states.
// False, after reporting 15001, for anything else.
bool FParseAttrWants(const char* text, int32_t* wants);
// Reads "exact", "partial" or "regex" into a match mode; false, after
// reporting 15001, for anything else.
bool FParseMatchMode(const char* text, int32_t* mode);
