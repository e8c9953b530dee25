#include "ui/number_pick.h"

#include <cerrno>
#include <climits>
#include <cstdlib>

#include "archive/stats.h"
#include "ui/cond_fields.h"

namespace {
// Without statistics the size picker offers up to 100 MB.
const int32_t kDefaultMaxKb = 102400;

int32_t kbFloor(int32_t bytes) { return bytes / 1024; }
int32_t kbCeil(int32_t bytes) { return static_cast<int32_t>((int64_t{bytes} + 1023) / 1024); }

// A decimal integer with an optional sign and blanks around it; false for
// anything else, also for a number beyond 32 bits.
bool readNumber(const char* text, int32_t& value) {
  char* end = nullptr;
  errno = 0;
  long long read = std::strtoll(text, &end, 10);
  if (end == text || errno != 0 || read < INT32_MIN || read > INT32_MAX) return false;
  while (*end == ' ') end++;
  if (*end != 0) return false;
  value = static_cast<int32_t>(read);
  return true;
}

bool isBlank(const char* text) {
  while (*text == ' ') text++;
  return *text == 0;
}

// One side of the range: "" for an empty box.
bool sideText(const char* box, const char* unit, LStr& out, LStr& error) {
  out.clear();
  if (isBlank(box)) return true;
  int32_t value = 0;
  if (!readNumber(box, value)) {
    error.clear();
    error.format("「%s」を数値として解釈できません", box);
    return false;
  }
  out.format("%d%s", value, unit);
  return true;
}
}  // namespace

bool FNumberRange(int32_t field, const TStats* stats, TNumberRange& out) {
  out = TNumberRange();
  switch (field) {
    case kFieldStoreNo:
      if (stats == nullptr) return false;
      out.low = stats->storeMin;
      out.high = stats->storeMax;
      break;
    case kFieldVer:
      out.low = 1;
      out.high = stats == nullptr ? 0 : stats->maxVersions;
      break;
    case kFieldSize:
      out.unit = "K";
      out.high = kDefaultMaxKb;
      if (stats != nullptr) {
        out.low = kbFloor(stats->sizeMin);
        out.high = stats->sizeMax < stats->sizeMin ? -1 : kbCeil(stats->sizeMax);
      }
      break;
    default:
      return false;
  }
  return out.high >= out.low;
}

TPickResult FNumberRangeText(const char* lowText, const char* highText, const char* unit,
                             LStr& text, LStr& error) {
  if (isBlank(lowText) && isBlank(highText)) return kPickUntouched;
  LStr low, high;
  if (!sideText(lowText, unit, low, error) || !sideText(highText, unit, high, error))
    return kPickRefused;
  text = low;
  text.append("-").append(high);
  return kPickTaken;
}
