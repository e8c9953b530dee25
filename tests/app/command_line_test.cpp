#include "app/command_line.h"

#include <gtest/gtest.h>

#include "lib/sys.h"
#include "support/recorder.h"

namespace {

TEST(CommandLine, OptionsAndPlainArguments) {
  TStartArgs start;
  FParseCommandLine("kestrom -af:\"C:\\My Files\\a.kst\" /ol x.txt \"資料 2\\y.txt\" -cf:my.ini",
                    start);
  EXPECT_STREQ("C:\\My Files\\a.kst", start.archivePath.ptr);
  EXPECT_EQ(1, start.openLast);
  EXPECT_STREQ("my.ini", start.settingsName.ptr);
  ASSERT_EQ(2, start.args.count);
  EXPECT_STREQ("x.txt", start.args[0]->ptr);
  EXPECT_STREQ("資料 2\\y.txt", start.args[1]->ptr);
}

TEST(CommandLine, OpenLastTakesAnExplicitZero) {
  TStartArgs start;
  FParseCommandLine("\"C:\\Program Files\\kestrom.exe\" -ol:0", start);
  EXPECT_EQ(0, start.openLast);
  EXPECT_EQ(0, start.args.count);
}

TEST(CommandLine, UnknownOptionIsTheErrorBox) {
  for (const char* line : {"k -foo", "k a.kst /x", "k -afx:b.kst"}) {
    RecorderScope recorder;
    TStartArgs start;
    int thrown = 0;
    try {
      FParseCommandLine(line, start);
    } catch (int value) {
      thrown = value;
    }
    EXPECT_EQ(2, thrown) << line;
    ASSERT_EQ(1, recorder->boxes.count) << line;
    EXPECT_NE(nullptr, strstr(recorder->boxes[0]->ptr, "オプションが正しくありません : ")) << line;
  }
}

TEST(CommandLine, SettingsPathGoesBelowTheUserFolderUnlessAbsolute) {
  EXPECT_STREQ("C:\\x\\k.ini", FResolveSettingsPath("C:\\x\\k.ini").ptr);
  EXPECT_STREQ("/tmp/k.ini", FResolveSettingsPath("/tmp/k.ini").ptr);
  LStr placed = FResolveSettingsPath("k.ini");
  ASSERT_FALSE(placed.empty());
  LStr tail;
  tail.append("OrvaSoft").append(SysPathSeparator()).append("k.ini");
  EXPECT_EQ(0, strcmp(placed.ptr + placed.length - tail.length, tail.ptr));
}

}  // namespace
