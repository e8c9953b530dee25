#include "lib/strfunc.h"

#include "lib/chartype.h"

int FStrCmp(const char* a, const char* b, bool ignoreCase) {
  const unsigned char* x = reinterpret_cast<const unsigned char*>(a);
  const unsigned char* y = reinterpret_cast<const unsigned char*>(b);
  for (int32_t i = 0;; i++) {
    int cx = x[i];
    int cy = y[i];
    if (cx == cy) {
      if (cx == 0) return 0;
      continue;
    }
    if (!ignoreCase) return cx < cy ? -1 : 1;
    if (FIsLetter(cx) && FIsLetter(cy) && !FIsTrailByte(a, i)) {
      cx |= 0x20;
      cy |= 0x20;
      if (cx == cy) continue;
    }
    // The difference of the values last compared, not a clamped sign.
    return cx - cy;
  }
}

int FUStrCmp(const UChar* a, const UChar* b, bool ignoreCase) {
  for (int32_t i = 0;; i++) {
    int cx = a[i];
    int cy = b[i];
    if (cx == cy) {
      if (cx == 0) return 0;
      continue;
    }
    if (!ignoreCase) return cx < cy ? -1 : 1;
    if (cx < 0x80 && cy < 0x80 && FIsLetter(cx) && FIsLetter(cy)) {
      cx |= 0x20;
      cy |= 0x20;
      if (cx == cy) continue;
    }
    return cx - cy;
  }
}

namespace {
template <typename S, typename Cmp>
int compareNullable(const S* a, const S* b, Cmp cmp) {
  if (a == nullptr && b == nullptr) return 1;
  if (a == nullptr || b == nullptr) return 0;
  int c = cmp(a->ptr, b->ptr, false);
  return c < 0 ? -1 : (c > 0 ? 1 : 0);
}
}  // namespace

int FStrCmpNull(const LStr* a, const LStr* b) { return compareNullable(a, b, FStrCmp); }
int FUStrCmpNull(const UStr* a, const UStr* b) { return compareNullable(a, b, FUStrCmp); }
int32_t FStrLenDiff(const LStr& a, const LStr& b) { return a.length - b.length; }
int32_t FUStrLenDiff(const UStr& a, const UStr& b) { return a.length - b.length; }

namespace {
// 1, 23, 13, 2, 17, 3, 5, 7, 11, 19, then every prime from 29 to 997.
const uint32_t kHashPrimes[169] = {
    1,   23,  13,  2,   17,  3,   5,   7,   11,  19,  29,  31,  37,  41,  43,  47,  53,  59,  61,
    67,  71,  73,  79,  83,  89,  97,  101, 103, 107, 109, 113, 127, 131, 137, 139, 149, 151, 157,
    163, 167, 173, 179, 181, 191, 193, 197, 199, 211, 223, 227, 229, 233, 239, 241, 251, 257, 263,
    269, 271, 277, 281, 283, 293, 307, 311, 313, 317, 331, 337, 347, 349, 353, 359, 367, 373, 379,
    383, 389, 397, 401, 409, 419, 421, 431, 433, 439, 443, 449, 457, 461, 463, 467, 479, 487, 491,
    499, 503, 509, 521, 523, 541, 547, 557, 563, 569, 571, 577, 587, 593, 599, 601, 607, 613, 617,
    619, 631, 641, 643, 647, 653, 659, 661, 673, 677, 683, 691, 701, 709, 719, 727, 733, 739, 743,
    751, 757, 761, 769, 773, 787, 797, 809, 811, 821, 823, 827, 829, 839, 853, 857, 859, 863, 877,
    881, 883, 887, 907, 911, 919, 929, 937, 941, 947, 953, 967, 971, 977, 983, 991, 997};

template <typename C, typename U>
uint32_t hashUnits(const C* text, int32_t n) {
  if (text == nullptr) return 0;
  uint32_t sum = 0;
  for (int32_t i = 0; n < 0 ? text[i] != 0 : i < n; i++)
    sum += static_cast<U>(text[i]) * kHashPrimes[i % 169];
  return sum;
}
}  // namespace

uint32_t FHashStr(const char* text, int32_t n) { return hashUnits<char, unsigned char>(text, n); }
uint32_t FHashUStr(const UChar* text, int32_t n) { return hashUnits<UChar, UChar>(text, n); }

int32_t FBinSearch(void* const* items, const void* key, int32_t count, FCompare compare,
                   void* context) {
  if (count < 1) return ~count;
  int32_t lo = 0;
  int32_t hi = count;
  while (lo < hi) {
    int32_t mid = (lo + hi) / 2;
    int c = compare(items[mid], key, context);
    if (c == 0) {
      while (mid > 0 && compare(items[mid - 1], key, context) == 0) mid--;
      return mid;
    }
    if (c < 0)
      lo = mid + 1;
    else
      hi = mid;
  }
  return ~hi;
}

bool FEndsWith(const char* text, const char* suffix) {
  int32_t n = LText<char>::measure(text);
  int32_t m = LText<char>::measure(suffix);
  return m <= n && std::memcmp(text + n - m, suffix, m) == 0;
}

int32_t FCommonPrefix(const char* a, const char* b) {
  int32_t n = 0;
  while (a[n] != 0 && a[n] == b[n]) n++;
  // Do not end between the two bytes of a character.
  if (n > 0 && FIsLeadAt(a, n - 1)) n--;
  return n;
}

int32_t FCommonTail(const char* a, const char* b) {
  int32_t la = LText<char>::measure(a);
  int32_t lb = LText<char>::measure(b);
  int32_t n = 0;
  while (n < la && n < lb && a[la - 1 - n] == b[lb - 1 - n]) n++;
  if (n > 0 && n < la && FIsTrailByte(a, la - n)) n--;
  return n;
}
