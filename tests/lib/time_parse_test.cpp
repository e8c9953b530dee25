#include "lib/time_parse.h"

#include <gtest/gtest.h>

#include "lib/chartype.h"
#include "lib/file_time.h"
#include "support/recorder.h"

namespace {
// The parsed time shown in local time, or the number of the report.
LStr parsed(int64_t (*parse)(const char*, bool), const char* text, bool upper) {
  RecorderScope rec;
  int64_t time = parse(text, upper);
  if (rec->entries.count > 0) return LStr().format("#%d", rec->entries[0]->number);
  return FFormatTime(time);
}
LStr shortTime(const char* text, bool upper = false) {
  return parsed(FParseShortTime, text, upper);
}
LStr longTime(const char* text, bool upper = false) { return parsed(FParseLongTime, text, upper); }

// Today's local date, "yyyy/mm/dd".
LStr today() { return LStr(FFormatTime(FToUnixTime(SysNow())).ptr, 10); }
LStr thisYear() { return LStr(today().ptr, 4); }
LStr onToday(const char* clock) { return today().append(" ").append(clock); }

// The text of the only message a parse reports, in the given language.
LStr messageOf(int64_t (*parse)(const char*, bool), const char* text, int32_t lang) {
  FSetLang(lang);
  RecorderScope rec;
  EXPECT_EQ(parse(text, false), -1);
  FSetLang('E');
  EXPECT_EQ(rec->entries.count, 1);
  if (rec->entries.count == 0) return LStr();
  EXPECT_EQ(rec->entries[0]->number, 15000);
  return rec->entries[0]->text;
}
}  // namespace

TEST(ParseShortTime, DateAndTimeWithAndWithoutUpper) {
  EXPECT_STREQ(shortTime("240105").ptr, "2024/01/05 00:00:00");
  EXPECT_STREQ(shortTime("240105", true).ptr, "2024/01/05 23:59:59");
  EXPECT_STREQ(shortTime("240105.1230").ptr, "2024/01/05 12:30:00");
  EXPECT_STREQ(shortTime("240105.1230", true).ptr, "2024/01/05 12:30:59");
  EXPECT_STREQ(shortTime("240105.123045", true).ptr, "2024/01/05 12:30:45");
  EXPECT_STREQ(shortTime("491231").ptr, "2049/12/31 00:00:00");
  EXPECT_STREQ(shortTime("500101").ptr, "1950/01/01 00:00:00");
  EXPECT_STREQ(shortTime("000229").ptr, "2000/02/29 00:00:00");
}

TEST(ParseShortTime, MissingPartsComeFromToday) {
  EXPECT_STREQ(shortTime("0105").ptr, thisYear().append("/01/05 00:00:00").ptr);
  EXPECT_STREQ(shortTime("").ptr, onToday("00:00:00").ptr);
  EXPECT_STREQ(shortTime("", true).ptr, onToday("23:59:59").ptr);
  EXPECT_STREQ(shortTime(".0815").ptr, onToday("08:15:00").ptr);
  EXPECT_STREQ(shortTime(".0815", true).ptr, onToday("08:15:59").ptr);
}

TEST(ParseShortTime, BadTextIsReported) {
  const char* wrongDate[] = {"12345", "2401051", "24a105", "241305", "230229", "240100"};
  for (const char* text : wrongDate) EXPECT_STREQ(shortTime(text).ptr, "#15000") << text;
  const char* wrongTime[] = {"240105.", "240105.12", "240105.12a0", "240105.1234567"};
  for (const char* text : wrongTime) EXPECT_STREQ(shortTime(text).ptr, "#15000") << text;
  EXPECT_STREQ(shortTime("240105.2400").ptr, "#15000");
  EXPECT_STREQ(shortTime("240105.125960").ptr, "#15000");

  EXPECT_STREQ(messageOf(FParseShortTime, "1.2.3", 'E').ptr, "too many separator '.' in '1.2.3'");
  EXPECT_STREQ(messageOf(FParseShortTime, "240105.12", 'E').ptr,
               "time string must be 'hhmmss' or 'hhmm' format");
  EXPECT_STREQ(messageOf(FParseShortTime, "12345", 'E').ptr,
               "Date-time string '12345' is not correct. The format should be "
               "[[yy]mmdd][.hhmm[ss]].");
  EXPECT_STREQ(messageOf(FParseShortTime, "12345", 'J').ptr,
               "日時文字列 '12345' の形式が正しくありません。[[yy]mmdd][.hhmm[ss]] "
               "形式で指定してください");
}

TEST(ParseLongTime, DateAndTimeWithAndWithoutUpper) {
  EXPECT_STREQ(longTime("2024/01/05.12:30:45").ptr, "2024/01/05 12:30:45");
  EXPECT_STREQ(longTime("2024/01/05").ptr, "2024/01/05 00:00:00");
  EXPECT_STREQ(longTime("2024/01/05", true).ptr, "2024/01/05 23:59:59");
  EXPECT_STREQ(longTime("2024/1/5.12:30").ptr, "2024/01/05 12:30:00");
  EXPECT_STREQ(longTime("2024/1/5.12:30", true).ptr, "2024/01/05 12:30:59");
  EXPECT_STREQ(longTime("2024/1/5.:30", true).ptr, "2024/01/05 23:30:59");
  EXPECT_STREQ(longTime("24/1/5").ptr, "2024/01/05 00:00:00");
  EXPECT_STREQ(longTime("99/12/31").ptr, "1999/12/31 00:00:00");
}

TEST(ParseLongTime, MissingPartsComeFromToday) {
  EXPECT_STREQ(longTime("1/5").ptr, thisYear().append("/01/05 00:00:00").ptr);
  EXPECT_STREQ(longTime("/1/5", true).ptr, thisYear().append("/01/05 23:59:59").ptr);
  EXPECT_STREQ(longTime("12:30").ptr, onToday("12:30:00").ptr);
  EXPECT_STREQ(longTime("12:30", true).ptr, onToday("12:30:59").ptr);
  EXPECT_STREQ(longTime(":30").ptr, onToday("00:30:00").ptr);
}

TEST(ParseLongTime, BadTextIsReported) {
  const char* wrong[] = {"20240105",    "a.b.c",      "2024/1",           "1/2/3/4",
                         "12:30:45:00", "2024/02/30", "2024/01/05.25:00", "2024/x/5",
                         "2024/01/05.", ".12:30",     "1500/01/01"};
  for (const char* text : wrong) EXPECT_STREQ(longTime(text).ptr, "#15000") << text;

  EXPECT_STREQ(messageOf(FParseLongTime, "20240105", 'J').ptr,
               "日時文字列（20240105）の形式が正しくありません。\n"
               "「yyyy/mm/dd.hh:mm:ss」形式で指定してください。");
  EXPECT_STREQ(messageOf(FParseLongTime, "20240105", 'E').ptr,
               "Date-time string (20240105) is not correct.\n"
               "The format should be \"yyyy/mm/dd.hh:mm:ss\".");
}

TEST(ParseTime, ChoosesTheFormByItsMarks) {
  RecorderScope rec;
  EXPECT_EQ(FParseTime("2024/01/05", true), FParseShortTime("240105", true));
  EXPECT_EQ(FParseTime("240105.1230", false), FParseLongTime("2024/01/05.12:30", false));
  EXPECT_EQ(rec->entries.count, 0);
}
