#include "cli/cli_console.h"

#include <cstdio>

#include "cli/text_width.h"
#include "lib/convert.h"
#include "lib/liblock.h"
#include "lib/sys_terminal.h"
#include "lib/utf8.h"

namespace {
const int kUtf8 = 65001;
}  // namespace

TCliConsole::TCliConsole()
    : outCodePage_(SysStreamCodePage(kSysStdout)),
      errCodePage_(SysStreamCodePage(kSysStderr)),
      errTerminal_(SysIsTerminal(kSysStderr)),
      inTerminal_(SysIsTerminal(kSysStdin)) {}

TCliConsole::~TCliConsole() {
  status("");
  std::fflush(stdout);
}

LStr TCliConsole::convert(const char* text, int codePage) {
  if (converting_ > 0) return LStr(text);
  converting_++;
  UStr wide;
  FToUStr(text, -1, wide);
  LStr bytes;
  // UTF-8 goes the lossless way of file names, so that a name that is not
  // valid UTF-8 comes out as the bytes it has on disk.
  if (codePage == kUtf8)
    FUtf16ToUtf8(wide.ptr, wide.length, bytes, /*lossless=*/true);
  else
    FToLStr(wide.ptr, wide.length, bytes, codePage);
  converting_--;
  return bytes;
}

TEscapeForm TCliConsole::escapesIn(int codePage) {
  return codePage == kUtf8 ? kEscapeAsCharacter : kEscapeAsText;
}

void TCliConsole::out(const char* text) {
  FLibGuard guard;
  LStr bytes = convert(text, outCodePage_);
  bytes.append('\n');
  std::fwrite(bytes.ptr, 1, bytes.length, stdout);
}

bool TCliConsole::outBytes(const void* bytes, int64_t size) {
  FLibGuard guard;
  size_t n = static_cast<size_t>(size);
  return std::fwrite(bytes, 1, n, stdout) == n && std::fflush(stdout) == 0;
}

void TCliConsole::err(const char* text) {
  FLibGuard guard;
  // Results and messages in the order they were made, also when both
  // streams go to one terminal.
  std::fflush(stdout);
  clearStatus();
  LStr bytes = convert(text, errCodePage_);
  bytes.append('\n');
  writeErr(bytes);
  drawStatus();
}

void TCliConsole::status(const char* text) {
  if (!errTerminal_) return;
  FLibGuard guard;
  clearStatus();
  status_ = text;
  drawStatus();
}

bool TCliConsole::ask(const char* question) {
  if (!inTerminal_) return true;
  {
    FLibGuard guard;
    std::fflush(stdout);
    clearStatus();
    LStr bytes = convert(question, errCodePage_);
    bytes.append(" (y/n) ");
    writeErr(bytes);
  }
  char answer[64];
  bool yes =
      std::fgets(answer, sizeof answer, stdin) == nullptr || answer[0] == 'y' || answer[0] == 'Y';
  std::clearerr(stdin);
  FLibGuard guard;
  drawStatus();
  return yes;
}

void TCliConsole::writeErr(const LStr& bytes) {
  std::fwrite(bytes.ptr, 1, bytes.length, stderr);
  std::fflush(stderr);
}

void TCliConsole::clearStatus() {
  if (statusWidth_ == 0) return;
  LStr blank("\r");
  for (int32_t i = 0; i < statusWidth_; i++) blank.append(' ');
  blank.append('\r');
  writeErr(blank);
  statusWidth_ = 0;
}

void TCliConsole::drawStatus() {
  if (!errTerminal_ || status_.empty()) return;
  LStr bytes("\r");
  bytes.append(convert(status_.ptr, errCodePage_));
  writeErr(bytes);
  statusWidth_ = FTextWidth(status_.ptr, errEscapes());
}
