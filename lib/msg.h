// Numbered messages. A message never unwinds the stack: it is filtered,
// counted and handed to the reporter's output. The number decides the level:
//   0 plain message; below 20000 error (counted from 10000 to 19999);
//   20000..39998 warning (counted from 30000); 39999 and above note.
//   17000/37000 append the system's text for the last error,
//   17100/37100 the run-time's errno text.
// One global reporter exists; the program installs its own (a subclass that
// prints, or one that shows boxes); without one a console reporter is made on
// first use.
#pragma once

#include <cstdarg>
#include <cstdint>

#include "lib/larr.h"
#include "lib/lobj.h"
#include "lib/lstr.h"

enum : int {
  kMsgGeneral = 15000,
  kMsgSyntax = 15001,
  kMsgSystem = 17000,
  kMsgErrno = 17100,
  kMsgPrepared = 17200,
  kMsgWarning = 20000,
  kMsgCountedWarning = 35000,
  kMsgCannotConvert = 35007,
  kMsgBadEscape = 35009,
  kMsgSystemWarning = 37000,
  kMsgErrorBox = 3000,
};

class LMsg : public LObj {
 public:
  LInts suppressed;
  int32_t exitOnError = 0;
  int32_t errorCount = 0;
  int32_t warningCount = 0;
  int32_t quiet = 0;

  // Writes one report; position may be null. The default writes to the
  // console: "position: " if any, "Level N: ", the text, and a newline when
  // the number is above 0.
  virtual void output(int number, const char* position, const char* level, const char* text);
  // Shows an error box (kind 'e'), warning ('w') or message ('m') with its
  // title; the default writes it to the console. Returns the button pressed.
  virtual int showBox(char kind, const char* title, const char* text);
  // Called after an error box, before the throw: the application stops its
  // running command here.
  virtual void errorBoxShown() {}

  // Returns 0 when the message was dropped, else the length of its text.
  int32_t report(int number, const char* text);
  void suppress(int number);
  void suppressList(const char* commaText);
  bool isSuppressed(int number);
  int32_t errorTotal() const { return errorCount; }
  int32_t issueTotal() const { return errorCount + warningCount; }
};

// The level word of a number: "Message", "Error", "Warning" or "Note".
const char* FMsgLevel(int number);

// The global reporter. Installing one deletes the previous reporter; null
// leaves none (a console reporter is then made on first use).
void FSetReporter(LMsg* reporter);
LMsg* FReporter();

int32_t FMsg(int number, const char* fmt, ...) __attribute__((format(printf, 2, 3)));
int32_t FMsgV(int number, const char* fmt, va_list args);
int32_t FMsgText(const char* fmt, ...) __attribute__((format(printf, 1, 2)));

// Two-language texts: the Japanese one when FLang is 'J'.
const char* FLangText(const char* japanese, const char* english);

// Takes the layer down at the end of the process: the reporter, the position
// stack and the source text.
void FShutdownMessages();
