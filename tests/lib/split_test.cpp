#include <gtest/gtest.h>

#include "lib/cmdline.h"
#include "lib/text_split.h"

namespace {
// The items joined by "|", each between brackets.
LStr joined(const LStrs& items) {
  LStr text;
  for (LStr* item : items) text.append("[").append(*item).append("]");
  return text;
}

LStr words(const char* line) {
  LStrs out;
  FSplitCommandLine(line, out);
  return joined(out);
}

LStr items(const char* text, char separator, int mode) {
  LStrs out;
  FSplit(text, separator, mode, out);
  return joined(out);
}
}  // namespace

TEST(CommandLine, QuotesKeepBlanksInsideOneWord) {
  EXPECT_STREQ(words("prog a \"b c\" -af:\"C:\\My Files\\a.kst\"").ptr,
               "[prog][a][b c][-af:C:\\My Files\\a.kst]");
  EXPECT_STREQ(words("  a\t\tb  ").ptr, "[a][b]");
  EXPECT_STREQ(words("a\"b\"c").ptr, "[abc]");
  EXPECT_STREQ(words("\"\" x").ptr, "[][x]");
  EXPECT_STREQ(words("\"open to the end").ptr, "[open to the end]");
  EXPECT_STREQ(words("C:\\dir\\ -ol").ptr, "[C:\\dir\\][-ol]");
  EXPECT_STREQ(words("表 \"ソ x\"").ptr, "[表][ソ x]");
  EXPECT_STREQ(words("").ptr, "");
  EXPECT_STREQ(words("   ").ptr, "");
  EXPECT_STREQ(words(nullptr).ptr, "");
}

TEST(TextSplit, ModesAndDoubleByteText) {
  EXPECT_STREQ(items("a,,b", ',', kSplitKeep).ptr, "[a][][b]");
  EXPECT_STREQ(items("", ',', kSplitKeep).ptr, "[]");
  EXPECT_STREQ(items(",", ',', kSplitKeep).ptr, "[][]");
  EXPECT_STREQ(items("", ',', kSplitSkipEmpty).ptr, "");
  EXPECT_STREQ(items(" a , ,b ", ',', kSplitTrim).ptr, "[a][][b]");
  EXPECT_STREQ(items(" a , ,b ", ',', kSplitTrim | kSplitSkipEmpty).ptr, "[a][b]");
  EXPECT_STREQ(items(" a , ,b ", ',', kSplitSkipEmpty).ptr, "[ a ][ ][b ]");
  // The trail byte 0x5C of "表" is not the separator.
  EXPECT_STREQ(items("表\\ソ\\x", '\\', kSplitKeep).ptr, "[表][ソ][x]");
  EXPECT_STREQ(items(nullptr, ',', kSplitKeep).ptr, "");
}
