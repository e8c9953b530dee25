// An open, empty archive and a fresh work set, with helpers that build a
// tree of files and versions in memory and give versions side records.
#pragma once

#include <vector>

#include "archive/record.h"
#include "store/cond.h"
#include "store/ver_info.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"

class CondTest : public ArchiveTest {
 protected:
  CondTest() {
    archive->loadArchive(dir.file("c.kst").ptr, false, false);
    FNewWorkSet();
  }
  ~CondTest() override { FDeleteWorkSet(); }

  // A file of `count` versions, oldest first: version i has the time
  // 1000 + i and the size 10 * (i + 1).
  static TFile* makeFile(TRecF* folder, const char* name, int count) {
    TFile* file = new TFile;
    file->setName(name);
    folder->addChild(file);
    for (int i = 0; i < count; i++) {
      TVer* ver = new TVer;
      ver->time = 1000 + i;
      ver->size = 10 * (i + 1);
      file->addChild(ver);
    }
    return file;
  }
  static TVerInfo* infoOf(TVer* ver) {
    TVerInfo* info = FWorkSet()->findInfo(ver);
    return info ? info : FWorkSet()->NewInfo(ver);
  }
};

// Collects the versions a walk reports.
struct FoundVersions {
  std::vector<TVer*> list;
  static void add(TVer* ver, void* context) {
    static_cast<FoundVersions*>(context)->list.push_back(ver);
  }
};
