// Extracts an archive whose records have arbitrary names into a folder, and
// stops on anything written anywhere else. The input is a list of paths,
// one a line, with the byte 0x1F between the names of a path; each path
// becomes a file record (its folders made on the way) with one version.
// Afterwards the sandbox must hold exactly one file for each version that
// the extract counts as written, all below the destination: a file that
// landed elsewhere, or two records that landed on one file, is a finding.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "archive/archive.h"
#include "archive/folder_host.h"
#include "fuzz/fuzz_support.h"
#include "lib/file_util.h"
#include "lib/io_file.h"
#include "lib/sys.h"
#include "store/add_command.h"
#include "store/cond.h"
#include "store/extract_command.h"
#include "store/work_set.h"

namespace {

const char kLineEnd = '\n';
const char kNameEnd = '\x1F';
const int32_t kMostRecords = 64;

// The work folder of this process: the archive, and the sandbox whose only
// entry may be the destination.
LStr* gDir = nullptr;
TFolderHost* gHost = nullptr;
// The one stored version whose block every fuzzed file shares.
TVer* gModel = nullptr;
// The entries of the work folder besides the sandbox, counted once.
int32_t gWorkEntries = 0;

LStr inDir(const char* name) {
  LStr path(*gDir);
  path.append('/').append(name);
  return path;
}

// Files below a folder; folders are walked, anything else is counted too.
int32_t countFiles(const LStr& folder) {
  int32_t count = 0;
  SysFolderScan scan(folder.ptr);
  LStr name;
  SysFileInfo info;
  while (scan.isOpen() && scan.next(name, info)) {
    LStr path(folder);
    path.append('/').append(name);
    count += (info.attributes & kSysAttrDirectory) ? countFiles(path) : 1;
  }
  return count;
}

// The entries of a folder other than `allowed`.
int32_t othersIn(const LStr& folder, const char* allowed) {
  int32_t others = 0;
  SysFolderScan scan(folder.ptr);
  LStr name;
  SysFileInfo info;
  while (scan.isOpen() && scan.next(name, info))
    if (std::strcmp(name.ptr, allowed) != 0) others++;
  return others;
}

TFolder* folderFor(TFolder* parent, const LStr& name) {
  for (TRec* child : parent->children)
    if (child->isFolder() && std::strcmp(child->name(), name.ptr) == 0)
      return static_cast<TFolder*>(child);
  return parent->addFolder(name.ptr);
}

// One path of the input below top: its folders, then a file with a version
// that shares the model's block.
void addRecordPath(TFolder* top, const char* path, int32_t n) {
  TFolder* folder = top;
  int32_t start = 0;
  for (int32_t i = 0; i <= n; i++) {
    if (i < n && path[i] != kNameEnd) continue;
    LStr name(path + start, i - start);
    start = i + 1;
    if (i < n) {
      folder = folderFor(folder, name);
      continue;
    }
    TFile* file = new TFile;
    file->setName(name.ptr);
    folder->addChild(file);
    TVer* ver = new TVer;
    ver->flags = kVerStored;
    ver->checksum = gModel->checksum;
    ver->time = gModel->time;
    ver->size = gModel->size;
    ver->dataPos = gModel->dataPos;
    file->addChild(ver);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  gDir = new LStr;
  SysTempFolder(*gDir);
  gDir->format("kst-extract-fuzz-%u", SysProcessId());
  FRemoveTree(gDir->ptr);
  SysMakeFolder(gDir->ptr);
  FSetReporter(new SilentReporter);
  LStr source = inDir("model.txt");
  {
    LIoFile file(source.ptr, 'w', true);
    file.write("model", 5);
  }
  gHost = new TFolderHost(gDir->ptr);
  FNewWorkSet();
  TArchive* archive = new TArchive(gHost);
  FSetArchive(archive);
  archive->loadArchive(inDir("base.kst").ptr, false, false);
  LStrs paths;
  paths.add(new LStr(source));
  TCond cond;
  cond.Parse();
  FCmdAdd(archive->root, paths, &cond, TAddOptions());
  FNewWorkSet();
  gModel = static_cast<TFile*>(archive->root->children[0])->latestVer();
  gWorkEntries = othersIn(*gDir, "sandbox");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* text = reinterpret_cast<const char*>(data);
  int32_t length = static_cast<int32_t>(size);
  TArchive& archive = *FArchive();
  TFolder* top = new TFolder;
  archive.root->addChild(top);
  int32_t records = 0;
  for (int32_t start = 0; start < length && records < kMostRecords; records++) {
    int32_t end = start;
    while (end < length && text[end] != kLineEnd) end++;
    addRecordPath(top, text + start, end - start);
    start = end + 1;
  }
  LStr sandbox = inDir("sandbox");
  LStr dest = sandbox;
  dest.append("/dest");
  SysMakeFolder(sandbox.ptr);
  SysMakeFolder(dest.ptr);
  FNewWorkSet();
  LArrOf<TRec*> chosen;
  chosen.add(top);
  TCond cond;
  cond.Parse();
  bool finished = true;
  try {
    FCmdExtract(chosen, dest.ptr, &cond, top);
  } catch (int code) {
    // A name the system refuses at the call (too long, say) ends the
    // command with its box; what was written must still be inside.
    check(code == 2);
    finished = false;
  }
  TWorkSet* work = FWorkSet();
  int32_t written = work->done - work->refused;
  check(othersIn(*gDir, "sandbox") == gWorkEntries);
  check(othersIn(sandbox, "dest") == 0);
  int32_t files = countFiles(sandbox);
  if (finished) {
    check(files == written);
  } else {
    check(files <= written);
  }
  archive.root->removeChild(top);
  delete top;
  FNewWorkSet();
  // Every name the extract made must be one the listing gives back in a
  // form that reaches it again.
  check(FRemoveTree(sandbox.ptr));
  return 0;
}
