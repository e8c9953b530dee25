// The reporter of the command line: numbered messages and boxes become lines
// on standard error, in the library's own form ("Error 15000: ...", "Kestrom
// エラー #3000: ..."). It counts the error boxes, which with the counted
// errors tell whether a command met an error.
#pragma once

#include <cstdint>

#include "app/app_msg.h"

class TCliConsole;

class TCliMsg : public TMsg {
 public:
  explicit TCliMsg(TCliConsole& console) : console_(console) {}
  void output(int number, const char* position, const char* level, const char* text) override;
  int showBox(char kind, const char* title, const char* text) override;
  void errorBoxShown() override;
  // The error boxes and error messages so far; a command met an error when
  // the count grew while it ran.
  int32_t errorsSoFar() const { return errorBoxes_ + errorTotal(); }

 private:
  TCliConsole& console_;
  int32_t errorBoxes_ = 0;  // under the library lock: both threads show boxes
};
