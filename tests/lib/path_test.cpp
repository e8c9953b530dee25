#include "lib/path_parts.h"

#include <gtest/gtest.h>

#include "lib/sys.h"

namespace {
// Shift-JIS characters whose trail byte is a backslash (0x5C).
const char* const kHyo = "表";  // 0x95 0x5C
const char* const kSo = "ソ";   // 0x83 0x5C

struct Scan {
  int32_t dirEnd, nameStart, dotPos, extStart;
};

void expectScan(const char* path, Scan expected) {
  LPathParts parts(path);
  EXPECT_EQ(parts.dirEnd, expected.dirEnd) << path;
  EXPECT_EQ(parts.nameStart, expected.nameStart) << path;
  EXPECT_EQ(parts.dotPos, expected.dotPos) << path;
  EXPECT_EQ(parts.extStart, expected.extStart) << path;
}

LStr withSep(const char* path) {
  LStr text(path);
  text.append(SysPathSeparator());
  return text;
}
}  // namespace

TEST(PathParts, ScanFindsFolderNameAndExtension) {
  // The scan starts over at the last separator, so the dot of "b.c" is lost.
  expectScan("a\\b.c\\d", {5, 6, 6, 7});
  expectScan("a.tar.gz", {0, 0, 5, 6});
  expectScan("dir/sub\\x.txt", {7, 8, 9, 10});
  expectScan("a\\\\\\b", {1, 4, 4, 5});
  expectScan("a\\b\\", {3, 4, 4, 4});
  expectScan("", {0, 0, 0, 0});
  expectScan(nullptr, {0, 0, 0, 0});
}

TEST(PathParts, LeadingDotCountsOnlyAtTheStartOfThePath) {
  expectScan("\\.txt", {0, 1, 1, 5});
  EXPECT_FALSE(LPathParts("\\.txt").hasExt());
  EXPECT_STREQ(FBaseOf("dir\\.profile").ptr, ".profile");
  expectScan(".txt", {0, 0, 0, 1});
  EXPECT_STREQ(FExtOf(".txt", false).ptr, "txt");
  EXPECT_STREQ(FBaseOf(".txt").ptr, "");
  EXPECT_FALSE(LPathParts(".").hasExt());
  EXPECT_STREQ(FBaseOf(".").ptr, ".");
}

TEST(PathParts, TrailByteOfBackslashIsNoSeparator) {
  LStr name(kHyo);
  name.append(".txt");
  expectScan(name.ptr, {0, 0, 2, 3});
  EXPECT_STREQ(FNameOf(name.ptr).ptr, name.ptr);

  LStr path("C:\\");
  path.append(kHyo).append("\\").append(kSo).append(".c");
  EXPECT_STREQ(FDirOf(path.ptr, false).ptr, LStr("C:\\").append(kHyo).ptr);
  EXPECT_STREQ(FNameOf(path.ptr).ptr, LStr(kSo).append(".c").ptr);
  EXPECT_STREQ(FBaseOf(path.ptr).ptr, kSo);
  EXPECT_STREQ(FExtOf(LStr("a.").append(kHyo).ptr, false).ptr, kHyo);
}

TEST(PathParts, NameHelpers) {
  EXPECT_STREQ(FDirOf("a\\\\b", false).ptr, "a");
  EXPECT_STREQ(FDirOf("a\\\\b", true).ptr, "a\\\\");
  EXPECT_STREQ(FDirOf("name", true).ptr, "");
  EXPECT_STREQ(FDirOf("/name", true).ptr, "/");
  EXPECT_STREQ(FNameOf("a/b/").ptr, "");
  EXPECT_STREQ(FExtOf("a.tar.gz", true).ptr, ".gz");
  EXPECT_STREQ(FExtOf("a\\b.c\\d", true).ptr, "");
  EXPECT_STREQ(FExtOf("a.", true).ptr, ".");
  EXPECT_STREQ(FBaseOf("x\\a.tar.gz").ptr, "a.tar");

  EXPECT_STREQ(FChangeExt("a.tar.gz", "zip").ptr, "a.tar.zip");
  EXPECT_STREQ(FChangeExt("a.tar.gz", ".zip").ptr, "a.tar.zip");
  EXPECT_STREQ(FChangeExt("dir.d\\name", "txt").ptr, "dir.d\\name.txt");
  EXPECT_STREQ(FChangeExt("a.txt", "").ptr, "a");
  EXPECT_STREQ(FChangeExt("\\.txt", "md").ptr, "\\.txt.md");
  EXPECT_STREQ(FChangeExt(".txt", "md").ptr, ".md");
}

TEST(PathParts, AddAndDropSeparator) {
  const char* kept[] = {"", "C:", "C:\\", "C:/", "dir\\"};
  for (const char* path : kept) {
    LStr text(path);
    FAddSep(text);
    EXPECT_STREQ(text.ptr, path);
  }
  LStr plain("dir");
  FAddSep(plain);
  EXPECT_STREQ(plain.ptr, withSep("dir").ptr);
  LStr japanese(kHyo);
  FAddSep(japanese);
  EXPECT_STREQ(japanese.ptr, withSep(kHyo).ptr);
  // Only a drive ends in its colon; a name may end in one.
  LStr colon("dir/a:");
  FAddSep(colon);
  EXPECT_STREQ(colon.ptr, withSep("dir/a:").ptr);

  LStr two("a\\\\");
  FDropSep(two);
  EXPECT_STREQ(two.ptr, "a\\");
  LStr slash("a/");
  FDropSep(slash);
  EXPECT_STREQ(slash.ptr, "a");
  LStr trail(kHyo);
  FDropSep(trail);
  EXPECT_STREQ(trail.ptr, kHyo);
  LStr empty;
  FDropSep(empty);
  EXPECT_STREQ(empty.ptr, "");
}

TEST(PathParts, AbsolutePaths) {
  EXPECT_TRUE(FIsAbsolute("\\dir"));
  EXPECT_TRUE(FIsAbsolute("/home/user"));
  EXPECT_TRUE(FIsAbsolute("C:dir"));
  EXPECT_TRUE(FIsAbsolute("z:\\"));
  EXPECT_FALSE(FIsAbsolute(nullptr));
  EXPECT_FALSE(FIsAbsolute(""));
  EXPECT_FALSE(FIsAbsolute("dir\\file"));
  EXPECT_FALSE(FIsAbsolute("1:\\"));
  EXPECT_FALSE(FIsAbsolute(kHyo));
}
