#include "lib/fail.h"

#include <cstdlib>

#include "lib/liblock.h"
#include "lib/lstr.h"
#include "lib/msg.h"
#include "lib/sys.h"

namespace {
bool gConsoleCreated = false;
bool gExiting = false;

// The one routine behind the three boxes: kind 'e', 'w' or 'm'.
int showBox(char kind, int number, const char* fmt, va_list args) {
  LStr title("Kestrom ");
  title.append(FBoxKindWord(kind));
  if (number > 0) title.format(" #%d", number);
  LStr text;
  text.formatV(fmt, args);
  LMsg* reporter = FReporter();
  int button = reporter->showBox(kind, title.ptr, text.ptr);
  if (kind == 'e') {
    reporter->errorBoxShown();
    throw static_cast<int>(kThrowError);
  }
  return button;
}
}  // namespace

const char* FBoxKindWord(char kind) {
  return kind == 'e' ? "エラー" : kind == 'w' ? "警告" : "メッセージ";
}

void FErrorV(int number, const char* fmt, va_list args) {
  showBox('e', number, fmt, args);
  throw static_cast<int>(kThrowError);  // not reached: the box throws
}

void FError(int number, const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  FErrorV(number, fmt, args);
}

int FWarnV(int number, const char* fmt, va_list args) { return showBox('w', number, fmt, args); }

int FWarn(int number, const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  int button = FWarnV(number, fmt, args);
  va_end(args);
  return button;
}

int FInfoV(int number, const char* fmt, va_list args) { return showBox('m', number, fmt, args); }

int FInfo(int number, const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  int button = FInfoV(number, fmt, args);
  va_end(args);
  return button;
}

void FInternalBox(int n) { FError(kMsgErrorBox, "Internal Error #%d", n); }

void FFormatError(int n) {
  FError(kMsgErrorBox, "アーカイブ ファイルの形式が正しくありません (識別番号=%d)", n);
}

void FInternal(const char* fmt, ...) {
  LStr text("Internal Error: ");
  va_list args;
  va_start(args, fmt);
  text.formatV(fmt, args);
  va_end(args);
  text.append('\n');
  FConsole(text.ptr);
  FExit(2);
}

void FInternalNum(int n) { FInternal("%d", n); }

void FExit(int code) {
  bool console;
  {
    FLibGuard guard;
    gExiting = true;
    console = gConsoleCreated;
  }
  if (console) {
    // Leave a console that the program opened long enough to be read.
    SysSleep(3000);
    SysConsoleRelease();
  }
  std::exit(code);
}

bool FExiting() {
  FLibGuard guard;
  return gExiting;
}

void FConsole(const char* text) {
  FLibGuard guard;
  if (SysConsoleWrite(text, LText<char>::measure(text))) gConsoleCreated = true;
}
