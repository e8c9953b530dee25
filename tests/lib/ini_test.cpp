#include "lib/ini.h"

#include <gtest/gtest.h>

#include <cstring>

#include "lib/ini_fields.h"
#include "lib/io_file.h"
#include "lib/mem_stream.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace {
// The settings of one test: a variable of every kind and the table over them.
struct Settings {
  int32_t width = 199;
  char letter = 'c';
  uint32_t mask = 0xA0B1;
  LStr name;
  LStrs history;
  LInts ids;
  int32_t rect[4] = {100, 100, 920, 671};
  LIni table;

  Settings() {
    table.add("width", &width, FIniInt);
    table.add("letter", &letter, FIniChar);
    table.add("mask", &mask, FIniHex);
    table.add("name", &name, FIniText);
    table.add("history", &history, FIniTexts);
    table.add("ids", &ids, FIniInts);
    table.add("rcMain", rect, FIniRect);
  }
};

LStr writeTable(LIni& table) {
  LStr text;
  LMemOutStream out(text);
  {
    LSrm srm(&out);
    LIniIo io(srm, 'w');
    table.write(io);
  }
  return text;
}

void readTable(LIni& table, const LStr& text) {
  LMemSrm srm(text.ptr, text.length);
  LIniIo io(srm, 'r');
  table.read(io);
}

LStr messages(const TestRecorder& rec) {
  LStr all;
  for (TestRecorder::Entry* e : rec.entries) all.format("%s: %s\n", e->position.ptr, e->text.ptr);
  return all;
}
}  // namespace

TEST(LIni, WritesEveryKindInTableOrderAndReadsItBack) {
  Settings out;
  out.width = -5;
  out.letter = 'Q';
  out.mask = 0xFFFFFFFF;
  out.name = "表示 a(b)!c, x\ty\r\n";
  out.history.add(new LStr("C:\\one"));
  out.history.add(new LStr(""));
  out.history.add(new LStr(" lead;semi"));
  out.ids.add(3);
  out.ids.add(-40);
  LStr text = writeTable(out.table);
  EXPECT_STREQ(text.ptr,
               "width=-5\r\n"
               "letter=Q\r\n"
               "mask=FFFFFFFFh\r\n"
               "name=表示 a![b!]!Qc!C x!ty!r!n\r\n"
               "history=(C:\\one,, lead;semi)\r\n"
               "ids=(3,-40)\r\n"
               "rcMain=(100,100,920,671)\r\n");

  RecorderScope rec;
  Settings in;
  in.history.add(new LStr("old"));
  in.ids.add(99);
  readTable(in.table, text);
  EXPECT_EQ(rec->entries.count, 0) << messages(*rec.recorder).ptr;
  EXPECT_EQ(in.width, -5);
  EXPECT_EQ(in.letter, 'Q');
  EXPECT_EQ(in.mask, 0xFFFFFFFFu);
  EXPECT_STREQ(in.name.ptr, out.name.ptr);
  ASSERT_EQ(in.history.count, 3);
  EXPECT_STREQ(in.history[0]->ptr, "C:\\one");
  EXPECT_STREQ(in.history[1]->ptr, "");
  EXPECT_STREQ(in.history[2]->ptr, " lead;semi");
  ASSERT_EQ(in.ids.count, 2);
  EXPECT_EQ(in.ids[1], -40);
}

TEST(LIni, EscapesSurviveAndEmptyTextsStayEmpty) {
  const char* texts[] = {"a(b)!c", "", "!Q", "!n", "!!", "表", ")(,", "\t\r\n"};
  for (const char* t : texts) {
    Settings out;
    out.name = t;
    LIni one;
    one.add("name", &out.name, FIniText);
    LStr text = writeTable(one);
    if (std::strcmp(t, "a(b)!c") == 0) {
      EXPECT_STREQ(text.ptr, "name=a![b!]!Qc\r\n");
    }
    if (*t == 0) {
      EXPECT_STREQ(text.ptr, "name=\r\n");
    }
    Settings in;
    in.name = "default";
    LIni back;
    back.add("name", &in.name, FIniText);
    readTable(back, text);
    EXPECT_STREQ(in.name.ptr, t);
  }
}

TEST(LIni, CommentsBlanksAndRepeatedKeys) {
  RecorderScope rec;
  Settings in;
  readTable(in.table,
            "; a comment line\r\n"
            "  width=10\r\n"
            "\r\n"
            ";another\n"
            "width = 20 \r\n"
            "ids=( 1 ; the first\r\n"
            "  , 2\r\n"
            "  ; between\r\n"
            ", 3 )\r\n"
            "rcMain=(1,2,3,4)");
  EXPECT_EQ(rec->entries.count, 0) << messages(*rec.recorder).ptr;
  EXPECT_EQ(in.width, 20);
  ASSERT_EQ(in.ids.count, 3);
  EXPECT_EQ(in.ids[2], 3);
  EXPECT_EQ(in.rect[3], 4);
}

TEST(LIni, BadLinesAreReportedWithTheirLineAndCostOnlyTheirKey) {
  RecorderScope rec;
  Settings in;
  readTable(in.table,
            "width=12\r\n"
            "colour=red\r\n"
            "width\r\n"
            "#oops\r\n"
            "mask=xyz\r\n"
            "letter=ab\r\n"
            "ids=1,2\r\n"
            "rcMain=(1,2,3)\r\n"
            "history=(a;b\r\n"
            "width=99x\r\n"
            "name=kept\r\n");
  EXPECT_STREQ(messages(*rec.recorder).ptr,
               "(unknown stream)(2): unknown name 'colour'\n"
               "(unknown stream)(3): missing '=' in width\n"
               "(unknown stream)(4): illegal character: '#'\n"
               "(unknown stream)(5): illegal number: xyz\n"
               "(unknown stream)(6): illegal character: ab\n"
               "(unknown stream)(7): '(' required instead of '1'\n"
               "(unknown stream)(8): a rectangle takes 4 numbers, not 3\n"
               "(unknown stream)(10): ')' required instead of 'w'\n"
               "(unknown stream)(10): illegal number: 99x\n");
  EXPECT_EQ(rec->entries[0]->number, 15001);
  EXPECT_EQ(rec->errorTotal(), 9);
  EXPECT_EQ(in.width, 12);
  EXPECT_EQ(in.mask, 0xA0B1u);
  EXPECT_EQ(in.letter, 'c');
  EXPECT_EQ(in.rect[0], 100);
  EXPECT_EQ(in.history.count, 0);
  EXPECT_STREQ(in.name.ptr, "kept");
}

TEST(LIni, ElevenBadLinesStopTheReading) {
  for (int bad : {10, 11}) {
    RecorderScope rec;
    Settings in;
    LStr text("width=1\r\n");
    for (int i = 0; i < bad; i++) text.format("bad%d=0\r\n", i);
    text.append("width=2\r\n");
    readTable(in.table, text);
    const char* abort = "Too many error. Abort reading configuration/ini file.";
    if (bad == 10) {
      EXPECT_EQ(rec->entries.count, 10);
      EXPECT_EQ(in.width, 2);
    } else {
      ASSERT_EQ(rec->entries.count, 12);
      EXPECT_STREQ(rec->entries[11]->text.ptr, abort);
      EXPECT_EQ(rec->entries[11]->number, 15001);
      EXPECT_EQ(in.width, 1);  // what came before the errors is kept
    }
  }
}

TEST(LIni, NestedTablesAndListsOfLists) {
  struct Column {
    int32_t id, width, state;
  };
  struct Columns {
    Column items[4];
    int32_t count;
  };
  static const auto columnItem = [](void* context, int32_t index, LIniIo& io) {
    Columns& columns = *static_cast<Columns*>(context);
    LInts values;
    if (io.writing()) {
      const Column& c = columns.items[index];
      values.add(c.id);
      values.add(c.width);
      values.add(c.state);
      FIniInts(&values, io);
      return;
    }
    FIniInts(&values, io);
    if (values.count == 3 && columns.count < 4)
      columns.items[columns.count++] = Column{values[0], values[1], values[2]};
  };
  static const auto columnsField = [](void* target, LIniIo& io) {
    Columns& columns = *static_cast<Columns*>(target);
    if (!io.writing()) columns.count = 0;
    FIniList(io, &columns, columns.count, columnItem, /*textItems=*/false);
  };

  Columns cols{{{1, 164, 0}, {3, 46, 1}}, 2};
  int32_t x = 7, y = 8;
  LStr title("t(1)");
  LIni inner;
  inner.add("x", &x, FIniInt);
  inner.add("title", &title, FIniText);
  LIni small;
  small.add("y", &y, FIniInt);
  LIni outer;
  outer.add("inner", &inner, FIniTable);
  outer.add("/small", &small, FIniTable);
  outer.add("fcols", &cols, columnsField);
  LStr text = writeTable(outer);
  EXPECT_STREQ(text.ptr,
               "inner=(\r\n"
               " x=7\r\n"
               " title=t![1!]\r\n"
               ")\r\n"
               "small=(y=8)\r\n"
               "fcols=((1,164,0),(3,46,1))\r\n");

  RecorderScope rec;
  x = y = 0;
  title = "";
  cols.count = 0;
  readTable(outer, text);
  readTable(outer, "small=(y=9,)\r\nfcols=(\r\n (5,125,0),\r\n (9,100,2)\r\n)\r\n");
  EXPECT_EQ(rec->entries.count, 0) << messages(*rec.recorder).ptr;
  EXPECT_EQ(x, 7);
  EXPECT_EQ(y, 9);
  EXPECT_STREQ(title.ptr, "t(1)");
  ASSERT_EQ(cols.count, 2);
  EXPECT_EQ(cols.items[1].id, 9);
  EXPECT_EQ(cols.items[1].state, 2);

  readTable(outer, "inner=(x=3");
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_STREQ(rec->entries[0]->text.ptr, "')' required instead of end of file");
  EXPECT_EQ(x, 3);
}

TEST(LIni, SettingsFileRoundTripNamesTheFileInMessages) {
  TestTempDir dir;
  LStr path = dir.file("Kestrom.ini");
  Settings out;
  out.width = 321;
  out.history.add(new LStr("C:\\日本\\表"));
  {
    LIoFile file(path.ptr, 'w', /*mustExist=*/true);
    file.printf("; %s %s 設定ファイル\r\n", "Kestrom", "1.14");
    LIniIo io(file, 'w');
    out.table.write(io);
    file.writeText("bogus=1\r\n");
  }
  RecorderScope rec;
  Settings in;
  LIoFile file(path.ptr, 'r', /*mustExist=*/true);
  LIniIo io(file, 'r');
  in.table.read(io);
  EXPECT_EQ(in.width, 321);
  ASSERT_EQ(in.history.count, 1);
  EXPECT_STREQ(in.history[0]->ptr, "C:\\日本\\表");
  ASSERT_EQ(rec->entries.count, 1);
  LStr where(path);
  where.append("(9)");
  EXPECT_STREQ(rec->entries[0]->position.ptr, where.ptr);
  EXPECT_STREQ(rec->entries[0]->text.ptr, "unknown name 'bogus'");
}
