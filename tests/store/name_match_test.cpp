#include <gtest/gtest.h>

#include "store/name_match.h"

TEST(NameMatch, WildcardQuirksStay) {
  struct Case {
    const char* text;
    const char* pattern;
    bool fits;
  };
  // A star ends the match, "?" fits the end of the text, a blank equals the
  // end, and bytes fold by the bit 0x20 with no notion of double bytes.
  const Case cases[] = {
      {"", "*", true},       {"abc", "a*x", true},          {"xbc", "a*", false},
      {"abc", "a?c", true},  {"ab", "ab??", true},          {"a", "a?c", false},
      {"abc", "ab", false},  {"ab", "abc", false},          {"ReadMe", "README", true},
      {"@[", "`{", true},    {"ab cd", "ab", true},         {"ab", "ab ", true},
      {"ab", "ab c", false}, {"\x82\xa0", "\x82\x80", true}};
  for (const Case& c : cases)
    EXPECT_EQ(FWildMatch(c.text, c.pattern), c.fits) << c.text << " / " << c.pattern;
}

TEST(NameMatch, SplitExtAtTheLastDot) {
  const char* cases[][3] = {{"a.txt.bak", "a.txt", "bak"},
                            {"Makefile", "Makefile", "*"},
                            {".profile", "", "profile"},
                            {"a.", "a", ""}};
  LStr base, ext;
  for (const auto& c : cases) {
    FSplitExt(c[0], base, ext);
    EXPECT_STREQ(base.ptr, c[1]);
    EXPECT_STREQ(ext.ptr, c[2]);
  }
}
