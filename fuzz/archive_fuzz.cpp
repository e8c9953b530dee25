// Loads arbitrary bytes as an archive and checks it whole: every version read
// back, the free chain against the blocks. Every
// failure must be one of the archive's documented failures, shown as a box
// and thrown as the integer 2; anything else (a crash, a sanitizer report, a
// hang, a different box) is a finding.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "archive/archive.h"
#include "archive/folder_host.h"
#include "fuzz/fuzz_support.h"
#include "lib/io_file.h"
#include "lib/msg.h"
#include "lib/sys.h"
#include "store/archive_check.h"
#include "store/work_set.h"

namespace {

// The boxes a damaged archive may end in.
const char* const kExpected[] = {
    "アーカイブ ファイルの形式が正しくありません",
    "は Kestrom のアーカイブ ファイルではありません",
    "このバージョンのアーカイブ ファイルは処理できません",
    "アーカイブ ファイルが短かすぎます",
};

class CheckingReporter : public LMsg {
 public:
  void output(int, const char*, const char*, const char*) override {}
  int showBox(char, const char*, const char* text) override {
    for (const char* expected : kExpected)
      if (std::strstr(text, expected) != nullptr) return 1;
    std::fprintf(stderr, "unexpected box: %s\n", text);
    __builtin_trap();
  }
};

void ignoreFault(const char*, void*) {}

// The folder that each input is written into, made once.
LStr* gDir = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  gDir = new LStr;
  SysTempFolder(*gDir);
  gDir->format("kst-archive-fuzz-%u", SysProcessId());
  SysMakeFolder(gDir->ptr);
  FSetReporter(new CheckingReporter);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  TFolderHost host(gDir->ptr);
  LStr path = host.join("input.kst");
  {
    LIoFile file(path.ptr, 'w', true);
    file.write(data, static_cast<int32_t>(size));
  }
  FNewWorkSet();
  TArchive* archive = new TArchive(&host);
  FSetArchive(archive);
  try {
    FLoadArchive((archive->setPath(path.ptr), *archive));
    FCheckArchive(*archive, ignoreFault, nullptr);
  } catch (int code) {
    check(code == 2);
  }
  delete archive;
  FSetArchive(nullptr);
  FDeleteWorkSet();
  return 0;
}
