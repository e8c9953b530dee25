#include "lib/file_stream.h"

#include <gtest/gtest.h>

#include <cstring>

#include "lib/io_file.h"
#include "lib/sys.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace {
LStr readWholeFile(const char* path) {
  LStr content;
  LFile file;
  EXPECT_EQ(file.open(path, 'r', /*mustExist=*/true, /*ignoreBreak=*/false), 0);
  file.readAll(content);
  return content;
}

void writeWholeFile(const char* path, const char* text) {
  LIoFile file(path, 'w', /*mustExist=*/true);
  ASSERT_TRUE(file.isOpen());
  file.writeText(text);
}

bool startsWith(const LStr& text, const char* prefix) {
  return std::strncmp(text.ptr, prefix, std::strlen(prefix)) == 0;
}
}  // namespace

TEST(LFile, MissingFileIsReportedOnlyWhenItMustExist) {
  TestTempDir dir;
  LStr path = dir.file("missing.txt");
  RecorderScope rec;
  LFile file;
  EXPECT_NE(file.open(path.ptr, 'r', /*mustExist=*/false, /*ignoreBreak=*/false), 0);
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(rec->entries.count, 0);
  EXPECT_STREQ(file.name(), path.ptr);

  EXPECT_NE(file.open(path.ptr, 'r', /*mustExist=*/true, /*ignoreBreak=*/false), 0);
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_EQ(rec->entries[0]->number, 17000);
  LStr expected("cannot open ");
  expected.append(path);
  expected.append(": ");
  EXPECT_TRUE(startsWith(rec->entries[0]->text, expected.ptr)) << rec->entries[0]->text.ptr;

  // A closed stream does nothing and says nothing.
  char byte = 'x';
  EXPECT_EQ(file.read(&byte, 1), 0);
  EXPECT_EQ(file.write(&byte, 1), 0);
  EXPECT_EQ(file.seek(5), 0);
  EXPECT_EQ(file.tell(), 0);
  file.truncate(0);
  file.close();
  EXPECT_EQ(rec->entries.count, 1);
  EXPECT_STREQ(LHandle().name(), "Windows HANDLE");
}

TEST(LFile, UnknownModeEndsTheProcess) {
  TestTempDir dir;
  LStr path = dir.file("x.txt");
  LFile file;
  EXPECT_EXIT(file.open(path.ptr, 'x', false, false), testing::ExitedWithCode(2),
              "Internal Error: 1130");
}

TEST(LFile, FailedSystemCallsNameTheOperation) {
  TestTempDir dir;
  LStr path = dir.file("w.txt");
  RecorderScope rec;
  LFile file;
  ASSERT_EQ(file.open(path.ptr, 'w', true, true), 0);
  char buffer[4];
  EXPECT_EQ(file.read(buffer, 4), 0);  // the file is open for writing only
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_EQ(rec->entries[0]->number, 17000);
  EXPECT_TRUE(startsWith(rec->entries[0]->text, "ReadFile(): ")) << rec->entries[0]->text.ptr;
}

TEST(LIoFile, WritesAndReadsBackThroughTheBuffer) {
  TestTempDir dir;
  LStr path = dir.file("lines.txt");
  LStr text;
  for (int i = 0; i < 400; i++) text.format("line %d\r\n", i);
  writeWholeFile(path.ptr, text.ptr);
  EXPECT_STREQ(readWholeFile(path.ptr).ptr, text.ptr);

  LIoFile in(path.ptr, 'r', true);
  ASSERT_TRUE(in.isOpen());
  EXPECT_STREQ(in.name(), path.ptr);
  LStr line;
  for (int i = 0; i < 250; i++) {
    line.clear();
    in.readLine(&line, LSrm::kDropLineEnd);
  }
  EXPECT_STREQ(line.ptr, "line 249");
  EXPECT_EQ(in.lineNumber(), 251);
  // Far back, then forward again: the content is the file's.
  EXPECT_EQ(in.seek(0), 0);
  EXPECT_TRUE(in.lookingAt("line 0\r\n"));
  EXPECT_EQ(in.seek(-1), text.length);
  EXPECT_EQ(in.getByte(), -1);
  EXPECT_TRUE(in.atEnd());
}

TEST(LIoFile, SeekBackOutsideTheBufferPatchesTheFile) {
  TestTempDir dir;
  LStr path = dir.file("patch.bin");
  {
    LIoFile out(path.ptr, 'w', true);
    for (int i = 0; i < 3000; i++) out.putChar('a' + i % 26);
    EXPECT_EQ(out.seek(10), 10);
    out.writeText("XY");
    EXPECT_EQ(out.tell(), 12);
    EXPECT_EQ(out.seek(-1), 3000);
    out.writeText("!");
  }
  LStr content = readWholeFile(path.ptr);
  ASSERT_EQ(content.length, 3001);
  EXPECT_EQ(std::memcmp(content.ptr + 8, "ijXYm", 5), 0);
  EXPECT_EQ(content[2999], 'a' + 2999 % 26);
  EXPECT_EQ(content[3000], '!');
}

TEST(LIoFile, AppendModeStartsAtTheEnd) {
  TestTempDir dir;
  LStr path = dir.file("log.txt");
  writeWholeFile(path.ptr, "abc");
  {
    LIoFile out(path.ptr, 'a', true);
    EXPECT_EQ(out.tell(), 3);
    out.writeText("def");
    EXPECT_EQ(out.tell(), 6);
  }
  EXPECT_STREQ(readWholeFile(path.ptr).ptr, "abcdef");
  LStr fresh = dir.file("fresh.txt");
  {
    LIoFile out(fresh.ptr, 'a', true);
    EXPECT_EQ(out.tell(), 0);
    out.writeText("new");
  }
  EXPECT_STREQ(readWholeFile(fresh.ptr).ptr, "new");
}

TEST(LIoFile, TruncateCutsAtAPositionOrAtTheCursor) {
  TestTempDir dir;
  LStr path = dir.file("cut.txt");
  {
    LIoFile out(path.ptr, 'w', true);
    for (int i = 0; i < 100; i++) out.putChar('0' + i % 10);
    out.truncate(40);
    EXPECT_EQ(out.tell(), 40);
    out.seek(20);
    out.writeText("zz");
    out.truncate(-1);
    EXPECT_EQ(out.tell(), 22);
    out.writeText("!");
  }
  EXPECT_STREQ(readWholeFile(path.ptr).ptr, "01234567890123456789zz!");
}

TEST(LIoFile, CopyFromOneFileToAnother) {
  TestTempDir dir;
  LStr from = dir.file("from.bin");
  LStr to = dir.file("to.bin");
  LStr data;
  for (int i = 0; i < 12345; i++) data.append(static_cast<char>('A' + i % 50));
  writeWholeFile(from.ptr, data.ptr);
  {
    LIoFile in(from.ptr, 'r', true);
    LIoFile out(to.ptr, 'w', true);
    EXPECT_EQ(out.copyFrom(in, -1), 12345);
  }
  EXPECT_STREQ(readWholeFile(to.ptr).ptr, data.ptr);
}
