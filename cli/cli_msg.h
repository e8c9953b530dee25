// The reporter of the command line: numbered messages and boxes become lines
// on standard error, in the library's own form ("Error 15000: ...", "Kestrom
// エラー #3000: ..."). It counts the error boxes, which with the counted
// errors decide the exit status.
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
  // True when an error box was shown or an error message counted.
  bool anyError() const { return errorBoxes_ > 0 || errorTotal() > 0; }

 private:
  TCliConsole& console_;
  int32_t errorBoxes_ = 0;  // under the library lock: both threads show boxes
};
