#include "support/archive_fixture.h"

#include <vector>

#include "archive/update_file.h"

void ArchiveTest::writeBlock(TVer* ver, int32_t dataLen, char fill, int32_t keepPos) {
  TUpdateFile& update = archive->update ? *archive->update : archive->beginUpdate();
  const char head[4] = {0, 0, 0, 0};  // no reference
  std::vector<char> data(dataLen, fill);
  ver->dataPos = FWriteSegments(*archive, update, keepPos, head, 4, data.data(), dataLen, nullptr);
  ver->size = dataLen;
  ver->flags = kVerStored;
}

TFile* ArchiveTest::addFile(TFolder* folder, const char* name, int count, int32_t dataLen) {
  TFile* file = new TFile;
  file->setName(name);
  folder->addChild(file);
  for (int i = 0; i < count; i++) {
    TVer* ver = new TVer;
    ver->time = 1600000000 + i * 3600;
    ver->checksum = static_cast<uint16_t>(0x1234 + i);
    file->addChild(ver);
    writeBlock(ver, dataLen + i, static_cast<char>('a' + i));
  }
  return file;
}

void ArchiveTest::commit(int32_t storeNo) {
  TUpdateFile& update = archive->update ? *archive->update : archive->beginUpdate();
  FCommit(*archive, update, storeNo);
  update.close();
  FApplyUpdate(*archive, update);
  archive->discardUpdate();
}
