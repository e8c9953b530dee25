// An open archive in a fresh temporary folder, with a host whose work
// folder is that folder, installed as the open archive for one test.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "archive/archive.h"
#include "archive/folder_host.h"
#include "store/work_set.h"
#include "support/file_bytes.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

class TestArchiveHost : public TFolderHost {
 public:
  explicit TestArchiveHost(const TestTempDir& dir) : TFolderHost(dir.path()) {}
  void removeRecent(const char* fullPath) override { removed.append(fullPath); }
  void treeLoaded(TFolder*) override { loads++; }
  // Commands' shared state is replaced as the application does it.
  void resetWork() override {
    if (FWorkSet()) FNewWorkSet();
  }
  LStr removed;
  int loads = 0;
};

class ArchiveTest : public testing::Test {
 protected:
  ArchiveTest() : host(dir) {
    archive = new TArchive(&host);
    FSetArchive(archive);
  }
  ~ArchiveTest() override {
    delete archive;
    FSetArchive(nullptr);
  }

  // Writes a synthetic block for ver (its data `size` bytes of `fill`)
  // through the running update file and stores its position.
  void writeBlock(TVer* ver, int32_t dataLen, char fill, int32_t keepPos = 0);
  // A file with `count` versions of synthetic blocks under folder.
  TFile* addFile(TFolder* folder, const char* name, int count, int32_t dataLen);
  // Commits the running update (the tree and the free list) and applies it.
  void commit(int32_t storeNo = 0);

  TestTempDir dir;
  RecorderScope recorder;
  TestArchiveHost host;
  TArchive* archive;
};
