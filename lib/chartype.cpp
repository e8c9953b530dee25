#include "lib/chartype.h"

#include "lib/liblock.h"

// 1 upper, 2 lower, 4 digit, 8 punctuation (16 on top for "_"), 32 white
// space, 4096 Shift-JIS lead byte, 8192 half-width katakana.
// clang-format off
const uint16_t FCharType[256] = {
    0, 0, 0, 0, 0, 0, 0, 0,  // 00
    0, 32, 32, 32, 32, 32, 0, 0,  // 08
    0, 0, 0, 0, 0, 0, 0, 0,  // 10
    0, 0, 0, 0, 0, 0, 0, 0,  // 18
    32, 8, 8, 8, 8, 8, 8, 8,  // 20
    8, 8, 8, 8, 8, 8, 8, 8,  // 28
    4, 4, 4, 4, 4, 4, 4, 4,  // 30
    4, 4, 8, 8, 8, 8, 8, 8,  // 38
    8, 1, 1, 1, 1, 1, 1, 1,  // 40
    1, 1, 1, 1, 1, 1, 1, 1,  // 48
    1, 1, 1, 1, 1, 1, 1, 1,  // 50
    1, 1, 1, 8, 8, 8, 8, 24,  // 58
    8, 2, 2, 2, 2, 2, 2, 2,  // 60
    2, 2, 2, 2, 2, 2, 2, 2,  // 68
    2, 2, 2, 2, 2, 2, 2, 2,  // 70
    2, 2, 2, 8, 8, 8, 8, 0,  // 78
    0, 4096, 4096, 4096, 4096, 4096, 4096, 4096,  // 80
    4096, 4096, 4096, 4096, 4096, 4096, 4096, 4096,  // 88
    4096, 4096, 4096, 4096, 4096, 4096, 4096, 4096,  // 90
    4096, 4096, 4096, 4096, 4096, 4096, 4096, 4096,  // 98
    0, 8192, 8192, 8192, 8192, 8192, 8192, 8192,  // A0
    8192, 8192, 8192, 8192, 8192, 8192, 8192, 8192,  // A8
    8192, 8192, 8192, 8192, 8192, 8192, 8192, 8192,  // B0
    8192, 8192, 8192, 8192, 8192, 8192, 8192, 8192,  // B8
    8192, 8192, 8192, 8192, 8192, 8192, 8192, 8192,  // C0
    8192, 8192, 8192, 8192, 8192, 8192, 8192, 8192,  // C8
    8192, 8192, 8192, 8192, 8192, 8192, 8192, 8192,  // D0
    8192, 8192, 8192, 8192, 8192, 8192, 8192, 8192,  // D8
    4096, 4096, 4096, 4096, 4096, 4096, 4096, 4096,  // E0
    4096, 4096, 4096, 4096, 4096, 4096, 4096, 4096,  // E8
    4096, 4096, 4096, 4096, 4096, 4096, 4096, 4096,  // F0
    4096, 4096, 4096, 4096, 4096, 0, 0, 0,  // F8
};
// clang-format on

int32_t FCharMode = 's';

namespace {
int32_t gLang = 'E';
}

int32_t FGetLang() { return gLang; }

// The language only chooses between the two texts of a message: nothing in the
// program goes through the run-time's locale-dependent calls.
void FSetLang(int32_t lang) {
  FLibGuard guard;
  gLang = lang;
}

bool FIsLeadByte(unsigned char c) {
  if (FCharMode == 's') return (FCharType[c] & kCharLead) != 0;
  if (FCharMode == 'e') return c >= 0xA1 && c <= 0xFE;
  return false;
}

bool FIsTrailValue(unsigned char c) {
  if (FCharMode == 's') return (c >= 0x40 && c <= 0x7E) || (c >= 0x80 && c <= 0xFC);
  if (FCharMode == 'e') return c >= 0xA1 && c <= 0xFE;
  return false;
}

namespace {
// Lead-byte values immediately before index.
int32_t leadRunBefore(const char* text, int32_t index) {
  int32_t run = 0;
  while (index - run > 0 && FIsLeadByte(static_cast<unsigned char>(text[index - run - 1]))) run++;
  return run;
}
}  // namespace

bool FIsTrailByte(const char* text, int32_t index) { return leadRunBefore(text, index) % 2 == 1; }

bool FIsLeadAt(const char* text, int32_t index) {
  if (!FIsLeadByte(static_cast<unsigned char>(text[index]))) return false;
  return leadRunBefore(text, index) % 2 == 0;
}

bool FIsNameStart(unsigned char c) {
  if (FCharType[c] & (kCharUpper | kCharLower | kCharDigit)) return true;
  if (FCharType[c] & kCharKana) return true;
  return FCharMode != 's' && FIsLeadByte(c);
}
