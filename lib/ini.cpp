#include "lib/ini.h"

#include <cstring>

#include "lib/chartype.h"
#include "lib/msg.h"
#include "lib/pos.h"
#include "lib/srm_pos.h"

namespace {
bool isNameByte(int c) {
  return c >= 0 && (FIsLetter(static_cast<unsigned char>(c)) ||
                    FIsDigit(static_cast<unsigned char>(c)) || c == '_');
}

void writeBlanks(LIniIo& io, int32_t count) {
  for (int32_t i = 0; i < count; i++) io.stream->writeText(" ");
}
}  // namespace

void LIni::add(const char* name, void* target, LIniField field) {
  bool compact = name[0] == '/';
  keys.add(new Key{compact ? name + 1 : name, target, field, compact ? 1 : 0});
}

void LIni::read(LIniIo& io) {
  io.errorBase = FReporter()->errorTotal();
  io.aborted = false;
  LPosScope where(new LSrmPos(*io.stream, nullptr, 0));
  readEntries(io, /*nested=*/false);
}

void LIni::write(LIniIo& io) { writeEntries(io); }

void LIni::readEntries(LIniIo& io, bool nested) {
  while (!io.tooManyErrors()) {
    int next = io.skip();
    if (next < 0) {
      if (nested) io.require(')');
      return;
    }
    if (nested && next == ')') {
      io.stream->getByte();
      return;
    }
    if (nested && next == ',') {
      io.stream->getByte();
      continue;
    }
    readEntry(io, next);
  }
}

void LIni::readEntry(LIniIo& io, int next) {
  if (!isNameByte(next)) {
    io.error("illegal character: '%c'", next);
    io.stream->readLine(nullptr, LSrm::kDropLineEnd);
    return;
  }
  LStr name;
  while (isNameByte(io.stream->peekByte())) name.append(static_cast<char>(io.stream->getByte()));
  const Key* key = find(name);
  if (key == nullptr) {
    io.error("unknown name '%s'", name.ptr);
    io.stream->readLine(nullptr, LSrm::kDropLineEnd);
    return;
  }
  // The "=" belongs on the line of its name: a line end here is a missing
  // "=", and skipping the rest of the line must not take the next one.
  int c = io.stream->peekByte();
  while (c == ' ' || c == '\t') {
    io.stream->getByte();
    c = io.stream->peekByte();
  }
  if (c != '=') {
    io.error("missing '=' in %s", name.ptr);
    io.stream->readLine(nullptr, LSrm::kDropLineEnd);
    return;
  }
  io.stream->getByte();
  int32_t errors = FReporter()->errorTotal();
  int32_t line = io.stream->lineNumber();
  callField(*key, io);
  // What is left of a line with a bad value would only give more errors.
  if (FReporter()->errorTotal() != errors && io.stream->lineNumber() == line)
    io.stream->readLine(nullptr, LSrm::kDropLineEnd);
}

void LIni::writeEntries(LIniIo& io) {
  bool oneLine = io.compact != 0;
  for (int32_t i = 0; i < keys.count; i++) {
    const Key& key = *keys[i];
    if (oneLine && i > 0) io.stream->writeText(",");
    if (!oneLine) writeBlanks(io, io.depth);
    io.stream->writeText(key.name);
    io.stream->writeText("=");
    callField(key, io);
    if (!oneLine) io.stream->writeText("\r\n");
  }
}

void LIni::callField(const Key& key, LIniIo& io) {
  int32_t outerCompact = io.compact;
  io.compact = key.compact;
  io.depth++;
  key.field(key.target, io);
  io.depth--;
  io.compact = outerCompact;
}

const LIni::Key* LIni::find(const LStr& name) const {
  for (const Key* key : keys)
    if (std::strcmp(key->name, name.ptr) == 0) return key;
  return nullptr;
}

void FIniTable(void* target, LIniIo& io) {
  LIni& table = *static_cast<LIni*>(target);
  if (!io.writing()) {
    if (io.require('(')) table.readEntries(io, /*nested=*/true);
    return;
  }
  io.stream->writeText("(");
  if (io.compact) {
    table.writeEntries(io);
  } else {
    // The field runs one level deeper than its own line.
    io.stream->writeText("\r\n");
    table.writeEntries(io);
    writeBlanks(io, io.depth - 1);
  }
  io.stream->writeText(")");
}
