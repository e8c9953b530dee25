#include "lib/msg.h"

#include <cstdio>

#include "lib/chartype.h"
#include "lib/convert.h"
#include "lib/fail.h"
#include "lib/liblock.h"
#include "lib/pos.h"
#include "lib/sys.h"

namespace {
LMsg* gReporter = nullptr;
}

const char* FMsgLevel(int number) {
  if (number == 0) return "Message";
  if (number < 20000) return "Error";
  if (number < 39999) return "Warning";
  return "Note";
}

const char* FLangText(const char* japanese, const char* english) {
  return FGetLang() == 'J' ? japanese : english;
}

void FSetReporter(LMsg* reporter) {
  LMsg* old;
  {
    FLibGuard guard;
    old = gReporter;
    gReporter = reporter;
  }
  if (old != reporter) delete old;
}

LMsg* FReporter() {
  FLibGuard guard;
  if (gReporter == nullptr) gReporter = new LMsg;
  return gReporter;
}

void LMsg::output(int number, const char* position, const char* level, const char* text) {
  LStr line;
  if (position) line.format("%s: ", position);
  line.format("%s %d: ", level, number);
  line.append(text);
  if (number > 0) line.append('\n');
  FConsole(line.ptr);
}

int LMsg::showBox(char, const char* title, const char* text) {
  LStr line;
  line.format("%s: %s\n", title, text);
  FConsole(line.ptr);
  return 1;
}

int32_t LMsg::report(int number, const char* text) {
  // The system's error values first, before anything can disturb them.
  int lastError = SysLastError();
  int lastErrno = SysErrno();
  if (isSuppressed(number)) return 0;
  LStr message(text);
  if (number == kMsgSystem || number == kMsgSystemWarning) {
    LStr sentence;
    SysErrorText(lastError, sentence);
    message.append(": ");
    message.append(sentence);
  } else if (number == kMsgErrno || number == 37100) {
    LStr sentence;
    SysErrnoText(lastErrno, sentence);
    message.format(": errno=%d: %s", lastErrno, sentence.ptr);
  }
  LStr position;
  FPosText(position);
  const char* level = FMsgLevel(number);
  if (number >= 30000 && number <= 39999) {
    FLibGuard guard;
    if (quiet > 0) return 0;
    warningCount++;
  }
  output(number, position.empty() ? nullptr : position.ptr, level, message.ptr);
  if (number >= 10000 && number <= 19999) {
    {
      FLibGuard guard;
      errorCount++;
    }
    // 19999 is an error that never ends the process.
    if (exitOnError && number < 19999) FExit(2);
  }
  return message.length;
}

void LMsg::suppress(int number) {
  // Class numbers such as 17000 are shared by many messages and stay visible.
  if (number % 100 == 0) {
    FMsg(kMsgGeneral, "cannot supress message %d", number);
    return;
  }
  FLibGuard guard;
  suppressed.add(number);
}

void LMsg::suppressList(const char* commaText) {
  LStr list(commaText);
  int32_t start = 0;
  for (int32_t i = 0; i <= list.length; i++) {
    if (i < list.length && list[i] != ',') continue;
    LStr piece(list.ptr + start, i - start);
    suppress(FParseInt(piece.ptr));
    start = i + 1;
  }
}

bool LMsg::isSuppressed(int number) {
  if (number <= 0) return false;
  FLibGuard guard;
  return suppressed.find(number, [](int32_t a, int b) { return a == b ? 0 : 1; }) >= 0;
}

int32_t FMsgV(int number, const char* fmt, va_list args) {
  LStr text;
  text.formatV(fmt, args);
  return FReporter()->report(number, text.ptr);
}

int32_t FMsg(int number, const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  int32_t n = FMsgV(number, fmt, args);
  va_end(args);
  return n;
}

int32_t FMsgText(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  int32_t n = FMsgV(0, fmt, args);
  va_end(args);
  return n;
}

void FShutdownMessages() {
  FSetReporter(nullptr);
  FClearPositions();
  FSetSourceText(nullptr);
}
