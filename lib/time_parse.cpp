#include "lib/time_parse.h"

#include <cstring>

#include "lib/calendar.h"
#include "lib/chartype.h"
#include "lib/convert.h"
#include "lib/file_time.h"
#include "lib/msg.h"
#include "lib/text_split.h"

namespace {
const int64_t kBadTime = -1;
// Years a user means by a four-digit "yyyy", within the file times.
const int32_t kFirstYear = 1601;
const int32_t kLastYear = 9999;

LDateTime todayAtMidnight() {
  LDateTime t;
  FLocalFields(FToUnixTime(SysNow()), t);
  t.hour = t.minute = t.second = t.millisecond = 0;
  return t;
}

bool isDigits(const LStr& text) {
  for (int32_t i = 0; i < text.length; i++)
    if (!FIsDigit(static_cast<unsigned char>(text[i]))) return false;
  return true;
}

// Two-digit years: below 50 this century, from 50 the last one.
int32_t fullYear(int32_t year) { return year < 50 ? 2000 + year : year < 100 ? 1900 + year : year; }

bool isReal(const LDateTime& t) {
  return FIsValidDateTime(t) && t.year >= kFirstYear && t.year <= kLastYear;
}

int64_t shortFormatError(const char* text) {
  FMsg(kMsgGeneral, "%s",
       LStr()
           .format(FLangText("日時文字列 '%s' の形式が正しくありません。[[yy]mmdd][.hhmm[ss]] "
                             "形式で指定してください",
                             "Date-time string '%s' is not correct. The format should be "
                             "[[yy]mmdd][.hhmm[ss]]."),
                   text)
           .ptr);
  return kBadTime;
}

int64_t longFormatError(const char* text) {
  FMsg(kMsgGeneral, "%s",
       LStr()
           .format(FLangText("日時文字列（%s）の形式が正しくありません。\n"
                             "「yyyy/mm/dd.hh:mm:ss」形式で指定してください。",
                             "Date-time string (%s) is not correct.\n"
                             "The format should be \"yyyy/mm/dd.hh:mm:ss\"."),
                   text)
           .ptr);
  return kBadTime;
}

// One field of the long form into *field: digits, or empty for `missing`.
bool readField(const LStr& item, int32_t missing, int32_t* field) {
  if (item.empty()) {
    *field = missing;
    return true;
  }
  if (!isDigits(item)) return false;
  *field = FParseInt(item.ptr);
  return true;
}

bool readLongDate(const char* piece, LDateTime& t) {
  LStrs items;
  FSplit(piece, '/', kSplitKeep, items);
  if (items.count != 2 && items.count != 3) return false;
  int32_t first = items.count - 2;
  if (items.count == 3) {
    if (!readField(*items[0], t.year, &t.year)) return false;
    if (!items[0]->empty()) t.year = fullYear(t.year);
  }
  return !items[first]->empty() && !items[first + 1]->empty() &&
         readField(*items[first], 0, &t.month) && readField(*items[first + 1], 0, &t.day);
}

bool readLongTime(const char* piece, bool upper, LDateTime& t) {
  LStrs items;
  FSplit(piece, ':', kSplitKeep, items);
  if (items.count != 2 && items.count != 3) return false;
  int32_t lastMinute = upper ? 59 : 0;
  t.second = lastMinute;
  return readField(*items[0], upper ? 23 : 0, &t.hour) &&
         readField(*items[1], lastMinute, &t.minute) &&
         (items.count == 2 || readField(*items[2], lastMinute, &t.second));
}
}  // namespace

int64_t FParseShortTime(const char* text, bool upper) {
  if (text == nullptr) text = "";
  LStrs pieces;
  FSplit(text, '.', kSplitKeep, pieces);
  if (pieces.count > 2) {
    FMsg(kMsgGeneral, "too many separator '.' in '%s'", text);
    return kBadTime;
  }
  LDateTime t = todayAtMidnight();
  const LStr& date = *pieces[0];
  if (!date.empty()) {
    if (!isDigits(date) || (date.length != 6 && date.length != 4)) return shortFormatError(text);
    int32_t value = FParseInt(date.ptr);
    if (date.length == 6) t.year = fullYear(value / 10000);
    t.month = value / 100 % 100;
    t.day = value % 100;
  }
  if (pieces.count == 1) {
    if (upper) {
      t.hour = 23;
      t.minute = 59;
      t.second = 59;
    }
  } else {
    const LStr& time = *pieces[1];
    if (!isDigits(time) || (time.length != 4 && time.length != 6)) {
      FMsg(kMsgGeneral, "time string must be 'hhmmss' or 'hhmm' format");
      return kBadTime;
    }
    int32_t value = FParseInt(time.ptr);
    if (time.length == 4) {
      t.hour = value / 100;
      t.minute = value % 100;
      t.second = upper ? 59 : 0;
    } else {
      t.hour = value / 10000;
      t.minute = value / 100 % 100;
      t.second = value % 100;
    }
  }
  if (!isReal(t)) return shortFormatError(text);
  return FLocalToTime(t);
}

int64_t FParseLongTime(const char* text, bool upper) {
  if (text == nullptr) text = "";
  LStrs pieces;
  FSplit(text, '.', kSplitKeep, pieces);
  const char* date = nullptr;
  const char* time = nullptr;
  if (pieces.count == 2) {
    date = pieces[0]->ptr;
    time = pieces[1]->ptr;
  } else if (pieces.count == 1 && std::strchr(text, '/')) {
    date = text;
  } else if (pieces.count == 1 && std::strchr(text, ':')) {
    time = text;
  } else {
    return longFormatError(text);
  }
  LDateTime t = todayAtMidnight();
  if (date != nullptr && !readLongDate(date, t)) return longFormatError(text);
  if (time != nullptr) {
    if (!readLongTime(time, upper, t)) return longFormatError(text);
  } else if (upper) {
    t.hour = 23;
    t.minute = 59;
    t.second = 59;
  }
  if (!isReal(t)) return longFormatError(text);
  return FLocalToTime(t);
}

int64_t FParseTime(const char* text, bool upper) {
  if (text != nullptr && (std::strchr(text, '/') || std::strchr(text, ':')))
    return FParseLongTime(text, upper);
  return FParseShortTime(text, upper);
}
