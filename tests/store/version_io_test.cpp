#include "store/version_io.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "archive/update_file.h"
#include "lib/fixed_coding.h"
#include "store/ver_info.h"
#include "store/version_expand.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"

namespace {

class VersionIoTest : public ArchiveTest {
 protected:
  VersionIoTest() {
    FNewWorkSet();
    archive->loadArchive(dir.file("v.kst").ptr, false, false);
    file = new TFile;
    file->setName("data.bin");
    archive->root->addChild(file);
  }
  ~VersionIoTest() override { FDeleteWorkSet(); }

  // A new version of `file` read from a source file with these bytes,
  // stored as the add command stores it: the previous newest is encoded
  // against it, then it is stored whole.
  TVer* addVersion(const std::string& bytes, int64_t time, bool dropIfSame = true) {
    LStr source = dir.file(LStr().format("src%d", file->childCount()).ptr);
    TestWriteFile(source.ptr, bytes);
    TVer* ver = new TVer;
    ver->flags = kVerNew;
    ver->time = time;
    ver->size = static_cast<int32_t>(bytes.size());
    TVerInfo* info = FWorkSet()->NewInfo(ver);
    info->srcPath = new LStr(source);
    info->storeNo = 7;
    info->createTime = time - 100;
    file->addChild(ver);
    FWorkSet()->versions.add(ver);
    ver->Hold();
    if (file->childCount() > 1) FStoreDelta(file->version(file->childCount() - 2), ver, dropIfSame);
    if (!(ver->flags & kVerDrop)) FStoreWhole(ver);
    ver->Release();
    return ver;
  }

  // Commits, and starts afresh from the file as a later command would.
  void finish() {
    commit(7);
    for (TVer* ver : FWorkSet()->versions) ver->flags = kVerStored;
    FNewWorkSet();
    archive->reloadArchive();
    file = static_cast<TFile*>(archive->root->findChild("data.bin"));
  }

  std::string rawOf(TVer* ver) {
    THeldBuf raw;
    FReadRaw(ver, raw);
    return std::string(reinterpret_cast<const char*>(raw.data()), raw.size());
  }

  static std::string randomBytes(size_t n, unsigned seed) {
    std::mt19937 gen(seed);
    std::string bytes(n, '\0');
    for (char& c : bytes) c = static_cast<char>(gen());
    return bytes;
  }

  TFile* file;
};

}  // namespace

TEST_F(VersionIoTest, ChainOfVersionsReadsBackByteForByte) {
  std::string text;
  for (int i = 0; i < 2000; i++) text += "line " + std::to_string(i) + " of the file\n";
  std::string edited = text;
  edited.insert(5000, "inserted in the middle\n");
  std::string moved = "new start\n" + edited.substr(0, 30000) + randomBytes(3000, 1);
  std::string sources[] = {text, edited, moved, "", randomBytes(70000, 2)};
  for (int i = 0; i < 5; i++) addVersion(sources[i], 1600000000 + i);
  finish();
  ASSERT_EQ(file->childCount(), 5);
  for (int i = 0; i < 5; i++) EXPECT_EQ(rawOf(file->version(i)), sources[i]) << i;
  // Older versions that share enough with their successor are stored as
  // deltas against it, and say how much of them was new.
  TVerInfo* info = file->version(0)->Info();
  EXPECT_LT(info->uniqueRatio, 5);
  EXPECT_EQ(info->storeNo, 7);
  EXPECT_EQ(info->createTime, 1600000000 - 100);
  EXPECT_EQ(file->version(4)->Info()->uniqueRatio, 100);
}

TEST_F(VersionIoTest, ReadingFromAKnownNewerBlockStopsTheChainThere) {
  std::string base = randomBytes(40000, 4);
  std::string sources[4] = {base, base + "one", "two" + base + "one", base.substr(100) + "three"};
  for (int i = 0; i < 4; i++) addVersion(sources[i], 1600000000 + i);
  finish();
  // Down from the newest, each read starting at the block read before it
  // gives the same held form as a read of the whole chain.
  // A result read into before, with room and bytes left over, comes out the
  // same.
  TKnownBlock newer;
  THeldBuf reused;
  for (int i = 3; i >= 0; i--) {
    int32_t pos = file->version(i)->dataPos;
    THeldBuf whole, fromNewer;
    FReadBlock(whole, *archive, pos);
    FReadBlock(fromNewer, *archive, pos, newer.pos > 0 ? &newer : nullptr);
    FReadBlock(reused, *archive, pos);
    ASSERT_EQ(std::string(reinterpret_cast<const char*>(fromNewer.data()), fromNewer.size()),
              std::string(reinterpret_cast<const char*>(whole.data()), whole.size()))
        << i;
    ASSERT_EQ(std::string(reinterpret_cast<const char*>(reused.data()), reused.size()),
              std::string(reinterpret_cast<const char*>(whole.data()), whole.size()))
        << i;
    newer.pos = pos;
    newer.held.swap(fromNewer);
  }
  // The known block is taken as it is, not read again: its held form with
  // every byte changed changes what its older neighbour rebuilds to.
  TKnownBlock wrong;
  wrong.pos = file->version(3)->dataPos;
  THeldBuf right;
  FReadBlock(right, *archive, wrong.pos);
  uint8_t* bytes = wrong.held.prepare(right.size());
  for (int32_t i = 0; i < right.size(); i++)
    bytes[i] = static_cast<uint8_t>(right.data()[i] ^ 0x5A);
  wrong.held.setSize(right.size());
  THeldBuf fromWrong, fromRight;
  FReadBlock(fromWrong, *archive, file->version(2)->dataPos, &wrong);
  FReadBlock(fromRight, *archive, file->version(2)->dataPos);
  EXPECT_NE(std::string(reinterpret_cast<const char*>(fromWrong.data()), fromWrong.size()),
            std::string(reinterpret_cast<const char*>(fromRight.data()), fromRight.size()));
}

// The newest version's block stands alone and may be expanded away from
// the archive; an older one refers to its successor and is read only whole.
TEST_F(VersionIoTest, OnlyABlockStandingAloneIsReadForExpandingElsewhere) {
  std::string base = randomBytes(30000, 5);
  addVersion(base, 1600000000);
  addVersion(base + "newer", 1600000001);
  finish();
  LStr stored;
  int32_t rawSize = -1;
  EXPECT_FALSE(FReadStandalone(file->version(0), stored, &rawSize));
  EXPECT_TRUE(stored.empty());
  TVer* newest = file->version(1);
  ASSERT_TRUE(FReadStandalone(newest, stored, &rawSize));
  EXPECT_EQ(rawSize, newest->size);
  THeldBuf held, raw;
  FExpandHeld(stored, rawSize, newest->size, held);
  FExpandRaw(THeldView(held), newest->size, raw);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(raw.data()), raw.size()), base + "newer");
  // Once held in memory, the held form is the one to take.
  newest->Hold();
  EXPECT_FALSE(FReadStandalone(newest, stored, &rawSize));
  newest->Release();
  // A version of fewer bytes than its stored form expands to is refused as
  // the archive's format fault.
  EXPECT_THROW(FExpandHeld(stored, rawSize, newest->size - 200, held), int);
}

TEST_F(VersionIoTest, SameContentIsDroppedOrMarked) {
  std::string bytes = randomBytes(5000, 3);
  addVersion(bytes, 1000);
  TVer* same = addVersion(bytes, 2000, /*dropIfSame=*/true);
  EXPECT_TRUE(same->flags & kVerDrop);
  EXPECT_EQ(same->dataPos, 0);

  file->removeChild(same);
  FWorkSet()->versions.pop();
  delete same;
  TVer* kept = addVersion(bytes, 3000, /*dropIfSame=*/false);
  EXPECT_FALSE(kept->flags & kVerDrop);
  EXPECT_TRUE(file->version(0)->flags & kVerSame);
  EXPECT_EQ(file->version(0)->FindInfo(true)->uniqueRatio, 0);
  finish();
  EXPECT_EQ(rawOf(file->version(0)), bytes);
  EXPECT_EQ(rawOf(file->version(1)), bytes);
}

TEST_F(VersionIoTest, EmptyVersionIsOneSegmentWithNoData) {
  int32_t written = addVersion("", 5)->dataPos;
  finish();
  std::string bytes = TestReadFile(archive->path.ptr);
  int32_t pos = file->version(0)->dataPos;
  ASSERT_EQ(pos, written);
  EXPECT_EQ(FGetI32(bytes.data() + pos + 4), 0);  // no next segment
  EXPECT_EQ(rawOf(file->version(0)), "");
}

TEST_F(VersionIoTest, StoredFormSpreadOverSeveralHoles) {
  // Three small blocks with a gap-maker between them, then the gap-makers go.
  TFile* filler = addFile(archive->root, "filler", 4, 200);
  for (int i = 0; i < 3; i++) addVersion(randomBytes(100, 10 + i), 10 + i);
  commit(7);
  for (TVer* ver : FWorkSet()->versions) ver->flags = kVerStored;
  FNewWorkSet();
  archive->beginUpdate();
  for (int i = 0; i < 4; i++) FReleaseBlock(*archive, filler->version(i)->dataPos, false);
  while (filler->childCount() > 0) filler->version(0)->unlinkAndDestroy();
  std::string big = randomBytes(3000, 99);
  int32_t pos = addVersion(big, 20)->dataPos;
  finish();
  EXPECT_EQ(rawOf(file->version(3)), big);
  EXPECT_EQ(file->version(3)->dataPos, pos);
  EXPECT_EQ(pos, 64);  // it went into the first hole, and on at the tail
  EXPECT_LT(pos, file->version(0)->dataPos);
}

TEST_F(VersionIoTest, RewrittenVersionKeepsItsPosition) {
  addVersion(randomBytes(4000, 5), 1);
  finish();
  int32_t pos = file->version(0)->dataPos;
  std::string grown = randomBytes(4000, 5) + randomBytes(9000, 6);
  addVersion(grown, 2);  // the first is now encoded against the second
  EXPECT_TRUE(file->version(0)->flags & kVerEncoded);
  finish();
  EXPECT_EQ(file->version(0)->dataPos, pos);
  EXPECT_EQ(rawOf(file->version(0)), randomBytes(4000, 5));
  EXPECT_EQ(rawOf(file->version(1)), grown);
}

TEST_F(VersionIoTest, DamageDeepInTheChainStopsEveryOlderRead) {
  std::string base = randomBytes(20000, 7);
  for (int i = 0; i < 4; i++) addVersion(base + std::to_string(i), 100 + i);
  finish();
  // Break the newest block: every older version reads through it.
  std::string bytes = TestReadFile(archive->path.ptr);
  int32_t newest = file->version(3)->dataPos;
  FPutI32(&bytes[newest], 0x7fff0000);
  archive->close();
  TestWriteFile(archive->path.ptr, bytes);
  archive->reloadArchive();
  file = static_cast<TFile*>(archive->root->findChild("data.bin"));
  for (int i = 0; i < 4; i++) {
    EXPECT_THROW(rawOf(file->version(i)), int) << i;
    FNewWorkSet();
  }
  // What the result held before does not pass for the block.
  THeldBuf filled;
  filled.assign("left over", 9);
  EXPECT_THROW(FReadBlock(filled, *archive, file->version(0)->dataPos), int);
  EXPECT_EQ(filled.size(), 0);
  EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("識別番号="), std::string::npos);
}

TEST_F(VersionIoTest, LoopingParentChainIsAFormatFailure) {
  std::string base = randomBytes(8000, 8);
  addVersion(base + "a", 1);
  addVersion(base + "b", 2);
  finish();
  std::string bytes = TestReadFile(archive->path.ptr);
  int32_t older = file->version(0)->dataPos;
  int32_t newest = file->version(1)->dataPos;
  ASSERT_EQ(FGetI32(bytes.data() + older + 8), newest);
  FPutI32(&bytes[newest + 8], older);  // the newest now points back down
  archive->close();
  TestWriteFile(archive->path.ptr, bytes);
  archive->reloadArchive();
  file = static_cast<TFile*>(archive->root->findChild("data.bin"));
  EXPECT_THROW(rawOf(file->version(0)), int);
  EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("識別番号=895"), std::string::npos);
}

TEST_F(VersionIoTest, SourceThatChangedSizeIsAReadError) {
  LStr source = dir.file("grows");
  TestWriteFile(source.ptr, "12345");
  TVer* ver = new TVer;
  ver->flags = kVerNew;
  ver->size = 3;
  FWorkSet()->NewInfo(ver)->srcPath = new LStr(source);
  file->addChild(ver);
  EXPECT_THROW(ver->Hold(), int);
  EXPECT_NE(std::string(recorder->boxes.last()->ptr).find("の読み出しエラーです"),
            std::string::npos);
}
