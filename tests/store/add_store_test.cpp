#include <gtest/gtest.h>

#include <string>

#include "lib/fail.h"
#include "lib/sys.h"
#include "store/added_archive.h"
#include "store/progress.h"

namespace {

// Bytes of a text-like file: words from a small vocabulary, so that both
// matchers find work, different for each seed.
std::string textOf(uint32_t seed, int32_t size) {
  static const char* const kWords[] = {"alpha ", "beta ",   "gamma\n", "delta ",
                                       "{ x; }", "return ", "0x1F, ",  "kestrel "};
  std::string out;
  uint32_t state = seed * 2654435761u + 1;
  while (static_cast<int32_t>(out.size()) < size) {
    state = state * 1103515245u + 12345u;
    out += kWords[(state >> 16) % 8];
  }
  out.resize(size);
  return out;
}

class AddStoreTest : public AddedArchiveTest {
 protected:
  // The archive that this sequence of adds makes with a number of threads:
  // new files of many sizes; then half of them changed, one with its old
  // content under a new date; then one name given twice in one add, so that
  // a new version's predecessor is itself new. Each add has its own store
  // time, the same in every run.
  // The archive, which keeps its own name, is "a.kst" in the folder `run`.
  std::string build(const char* run, int32_t threads) {
    SysMakeFolder(dir.file(run).ptr);
    LStr path = dir.file(run);
    path.append(SysPathSeparator()).append("a.kst");
    archive->loadArchive(path.ptr, false, false);
    options.threads = threads;
    for (int32_t i = 0; i < 24; i++)
      write(srcPath(fileName(i).c_str()), textOf(i, i * i * 517), 1600000000 + i);
    addPaths({src}, 1700000000);
    for (int32_t i = 0; i < 24; i += 2)
      write(srcPath(fileName(i).c_str()),
            i == 4 ? textOf(i, i * i * 517) : textOf(i + 100, i * i * 530), 1600001000 + i);
    addPaths({src}, 1700001000);
    LStr other = dir.file("other");
    SysMakeFolder(other.ptr);
    LStr twin = other;
    twin.append(SysPathSeparator()).append("f03.txt");
    write(twin, textOf(7, 70000), 1600002000);
    addPaths({twin, srcPath("f03.txt"), srcPath("f05.txt")}, 1700002000);
    return TestReadFile(path.ptr);
  }

  // Writes a file with the times that the archive keeps, the same in every
  // run. The access time lies ahead of the clock, where reading the file
  // does not move it.
  void write(const LStr& path, const std::string& bytes, int64_t modified) {
    FMakeDirs(path.ptr);
    TestWriteFile(path.ptr, bytes);
    SysTime access, write;
    FFromUnixTime(accessTime_, access);
    FFromUnixTime(modified, write);
    SysSetFileTimes(path.ptr, 0, access, write);
  }

  static std::string fileName(int32_t i) {
    return std::string(i < 10 ? "f0" : "f") + std::to_string(i) + ".txt";
  }
  LStr srcPath(const char* name) const {
    LStr path(src);
    path.append(SysPathSeparator()).append(name);
    return path;
  }
  const int64_t accessTime_ = FToUnixTime(SysNow()) + 3600;

  void addPaths(std::initializer_list<LStr> given, int64_t storeTime) {
    LStrs paths;
    for (const LStr& path : given) paths.add(new LStr(path));
    TCond cond;
    cond.Parse();
    FWorkSet()->storeTime = storeTime;
    FCmdAdd(archive->root, paths, &cond, options);
    FNewWorkSet();
  }
};

// Where two archives first differ, for the message of a failure.
size_t firstDifference(const std::string& a, const std::string& b) {
  size_t at = 0;
  while (at < a.size() && at < b.size() && a[at] == b[at]) at++;
  return at;
}

// The blocks are written in the order of one thread whatever number encode
// them: given the same clock, the archives are the same to the byte.
TEST_F(AddStoreTest, ArchiveBytesDoNotDependOnTheThreads) {
  const std::string one = build("one", 1);
  const std::string byDefault = build("default", 0);
  const std::string three = build("three", 3);
  EXPECT_GT(one.size(), 100000u);
  EXPECT_TRUE(one == byDefault) << "first difference at " << firstDifference(one, byDefault);
  EXPECT_TRUE(one == three) << "first difference at " << firstDifference(one, three);
  // The twin and then the file of that name became two versions of one
  // file in one add.
  const char* names[] = {"f03.txt", nullptr};
  TRec* f03 = archive->root->findPath(names);
  ASSERT_NE(f03, nullptr);
  EXPECT_EQ(2, f03->childCount());
}

// Stops the command at the first item it shows, while a large file is being
// encoded on the pool.
class StopAtFirstItem : public TProgressSink {
 public:
  void showPercent(int32_t) override {}
  void showItem(const char*) override {
    if (asked != 0) return;
    asked = SysNow();
    FWorkSet()->stopState = kStopNow;
  }
  SysTime asked = 0;
};

TEST_F(AddStoreTest, StopAnswersInTheMiddleOfALargeFile) {
  put("large.txt", textOf(1, 48 << 20), 1600000000);
  StopAtFirstItem sink;
  FSetProgressSink(&sink);
  LStrs paths;
  paths.add(new LStr(src));
  TCond cond;
  cond.Parse();
  const std::string before =
      FExists(dir.file("a.kst").ptr) == kExistsFile ? TestReadFile(dir.file("a.kst").ptr) : "";
  int thrown = 0;
  try {
    FCmdAdd(archive->root, paths, &cond, options);
  } catch (int value) {
    thrown = value;
  }
  const SysTime ended = SysNow();
  FSetProgressSink(nullptr);
  EXPECT_EQ(kThrowStopped, thrown);
  ASSERT_NE(sink.asked, 0u);
  // SysTime counts 100 ns.
  EXPECT_LT(ended - sink.asked, static_cast<SysTime>(10000000));
  const std::string after =
      FExists(dir.file("a.kst").ptr) == kExistsFile ? TestReadFile(dir.file("a.kst").ptr) : "";
  EXPECT_TRUE(before == after);
}

}  // namespace
