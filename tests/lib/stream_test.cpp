#include "lib/stream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

#include "lib/mem_stream.h"
#include "lib/msg.h"
#include "lib/pos.h"
#include "lib/srm.h"
#include "lib/srm_pos.h"
#include "support/recorder.h"

// Reads the buffer state that the tests check.
struct LSrmProbe {
  static int32_t bufStart(const LSrmBase& s) { return s.bufStart; }
  static int32_t valid(const LSrmBase& s) { return s.valid; }
  static int32_t cur(const LSrmBase& s) { return s.cur; }
  static bool dirty(const LSrmBase& s) { return (s.flags & LSrmBase::kDirty) != 0; }
};

namespace {
const UChar* U(const char16_t* text) { return reinterpret_cast<const UChar*>(text); }

// 300 lines of ten bytes each: "line0000\r\n" ...
LStr numberedLines() {
  LStr text;
  for (int i = 0; i < 300; i++) text.format("line%04d\r\n", i);
  return text;
}

// A stream that keeps the sizes it was asked to read, and can refuse writes.
class ProbeStream : public LStream {
 public:
  LInts readSizes;
  bool refuseWrites = false;
  LStr written;
  int32_t read(void*, int32_t size) override {
    readSizes.add(size);
    return 0;
  }
  int32_t write(const void* buffer, int32_t size) override {
    if (refuseWrites) return 0;
    written.append(static_cast<const char*>(buffer), size);
    return size;
  }
  int32_t seek(int32_t) override { return written.length; }
  void flush() override {}
};
}  // namespace

TEST(LStream, MissingOperationsEndTheProcessWithTheirNumbers) {
  LStream bare;
  char byte = 0;
  const struct {
    const char* number;
    std::function<void()> call;
  } slots[] = {
      {"51000", [&] { bare.read(&byte, 1); }}, {"51010", [&] { bare.write(&byte, 1); }},
      {"51020", [&] { bare.seek(0); }},        {"51030", [&] { bare.tell(); }},
      {"51040", [&] { bare.flush(); }},        {"51050", [&] { bare.isOpen(); }},
      {"51060", [&] { bare.close(); }},        {"51070", [&] { bare.truncate(0); }},
  };
  for (const auto& slot : slots) {
    LStr pattern("Internal Error: ");
    pattern.append(slot.number);
    EXPECT_EXIT(slot.call(), testing::ExitedWithCode(2), pattern.ptr);
  }
  EXPECT_STREQ(bare.name(), "(unknown stream)");
  // A memory stream keeps the failing isOpen, and the buffered reader
  // forwards the question to it.
  LMemSrm memory("abc", 3);
  EXPECT_EXIT(memory.isOpen(), testing::ExitedWithCode(2), "Internal Error: 51050");
}

TEST(LMemStream, ReadClampsAndSeekIgnoresWhatIsOutside) {
  LMemStream stream("abcdef", 6);
  char out[8] = {};
  EXPECT_EQ(stream.read(out, 4), 4);
  EXPECT_EQ(stream.read(out, 4), 2);
  EXPECT_EQ(std::memcmp(out, "efcd", 4), 0);
  EXPECT_EQ(stream.read(out, 4), 0);
  EXPECT_EQ(stream.seek(6), 6);
  EXPECT_EQ(stream.seek(2), 2);
  EXPECT_EQ(stream.seek(7), 2);
  EXPECT_EQ(stream.seek(-1), 2);  // the end cannot be reached with -1
  EXPECT_EQ(stream.tell(), 2);
}

TEST(LMemOutStream, AppendsAndOnlyShortens) {
  LStr target("ab");
  LMemOutStream out(target);
  EXPECT_TRUE(out.isOpen());
  EXPECT_EQ(out.write("cdef", -1), 4);
  EXPECT_EQ(out.tell(), 6);
  EXPECT_EQ(out.seek(6), 6);  // the length itself leaves the text alone
  EXPECT_STREQ(target.ptr, "abcdef");
  EXPECT_EQ(out.seek(-1), 6);
  EXPECT_EQ(out.seek(3), 3);
  EXPECT_STREQ(target.ptr, "abc");

  UStr wide(U(u"x"));
  LMemOutStreamU outU(wide);
  EXPECT_EQ(outU.write(u"yz", 5), 4);  // an odd byte is dropped
  EXPECT_EQ(outU.tell(), 3);
  EXPECT_EQ(outU.writeText(U(u"!")), 2);
  EXPECT_TRUE(wide.equals(U(u"xyz!"), false));
  EXPECT_EQ(outU.seek(1), 1);
  EXPECT_TRUE(wide.equals(U(u"x"), false));
}

TEST(LStream, TextHelpers) {
  LStr target;
  LMemOutStream out(target);
  EXPECT_EQ(out.writeText(static_cast<const char*>(nullptr)), 0);
  EXPECT_EQ(out.printf("%d-%s", 42, "x"), 4);
  const char* list[] = {"a", "", "bc", nullptr};
  out.writeList(list);
  out.putChar('Z');
  out.putChar(0x82A0);  // a double-byte character goes high byte first
  EXPECT_EQ(target.length, 10);
  EXPECT_EQ(std::memcmp(target.ptr, "42-xabcZ\x82\xA0", 10), 0);

  LMemSrm in(target.ptr, target.length);
  LStr part("<");
  EXPECT_EQ(in.readInto(part, 3), 3);
  EXPECT_STREQ(part.ptr, "<42-");
  EXPECT_EQ(in.skip(2), 5);
  LStr rest;
  EXPECT_EQ(in.readAll(rest), 5);
  EXPECT_EQ(std::memcmp(rest.ptr, "bcZ\x82\xA0", 5), 0);

  const char wideBytes[] = {'h', 0, 'i', 0, '!'};
  LMemSrm wideIn(wideBytes, 5);
  UStr units;
  EXPECT_EQ(wideIn.readAll(units), 2);  // the odd byte makes no character
  EXPECT_TRUE(units.equals(U(u"hi"), false));
}

TEST(LStream, CopyFromCountsAndReportsShortWrites) {
  ProbeStream probe;
  LStr target;
  LMemOutStream out(target);
  EXPECT_EQ(out.copyFrom(probe, 0), 0);
  ASSERT_EQ(probe.readSizes.count, 1);
  EXPECT_EQ(probe.readSizes[0], 0);

  LStr big;
  for (int i = 0; i < 9000; i++) big.append(static_cast<char>(i));
  LMemStream source(big.ptr, big.length);
  EXPECT_EQ(out.copyFrom(source, 5000), 5000);
  EXPECT_EQ(out.copyFrom(source, -1), 4000);
  ASSERT_EQ(target.length, 9000);
  EXPECT_EQ(std::memcmp(target.ptr, big.ptr, 9000), 0);

  RecorderScope rec;
  ProbeStream refusing;
  refusing.refuseWrites = true;
  source.seek(0);
  EXPECT_EQ(refusing.copyFrom(source, 4500), 4500);
  ASSERT_EQ(rec->entries.count, 2);  // every chunk is reported, and the copy goes on
  EXPECT_EQ(rec->entries[0]->number, 15000);
  EXPECT_STREQ(rec->entries[0]->text.ptr, "failed to copy stream (4000 != 0)");
  EXPECT_STREQ(rec->entries[1]->text.ptr, "failed to copy stream (500 != 0)");
}

TEST(LSrm, LineNumbersFollowTheBufferAndStopAfterAFarSeek) {
  LStr text = numberedLines();
  LMemSrm srm(text.ptr, text.length);
  LStr scratch;
  EXPECT_EQ(srm.readInto(scratch, 1500), 1500);
  EXPECT_EQ(srm.lineNumber(), 151);
  EXPECT_EQ(LSrmProbe::bufStart(srm), 980);  // 20 bytes were kept behind the cursor

  EXPECT_EQ(srm.seek(srm.tell() - 20), 1480);
  EXPECT_EQ(LSrmProbe::bufStart(srm), 980);
  EXPECT_EQ(srm.lineNumber(), 149);
  EXPECT_EQ(srm.columnOffset(), 1);
  EXPECT_EQ(srm.getByte(), 'l');

  EXPECT_EQ(srm.seek(0), 0);
  EXPECT_EQ(srm.lineNumber(), 0);
  EXPECT_EQ(srm.columnOffset(), -1);
  srm.setLineNumber(1);
  scratch.clear();
  srm.readInto(scratch, 2995);
  EXPECT_EQ(srm.lineNumber(), 300);
  EXPECT_EQ(srm.columnOffset(), 6);
  srm.reset();
  EXPECT_EQ(srm.lineNumber(), 1);
}

TEST(LSrm, WideTextCountsLfNulPairs) {
  const char bytes[] = {'a', 0, '\n', 0, 'b', 0, '\n', 0, 0x0A, 0x30, 'c', 0};
  LMemSrm srm(bytes, sizeof bytes);
  srm.setWideText(true);
  UStr line;
  EXPECT_EQ(srm.readLine(&line, LSrm::kDropLineEnd), '\n');
  EXPECT_TRUE(line.equals(U(u"a"), false));
  EXPECT_EQ(srm.lineNumber(), 2);
  line.clear();
  srm.readLine(&line, LSrm::kKeepLineEnd);
  EXPECT_TRUE(line.equals(U(u"b\n"), false));
  line.clear();
  EXPECT_EQ(srm.readLine(&line, LSrm::kDropLineEnd), -1);
  EXPECT_TRUE(line.equals(U(u"\u300Ac"), false));  // 0x300A holds an LF byte, not a line end
  EXPECT_EQ(srm.lineNumber(), 3);
}

TEST(LSrm, SeekToTheEndOfTheValidBytesStaysInside) {
  LStr text = numberedLines();
  LMemSrm srm(text.ptr, text.length);
  srm.getByte();
  ASSERT_EQ(LSrmProbe::valid(srm), 1000);
  EXPECT_EQ(srm.seek(1000), 1000);
  EXPECT_EQ(LSrmProbe::valid(srm), 1000);
  EXPECT_EQ(LSrmProbe::cur(srm), 1000);
  EXPECT_EQ(srm.lineNumber(), 101);
  EXPECT_EQ(srm.getByte(), 'l');
  EXPECT_EQ(srm.seek(2001), 2001);  // outside: the buffer starts there
  EXPECT_EQ(LSrmProbe::bufStart(srm), 2001);
  EXPECT_EQ(srm.getByte(), 'i');
}

TEST(LSrm, ReadingPastTheEndSetsAtEndUntilTheNextSeek) {
  LMemSrm srm("0123456789", 10);
  char out[20];
  EXPECT_EQ(srm.read(out, 4), 4);
  EXPECT_FALSE(srm.atEnd());
  EXPECT_EQ(srm.read(out, 20), 6);
  EXPECT_TRUE(srm.atEnd());
  EXPECT_EQ(srm.getByte(), -1);
  EXPECT_EQ(srm.getWord(), -1);
  EXPECT_EQ(srm.getDword(), -1);
  EXPECT_EQ(srm.peekByte(), -1);
  EXPECT_EQ(srm.peekBuffer(1), nullptr);
  srm.seek(8);
  EXPECT_FALSE(srm.atEnd());
  EXPECT_EQ(srm.peekWord(), '8' | '9' << 8);
  EXPECT_EQ(srm.getDword(), -1);  // two bytes are not a dword
}

namespace {
// Memory that counts the reads asked of it.
class CountingStream : public LMemStream {
 public:
  using LMemStream::LMemStream;
  int32_t read(void* buffer, int32_t size) override {
    reads++;
    return LMemStream::read(buffer, size);
  }
  int32_t reads = 0;
};
}  // namespace

TEST(LSrm, ALargeReadAfterASeekPassesTheBuffer) {
  LStr data;
  for (int i = 0; i < 10000; i++) data.append(static_cast<char>('a' + i % 26));
  CountingStream inner(data.ptr, data.length);
  LSrm srm(&inner);
  srm.seek(10);  // a seek ends the count of lines
  char small[3];
  ASSERT_EQ(srm.read(small, 3), 3);
  inner.reads = 0;
  LStr big;
  ASSERT_EQ(srm.readInto(big, 5000), 5000);
  EXPECT_TRUE(std::memcmp(big.ptr, data.ptr + 13, 5000) == 0);
  EXPECT_LE(inner.reads, 2);  // not one per thousand bytes
  EXPECT_EQ(srm.tell(), 5013);
  EXPECT_EQ(srm.getByte(), data[5013]);
  // Back into the bytes that went past the buffer, and on past the end.
  EXPECT_EQ(srm.seek(4000), 4000);
  EXPECT_EQ(srm.getByte(), data[4000]);
  big.clear();
  EXPECT_EQ(srm.readInto(big, 8000), 5999);
  EXPECT_TRUE(std::memcmp(big.ptr, data.ptr + 4001, 5999) == 0);
  EXPECT_TRUE(srm.atEnd());
  EXPECT_EQ(srm.getByte(), -1);
}

TEST(LSrm, FixedWidthReadsAreLowByteFirstAlsoAcrossARefill) {
  LStr data;
  for (int i = 0; i < 1003; i++) data.append('.');
  data.append("\x01\x02\x03\x04\xFF\xFF\xFF\xFF", 8);
  LMemSrm srm(data.ptr, data.length);
  LStr scratch;
  srm.readInto(scratch, 998);
  // Both words straddle the end of the first buffer load.
  EXPECT_EQ(srm.getWord(), '.' | '.' << 8);
  EXPECT_EQ(srm.getDword(), 0x012E2E2E);
  EXPECT_EQ(srm.peekWord(), 0x0302);
  EXPECT_EQ(srm.getWord(), 0x0302);
  EXPECT_EQ(srm.peekByte(), 4);
  EXPECT_EQ(srm.getByte(), 4);
  EXPECT_EQ(srm.getDword(), 0xFFFFFFFFLL);
}

TEST(LSrm, WritesOverwriteInPlaceAfterASeekBack) {
  LStr target;
  {
    LMemOutStream out(target);
    LSrm srm(&out);
    for (int i = 0; i < 100; i++) srm.putChar('a');
    EXPECT_EQ(srm.seek(50), 50);
    EXPECT_EQ(srm.write("XYZ", 3), 3);
    EXPECT_EQ(LSrmProbe::valid(srm), 100);
    EXPECT_EQ(srm.tell(), 53);
    EXPECT_TRUE(LSrmProbe::dirty(srm));
    srm.flush();
    EXPECT_EQ(srm.tell(), 53);  // flushing does not move the cursor
    EXPECT_FALSE(LSrmProbe::dirty(srm));
  }
  ASSERT_EQ(target.length, 100);
  EXPECT_EQ(std::memcmp(target.ptr + 49, "aXYZa", 5), 0);
}

TEST(LSrm, LongWritesPassTheBufferAndConvertLineEnds) {
  LStr big;
  for (int i = 0; i < 5000; i++) big.append(static_cast<char>('A' + i % 23));
  LStr target;
  {
    LMemOutStream out(target);
    LSrm srm(&out);
    EXPECT_EQ(srm.write(big.ptr, big.length), 5000);
    EXPECT_FALSE(srm.setCrLf(true));
    srm.writeText("x\ny\r\n");
    EXPECT_TRUE(srm.setCrLf(false));
    srm.writeText("\n");
  }
  ASSERT_EQ(target.length, 5000 + 7);
  EXPECT_EQ(std::memcmp(target.ptr, big.ptr, 5000), 0);
  EXPECT_STREQ(target.ptr + 5000, "x\r\ny\r\n\n");
}

namespace {
// A file in memory: writes go over what is there and past its end; it
// counts the writes asked of it.
class OverwriteStream : public LStream {
 public:
  int32_t write(const void* buffer, int32_t size) override {
    writes++;
    std::string& d = data;
    if (static_cast<size_t>(at) + size > d.size()) d.resize(at + size);
    std::memcpy(&d[at], buffer, size);
    at += size;
    return size;
  }
  int32_t seek(int32_t position) override { return at = position; }
  void flush() override {}
  std::string data;
  int32_t at = 0;
  int32_t writes = 0;
};
}  // namespace

TEST(LSrm, ALargeWriteAfterASeekPassesTheBufferAndOverwritesInPlace) {
  std::string before;
  for (int i = 0; i < 6000; i++) before += static_cast<char>('a' + i % 26);
  std::string big;
  for (int i = 0; i < 5000; i++) big += static_cast<char>('A' + i % 23);
  OverwriteStream inner;
  inner.data = before;
  {
    LSrm srm(&inner);
    srm.seek(100);  // a seek outside the buffer ends the count of lines
    srm.write("0123456789", 10);
    srm.seek(105);  // back into the buffer: what follows goes over the rest
    EXPECT_EQ(srm.write(big.data(), static_cast<int32_t>(big.size())), 5000);
    EXPECT_EQ(srm.tell(), 5105);
    srm.write("zz", 2);
  }
  EXPECT_LE(inner.writes, 3);  // not one per thousand bytes
  EXPECT_EQ(inner.data, before.substr(0, 100) + "01234" + big + "zz" + before.substr(5107));
}

// A file written from its start counts lines until its first seek; a large
// write passes the buffer all the same, and the count takes in its lines.
// In 16-bit text an LF byte is a line end only with the NUL after it.
TEST(LSrm, ALargeWriteOnAStreamThatCountsLinesPassesTheBuffer) {
  std::string big;
  for (int i = 0; i < 5000; i++) big += i % 10 == 9 ? '\n' : static_cast<char>('a' + i % 26);
  OverwriteStream inner;
  {
    LSrm srm(&inner);
    srm.write("a\nb", 3);
    EXPECT_EQ(srm.write(big.data(), static_cast<int32_t>(big.size())), 5000);
    srm.write("\nc", 2);
    EXPECT_EQ(srm.lineNumber(), 1 + 1 + 500 + 1);
  }
  EXPECT_LE(inner.writes, 3);
  EXPECT_EQ(inner.data, "a\nb" + big + "\nc");

  std::string wide;
  for (int i = 0; i < 2500; i++) wide += "\x0A\x30";  // U+300A: an LF byte, no line end
  wide += std::string("\n\0", 2);
  OverwriteStream wideInner;
  LSrm srm(&wideInner);
  srm.setWideText(true);
  EXPECT_EQ(srm.write(wide.data(), static_cast<int32_t>(wide.size())), 5002);
  EXPECT_EQ(srm.lineNumber(), 2);
}

TEST(LSrm, AStalledWriteIsReportedOrFatal) {
  ProbeStream refusing;
  refusing.refuseWrites = true;
  {
    LSrm srm(&refusing);
    LStr big;
    for (int i = 0; i < 1500; i++) big.append('q');
    EXPECT_EQ(srm.write(big.ptr, big.length), 1000);
  }
  EXPECT_EXIT(
      {
        LSrm srm(&refusing);
        srm.setFailOnWrite(true);
        srm.writeText("lost");
        srm.flush();
      },
      testing::ExitedWithCode(2), "Internal Error: write error to \\(unknown stream\\)");
}

TEST(LSrm, ReadUntilLeavesTheStopByteAndStepsOverDoubleByteCharacters) {
  // The second byte of 表 is 0x5C, the value of a backslash.
  LStr text("表\\x");
  text.append('\0');
  text.append("y;z");
  LMemSrm srm(text.ptr, text.length);
  LStr got;
  EXPECT_EQ(srm.readUntil("\\", &got), '\\');
  EXPECT_STREQ(got.ptr, "表");
  EXPECT_EQ(srm.getByte(), '\\');
  got.clear();
  EXPECT_EQ(srm.readUntil(";", &got), ';');  // a NUL is gathered, not a stop
  EXPECT_EQ(got.length, 3);
  EXPECT_EQ(srm.readUntil("#", nullptr), -1);
  EXPECT_TRUE(srm.atEnd());
}

TEST(LSrm, ReadLineModes) {
  const char text[] = "one\r\ntwo\nthree\rfour\r";
  LMemSrm srm(text, sizeof text - 1);
  LStr line;
  EXPECT_EQ(srm.readLine(&line, LSrm::kDropLineEnd), '\r');
  EXPECT_STREQ(line.ptr, "one");
  line.clear();
  EXPECT_EQ(srm.readLine(&line, LSrm::kKeepLineEnd), '\n');
  EXPECT_STREQ(line.ptr, "two\n");
  line.clear();
  EXPECT_EQ(srm.readLine(&line, LSrm::kLeaveLineEnd), '\r');
  EXPECT_STREQ(line.ptr, "three");
  EXPECT_EQ(srm.peekByte(), '\r');
  srm.getByte();
  line.clear();
  EXPECT_EQ(srm.readLine(&line, LSrm::kKeepLineEnd), '\r');  // a lone CR at the very end
  EXPECT_STREQ(line.ptr, "four\r");
  line.clear();
  EXPECT_EQ(srm.readLine(&line, LSrm::kDropLineEnd), -1);
  EXPECT_STREQ(line.ptr, "");
  EXPECT_EQ(srm.lineNumber(), 3);
}

TEST(LSrm, ReadUntilTextConsumesTheTextAlsoAcrossARefill) {
  LStr text;
  for (int i = 0; i < 995; i++) text.append('-');
  text.append("-END-tail");
  LMemSrm srm(text.ptr, text.length);
  LStr got;
  EXPECT_TRUE(srm.readUntilText("-END-", &got));
  EXPECT_EQ(got.length, 1000);
  EXPECT_STREQ(got.ptr + 995, "-END-");
  EXPECT_TRUE(srm.lookingAt("tail"));
  EXPECT_FALSE(srm.readUntilText("none", nullptr));
}

TEST(LSrm, LookingAtDoesNotMove) {
  LMemSrm srm("Hello, 表World", -1 + static_cast<int32_t>(sizeof "Hello, 表World"));
  EXPECT_TRUE(srm.lookingAt("Hello"));
  EXPECT_FALSE(srm.lookingAt("hello"));
  EXPECT_TRUE(srm.lookingAtFolded("hELLO, 表w"));
  EXPECT_FALSE(srm.lookingAt("Hello, 表World!"));
  EXPECT_EQ(srm.tell(), 0);
  const char wide[] = {'a', 0, 'b', 0};
  LMemSrm wideSrm(wide, 4);
  EXPECT_TRUE(wideSrm.lookingAt(U(u"ab")));
  EXPECT_FALSE(wideSrm.lookingAt(U(u"b")));
}

TEST(LSrm, CStringsEndAtNul) {
  LMemSrm srm("ab\0cd", 5);
  LStr got;
  EXPECT_TRUE(srm.readCString(got));
  EXPECT_STREQ(got.ptr, "ab");
  got.clear();
  EXPECT_FALSE(srm.readCString(got));
  EXPECT_STREQ(got.ptr, "cd");
}

TEST(LSrmPos, PrefixesMessagesWithTheLiveLine) {
  RecorderScope rec;
  LMemSrm srm("a\nb\nc", 5);
  {
    LPosScope scope(new LSrmPos(srm, "settings.ini", 10));
    srm.readLine(nullptr, LSrm::kDropLineEnd);
    FMsg(15001, "first");
    srm.readLine(nullptr, LSrm::kDropLineEnd);
    srm.getByte();
    FMsg(15001, "second");
    EXPECT_EQ(FPosGet(0), 13);
    EXPECT_EQ(FPosGet(1), 2);
  }
  FPushStreamPos(srm, nullptr, 0);
  FMsg(15001, "third");
  FPopPos(true);
  ASSERT_EQ(rec->entries.count, 3);
  EXPECT_STREQ(rec->entries[0]->position.ptr, "settings.ini(12)");
  EXPECT_STREQ(rec->entries[1]->position.ptr, "settings.ini(13)");
  EXPECT_STREQ(rec->entries[2]->position.ptr, "(unknown stream)(3)");
}
