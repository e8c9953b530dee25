// An archive host that keeps its untitled archive and update file in one
// given folder: for programs without the application around them (tools,
// benchmarks, fuzz targets, tests).
#pragma once

#include "archive/archive_host.h"
#include "lib/lstr.h"

class TFolderHost : public TArchiveHost {
 public:
  explicit TFolderHost(const char* folder) : folder_(folder) {}
  void untitledPath(LStr& out) override { out = join("無題"); }
  void updatePath(LStr& out) override { out = join("kst-#update.tmp"); }
  // A file of the folder.
  LStr join(const char* name) const;

 private:
  LStr folder_;
};
