#include "lib/ini_io.h"

#include <cstdarg>

#include "lib/msg.h"

namespace {
// The stop bytes of a token. None of them can be the second byte of a
// double-byte character, and readUntil steps over those anyway.
const char kTokenEnd[] = "(),\r\n";
const int32_t kErrorLimit = 10;

bool isSkipped(int c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
}  // namespace

int LIniIo::skip() {
  for (;;) {
    int c = stream->peekByte();
    if (isSkipped(c))
      stream->getByte();
    else if (c == ';')
      stream->readLine(nullptr, LSrm::kDropLineEnd);
    else
      return c;
  }
}

bool LIniIo::require(char expected) {
  int c = skip();
  if (c == static_cast<unsigned char>(expected)) {
    stream->getByte();
    return true;
  }
  if (c < 0)
    error("'%c' required instead of end of file", expected);
  else
    error("'%c' required instead of '%c'", expected, c);
  return false;
}

void LIniIo::readToken(LStr& out) {
  out.clear();
  stream->readUntil(kTokenEnd, &out);
}

void LIniIo::error(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  FMsgV(kMsgSyntax, fmt, args);
  va_end(args);
}

bool LIniIo::tooManyErrors() {
  if (aborted) return true;
  if (FReporter()->errorTotal() - errorBase <= kErrorLimit) return false;
  aborted = true;
  error("Too many error. Abort reading configuration/ini file.");
  return true;
}

void FIniList(LIniIo& io, void* context, int32_t count, LIniItem item, bool textItems) {
  if (io.writing()) {
    io.stream->writeText("(");
    for (int32_t i = 0; i < count; i++) {
      if (i > 0) io.stream->writeText(",");
      item(context, i, io);
    }
    io.stream->writeText(")");
    return;
  }
  if (!io.require('(')) return;
  int next = textItems ? io.stream->peekByte() : io.skip();
  if (next != ')' && next >= 0) {
    for (int32_t index = 0;; index++) {
      item(context, index, io);
      if (io.aborted) return;
      if (io.skip() != ',') break;
      io.stream->getByte();
      if (!textItems) io.skip();
    }
  }
  io.require(')');
}
