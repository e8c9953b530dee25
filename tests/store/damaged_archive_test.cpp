// A corpus of archives damaged by hand, each at one structure: cut short at
// every boundary, flipped bytes in the header, the free chain, the footer
// and the blocks, loops in the chains. Each must end in its clear failure
// (or read correctly where the damage is harmless), never in a crash, a
// hang or a read past a buffer, and the program must stay usable after it.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "archive/format.h"
#include "lib/file_time.h"
#include "lib/file_util.h"
#include "lib/fixed_coding.h"
#include "store/add_command.h"
#include "store/cond.h"
#include "store/delete_command.h"
#include "store/version_io.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"

namespace {

struct Damage {
  const char* what;
  std::function<void(std::string&)> apply;
  // The number in the box the load or a read must end in; 0 when the
  // archive must still read correctly.
  int number;
  // Where the lengths of the numbers decide which structure notices first,
  // the other number that may come.
  int alternative = -1;
};

class DamagedArchiveTest : public ArchiveTest {
 protected:
  DamagedArchiveTest() {
    FNewWorkSet();
    path = dir.file("good.kst");
    archive->loadArchive(path.ptr, false, false);
    std::string text;
    for (int i = 0; i < 400; i++) text += "line " + std::to_string(i) + "\n";
    for (int v = 0; v < 3; v++) {
      put("src/a.txt", text + std::to_string(v), v);
      put("src/sub/b.bin", std::string(3000, static_cast<char>('0' + v)), v);
      put("src/gone.txt", "to be deleted " + std::to_string(v), v);
      addSource();
    }
    LArrOf<TRec*> gone;
    const char* names[] = {"src", "gone.txt", nullptr};
    gone.add(archive->root->findPath(names));
    FCmdDelete(gone);  // leaves a hole: the free chain has an entry
    FNewWorkSet();
    good = TestReadFile(path.ptr);
    treePos = FGetI32(good.data() + kOffsetTreePos);
    freeHead = FGetI32(good.data() + kOffsetFreeHead);
    const char* aName[] = {"src", "a.txt", nullptr};
    TFile* a = static_cast<TFile*>(archive->root->findPath(aName));
    oldest = a->version(0)->dataPos;
    newest = a->version(2)->dataPos;
  }
  ~DamagedArchiveTest() override { FDeleteWorkSet(); }

  void put(const char* name, const std::string& bytes, int v) {
    LStr file = dir.file(name);
    FMakeDirs(file.ptr);
    TestWriteFile(file.ptr, bytes);
    SysTime t = FUnixToFileTime(1600000000 + v * 100);
    SysSetFileTimes(file.ptr, 0, t, t);
  }
  void addSource() {
    LStrs paths;
    paths.add(new LStr(dir.file("src")));
    TCond cond;
    cond.Parse();
    FCmdAdd(archive->root, paths, &cond, TAddOptions());
    FNewWorkSet();
    archive->discardUpdate();
  }

  // Loads the damaged bytes and reads every version; returns the archive
  // format number of the first failure, 0 for none, -1 for another box.
  int tryDamaged(const std::string& bytes) {
    LStr damaged = dir.file("damaged.kst");
    TestWriteFile(damaged.ptr, bytes);
    size_t boxes = static_cast<size_t>(recorder->boxes.count);
    archive->loadArchive(damaged.ptr, false, false);
    int failure = boxNumber(boxes);
    if (failure != 0) {
      EXPECT_TRUE(archive->isUntitled());  // the program fell back and goes on
      return failure;
    }
    try {
      readAll(archive->root);
    } catch (int) {
      return boxNumber(boxes);
    }
    return 0;
  }
  void readAll(TRecF* folder) {
    for (TRec* child : folder->children) {
      if (!child->isFile()) {
        readAll(static_cast<TRecF*>(child));
        continue;
      }
      for (TRec* rec : static_cast<TFile*>(child)->children) {
        TVer* ver = static_cast<TVer*>(rec);
        THeldBuf raw;
        FReadRaw(ver, raw);
        ver->Info();
        FNewWorkSet();
      }
    }
  }
  int boxNumber(size_t before) {
    if (static_cast<size_t>(recorder->boxes.count) == before) return 0;
    std::string box = recorder->boxes.last()->ptr;
    size_t at = box.find("識別番号=");
    if (at != std::string::npos) return std::stoi(box.substr(at + std::string("識別番号=").size()));
    for (int n : {2000, 2010, 2020}) {
      if (box.find("#" + std::to_string(n) + "|") != std::string::npos) return n;
    }
    return -1;
  }

  LStr path;
  std::string good;
  int32_t treePos = 0, freeHead = 0, oldest = 0, newest = 0;
};

void setI32(std::string& bytes, int32_t at, int32_t value) { FPutI32(&bytes[at], value); }

// Where the tree begins in the footer: behind the string entries (each short
// enough for a one-byte length).
size_t treeStart(const std::string& bytes, int32_t treePos) {
  size_t at = static_cast<size_t>(treePos);
  while (static_cast<unsigned char>(bytes[at]) == kTagString)
    at += 2 + static_cast<unsigned char>(bytes[at + 1]);
  return at;
}

}  // namespace

TEST_F(DamagedArchiveTest, EveryDamageEndsInItsFailure) {
  ASSERT_NE(freeHead, 0);
  const int32_t t = treePos;
  const std::vector<Damage> corpus = {
      {"empty file", [](std::string& b) { b.clear(); }, 2000},
      {"one byte", [](std::string& b) { b.resize(1); }, 2000},
      {"63 bytes", [](std::string& b) { b.resize(63); }, 2000},
      {"header only", [](std::string& b) { b.resize(64); }, 2020},
      {"cut before the footer", [t](std::string& b) { b.resize(t - 1); }, 2020},
      {"cut at the footer", [t](std::string& b) { b.resize(t); }, 242},
      {"cut in the string table", [t](std::string& b) { b.resize(t + 3); }, 312},
      {"cut before the end tag", [](std::string& b) { b.resize(b.size() - 1); }, 242},
      {"cut in the last version", [](std::string& b) { b.resize(b.size() - 4); }, 312, 263},
      {"byte behind the footer", [](std::string& b) { b += '\0'; }, 338},
      {"wrong magic", [](std::string& b) { b[0] = 'k'; }, 2000},
      {"magic without its NUL", [](std::string& b) { b[3] = 'X'; }, 2000},
      {"format 003", [](std::string& b) { b[6] = '3'; }, 2010},
      {"format 005", [](std::string& b) { b[6] = '5'; }, 2010},
      {"treePos beyond the file", [](std::string& b) { setI32(b, 8, 0x7fffffc0); }, 2020},
      {"treePos inside the header", [](std::string& b) { setI32(b, 8, 32); }, 339},
      {"treePos not aligned", [t](std::string& b) { setI32(b, 8, t - 1); }, 339},
      {"freeHead into the header", [](std::string& b) { setI32(b, 12, 8); }, 339},
      {"freeHead not aligned", [this](std::string& b) { setI32(b, 12, freeHead + 4); }, 339},
      {"freeHead at the footer", [t](std::string& b) { setI32(b, 12, t); }, 339},
      {"free extent of size 0", [this](std::string& b) { setI32(b, freeHead, 0); }, 339},
      {"free extent past the footer", [this](std::string& b) { setI32(b, freeHead, 1 << 30); },
       339},
      {"free chain loops", [this](std::string& b) { setI32(b, freeHead + 4, freeHead); }, 339},
      {"free chain goes up", [t, this](std::string& b) { setI32(b, freeHead + 4, t - 64); }, 339},
      {"bad tag among folders", [t](std::string& b) { b[b.size() - 1] = '\x42'; }, 242},
      {"string length too large", [t](std::string& b) { b[t + 1] = '\x7f'; }, 312},
      {"number with stray tag bits", [t](std::string& b) { b[t + 1] = '\xf3'; }, 309},
      {"number of no form", [t](std::string& b) { b[t + 1] = '\xfa'; }, 312},
      {"name beyond the string table", [t](std::string& b) { b[treeStart(b, t) + 1] = '\x7f'; },
       340},
      {"segment length past the footer", [this](std::string& b) { setI32(b, newest, 1 << 30); },
       895},
      {"segment too short for its head", [this](std::string& b) { setI32(b, newest, 4); }, 895},
      {"segment chain loops", [this](std::string& b) { setI32(b, newest + 4, newest); }, 895},
      {"next segment in the header", [this](std::string& b) { setI32(b, newest + 4, 8); }, 895},
      {"parent loops", [this](std::string& b) { setI32(b, newest + 8, oldest); }, 895},
      {"parent into the header", [this](std::string& b) { setI32(b, oldest + 8, 4); }, 895},
      {"parent past the footer", [t, this](std::string& b) { setI32(b, oldest + 8, t + 64); }, 895},
  };
  ASSERT_GE(corpus.size(), 30u);
  for (const Damage& damage : corpus) {
    std::string bytes = good;
    damage.apply(bytes);
    int got = tryDamaged(bytes);
    if (got != damage.alternative) {
      EXPECT_EQ(got, damage.number) << damage.what;
    }
    EXPECT_NE(got, -1) << damage.what << ": " << recorder->boxes.last()->ptr;
    FNewWorkSet();
  }
  // And the good archive still opens and reads whole afterwards.
  EXPECT_EQ(tryDamaged(good), 0);
}
