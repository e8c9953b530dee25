#include "lib/srm.h"

#include <cstring>
#include <type_traits>

#include "lib/chartype.h"

namespace {
template <typename C>
bool inSet(int c, const C* set) {
  for (; *set; set++)
    if (*set == c) return true;
  return false;
}

int foldAscii(int c) { return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c; }

// One unit of the buffer; 16-bit text is stored low byte first.
template <typename C>
int loadUnit(const char* p) {
  const unsigned char* b = reinterpret_cast<const unsigned char*>(p);
  return sizeof(C) == 1 ? b[0] : b[0] | b[1] << 8;
}
}  // namespace

template <>
int LSrm::getUnit<char>() {
  return getByte();
}

template <>
int LSrm::getUnit<UChar>() {
  return getWord();
}

const char* LSrm::peekBuffer(int32_t count) {
  ensure(2 * count);
  return cur < valid ? buf + cur : nullptr;
}

template <typename C>
bool LSrm::lookingAtUnits(const C* text, bool fold) {
  const int32_t unit = static_cast<int32_t>(sizeof(C));
  int32_t units = LText<C>::measure(text);
  if (ensure(units * unit) < units * unit) return false;
  const char* here = buf + cur;
  for (int32_t i = 0; i < units; i++) {
    int a = static_cast<std::make_unsigned_t<C>>(text[i]);
    int b = loadUnit<C>(here + i * unit);
    if constexpr (sizeof(C) == 1) {
      if (fold && FIsLeadByte(static_cast<unsigned char>(a))) {
        // A trail byte may have the value of a letter: it is compared exactly.
        if (a != b) return false;
        if (++i < units && text[i] != here[i]) return false;
        continue;
      }
    }
    if (fold) {
      a = foldAscii(a);
      b = foldAscii(b);
    }
    if (a != b) return false;
  }
  return true;
}

bool LSrm::lookingAt(const char* text) { return lookingAtUnits(text, /*fold=*/false); }
bool LSrm::lookingAtFolded(const char* text) { return lookingAtUnits(text, /*fold=*/true); }
bool LSrm::lookingAt(const UChar* text) { return lookingAtUnits(text, /*fold=*/false); }

template <typename C>
int LSrm::readUntilUnits(const C* set, LText<C>* dest) {
  for (;;) {
    int c = getUnit<C>();
    if (c < 0) return -1;
    if (c != 0 && inSet(c, set)) {
      unread<C>();
      return c;
    }
    C unit = static_cast<C>(c);
    if (dest) dest->append(&unit, 1);
    if constexpr (sizeof(C) == 1) {
      if (FIsLeadByte(static_cast<unsigned char>(c))) {
        // The second byte of a double-byte character is never a stop byte.
        int trail = getByte();
        if (trail < 0) return -1;
        if (!FIsTrailValue(static_cast<unsigned char>(trail))) {
          unread<char>();
          continue;
        }
        unit = static_cast<C>(trail);
        if (dest) dest->append(&unit, 1);
      }
    }
  }
}

int LSrm::readUntil(const char* set, LStr* dest) { return readUntilUnits<char>(set, dest); }
int LSrm::readUntil(const UChar* set, UStr* dest) { return readUntilUnits<UChar>(set, dest); }

bool LSrm::readUntilText(const char* text, LStr* dest) {
  int32_t rest = LText<char>::measure(text) - 1;
  if (rest < 0) return true;
  for (;;) {
    int c = getByte();
    if (c < 0) return false;
    if (c == static_cast<unsigned char>(text[0]) && ensure(rest) >= rest &&
        std::memcmp(buf + cur, text + 1, rest) == 0) {
      if (dest) dest->append(text, rest + 1);
      cur += rest;
      return true;
    }
    if (dest) dest->append(static_cast<char>(c));
    if (FIsLeadByte(static_cast<unsigned char>(c))) {
      int trail = getByte();
      if (trail < 0) return false;
      if (!FIsTrailValue(static_cast<unsigned char>(trail)))
        unread<char>();
      else if (dest)
        dest->append(static_cast<char>(trail));
    }
  }
}

bool LSrm::readCString(LStr& dest) {
  for (;;) {
    int c = getByte();
    if (c < 0) return false;
    if (c == 0) return true;
    dest.append(static_cast<char>(c));
  }
}

template <typename C>
int LSrm::readLineUnits(LText<C>* dest, int mode) {
  const C lineEnds[] = {'\r', '\n', 0};
  int end = readUntilUnits<C>(lineEnds, dest);
  if (end < 0 || mode >= kLeaveLineEnd) return end;
  getUnit<C>();
  C unit = static_cast<C>(end);
  if (mode == kKeepLineEnd && dest) dest->append(&unit, 1);
  if (end == '\r') {
    int next = getUnit<C>();
    if (next == '\n') {
      unit = '\n';
      if (mode == kKeepLineEnd && dest) dest->append(&unit, 1);
    } else if (next >= 0) {
      unread<C>();
    }
  }
  return end;
}

int LSrm::readLine(LStr* dest, int mode) { return readLineUnits<char>(dest, mode); }
int LSrm::readLine(UStr* dest, int mode) { return readLineUnits<UChar>(dest, mode); }
