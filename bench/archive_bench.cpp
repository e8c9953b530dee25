// Times the archive's tree on disk: a tree of 100 000 files in 5 000 folders
// with 3 versions each (small synthetic blocks) is committed, and the archive
// is loaded again from scratch. Prints the figures and the footer size.
#include <chrono>
#include <cstdio>

#include "archive/archive.h"
#include "archive/folder_host.h"
#include "archive/update_file.h"
#include "lib/file_util.h"
#include "lib/sys.h"

namespace {

double secondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

int main() {
  LStr dir;
  SysTempFolder(dir);
  dir.format("kst-archive-bench-%u", SysProcessId());
  SysMakeFolder(dir.ptr);
  TFolderHost host(dir.ptr);
  TArchive* archive = new TArchive(&host);
  FSetArchive(archive);
  LStr path = host.join("bench.kst");
  archive->loadArchive(path.ptr, false, false);

  const int kFolders = 5000;
  const int kFilesPerFolder = 20;
  const int kVersions = 3;
  auto start = std::chrono::steady_clock::now();
  TUpdateFile& update = archive->beginUpdate();
  const char head[4] = {0, 0, 0, 0};
  const char data[16] = "synthetic block";
  for (int f = 0; f < kFolders; f++) {
    TFolder* top = f % 100 == 0 ? archive->root->addFolder(LStr().format("group %03d", f / 100).ptr)
                                : static_cast<TFolder*>(archive->root->children.last());
    TFolder* folder = top->addFolder(LStr().format("folder %05d", f).ptr);
    folder->time = 1500000000 + f;
    for (int i = 0; i < kFilesPerFolder; i++) {
      TFile* file = new TFile;
      file->setName(LStr().format("source_file_%02d.cpp", i).ptr);
      folder->addChild(file);
      for (int v = 0; v < kVersions; v++) {
        TVer* ver = new TVer;
        ver->flags = kVerStored;
        ver->time = 1600000000 + v * 86400 + i;
        ver->size = 1000 + v;
        ver->checksum = static_cast<uint16_t>(i * 7 + v);
        file->addChild(ver);
        ver->dataPos = FWriteSegments(*archive, update, 0, head, 4, data, sizeof data, nullptr);
      }
    }
  }
  double build = secondsSince(start);

  start = std::chrono::steady_clock::now();
  FCommit(*archive, update, 1);
  update.close();
  double commit = secondsSince(start);
  start = std::chrono::steady_clock::now();
  FApplyUpdate(*archive, update);
  double apply = secondsSince(start);
  int32_t footer = archive->treeEnd - archive->treePos;
  archive->discardUpdate();
  delete archive;

  start = std::chrono::steady_clock::now();
  archive = new TArchive(&host);
  FSetArchive(archive);
  archive->loadArchive(path.ptr, false, false);
  double load = secondsSince(start);

  std::printf("tree: %d folders, %d files, %d versions\n", kFolders + kFolders / 100,
              kFolders * kFilesPerFolder, kFolders * kFilesPerFolder * kVersions);
  std::printf("blocks written to the update file: %.3f s\n", build);
  std::printf("commit (free chain, header, footer): %.3f s\n", commit);
  std::printf("apply to the archive: %.3f s\n", apply);
  std::printf("fresh load: %.3f s\n", load);
  std::printf("footer: %d bytes (%.1f bytes a version), archive %lld bytes\n", footer,
              static_cast<double>(footer) / (kFolders * kFilesPerFolder * kVersions),
              static_cast<long long>(FFileSize(path.ptr)));
  delete archive;
  FRemoveTree(dir.ptr);
  return 0;
}
