#include "lib/sys.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

#include "lib/lstr.h"
#include "support/temp_dir.h"

#ifndef _WIN32
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

// 日本語.txt in Shift-JIS.
const char* const kJapaneseName = "\x93\xfa\x96\x7b\x8c\xea.txt";
// 2001-02-03 04:05:06.1234567 UTC and a day later, in 100 ns ticks.
const SysTime kSomeTime = 126256467061234567ULL;
const SysTime kDayLater = kSomeTime + 864000000000ULL;

bool writeFile(const char* path, const std::string& content, char mode = 'w') {
  SysFile file = SysOpenFile(path, mode);
  if (file == kSysNoFile) return false;
  int32_t done = -1;
  bool ok = SysWriteFile(file, content.data(), static_cast<int32_t>(content.size()), &done) &&
            done == static_cast<int32_t>(content.size());
  return SysCloseFile(file) && ok;
}

// The whole content, or "<none>" when the file does not open.
std::string readFile(const char* path) {
  SysFile file = SysOpenFile(path, 'r');
  if (file == kSysNoFile) return "<none>";
  std::string content;
  char buffer[7];  // small, so that reads go in several pieces
  int32_t done;
  while (SysReadFile(file, buffer, sizeof buffer, &done) && done > 0) content.append(buffer, done);
  SysCloseFile(file);
  return content;
}

// Every entry of a folder by 8-bit name.
std::set<std::string> scanNames(const char* folder) {
  std::set<std::string> names;
  SysFolderScan scan(folder);
  LStr name;
  SysFileInfo info;
  while (scan.next(name, info)) names.insert(name.ptr);
  return names;
}

bool findEntry(const char* folder, const char* wanted, SysFileInfo* found) {
  SysFolderScan scan(folder);
  LStr name;
  while (scan.next(name, *found)) {
    if (std::strcmp(name.ptr, wanted) == 0) return true;
  }
  return false;
}

}  // namespace

// ---- Files

TEST(SysFile, ModesCreateEmptyAndKeep) {
  TestTempDir dir;
  LStr path = dir.file("a.bin");
  EXPECT_EQ(SysOpenFile(path.ptr, 'r'), kSysNoFile);
  EXPECT_EQ(SysLastError(), 2);  // "not found" on both systems
  EXPECT_EQ(SysOpenFile(path.ptr, 'x'), kSysNoFile);

  ASSERT_TRUE(writeFile(path.ptr, "0123456789"));
  SysFile file = SysOpenFile(path.ptr, 'a');
  ASSERT_NE(file, kSysNoFile);
  int64_t at = -1;
  ASSERT_TRUE(SysSeekFile(file, 0, &at));
  EXPECT_EQ(at, 0);  // the cursor starts at 0 even when appending
  ASSERT_TRUE(SysSeekFile(file, -1, &at));
  EXPECT_EQ(at, 10);
  ASSERT_TRUE(SysWriteFile(file, "ab", 2, nullptr));
  ASSERT_TRUE(SysCloseFile(file));
  EXPECT_EQ(readFile(path.ptr), "0123456789ab");

  ASSERT_TRUE(writeFile(path.ptr, "new"));
  EXPECT_EQ(readFile(path.ptr), "new");
}

TEST(SysFile, SeekTruncateAndPositionsBeyondTwoGigabytes) {
  TestTempDir dir;
  LStr path = dir.file("t.bin");
  ASSERT_TRUE(writeFile(path.ptr, "abcdefghij"));
  SysFile file = SysOpenFile(path.ptr, 'a');
  ASSERT_NE(file, kSysNoFile);
  int64_t at;
  ASSERT_TRUE(SysSeekFile(file, 4, &at));
  ASSERT_TRUE(SysTruncateFile(file));
  SysFileInfo info;
  ASSERT_TRUE(SysStat(path.ptr, &info));
  EXPECT_EQ(info.size, 4);
  // A position past 32 bits must not be cut to its low word.
  const int64_t far = (int64_t{1} << 32) + 5;
  ASSERT_TRUE(SysSeekFile(file, far, &at));
  EXPECT_EQ(at, far);
  ASSERT_TRUE(SysSeekFile(file, 3, &at));
  ASSERT_TRUE(SysWriteFile(file, "Z", 1, nullptr));
  ASSERT_TRUE(SysFlushFile(file));
  ASSERT_TRUE(SysCloseFile(file));
  EXPECT_EQ(readFile(path.ptr), "abcZ");
}

TEST(SysFile, SecondWriterIsShutOutWithoutHarmWhileReadersGoOn) {
  TestTempDir dir;
  LStr path = dir.file("shared.txt");
  SysFile writer = SysOpenFile(path.ptr, 'w');
  ASSERT_NE(writer, kSysNoFile);
  ASSERT_TRUE(SysWriteFile(writer, "kept", 4, nullptr));

  EXPECT_EQ(SysOpenFile(path.ptr, 'w'), kSysNoFile);
  EXPECT_EQ(SysOpenFile(path.ptr, 'a'), kSysNoFile);
  LStr text;
  SysErrorText(SysLastError(), text);
  EXPECT_FALSE(text.empty());
  EXPECT_EQ(std::strpbrk(text.ptr, "\r\n"), nullptr);
  // The refused 'w' must not have emptied the file.
  EXPECT_EQ(readFile(path.ptr), "kept");
  SysFile reader = SysOpenFile(path.ptr, 'r');
  EXPECT_NE(reader, kSysNoFile);
  SysCloseFile(reader);

  ASSERT_TRUE(SysCloseFile(writer));
  ASSERT_TRUE(writeFile(path.ptr, "next"));
  EXPECT_EQ(readFile(path.ptr), "next");
}

// The add asks before it takes a file whether it can be read, by name
// through the same conversion as an open: a readable Japanese name, a
// missing file with its reason, and (where permissions bind this user) a
// file nobody may read.
TEST(SysFile, CanReadFileAnswersAsAnOpenWould) {
  TestTempDir dir;
  LStr readable = dir.file(kJapaneseName);
  ASSERT_TRUE(writeFile(readable.ptr, "x"));
  EXPECT_TRUE(SysCanReadFile(readable.ptr));

  EXPECT_FALSE(SysCanReadFile(dir.file("missing.txt").ptr));
  LStr reason;
  SysErrorText(SysLastError(), reason);
  EXPECT_FALSE(reason.empty());
#ifndef _WIN32
  if (geteuid() != 0) {
    LStr shut = dir.file("shut.txt");
    ASSERT_TRUE(writeFile(shut.ptr, "x"));
    ASSERT_EQ(0, chmod(shut.ptr, 0));
    EXPECT_FALSE(SysCanReadFile(shut.ptr));
    EXPECT_EQ(SysOpenFile(shut.ptr, 'r'), kSysNoFile);
  }
#endif
}

TEST(SysFile, LockFileHasOneHolderAndGoesWithIt) {
  TestTempDir dir;
  LStr path = dir.file("held.lock");
  SysFile first = SysTakeLockFile(path.ptr);
  ASSERT_NE(first, kSysNoFile);
  EXPECT_EQ(SysTakeLockFile(path.ptr), kSysNoFile);
  EXPECT_TRUE(SysFileBusy(SysLastError()));
  ASSERT_TRUE(SysReleaseLockFile(first, path.ptr));
  SysFileInfo info;
  EXPECT_FALSE(SysStat(path.ptr, &info));

  // The next holder makes it afresh and lets go of it the same way.
  SysFile second = SysTakeLockFile(path.ptr);
  ASSERT_NE(second, kSysNoFile);
  EXPECT_TRUE(SysStat(path.ptr, &info));
  EXPECT_TRUE(SysReleaseLockFile(second, path.ptr));
  EXPECT_FALSE(SysStat(path.ptr, &info));
}

// ---- Names

TEST(SysName, ShiftJisNameRoundTrips) {
  TestTempDir dir;
  LStr path = dir.file(kJapaneseName);
  ASSERT_TRUE(writeFile(path.ptr, "nihongo"));
  EXPECT_EQ(readFile(path.ptr), "nihongo");
  EXPECT_EQ(scanNames(dir.path()), std::set<std::string>{kJapaneseName});
#ifndef _WIN32
  // On disk the name is UTF-8.
  DIR* raw = opendir(dir.path());
  ASSERT_NE(raw, nullptr);
  std::set<std::string> disk;
  while (dirent* entry = readdir(raw)) disk.insert(entry->d_name);
  closedir(raw);
  EXPECT_EQ(disk.count("\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e.txt"), 1u);
#endif
}

TEST(SysName, CharacterWithoutShiftJisFormTravelsAsEscape) {
  // U+00E9 has no form in code page 932. On POSIX the escape becomes the
  // character on disk. The A-functions of Windows cannot name it; a name
  // that holds the escape as text is itself there.
  TestTempDir dir;
#ifdef _WIN32
  EXPECT_FALSE(writeFile(dir.file("caf{%u00E9}.txt").ptr, "e"));
  const char* name = "caf{%u007B}%u00E9}.txt";
#else
  const char* name = "caf{%u00E9}.txt";
#endif
  LStr path = dir.file(name);
  ASSERT_TRUE(writeFile(path.ptr, "e"));
  EXPECT_EQ(scanNames(dir.path()), std::set<std::string>{name});
  EXPECT_EQ(readFile(path.ptr), "e");
#ifndef _WIN32
  std::string raw = std::string(dir.path()) + "/caf\xc3\xa9.txt";
  EXPECT_EQ(access(raw.c_str(), F_OK), 0);
#endif
}

#ifndef _WIN32
TEST(SysName, NameThatIsNotUtf8RoundTrips) {
  TestTempDir dir;
  std::string raw = std::string(dir.path()) + "/bad\xff\x93.txt";
  int fd = open(raw.c_str(), O_WRONLY | O_CREAT, 0644);
  ASSERT_GE(fd, 0);
  ASSERT_EQ(write(fd, "raw", 3), 3);
  close(fd);
  const char* expected = "bad{%uDCFF}{%uDC93}.txt";
  ASSERT_EQ(scanNames(dir.path()), std::set<std::string>{expected});
  EXPECT_EQ(readFile(dir.file(expected).ptr), "raw");
  LStr renamed = dir.file("good.txt");
  ASSERT_TRUE(SysRenameFile(dir.file(expected).ptr, renamed.ptr));
  EXPECT_NE(access(raw.c_str(), F_OK), 0);
}
#endif

// ---- Folders

TEST(SysFolder, ScanGivesNamesKindsAndSizes) {
  TestTempDir dir;
  ASSERT_TRUE(SysMakeFolder(dir.file("sub").ptr));
  EXPECT_FALSE(SysMakeFolder(dir.file("sub").ptr));
  ASSERT_TRUE(writeFile(dir.file("five.txt").ptr, "12345"));
  ASSERT_TRUE(writeFile(dir.file("empty").ptr, ""));
  EXPECT_EQ(scanNames(dir.path()), (std::set<std::string>{"sub", "five.txt", "empty"}));

  SysFileInfo info;
  ASSERT_TRUE(findEntry(dir.path(), "sub", &info));
  EXPECT_TRUE(info.attributes & kSysAttrDirectory);
  EXPECT_FALSE(info.attributes & kSysAttrLink);
  ASSERT_TRUE(findEntry(dir.path(), "five.txt", &info));
  EXPECT_FALSE(info.attributes & kSysAttrDirectory);
  EXPECT_EQ(info.size, 5);
  ASSERT_TRUE(findEntry(dir.path(), "empty", &info));
  EXPECT_EQ(info.size, 0);
  EXPECT_TRUE(scanNames(dir.file("sub").ptr).empty());

  SysFolderScan missing(dir.file("none").ptr);
  EXPECT_FALSE(missing.isOpen());
  EXPECT_FALSE(SysRemoveFolder(dir.file("none").ptr));
  ASSERT_TRUE(SysRemoveFolder(dir.file("sub").ptr));
  ASSERT_TRUE(SysDeleteFile(dir.file("empty").ptr));
  EXPECT_EQ(scanNames(dir.path()), std::set<std::string>{"five.txt"});
}

TEST(SysFolder, ReadOnlyAttributeSetAndCleared) {
  TestTempDir dir;
  LStr path = dir.file("ro.txt");
  ASSERT_TRUE(writeFile(path.ptr, "x"));
  uint32_t attributes = 0;
  ASSERT_TRUE(SysGetAttributes(path.ptr, &attributes));
  EXPECT_FALSE(attributes & kSysAttrReadOnly);
  ASSERT_TRUE(SysSetAttributes(path.ptr, kSysAttrReadOnly));
  ASSERT_TRUE(SysGetAttributes(path.ptr, &attributes));
  EXPECT_TRUE(attributes & kSysAttrReadOnly);
  ASSERT_TRUE(SysSetAttributes(path.ptr, kSysAttrNormal));
  ASSERT_TRUE(SysGetAttributes(path.ptr, &attributes));
  EXPECT_FALSE(attributes & kSysAttrReadOnly);
  EXPECT_FALSE(SysGetAttributes(dir.file("none").ptr, &attributes));
}

#ifndef _WIN32
TEST(SysFolder, PosixAttributesAndLinks) {
  TestTempDir dir;
  ASSERT_TRUE(writeFile(dir.file(".hidden").ptr, "h"));
  ASSERT_TRUE(writeFile(dir.file("target.txt").ptr, "1234567"));
  ASSERT_TRUE(SysMakeFolder(dir.file("folder").ptr));
  ASSERT_EQ(symlink("target.txt", dir.file("file-link").ptr), 0);
  ASSERT_EQ(symlink("folder", dir.file("folder-link").ptr), 0);
  ASSERT_EQ(symlink("nowhere", dir.file("broken-link").ptr), 0);

  SysFileInfo info;
  ASSERT_TRUE(findEntry(dir.path(), ".hidden", &info));
  EXPECT_EQ(info.attributes, kSysAttrHidden);
  ASSERT_TRUE(findEntry(dir.path(), "target.txt", &info));
  EXPECT_EQ(info.attributes, kSysAttrNormal);
  ASSERT_TRUE(findEntry(dir.path(), "file-link", &info));
  EXPECT_EQ(info.attributes, kSysAttrNormal);
  EXPECT_EQ(info.size, 7);
  ASSERT_TRUE(findEntry(dir.path(), "folder", &info));
  EXPECT_EQ(info.attributes, kSysAttrDirectory);
  ASSERT_TRUE(findEntry(dir.path(), "folder-link", &info));
  EXPECT_EQ(info.attributes, kSysAttrDirectory | kSysAttrLink);
  ASSERT_TRUE(findEntry(dir.path(), "broken-link", &info));
  EXPECT_EQ(info.attributes, kSysAttrLink);

  ASSERT_TRUE(SysStat(dir.file("folder-link").ptr, &info));
  EXPECT_EQ(info.attributes, kSysAttrDirectory | kSysAttrLink);
  uint32_t attributes;
  ASSERT_TRUE(SysGetAttributes(dir.file(".hidden").ptr, &attributes));
  EXPECT_EQ(attributes, kSysAttrHidden);
  ASSERT_TRUE(SysGetAttributes(dir.path(), &attributes));
  EXPECT_EQ(attributes, kSysAttrDirectory);

  // A pipe is reported, never to be read.
  ASSERT_EQ(mkfifo(dir.file("pipe").ptr, 0600), 0);
  ASSERT_TRUE(findEntry(dir.path(), "pipe", &info));
  EXPECT_EQ(info.attributes, kSysAttrDevice);
}
#endif

TEST(SysFolder, TimesSetAndReadBack) {
  TestTempDir dir;
  LStr path = dir.file("times.txt");
  SysTime before = SysNow();
  ASSERT_TRUE(writeFile(path.ptr, "t"));
  SysFileInfo info;
  ASSERT_TRUE(SysStat(path.ptr, &info));
  // A fresh file is stamped now: this catches a wrong epoch or unit.
  const SysTime slack = 5 * 10000000ULL;
  EXPECT_GE(info.modified + slack, before);
  EXPECT_LE(info.modified, SysNow() + slack);
  EXPECT_GE(info.created + slack, before);

  ASSERT_TRUE(SysSetFileTimes(path.ptr, 0, kSomeTime, kDayLater));
  ASSERT_TRUE(SysStat(path.ptr, &info));
  EXPECT_EQ(info.accessed, kSomeTime);
  EXPECT_EQ(info.modified, kDayLater);
  // Zero leaves a time as it is.
  ASSERT_TRUE(SysSetFileTimes(path.ptr, 0, 0, kSomeTime));
  ASSERT_TRUE(SysStat(path.ptr, &info));
  EXPECT_EQ(info.accessed, kSomeTime);
  EXPECT_EQ(info.modified, kSomeTime);
  SysFileInfo listed;
  ASSERT_TRUE(findEntry(dir.path(), "times.txt", &listed));
  EXPECT_EQ(listed.modified, kSomeTime);
  EXPECT_FALSE(SysSetFileTimes(dir.file("none").ptr, 0, kSomeTime, kSomeTime));
}

TEST(SysFolder, CopyAndRenameRespectExistingTargets) {
  TestTempDir dir;
  LStr from = dir.file("from.txt");
  LStr to = dir.file("to.txt");
  ASSERT_TRUE(writeFile(from.ptr, "source"));
  ASSERT_TRUE(SysSetFileTimes(from.ptr, 0, kSomeTime, kDayLater));
  ASSERT_TRUE(SysCopyFile(from.ptr, to.ptr, true));
  EXPECT_EQ(readFile(to.ptr), "source");
  SysFileInfo info;
  ASSERT_TRUE(SysStat(to.ptr, &info));
  EXPECT_EQ(info.modified, kDayLater);

  ASSERT_TRUE(writeFile(to.ptr, "other"));
  EXPECT_FALSE(SysCopyFile(from.ptr, to.ptr, true));
  EXPECT_EQ(readFile(to.ptr), "other");
  ASSERT_TRUE(SysCopyFile(from.ptr, to.ptr, false));
  EXPECT_EQ(readFile(to.ptr), "source");
  // A copy onto itself must not empty the file.
  SysCopyFile(from.ptr, from.ptr, false);
  EXPECT_EQ(readFile(from.ptr), "source");

  EXPECT_FALSE(SysRenameFile(from.ptr, to.ptr));
  EXPECT_EQ(readFile(to.ptr), "source");
  ASSERT_TRUE(SysDeleteFile(to.ptr));
  ASSERT_TRUE(SysRenameFile(from.ptr, to.ptr));
  EXPECT_EQ(scanNames(dir.path()), std::set<std::string>{"to.txt"});
}

// ---- Paths

TEST(SysPath, FullAndLongPaths) {
  TestTempDir dir;
  LStr full;
  ASSERT_TRUE(SysFullPath("x.txt", full));
  std::string separated = std::string(1, SysPathSeparator()) + "x.txt";
  ASSERT_GT(full.length, static_cast<int32_t>(separated.size()));
  EXPECT_EQ(std::string(full.ptr + full.length - separated.size()), separated);

  LStr path = dir.file("long.txt");
  LStr result;
  EXPECT_FALSE(SysLongPath(path.ptr, result));
  ASSERT_TRUE(writeFile(path.ptr, "l"));
  ASSERT_TRUE(SysLongPath(path.ptr, result));
  EXPECT_EQ(readFile(result.ptr), "l");

  LStr temp;
  SysTempFolder(temp);
  ASSERT_FALSE(temp.empty());
  EXPECT_EQ(temp[temp.length - 1], SysPathSeparator());
  LStr data;
  ASSERT_TRUE(SysLocalAppDataFolder(data));
  ASSERT_FALSE(data.empty());
  EXPECT_NE(data[data.length - 1], SysPathSeparator());
}

#ifndef _WIN32
TEST(SysPath, PosixFullPathResolvesDotsInTheText) {
  LStr full;
  ASSERT_TRUE(SysFullPath("/a/./b/../c", full));
  EXPECT_STREQ(full.ptr, "/a/c");
  ASSERT_TRUE(SysFullPath("/x/../../y/", full));
  EXPECT_STREQ(full.ptr, "/y/");
  ASSERT_TRUE(SysFullPath("/..", full));
  EXPECT_STREQ(full.ptr, "/");
  // Japanese names pass whole; no trail byte is taken for a separator.
  ASSERT_TRUE(SysFullPath("/\x95\x5c/./\x93\xfa", full));
  EXPECT_STREQ(full.ptr, "/\x95\x5c/\x93\xfa");
  char cwd[4096];
  ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
  ASSERT_TRUE(SysFullPath("p/q/..", full));
  EXPECT_EQ(std::string(full.ptr), std::string(cwd == std::string("/") ? "" : cwd) + "/p");
  EXPECT_FALSE(SysFullPath("", full));
}

TEST(SysPath, PosixFoldersFromTheEnvironment) {
  std::string savedTmp = std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "";
  std::string savedData = std::getenv("XDG_DATA_HOME") ? std::getenv("XDG_DATA_HOME") : "";
  std::string savedHome = std::getenv("HOME") ? std::getenv("HOME") : "";
  LStr out;
  setenv("TMPDIR", "/var/spool", 1);
  SysTempFolder(out);
  EXPECT_STREQ(out.ptr, "/var/spool/");
  setenv("XDG_DATA_HOME", "/data/home/", 1);
  ASSERT_TRUE(SysLocalAppDataFolder(out));
  EXPECT_STREQ(out.ptr, "/data/home");
  setenv("XDG_DATA_HOME", "relative", 1);  // to be ignored
  setenv("HOME", "/home/someone/", 1);
  ASSERT_TRUE(SysLocalAppDataFolder(out));
  EXPECT_STREQ(out.ptr, "/home/someone/.local/share");
  if (savedTmp.empty())
    unsetenv("TMPDIR");
  else
    setenv("TMPDIR", savedTmp.c_str(), 1);
  if (savedData.empty())
    unsetenv("XDG_DATA_HOME");
  else
    setenv("XDG_DATA_HOME", savedData.c_str(), 1);
  if (savedHome.empty())
    unsetenv("HOME");
  else
    setenv("HOME", savedHome.c_str(), 1);
}

TEST(SysTime, PosixLocalOffsetFollowsTheZoneAtThatTime) {
  std::string saved = std::getenv("TZ") ? std::getenv("TZ") : "";
  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  tzset();
  // 2001-02-03 is winter, 2001-07-03 summer.
  EXPECT_EQ(SysLocalOffset(kSomeTime), 3600);
  EXPECT_EQ(SysLocalOffset(kSomeTime + 150 * 864000000000ULL), 7200);
  setenv("TZ", "JST-9", 1);
  tzset();
  EXPECT_EQ(SysLocalOffset(kSomeTime), 32400);
  if (saved.empty())
    unsetenv("TZ");
  else
    setenv("TZ", saved.c_str(), 1);
  tzset();
}
#endif

// ---- Code pages

TEST(SysCodePage, ShiftJisBothWays) {
  EXPECT_EQ(SysCodePage(), 932);
  uint16_t wide[16];
  // A negative size takes the terminator too.
  ASSERT_EQ(SysToWide(932, kJapaneseName, -1, wide, 16), 8);
  const uint16_t expected[] = {0x65E5, 0x672C, 0x8A9E, '.', 't', 'x', 't', 0};
  EXPECT_EQ(std::memcmp(wide, expected, sizeof expected), 0);
  EXPECT_EQ(SysToWide(932, kJapaneseName, 6, nullptr, 0), 3);
  EXPECT_EQ(SysToWide(932, kJapaneseName, 6, wide, 2), 0);

  char narrow[16];
  bool usedDefault = true;
  ASSERT_EQ(SysFromWide(932, expected, 3, narrow, 16, &usedDefault), 6);
  EXPECT_FALSE(usedDefault);
  EXPECT_EQ(std::memcmp(narrow, kJapaneseName, 6), 0);
  EXPECT_EQ(SysFromWide(932, expected, 3, nullptr, 0, &usedDefault), 6);
  EXPECT_EQ(SysFromWide(932, expected, 3, narrow, 5, &usedDefault), 0);

  // é has no form; the yen sign has only a look-alike, which must not count.
  for (uint16_t unit : {0x00E9, 0x00A5, 0x20AC}) {
    ASSERT_EQ(SysFromWide(932, &unit, 1, narrow, 16, &usedDefault), 1) << unit;
    EXPECT_TRUE(usedDefault) << unit;
    EXPECT_EQ(narrow[0], '?') << unit;
  }
}

TEST(SysCodePage, ShiftJisBytesOutsideTheTable) {
  // Single bytes the system maps although the table has no character for
  // them, both ways; then an unknown pair, a lead byte before a byte that
  // cannot follow it (taken with it all the same), and a lead byte at the end.
  uint16_t wide[16];
  ASSERT_EQ(SysToWide(932, "\x80\xa0\xfd\xfe\xff", 5, wide, 16), 5);
  const uint16_t extra[] = {0x0080, 0xF8F0, 0xF8F1, 0xF8F2, 0xF8F3};
  EXPECT_EQ(std::memcmp(wide, extra, sizeof extra), 0);
  char narrow[16];
  bool usedDefault = true;
  ASSERT_EQ(SysFromWide(932, extra, 5, narrow, 16, &usedDefault), 5);
  EXPECT_FALSE(usedDefault);
  EXPECT_EQ(std::memcmp(narrow, "\x80\xa0\xfd\xfe\xff", 5), 0);

  ASSERT_EQ(SysToWide(932,
                      "\x85\x40"
                      "a\x81\x39"
                      "b",
                      6, wide, 16),
            4);
  const uint16_t odd[] = {0x30FB, 'a', 0x30FB, 'b'};
  EXPECT_EQ(std::memcmp(wide, odd, sizeof odd), 0);
  ASSERT_EQ(SysToWide(932, "a\x81", 2, wide, 16), 2);
  EXPECT_EQ(wide[1], 0x30FB);
}

TEST(SysCodePage, EveryUnitWithAShiftJisFormComesBackTheSame) {
  int withForm = 0;
  int privateUse = 0;
  for (uint32_t unit = 1; unit <= 0xFFFF; unit++) {
    uint16_t in = static_cast<uint16_t>(unit);
    char narrow[8];
    bool usedDefault = false;
    int32_t n = SysFromWide(932, &in, 1, narrow, sizeof narrow, &usedDefault);
    ASSERT_GT(n, 0) << unit;
    if (usedDefault) continue;
    withForm++;
    if (unit >= 0xE000 && unit <= 0xF8FF) privateUse++;
    uint16_t back[4];
    ASSERT_EQ(SysToWide(932, narrow, n, back, 4), 1) << unit;
    ASSERT_EQ(back[0], in) << std::hex << unit;
  }
  // The 1880 user-defined characters and the four odd single bytes live in
  // the private use area; the rest of the table is about 7500 characters.
  EXPECT_EQ(privateUse, 1884);
  EXPECT_GT(withForm - privateUse, 7400);
  EXPECT_LT(withForm - privateUse, 7600);
}

TEST(SysCodePage, Utf8ReplacesWhatIsNotWellFormed) {
  uint16_t wide[8];
  ASSERT_EQ(SysToWide(65001, "\xc3\xa9\xff", 3, wide, 8), 2);
  EXPECT_EQ(wide[0], 0x00E9);
  EXPECT_EQ(wide[1], 0xFFFD);
  const uint16_t units[] = {0x00E9, 0xD83D, 0xDE00};
  char narrow[16];
  ASSERT_EQ(SysFromWide(65001, units, 3, narrow, 16, nullptr), 6);
  EXPECT_EQ(std::memcmp(narrow, "\xc3\xa9\xf0\x9f\x98\x80", 6), 0);
}

// ---- Events, threads and locks

namespace {

struct Waiter {
  SysEvent go;
  SysEvent done;
  volatile int passed;
};

void waitThenSignal(void* argument) {
  Waiter* waiter = static_cast<Waiter*>(argument);
  if (SysWaitEvent(waiter->go, -1) == 0) waiter->passed = 1;
  SysSetEvent(waiter->done);
}

struct LockHolder {
  SysLock lock;
  SysEvent entered;
};

void enterThenSignal(void* argument) {
  LockHolder* holder = static_cast<LockHolder*>(argument);
  SysEnterLock(holder->lock);
  SysLeaveLock(holder->lock);
  SysSetEvent(holder->entered);
}

}  // namespace

TEST(SysMemory, LargeBlocksComeZeroedWholeAndApart) {
  const int64_t size = (int64_t{5} << 20) + 1;
  char* first = static_cast<char*>(SysTakeLargeBlock(size));
  char* second = static_cast<char*>(SysTakeLargeBlock(size));
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  for (int64_t i = 0; i < size; i += 4096) ASSERT_EQ(first[i], 0) << i;
  EXPECT_EQ(first[size - 1], 0);
  // Rings of the gap encoder start on cache lines only if the block does;
  // a block that may be in large pages starts on one.
  EXPECT_EQ(reinterpret_cast<uintptr_t>(first) % 64, 0u);
#if !defined(_WIN32) && !defined(__SANITIZE_ADDRESS__)
  EXPECT_EQ(reinterpret_cast<uintptr_t>(first) % (uintptr_t{2} << 20), 0u);
#endif
  std::memset(first, 0x5A, static_cast<size_t>(size));
  std::memset(second, 0x33, static_cast<size_t>(size));
  EXPECT_EQ(first[size - 1], 0x5A);
  SysFreeLargeBlock(first, size);
  // Freeing one gives back nothing of the other.
  EXPECT_EQ(second[0], 0x33);
  EXPECT_EQ(second[size - 1], 0x33);
  SysFreeLargeBlock(second, size);
}

TEST(SysEvent, TimeOutSetAndAutoReset) {
  SysEvent event = SysCreateEvent();
  ASSERT_NE(event, nullptr);
  SysTime before = SysNow();
  EXPECT_EQ(SysWaitEvent(event, 60), 2);
  EXPECT_GE(SysNow() - before, 40 * 10000ULL);  // the system may round down a little
  ASSERT_TRUE(SysSetEvent(event));
  EXPECT_EQ(SysWaitEvent(event, 0), 0);
  EXPECT_EQ(SysWaitEvent(event, 0), 2);  // the wait reset it
  EXPECT_TRUE(SysCloseEvent(event));
}

TEST(SysEvent, WaitOnTwoGivesTheIndexThatCame) {
  SysEvent first = SysCreateEvent();
  SysEvent second = SysCreateEvent();
  EXPECT_EQ(SysWaitEvents(first, second, 20), 2);
  SysSetEvent(second);
  EXPECT_EQ(SysWaitEvents(first, second, 1000), 1);
  SysSetEvent(first);
  EXPECT_EQ(SysWaitEvents(first, second, 1000), 0);
  SysSetEvent(first);
  SysSetEvent(second);
  EXPECT_EQ(SysWaitEvents(first, second, 1000), 0);
  EXPECT_EQ(SysWaitEvents(first, second, 1000), 1);
  EXPECT_EQ(SysWaitEvents(first, second, 0), 2);
  SysCloseEvent(first);
  SysCloseEvent(second);
}

TEST(SysThread, StartsAndWakesAcrossThreads) {
  Waiter waiter{SysCreateEvent(), SysCreateEvent(), 0};
  SysThread thread = SysStartThread(waitThenSignal, &waiter);
  ASSERT_NE(thread, nullptr);
  EXPECT_EQ(SysWaitEvent(waiter.done, 50), 2);
  SysSetEvent(waiter.go);
  EXPECT_EQ(SysWaitEvent(waiter.done, 5000), 0);
  EXPECT_EQ(waiter.passed, 1);
  SysReleaseThread(thread);
  SysCloseEvent(waiter.go);
  SysCloseEvent(waiter.done);
}

TEST(SysThread, KilledThreadNeverGoesOn) {
  Waiter waiter{SysCreateEvent(), SysCreateEvent(), 0};
  SysThread thread = SysStartThread(waitThenSignal, &waiter);
  ASSERT_NE(thread, nullptr);
  SysSleep(50);
  ASSERT_TRUE(SysKillThread(thread));
  // Once it has ended, a kill says so.
  int tries = 0;
  while (SysKillThread(thread) && tries++ < 200) SysSleep(10);
  EXPECT_FALSE(SysKillThread(thread));
  SysSetEvent(waiter.go);
  EXPECT_EQ(SysWaitEvent(waiter.done, 100), 2);
  EXPECT_EQ(waiter.passed, 0);
  SysReleaseThread(thread);
  SysCloseEvent(waiter.go);
  SysCloseEvent(waiter.done);
}

TEST(SysThread, CurrentThreadHasAnIdAndAHandle) {
  SysThread self = SysCurrentThread();
  ASSERT_NE(self, nullptr);
  EXPECT_NE(SysCurrentThreadId(), 0u);
  SysReleaseThread(self);
}

TEST(SysLock, RecursiveAndExclusive) {
  LockHolder holder{SysCreateLock(), SysCreateEvent()};
  SysEnterLock(holder.lock);
  SysEnterLock(holder.lock);
  SysThread thread = SysStartThread(enterThenSignal, &holder);
  ASSERT_NE(thread, nullptr);
  EXPECT_EQ(SysWaitEvent(holder.entered, 100), 2);
  SysLeaveLock(holder.lock);
  EXPECT_EQ(SysWaitEvent(holder.entered, 100), 2);  // still held once
  SysLeaveLock(holder.lock);
  EXPECT_EQ(SysWaitEvent(holder.entered, 5000), 0);
  SysReleaseThread(thread);
  SysDeleteLock(holder.lock);
  SysCloseEvent(holder.entered);
}

// ---- Break signal

namespace {
using Handler = void (*)(int);
Handler currentBreakHandler() {
  Handler present = std::signal(SIGINT, SIG_DFL);
  std::signal(SIGINT, present);
  return present;
}
void ownHandler(int) {}
}  // namespace

TEST(SysBreak, HeldCountedAndOwnHandlerLeftAlone) {
  ASSERT_EQ(currentBreakHandler(), SIG_DFL);
  SysHoldBreak();
  SysHoldBreak();
  EXPECT_EQ(currentBreakHandler(), SIG_IGN);
  std::raise(SIGINT);  // survives
  SysReleaseBreak();
  EXPECT_EQ(currentBreakHandler(), SIG_IGN);
  SysReleaseBreak();
  EXPECT_EQ(currentBreakHandler(), SIG_DFL);

  std::signal(SIGINT, ownHandler);
  SysHoldBreak();
  EXPECT_EQ(currentBreakHandler(), &ownHandler);
  SysReleaseBreak();
  EXPECT_EQ(currentBreakHandler(), &ownHandler);
  std::signal(SIGINT, SIG_DFL);
}
