#include <cstring>

#include "archive/archive.h"
#include "archive/format.h"
#include "archive/journal.h"
#include "lib/fail.h"
#include "lib/file_util.h"
#include "lib/fixed_coding.h"
#include "lib/msg.h"
#include "lib/num_coding.h"
#include "lib/path_parts.h"

namespace {

// The low 32 bits of a footer time, sign-extended again.
int64_t widenTime(uint32_t low) { return static_cast<int32_t>(low); }

void readStrings(TArchive& archive) {
  while (archive.peekByte() == kTagString) {
    archive.getByte();
    LStr* text = FReadStr(archive);
    archive.strings.intern(text->ptr, text->length);
    delete text;
  }
}

uint32_t readName(TArchive& archive) {
  uint32_t index = FReadNum(archive);
  if (index > static_cast<uint32_t>(archive.strings.count())) FFormatError(kFormatBadString);
  return index;
}

void readVersion(TArchive& archive, TFile* file, uint32_t* time, uint32_t* size, uint32_t* pos) {
  TVer* ver = new TVer;
  file->addChild(ver);
  ver->checksum = FReadU16(archive);
  *time = FReadDiff(archive, *time);
  *size = FReadDiff(archive, *size);
  *pos = FReadDiff(archive, *pos);
  ver->time = widenTime(*time);
  ver->size = static_cast<int32_t>(*size);
  ver->dataPos = static_cast<int32_t>(*pos);
  ver->flags = kVerStored;
  if (ver->size < 0) FFormatError(425);
}

void readFile(TArchive& archive, TFolder* folder) {
  TFile* file = new TFile;
  folder->addChild(file);
  file->nameIdx = readName(archive);
  uint32_t time = kTimeBase;
  uint32_t size = 0;
  uint32_t pos = 0;
  for (;;) {
    int tag = archive.getByte();
    if (tag == kTagEndOfFile) return;
    if (tag != kTagVersion) FFormatError(263);
    readVersion(archive, file, &time, &size, &pos);
  }
}

// The tree is read without recursion, so that a damaged file that nests
// folders very deeply cannot exhaust the stack.
void readTree(TArchive& archive) {
  TFolder* folder = archive.root;
  while (folder != nullptr) {
    int tag = archive.getByte();
    if (tag == kTagFile) {
      readFile(archive, folder);
    } else if (tag == kTagFolder) {
      TFolder* child = new TFolder;
      folder->addChild(child);
      child->nameIdx = readName(archive);
      child->time = widenTime(FReadDiff(archive, kTimeBase));
      folder = child;
    } else if (tag == kTagEnd) {
      folder = static_cast<TFolder*>(folder->parent);
    } else {
      FFormatError(242);
    }
  }
}

void readFreeChain(TArchive& archive, int32_t freeHead) {
  int32_t pos = freeHead;
  while (pos != 0) {
    // Every link leads lower, and every extent lies between the header and
    // the footer: anything else would hand out space that is in use.
    if (pos < kHeaderSize || pos % kAlignment != 0 || pos >= archive.treePos)
      FFormatError(kFormatBadChain);
    archive.seek(pos);
    int32_t size = FReadI32(archive);
    int32_t next = FReadI32(archive);
    if (size <= 0 || size % kAlignment != 0 || size > archive.treePos - pos ||
        (next != 0 && next >= pos))
      FFormatError(kFormatBadChain);
    FPutExtent(archive.freeList, new TExtent{pos, size}, false);
    pos = next;
  }
}

}  // namespace

void FCreateArchive(const char* path) {
  LIoFile file(path, 'w', false);
  if (!file.isOpen())
    FError(kMsgErrorBox, "アーカイブファイル「%s」を書き込みモードで開くことができません", path);
  FWriteNewArchive(file);
}

void FWriteNewArchive(LStream& file) {
  unsigned char header[kHeaderSize] = {};
  std::memcpy(header, kMagic, 4);
  std::memcpy(header + 4, kFormatVersion, 4);
  FPutI32(header + kOffsetTreePos, kHeaderSize);
  file.write(header, kHeaderSize);
  unsigned char end = kTagEnd;
  file.write(&end, 1);
}

void FLoadArchive(TArchive& archive) {
  const char* path = archive.path.ptr;
  delete archive.root;
  archive.root = nullptr;
  archive.strings.clear();
  archive.freeList.clear();
  FRecoverArchive(path, archive.writer);
  if (archive.writer == nullptr && FExists(path) == kExistsNone) FCreateArchive(path);
  if (!archive.reopen(path, 'r', false))
    FError(kMsgErrorBox, "アーカイブファイル「%s」を開けません", path);

  unsigned char header[kHeaderSize];
  archive.headerRead = archive.read(header, kHeaderSize);
  if (archive.headerRead < kHeaderSize || std::memcmp(header, kMagic, 4) != 0)
    FError(2000, "「%s」は Kestrom のアーカイブ ファイルではありません", path);
  if (std::memcmp(header + 4, kFormatVersion, 4) != 0)
    FError(2010, "Kestrom 1.13 では、このバージョンのアーカイブ ファイルは処理できません");
  archive.treePos = FGetI32(header + kOffsetTreePos);
  int32_t freeHead = FGetI32(header + kOffsetFreeHead);
  archive.lastStoreNo = FGetI32(header + kOffsetLastStoreNo);

  // A seek past the end of a file succeeds, so the length itself tells
  // whether the file reaches its footer.
  int32_t length = archive.seek(-1);
  if (length < archive.treePos)
    FError(2020, "アーカイブ ファイルが短かすぎます（%d < %d）", length, archive.treePos);
  if (archive.treePos < kHeaderSize || archive.treePos % kAlignment != 0)
    FFormatError(kFormatBadChain);

  FPutExtent(archive.freeList, new TExtent{archive.treePos, kTailSize}, false);
  readFreeChain(archive, freeHead);

  archive.seek(archive.treePos);
  readStrings(archive);
  archive.root = new TFolder;
  archive.root->nameIdx = archive.strings.lookupOrAdd(FNameOf(path).ptr);
  readTree(archive);
  if (archive.getByte() != -1) FFormatError(338);
  archive.treeEnd = archive.tell();
  archive.loaded = FStampArchive(archive);
}
