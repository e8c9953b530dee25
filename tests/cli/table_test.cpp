// The text of the listings: widths on a terminal, and the aligned table.
#include <gtest/gtest.h>

#include <string>

#include "app/column.h"
#include "cli/list_table.h"
#include "cli/text_width.h"
#include "store/ver_info.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"

namespace {

int32_t width(const char* text) { return FTextWidth(text, kEscapeAsCharacter); }

TEST(TextWidthTest, DoubleByteCharactersTakeTwoColumns) {
  EXPECT_EQ(width(""), 0);
  EXPECT_EQ(width("abc"), 3);
  EXPECT_EQ(width("表示"), 4);   // 表 ends in the byte of a backslash
  EXPECT_EQ(width("ｱｲ"), 2);     // half-width katakana are single bytes
  EXPECT_EQ(width("{%u12"), 5);  // not an escape: its bytes as they are
}

TEST(TextWidthTest, AnEscapeIsItsCharacterOrItsText) {
  EXPECT_EQ(width("caf{%u00E9}"), 4);
  EXPECT_EQ(width("{%u4E02}"), 2);
  // A terminal whose code page lacks the character shows the escape.
  EXPECT_EQ(FTextWidth("caf{%u00E9}", kEscapeAsText), 11);
  EXPECT_STREQ(FFitTail("ab{%u00E9}cd", 10, kEscapeAsText).ptr, "...cd");
  EXPECT_STREQ(FFitTail("ab{%u00E9}cd", 10, kEscapeAsCharacter).ptr, "ab{%u00E9}cd");
}

TEST(TextWidthTest, TailsKeepWholeCharacters) {
  EXPECT_STREQ(FFitTail("short", 10, kEscapeAsCharacter).ptr, "short");
  EXPECT_STREQ(FFitTail("abcdefghij", 8, kEscapeAsCharacter).ptr, "...fghij");
  // Cutting inside a double-byte character would leave half of it.
  LStr fitted = FFitTail("あいうえお", 8, kEscapeAsCharacter);
  EXPECT_STREQ(fitted.ptr, "...えお");
  EXPECT_LE(width(fitted.ptr), 8);
}

TEST(TextWidthTest, PaddingByColumns) {
  LStr out;
  FAppendPadded(out, "表", 4, 'l', kEscapeAsCharacter);
  out.append('|');
  FAppendPadded(out, "12", 4, 'r', kEscapeAsCharacter);
  out.append('|');
  FAppendPadded(out, "toolong", 3, 'l', kEscapeAsCharacter);
  EXPECT_STREQ(out.ptr, "表  |  12|toolong");
}

class TableTest : public ArchiveTest {
 protected:
  TableTest() {
    archive->loadArchive(dir.file("t.kst").ptr, false, false);
    FNewWorkSet();
  }
  ~TableTest() override { FDeleteWorkSet(); }
  TFile* file(const char* name, int32_t size) {
    TFile* f = new TFile;
    f->setName(name);
    archive->root->addChild(f);
    TVer* ver = new TVer;
    ver->size = size;
    f->addChild(ver);
    FWorkSet()->NewInfo(ver);
    return f;
  }
};

TEST_F(TableTest, ColumnsLineUpByTheirWidestCell) {
  LInts columns;
  columns.add(kColName);
  columns.add(kColSize);
  columns.add(kColComment);
  TCliTable table(columns, nullptr);
  table.addRow(file("長い名前.txt", 1234567));
  table.addRow(file("a", 5));
  table.addRow(archive->root->addFolder("dir"));
  LStrs lines;
  table.lines(lines, kEscapeAsCharacter);
  ASSERT_EQ(lines.count, 4);
  // Names to the left, sizes to the right, no blanks at the ends.
  EXPECT_STREQ(lines[0]->ptr, "名前             サイズ  コメント");
  EXPECT_STREQ(lines[1]->ptr, "長い名前.txt  1,234,567");
  EXPECT_STREQ(lines[2]->ptr, "a                     5");
  EXPECT_STREQ(lines[3]->ptr, "dir");
}

TEST(ViewColumnsTest, EachViewHasItsSets) {
  LInts folder, versions, all;
  FViewColumns(kViewFolder, false, folder);
  FViewColumns(kViewVersions, false, versions);
  FViewColumns(kViewSearch, true, all);
  EXPECT_EQ(folder[0], kColName);
  EXPECT_EQ(versions[0], kColVersion);
  // Every column the panes know, once.
  EXPECT_EQ(all.count, kColFolder);
  for (int32_t id = kColName; id <= kColFolder; id++)
    EXPECT_EQ(all.find(id, [](int32_t a, int32_t b) { return a == b ? 0 : 1; }) >= 0, true) << id;
}

}  // namespace
