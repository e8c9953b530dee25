#include "archive/archive.h"
#include "archive/format.h"
#include "lib/fixed_coding.h"
#include "lib/num_coding.h"

namespace {

void writeTag(LStream& stream, uint8_t tag) { stream.write(&tag, 1); }

void writeFile(LStream& stream, const TFile* file) {
  writeTag(stream, kTagFile);
  FWriteNum(stream, file->nameIdx);
  uint32_t time = kTimeBase;
  uint32_t size = 0;
  uint32_t pos = 0;
  for (TRec* child : file->children) {
    const TVer* ver = static_cast<const TVer*>(child);
    writeTag(stream, kTagVersion);
    FWriteU16(stream, ver->checksum);
    FWriteDiff(stream, static_cast<uint32_t>(ver->time), time);
    FWriteDiff(stream, static_cast<uint32_t>(ver->size), size);
    FWriteDiff(stream, static_cast<uint32_t>(ver->dataPos), pos);
    time = static_cast<uint32_t>(ver->time);
    size = static_cast<uint32_t>(ver->size);
    pos = static_cast<uint32_t>(ver->dataPos);
  }
  writeTag(stream, kTagEndOfFile);
}

}  // namespace

void FWriteFooter(TArchive& archive, LStream& stream) {
  for (const LStr* text : archive.strings.strings) {
    writeTag(stream, kTagString);
    FWriteStr(stream, text->ptr, text->length);
  }
  // Walked without recursion: the depth of the tree is the depth the file
  // gave, which need not be small.
  struct Level {
    const TFolder* folder;
    int32_t next;
  };
  LArrOf<Level*, LDelete<Level*>> stack;
  stack.add(new Level{archive.root, 0});
  while (stack.count > 0) {
    Level* level = stack.last();
    if (level->next == level->folder->children.count) {
      writeTag(stream, kTagEnd);
      stack.removeRange(stack.count - 1, 1);
      continue;
    }
    const TRec* child = level->folder->children[level->next++];
    if (child->isFile()) {
      writeFile(stream, static_cast<const TFile*>(child));
      continue;
    }
    const TFolder* folder = static_cast<const TFolder*>(child);
    writeTag(stream, kTagFolder);
    FWriteNum(stream, folder->nameIdx);
    FWriteDiff(stream, static_cast<uint32_t>(folder->time), kTimeBase);
    stack.add(new Level{folder, 0});
  }
}
