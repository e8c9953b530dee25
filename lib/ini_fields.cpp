#include "lib/ini_fields.h"

#include <cerrno>
#include <cstdlib>

#include "lib/larr.h"
#include "lib/msg.h"

namespace {
// Written in this order, read back in the reverse order, so that a "!" of
// the text survives. None of these bytes can be the second byte of a
// double-byte character, so plain replacement is safe.
const char* const kEscapes[][2] = {
    {"!", "!Q"}, {"(", "!["}, {")", "!]"}, {",", "!C"}, {"\r", "!r"}, {"\n", "!n"}, {"\t", "!t"},
};
const int kEscapeCount = sizeof kEscapes / sizeof kEscapes[0];
const int kRectValues = 4;

void writeEscaped(const LStr& text, LIniIo& io) {
  LStr escaped(text);
  for (int i = 0; i < kEscapeCount; i++) escaped.replaceAll(kEscapes[i][0], kEscapes[i][1]);
  io.stream->writeText(escaped.ptr, escaped.length);
}

void readEscaped(LStr& out, LIniIo& io) {
  io.readToken(out);
  for (int i = kEscapeCount - 1; i >= 0; i--) out.replaceAll(kEscapes[i][1], kEscapes[i][0]);
}

bool isBlank(char c) { return c == ' ' || c == '\t'; }

// A token holding one number in base 10, or 16 with an optional "h", in the
// range [low, high], with blanks around it and perhaps a comment after it.
bool readNumber(LIniIo& io, int base, int64_t low, int64_t high, int64_t* value) {
  LStr token;
  io.readToken(token);
  const char* p = token.ptr;
  while (isBlank(*p)) p++;
  char* end;
  errno = 0;
  long long number = std::strtoll(p, &end, base);
  bool ok = end != p && errno == 0 && number >= low && number <= high;
  if (base == 16 && (*end == 'h' || *end == 'H')) end++;
  while (isBlank(*end)) end++;
  if (!ok || (*end != 0 && *end != ';')) {
    io.error("illegal number: %s", token.ptr);
    return false;
  }
  *value = number;
  return true;
}

// Reads a list into a scratch value through item, and hands it over only
// when the list read without a reported error.
template <typename Value>
bool readListInto(Value& scratch, LIniIo& io, LIniItem item, bool textItems) {
  int32_t errors = FReporter()->errorTotal();
  FIniList(io, &scratch, 0, item, textItems);
  return FReporter()->errorTotal() == errors;
}

void textItem(void* context, int32_t index, LIniIo& io) {
  LStrs& list = *static_cast<LStrs*>(context);
  if (io.writing()) {
    writeEscaped(*list[index], io);
    return;
  }
  LStr* text = new LStr;
  readEscaped(*text, io);
  list.add(text);
}

void intItem(void* context, int32_t index, LIniIo& io) {
  LInts& list = *static_cast<LInts*>(context);
  if (io.writing()) {
    io.stream->printf("%d", list[index]);
    return;
  }
  int64_t value;
  if (readNumber(io, 10, INT32_MIN, INT32_MAX, &value)) list.add(static_cast<int32_t>(value));
}
}  // namespace

void FIniInt(void* target, LIniIo& io) {
  int32_t& number = *static_cast<int32_t*>(target);
  if (io.writing()) {
    io.stream->printf("%d", number);
    return;
  }
  int64_t value;
  if (readNumber(io, 10, INT32_MIN, INT32_MAX, &value)) number = static_cast<int32_t>(value);
}

void FIniChar(void* target, LIniIo& io) {
  char& c = *static_cast<char*>(target);
  if (io.writing()) {
    io.stream->write(&c, 1);
    return;
  }
  LStr token;
  io.readToken(token);
  if (token.length == 1)
    c = token[0];
  else
    io.error("illegal character: %s", token.ptr);
}

void FIniHex(void* target, LIniIo& io) {
  uint32_t& number = *static_cast<uint32_t*>(target);
  if (io.writing()) {
    io.stream->printf("%Xh", number);
    return;
  }
  int64_t value;
  if (readNumber(io, 16, 0, UINT32_MAX, &value)) number = static_cast<uint32_t>(value);
}

void FIniText(void* target, LIniIo& io) {
  LStr& text = *static_cast<LStr*>(target);
  if (io.writing())
    writeEscaped(text, io);
  else
    readEscaped(text, io);
}

void FIniTexts(void* target, LIniIo& io) {
  LStrs& list = *static_cast<LStrs*>(target);
  if (io.writing()) {
    FIniList(io, &list, list.count, textItem, /*textItems=*/true);
    return;
  }
  LStrs scratch;
  if (!readListInto(scratch, io, textItem, /*textItems=*/true)) return;
  list.clear();
  for (LStr* text : scratch) list.add(new LStr(*text));
}

void FIniInts(void* target, LIniIo& io) {
  LInts& list = *static_cast<LInts*>(target);
  if (io.writing()) {
    FIniList(io, &list, list.count, intItem, /*textItems=*/false);
    return;
  }
  LInts scratch;
  if (!readListInto(scratch, io, intItem, /*textItems=*/false)) return;
  list.clear();
  list.addAll(scratch);
}

void FIniRect(void* target, LIniIo& io) {
  int32_t* values = static_cast<int32_t*>(target);
  LInts list;
  if (io.writing()) {
    for (int i = 0; i < kRectValues; i++) list.add(values[i]);
    FIniInts(&list, io);
    return;
  }
  if (!readListInto(list, io, intItem, /*textItems=*/false)) return;
  if (list.count != kRectValues) {
    io.error("a rectangle takes %d numbers, not %d", kRectValues, list.count);
    return;
  }
  for (int i = 0; i < kRectValues; i++) values[i] = list[i];
}
