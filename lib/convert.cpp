#include "lib/convert.h"

#include <cstdlib>
#include <cstring>

#include "lib/chartype.h"
#include "lib/msg.h"
#include "lib/sys.h"

const char* const kEscOpen = "{%u";
const char* const kEscClose = "}";

namespace {
const int32_t kWidePiece = 1000;
const int32_t kNarrowRoom = 2000;
const int32_t kNarrowPiece = 2000;
const int32_t kWideRoom = 4000;

const UChar kUnknown[] = {'<', '?', '>', 0};

int actualCodePage(int codePage) { return codePage == 0 ? SysCodePage() : codePage; }

int32_t shrink(int32_t piece) { return piece / 4 > 0 ? piece / 4 : 1; }

bool listed(const UChar* units, UChar unit) {
  if (units == nullptr) return false;
  for (; *units != 0; units++)
    if (*units == unit) return true;
  return false;
}

void appendEscape(UChar unit, LStr& out) {
  out.append(kEscOpen);
  out.format("%04X", unit);
  out.append(kEscClose);
}

bool isUpperHex(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); }

// Whether every marker in the text opens an escape of the one shape that
// FToLStr writes, so that decoding has nothing to report.
bool escapesWellFormed(const char* text, int32_t n) {
  LText<char> whole(text, n);
  int32_t openLength = LText<char>::measure(kEscOpen);
  for (int32_t at = whole.find(kEscOpen, openLength, 0); at >= 0;
       at = whole.find(kEscOpen, openLength, at)) {
    at += openLength;
    for (int32_t i = 0; i < 4; i++, at++)
      if (at >= n || !isUpperHex(text[at])) return false;
    if (at >= n || text[at] != kEscClose[0]) return false;
  }
  return true;
}
}  // namespace

void FToLStr(const UChar* text, int32_t n, LStr& out, int codePage, const char* open,
             const char* close) {
  if (text == nullptr) return;
  if (n < 0) n = FULen(text);
  codePage = actualCodePage(codePage);
  char buffer[kNarrowRoom];
  int32_t at = 0;
  while (at < n) {
    int32_t piece = n - at < kWidePiece ? n - at : kWidePiece;
    for (;;) {
      bool usedDefault = false;
      int32_t made = SysFromWide(codePage, text + at, piece, buffer, kNarrowRoom, &usedDefault);
      if (!usedDefault && made >= 1 && made <= kNarrowRoom - 11) {
        out.append(buffer, made);
        at += piece;
        break;
      }
      if (piece >= 2) {
        piece = shrink(piece);
        continue;
      }
      // A unit with no form in the code page travels as an escape.
      out.append(open);
      out.format("%04X", text[at]);
      out.append(close);
      at++;
      break;
    }
  }
}

void FToUStr(const char* text, int32_t n, UStr& out, int codePage, const char* open,
             const char* close) {
  if (text == nullptr) return;
  if (n < 0) n = LText<char>::measure(text);
  codePage = actualCodePage(codePage);
  int32_t openLength = LText<char>::measure(open);
  int32_t closeLength = LText<char>::measure(close);
  UChar buffer[kWideRoom];
  int32_t at = 0;
  while (at < n) {
    int32_t piece = n - at < kNarrowPiece ? n - at : kNarrowPiece;
    // Never cut a double-byte character.
    if (at + piece < n && FIsLeadByte(static_cast<unsigned char>(text[at + piece - 1]))) piece++;
    LText<char> window(text + at, piece);
    int32_t marker = openLength > 0 ? window.find(open, openLength, 0) : -1;
    if (marker > 0) piece = marker;
    if (marker == 0) {
      const char* escape = text + at;
      char* end;
      unsigned long unit = std::strtoul(escape + openLength, &end, 16);
      out.append(static_cast<UChar>(unit & 0xFFFF));
      at = static_cast<int32_t>(end - text);
      if (closeLength > 0 && std::strncmp(text + at, close, closeLength) == 0) {
        at += closeLength;
      } else {
        int32_t left = static_cast<int32_t>(text + n - escape);
        LStr shown(escape, left < 20 ? left : 20);
        FMsg(kMsgBadEscape, "illegal escape sequence: %s", shown.ptr);
        out.append(kUnknown);
      }
      continue;
    }
    for (;;) {
      int32_t made = SysToWide(codePage, text + at, piece, buffer, kWideRoom);
      if (made >= 1 && made <= kWideRoom - 11) {
        out.append(buffer, made);
        at += piece;
        break;
      }
      if (piece >= 3) {
        piece = shrink(piece);
        continue;
      }
      // The byte named is the first of the whole text, as the program always
      // reported it.
      FMsg(kMsgCannotConvert, "Cannot convert ASCII to Unicode: %02Xh",
           static_cast<unsigned char>(text[0]));
      out.append(kUnknown);
      at += piece;
      break;
    }
  }
}

void FToLStrExact(const UChar* text, int32_t n, LStr& out, const UChar* alwaysEscaped) {
  if (text == nullptr) return;
  if (n < 0) n = FULen(text);
  int32_t plainFrom = 0;
  for (int32_t i = 0; i < n; i++) {
    UChar unit = text[i];
    bool beforeU = i + 1 < n && text[i + 1] == 'u';
    bool opensMarker = unit == '{' && i + 2 < n && text[i + 1] == '%' && text[i + 2] == 'u';
    bool escaped = opensMarker || listed(alwaysEscaped, unit);
    if (!escaped && !(unit == '%' && beforeU)) continue;
    FToLStr(text + plainFrom, i - plainFrom, out);
    plainFrom = i + 1;
    // A double-byte character may end in the byte "{", and a "%u" behind it
    // would read as a marker: then the "%" is the one escaped.
    if (escaped || (out.length > 0 && out[out.length - 1] == '{')) {
      appendEscape(unit, out);
    } else {
      out.append('%');
    }
  }
  FToLStr(text + plainFrom, n - plainFrom, out);
}

bool FToUStrExact(const char* text, int32_t n, UStr& out, const UChar* alwaysEscaped) {
  if (text == nullptr) return false;
  if (n < 0) n = LText<char>::measure(text);
  if (!escapesWellFormed(text, n)) return false;
  UStr units;
  FToUStr(text, n, units);
  LStr again;
  FToLStrExact(units.ptr, units.length, again, alwaysEscaped);
  if (again.length != n || std::memcmp(again.ptr, text, n) != 0) return false;
  out.append(units.ptr, units.length);
  return true;
}

int32_t FParseInt(const char* text, char terminator, int base) {
  const char* p = text;
  bool negative = false;
  if (*p == '-') {
    negative = true;
    p++;
  }
  if (p[0] == '0') {
    char selector = static_cast<char>(p[1] | 0x20);
    int chosen = selector == 'x' ? 16 : selector == 'j' ? 10 : selector == 'n' ? 2 : 0;
    if (chosen) {
      base = chosen;
      p += 2;
    }
  }
  const char* shown = p;
  // Leading zeros go, the last digit stays: "017" is decimal 17 and the
  // run-time never sees a leading zero that would make it octal.
  while (p[0] == '0' && p[1] != 0 && p[1] != terminator) p++;
  LStr digits;
  for (; *p; p++)
    if (*p != ',') digits.append(*p);
  char* end;
  unsigned long long value = std::strtoull(digits.ptr, &end, base);
  if (value > UINT32_MAX) value = UINT32_MAX;
  if (*end != 0 && (terminator == 0 || *end != terminator)) {
    FMsg(kMsgGeneral, "%s",
         LStr()
             .format(
                 FLangText("「%s」を数値として解釈できません", "cannot analyze '%s' as a number"),
                 shown)
             .ptr);
  }
  uint32_t result = static_cast<uint32_t>(value);
  return static_cast<int32_t>(negative ? 0u - result : result);
}

int64_t FParseSize(const char* text, bool upper) {
  LStr number(text);
  int64_t unit = 1;
  if (number.length > 0) {
    char last = static_cast<char>(number[number.length - 1] | 0x20);
    unit = last == 'k' ? 1024 : last == 'm' ? 1048576 : last == 'g' ? 1073741824 : 1;
    if (unit > 1) number.truncate(number.length - 1);
  }
  int64_t value = static_cast<int64_t>(FParseInt(number.ptr)) * unit;
  return upper ? value + unit - 1 : value;
}
