// Compiles arbitrary patterns and runs them over arbitrary text: searches
// with every folding flag, searches from a start inside the text, and
// replace-all, whose result is checked against the same replacement done by
// hand. Input: one byte of switches, then 16-bit units: the pattern, a zero
// unit, the text.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "fuzz/fuzz_support.h"
#include "lib/msg.h"
#include "lib/ustr.h"
#include "rex/parse.h"
#include "rex/replace.h"
#include "rex/search.h"

namespace {
// A sequence backtracks twice at each of its items, so the work grows as 2 to
// the power of the items; these bounds keep every input well under a second.
const int32_t kMaxPattern = 16;
const int32_t kMaxText = 64;

enum : uint8_t {
  kSwitchFlags = 0x0F,
  kSwitchEscaped = 0x10,
  kSwitchReplace = 0x20,
};

void searchEverywhere(URex* rex, const UStr& text, int32_t flags) {
  int32_t length;
  URexGroups groups;
  int32_t start = FRexSearch(rex, text.ptr, text.length, &length, &groups, flags);
  check(start < 0 ? length == -1 && groups.count == 0
                  : length >= 0 && start + length <= text.length);
  int32_t from = text.length / 2;
  start = FRexSearchFrom(rex, text.ptr, text.length, from, &length, nullptr, flags);
  check(start < 0 || (start >= from && start + length <= text.length));
  LStr dumped;
  rex->dump(dumped, 0);
  rex->fixedLength();
}

// Replace-all never ends on a pattern that matches the empty text, so the
// replacement is first done by hand, giving up at the first empty match.
void replaceAll(URex* rex, const UChar* pattern, const UStr& text) {
  const UChar replacement[] = {'#', 0};
  UStr expected;
  int32_t point = 0;
  for (;;) {
    int32_t length;
    int32_t at = FRexSearchFrom(rex, text.ptr, text.length, point, &length, nullptr, 0);
    if (at < 0) break;
    if (length == 0) return;
    expected.append(text.ptr + point, at - point).append(replacement);
    point = at + length;
  }
  expected.append(text.ptr + point, text.length - point);
  UStr replaced(text);
  FRexReplaceAll(replaced, pattern, replacement);
  check(replaced.equals(expected.ptr, false) && replaced.length == expected.length);
}
}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  FSetReporter(new SilentReporter);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  uint8_t switches = data[0];
  const uint8_t* units = data + 1;
  int32_t count = static_cast<int32_t>((size - 1) / 2);
  UStr pattern;
  UStr text;
  UStr* filling = &pattern;
  for (int32_t i = 0; i < count; i++) {
    UChar unit = static_cast<UChar>(units[2 * i] | units[2 * i + 1] << 8);
    if (unit == 0 && filling == &pattern) {
      filling = &text;
      continue;
    }
    filling->append(unit);
  }
  if (pattern.length > kMaxPattern || text.length > kMaxText) return 0;

  bool escaped = (switches & kSwitchEscaped) != 0;
  std::unique_ptr<URex> rex(escaped ? FRexCompileEscaped(pattern.ptr) : FRexCompile(pattern.ptr));
  if (rex == nullptr) return 0;
  if ((switches & kSwitchReplace) && !escaped)
    replaceAll(rex.get(), pattern.ptr, text);
  else
    searchEverywhere(rex.get(), text, switches & kSwitchFlags);
  return 0;
}
