#include "lib/option.h"

#include <gtest/gtest.h>

#include "lib/chartype.h"
#include "lib/file_time.h"
#include "lib/text_split.h"
#include "support/recorder.h"

namespace {
const UChar* U(const char16_t* text) { return reinterpret_cast<const UChar*>(text); }

// The texts of the recorded messages, joined by "|".
LStr messages(const TestRecorder* recorder) {
  LStr text;
  for (TestRecorder::Entry* e : recorder->entries) {
    if (!text.empty()) text.append('|');
    text.append(e->text);
  }
  return text;
}

LStr ints(const LInts* list) {
  LStr text;
  for (int32_t n : *list) text.format("%d ", n);
  return text;
}
}  // namespace

TEST(Option, RecognitionNeedsMarkNameAndColonOrEnd) {
  RecorderScope rec;
  int32_t openLast = 0;
  int32_t other = 0;
  LOptTable table;
  table.addInt("ol", &openLast, 0, 1, 1);
  table.addSwitch("olx", &other, 7);

  EXPECT_NE(table.parseArg("-ol"), 0);
  EXPECT_EQ(openLast, 1);
  EXPECT_NE(table.parseArg("-olx"), 0);
  EXPECT_EQ(other, 7);  // the longer name went to its own descriptor
  EXPECT_EQ(openLast, 1);
  EXPECT_NE(table.parseArg("-ol:0"), 0);
  EXPECT_EQ(openLast, 0);
  EXPECT_NE(table.parseArg("/OL:1"), 0);
  EXPECT_EQ(openLast, 1);

  const char* plain[] = {"ol", "file.txt", "-o", "--ol", "-oly", "-o:l", "", "-", nullptr};
  for (const char* argument : plain) EXPECT_EQ(table.parseArg(argument), 0) << argument;
  EXPECT_EQ(rec->entries.count, 0);
}

TEST(Option, IntegerLimitsAreReportedAndTheValueKept) {
  RecorderScope rec;
  int32_t value = 3;
  LIntOpt ol("ol", &value, 0, 1, 1);
  EXPECT_EQ(ol.parse("/OL:5"), 1);
  EXPECT_EQ(value, 5);
  EXPECT_EQ(ol.parse("-ol:-2"), 1);
  EXPECT_EQ(value, -2);
  EXPECT_STREQ(messages(rec.recorder).ptr,
               "too big option number: /OL:5: 5 > 1|too small option number: -ol:-2: -2 < 0");
  EXPECT_EQ(rec->entries[0]->number, 15000);

  rec->entries.clear();
  LIntOpt open("n", &value, 10, -1, LIntOpt::kValueRequired);
  EXPECT_EQ(open.parse("-n:2000000000"), 1);
  EXPECT_EQ(value, 2000000000);
  EXPECT_EQ(open.parse("-n:64k"), 1);
  EXPECT_EQ(value, 65536);
  EXPECT_EQ(rec->entries.count, 0);
  EXPECT_EQ(open.parse("-n"), 1);
  EXPECT_EQ(value, 65536);  // nothing to store
  EXPECT_EQ(open.parse("-n:4g"), 1);
  EXPECT_EQ(value, INT32_MAX);
  EXPECT_STREQ(messages(rec.recorder).ptr,
               "value required: -n|too big option number: -n:4g: 4294967296 > 2147483647");
}

TEST(Option, FloatsMasksAndSwitches) {
  RecorderScope rec;
  double ratio = 0;
  LDblOpt dbl("r", &ratio);
  EXPECT_EQ(dbl.parse("-r:1.5"), 1);
  EXPECT_EQ(ratio, 1.5);
  EXPECT_EQ(dbl.parse("-r"), 1);
  EXPECT_EQ(dbl.parse("-r:2.5x"), 1);
  EXPECT_EQ(ratio, 2.5);
  EXPECT_STREQ(messages(rec.recorder).ptr, "float value required: -r|illegal float format: 2.5x");
  EXPECT_EQ(rec->entries[1]->number, 35000);

  rec->entries.clear();
  uint32_t flags = 0x100;
  LMskOpt mask("m", &flags, 0x3, 0x10);
  mask.parse("-m");
  EXPECT_EQ(flags, 0x103u);
  mask.parse("-m:2");
  EXPECT_EQ(flags, 0x113u);
  mask.parse("-m:0");
  EXPECT_EQ(flags, 0x100u);
  mask.parse("-m:1");
  EXPECT_EQ(flags, 0x103u);
  mask.parse("-m:3");
  EXPECT_EQ(flags, 0x103u);
  LMskOpt single("s", &flags, 0x1000, LMskOpt::kNoBits);
  EXPECT_EQ(single.parse("-s:2"), 1);
  EXPECT_EQ(flags, 0x103u);
  single.parse("-s");
  single.parse("-s:0");
  EXPECT_EQ(flags, 0x103u);
  EXPECT_STREQ(messages(rec.recorder).ptr,
               "illegal mask option value: 3|illegal mask option value: 2");

  rec->entries.clear();
  int32_t mode = 0;
  LSwitchOpt on("on", &mode, 4);
  EXPECT_EQ(on.parse("-on"), 1);
  EXPECT_EQ(mode, 4);
  mode = 0;
  EXPECT_EQ(on.parse("-on:1"), 1);
  EXPECT_EQ(mode, 4);
  EXPECT_STREQ(messages(rec.recorder).ptr, "illegal switch option: -on:1");
}

TEST(Option, StringsAndTheirDefaults) {
  const char* pointed = nullptr;
  LStrOpt str("p", &pointed, "dflt");
  const char* argument = "-p:value";
  str.parse(argument);
  EXPECT_EQ(pointed, argument + 3);  // into the argument itself
  str.parse("-p");
  EXPECT_STREQ(pointed, "dflt");
  LStrOpt noDefault("q", &pointed, nullptr);
  noDefault.parse("-q:");
  EXPECT_STREQ(pointed, "");

  LStr copy("old");
  LStrcOpt strc("af", &copy, "dflt");
  strc.parse("-af:C:\\My Files\\a.kst");
  EXPECT_STREQ(copy.ptr, "C:\\My Files\\a.kst");
  strc.parse("-af");
  EXPECT_STREQ(copy.ptr, "dflt");
  LStrcOpt plainCopy("cf", &copy, nullptr);
  plainCopy.parse("-cf");
  EXPECT_STREQ(copy.ptr, "");

  UStr wide;
  const UChar* fallback = U(u"既定");
  UStrOpt ustr("u", &wide, fallback);
  ustr.parse("-u:日本語");
  EXPECT_TRUE(wide.equals(U(u"日本語"), false));
  ustr.parse("-u");
  EXPECT_TRUE(wide.equals(fallback, false));
}

TEST(Option, StringListsAppendAndSplit) {
  LStrs* list = nullptr;
  LStrsOpt whole("x", &list, false, kSplitKeep);
  whole.parse("-x:a, b");
  ASSERT_NE(list, nullptr);
  LStrsOpt split("y", &list, true, kSplitTrim | kSplitSkipEmpty);
  split.parse("-y:c, d,,e");
  ASSERT_EQ(list->count, 4);
  EXPECT_STREQ((*list)[0]->ptr, "a, b");
  EXPECT_STREQ((*list)[1]->ptr, "c");
  EXPECT_STREQ((*list)[2]->ptr, "d");
  EXPECT_STREQ((*list)[3]->ptr, "e");
  delete list;
}

TEST(Option, IntegerListsWithRanges) {
  RecorderScope rec;
  LInts* list = nullptr;
  LIntsOpt opt("n", &list);
  opt.parse("-n:1,3-5");
  ASSERT_NE(list, nullptr);
  EXPECT_STREQ(ints(list).ptr, "1 3 4 5 ");
  opt.parse("-n:-5,-3--1");
  EXPECT_STREQ(ints(list).ptr, "1 3 4 5 -5 -3 -2 -1 ");
  EXPECT_EQ(rec->entries.count, 0);

  list->clear();
  opt.parse("-n:1-100");
  EXPECT_EQ(list->count, 100);
  EXPECT_EQ(rec->entries.count, 0);
  opt.parse("-n:1-101");
  EXPECT_EQ(list->count, 201);  // reported, and added nevertheless
  EXPECT_EQ(list->last(), 101);
  opt.parse("-n:5-3");
  EXPECT_EQ(list->count, 201);
  EXPECT_STREQ(messages(rec.recorder).ptr,
               "too large numeric range (1 - 101)|invalid numeric range (5 - 3)");

  rec->entries.clear();
  FSetLang('J');
  opt.parse("-n:1-101");
  opt.parse("-n:5-3");
  FSetLang('E');
  EXPECT_STREQ(messages(rec.recorder).ptr,
               "整数の範囲が大きすぎます (1～101)|整数の範囲指定が正しくありません (5～3)");
  EXPECT_EQ(rec->entries[1]->number, 15000);
  delete list;
}

TEST(Option, PairLists) {
  RecorderScope rec;
  LStrPairs* strs = nullptr;
  LStrPairsOpt strOpt("s", &strs);
  strOpt.parse("-s:a-b,c");
  ASSERT_NE(strs, nullptr);
  ASSERT_EQ(strs->count, 2);
  EXPECT_STREQ((*strs)[0]->first.ptr, "a");
  EXPECT_STREQ((*strs)[0]->second.ptr, "b");
  EXPECT_STREQ((*strs)[1]->first.ptr, "c");
  EXPECT_STREQ((*strs)[1]->second.ptr, "c");
  strOpt.parse("-s:a-b-c,d-e");
  EXPECT_EQ(strs->count, 3);
  EXPECT_STREQ(messages(rec.recorder).ptr, "too many separator：'a-b-c'");
  delete strs;

  rec->entries.clear();
  FSetLang('J');
  LStrPairs* empty = nullptr;
  LStrPairsOpt emptyOpt("e", &empty);
  emptyOpt.parse("-e:a-b-c");
  FSetLang('E');
  EXPECT_EQ(empty, nullptr);
  EXPECT_STREQ(messages(rec.recorder).ptr, "セパレータ '-' が多すぎます：'a-b-c'");
  emptyOpt.parse("-e");
  EXPECT_EQ(empty, nullptr);

  LIntPairs* numbers = nullptr;
  LIntPairsOpt intOpt("i", &numbers);
  intOpt.parse("-i:1-2,0x10");
  ASSERT_NE(numbers, nullptr);
  ASSERT_EQ(numbers->count, 2);
  EXPECT_EQ((*numbers)[0]->key, 1);
  EXPECT_EQ((*numbers)[0]->value, 2);
  EXPECT_EQ((*numbers)[1]->key, 16);
  EXPECT_EQ((*numbers)[1]->value, 16);
  delete numbers;
}

TEST(Option, DateTimes) {
  RecorderScope rec;
  LDtPairs* ranges = nullptr;
  LDtPairsOpt pairs("d", &ranges);
  pairs.parse("-d:240105,2024/01/05.08:00-240107");
  ASSERT_NE(ranges, nullptr);
  ASSERT_EQ(ranges->count, 2);
  EXPECT_STREQ(FFormatTime((*ranges)[0]->low).ptr, "2024/01/05 00:00:00");
  EXPECT_STREQ(FFormatTime((*ranges)[0]->high).ptr, "2024/01/05 23:59:59");
  EXPECT_STREQ(FFormatTime((*ranges)[1]->low).ptr, "2024/01/05 08:00:00");
  EXPECT_STREQ(FFormatTime((*ranges)[1]->high).ptr, "2024/01/07 23:59:59");
  delete ranges;

  int64_t when = 0;
  LDtOpt single("t", &when);
  EXPECT_EQ(single.parse("-t:2024/01/05.12:30"), 1);
  EXPECT_STREQ(FFormatTime(when).ptr, "2024/01/05 12:30:00");
  EXPECT_EQ(rec->entries.count, 0);
  EXPECT_EQ(single.parse("-t:2024/13/05"), 1);
  EXPECT_EQ(rec->entries.count, 1);
}
