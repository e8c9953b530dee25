#include "lib/file_util.h"

#include <gtest/gtest.h>

#include <cstring>

#include "lib/path_parts.h"
#include "lib/sys.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace {
void writeFile(const char* path, const char* text) {
  SysFile file = SysOpenFile(path, 'w');
  ASSERT_NE(file, kSysNoFile) << path;
  int32_t done = 0;
  int32_t size = static_cast<int32_t>(std::strlen(text));
  EXPECT_TRUE(SysWriteFile(file, text, size, &done));
  EXPECT_EQ(done, size);
  SysCloseFile(file);
}

LStr readFile(const char* path) {
  LStr text;
  SysFile file = SysOpenFile(path, 'r');
  if (file == kSysNoFile) return text;
  char buffer[256];
  int32_t done = 0;
  while (SysReadFile(file, buffer, sizeof buffer, &done) && done > 0) text.append(buffer, done);
  SysCloseFile(file);
  return text;
}

LStr join(const LStr& folder, const char* name) {
  LStr path(folder);
  FAddSep(path);
  path.append(name);
  return path;
}
}  // namespace

TEST(FileUtil, ExistsAndSize) {
  TestTempDir dir;
  LStr file = dir.file("five.txt");
  writeFile(file.ptr, "12345");
  LStr empty = dir.file("empty.txt");
  writeFile(empty.ptr, "");

  EXPECT_EQ(FExists(file.ptr), kExistsFile);
  EXPECT_EQ(FExists(dir.path()), kExistsFolder);
  EXPECT_EQ(FExists(dir.file("missing").ptr), kExistsNone);
  EXPECT_EQ(FExists(nullptr), kExistsNone);

  EXPECT_EQ(FFileSize(file.ptr), 5);
  EXPECT_EQ(FFileSize(empty.ptr), 0);
  EXPECT_EQ(FFileSize(dir.path()), -1);
  EXPECT_EQ(FFileSize(dir.file("missing").ptr), -1);
  EXPECT_EQ(FFileSize(nullptr), -1);
}

TEST(FileUtil, FullPathOfARelativeName) {
  LStr full = FFullPath("some-name.txt");
  EXPECT_TRUE(FIsAbsolute(full.ptr)) << full.ptr;
  EXPECT_STREQ(FNameOf(full.ptr).ptr, "some-name.txt");

  RecorderScope rec;
  LStr failed = FFullPath("");
  EXPECT_STREQ(failed.ptr, "");
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_EQ(rec->entries[0]->number, 17000);
  EXPECT_EQ(std::strncmp(rec->entries[0]->text.ptr, "GetFullPathName() failed: ", 26), 0);
}

TEST(FileUtil, MakeDirsCreatesTheFolderPart) {
  TestTempDir dir;
  LStr target = join(join(join(LStr(dir.path()), "a"), "b"), "c");
  LStr file = join(target, "file.txt");
  FMakeDirs(file.ptr);
  EXPECT_EQ(FExists(target.ptr), kExistsFolder);
  EXPECT_EQ(FExists(file.ptr), kExistsNone);
  writeFile(file.ptr, "x");
  // Existing folders are left as they are.
  FMakeDirs(file.ptr);
  EXPECT_EQ(FFileSize(file.ptr), 1);

  LStr japanese = join(join(LStr(dir.path()), "表"), "ソ");
  FMakeDirs(join(japanese, "f.txt").ptr);
  EXPECT_EQ(FExists(japanese.ptr), kExistsFolder);
  // No folder may be cut at the trail byte 0x5C of "表": the top holds "a"
  // and "表" only.
  SysFolderScan scan(dir.path());
  LStr name;
  SysFileInfo info;
  LStr names;
  while (scan.next(name, info)) names.append("[").append(name).append("]");
  EXPECT_TRUE(names.equals("[a][表]", false) || names.equals("[表][a]", false)) << names.ptr;
}

TEST(FileUtil, MakeDirsWithoutAFolderPartDoesNothing) {
  // A bare name has no folder part; nothing is created anywhere.
  FMakeDirs("kst-bare-name.txt");
  EXPECT_EQ(FExists("kst-bare-name.txt"), kExistsNone);
  FMakeDirs(nullptr);
}

TEST(FileUtil, RemoveTreeTakesEverything) {
  TestTempDir dir;
  LStr root = dir.file("tree");
  LStr deep = join(join(root, "sub"), "表");
  FMakeDirs(join(deep, "x").ptr);
  writeFile(join(root, "top.txt").ptr, "top");
  writeFile(join(deep, "deep.txt").ptr, "deep");
  LStr locked = join(join(root, "sub"), "locked.txt");
  writeFile(locked.ptr, "r/o");
  ASSERT_TRUE(SysSetAttributes(locked.ptr, kSysAttrReadOnly));
  SysMakeFolder(join(root, "empty").ptr);

  EXPECT_TRUE(FRemoveTree(root.ptr));
  EXPECT_EQ(FExists(root.ptr), kExistsNone);
  EXPECT_EQ(FExists(dir.path()), kExistsFolder);
}

TEST(FileUtil, RemoveTreeOfAMissingFolderIsReported) {
  TestTempDir dir;
  RecorderScope rec;
  EXPECT_FALSE(FRemoveTree(dir.file("missing").ptr));
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_EQ(rec->entries[0]->number, 17000);
  EXPECT_EQ(std::strncmp(rec->entries[0]->text.ptr, "RemoveDirectory(): ", 19), 0);
}

TEST(FileUtil, RenameOrCopyMovesTheFile) {
  TestTempDir dir;
  RecorderScope rec;
  LStr from = dir.file("from.txt");
  LStr to = dir.file("to.txt");
  writeFile(from.ptr, "first");
  EXPECT_EQ(FRenameOrCopy(from.ptr, to.ptr, true), 0);
  EXPECT_EQ(FExists(from.ptr), kExistsNone);
  EXPECT_STREQ(readFile(to.ptr).ptr, "first");

  // An existing target stops the rename; the copy replaces it.
  writeFile(from.ptr, "second");
  EXPECT_EQ(FRenameOrCopy(from.ptr, to.ptr, true), 0);
  EXPECT_EQ(FExists(from.ptr), kExistsNone);
  EXPECT_STREQ(readFile(to.ptr).ptr, "second");
  EXPECT_EQ(rec->entries.count, 0);
}

TEST(FileUtil, RenameOrCopyReportsWhatItCannotMove) {
  TestTempDir dir;
  LStr missing = dir.file("missing.txt");
  LStr to = dir.file("to.txt");
  {
    RecorderScope rec;
    EXPECT_EQ(FRenameOrCopy(missing.ptr, to.ptr, false), -1);
    ASSERT_EQ(rec->entries.count, 1);
    EXPECT_EQ(rec->entries[0]->number, 37000);
    LStr expected;
    expected.format("Cannot find file '%s': ", missing.ptr);
    EXPECT_EQ(std::strncmp(rec->entries[0]->text.ptr, expected.ptr, expected.length), 0);
  }
  {
    RecorderScope rec;
    EXPECT_EQ(FRenameOrCopy(missing.ptr, to.ptr, true), -1);
    ASSERT_EQ(rec->entries.count, 2);
    EXPECT_EQ(rec->entries[1]->number, 15000);
    EXPECT_STREQ(rec->entries[1]->text.ptr,
                 LStr().format("cannot rename %s to %s\n", missing.ptr, to.ptr).ptr);
  }
  {
    // A folder is not a file to be copied.
    RecorderScope rec;
    LStr folder = dir.file("folder");
    ASSERT_TRUE(SysMakeFolder(folder.ptr));
    writeFile(to.ptr, "kept");
    EXPECT_EQ(FRenameOrCopy(folder.ptr, to.ptr, false), -1);
    EXPECT_TRUE(rec->has(37000));
    EXPECT_EQ(FExists(folder.ptr), kExistsFolder);
    EXPECT_STREQ(readFile(to.ptr).ptr, "kept");
  }
  {
    RecorderScope rec;
    LStr from = dir.file("from.txt");
    writeFile(from.ptr, "stays");
    LStr nowhere = join(dir.file("no-such-folder"), "to.txt");
    EXPECT_EQ(FRenameOrCopy(from.ptr, nowhere.ptr, false), -1);
    ASSERT_EQ(rec->entries.count, 1);
    LStr expected;
    expected.format("CopyFile() '%s' to '%s': ", from.ptr, nowhere.ptr);
    EXPECT_EQ(std::strncmp(rec->entries[0]->text.ptr, expected.ptr, expected.length), 0);
    EXPECT_STREQ(readFile(from.ptr).ptr, "stays");
  }
}
