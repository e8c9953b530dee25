#include "archive/archive.h"
#include "lib/file_util.h"
#include "lib/io_file.h"
#include "lib/msg.h"
#include "lib/sys.h"

namespace {
// As often as the work-folder lock tries again.
const int32_t kRetryMilliseconds = 100;
}  // namespace

bool FHoldWriter(TArchive& archive, const char* path) {
  bool existed = FExists(path) != kExistsNone;
  bool told = false;
  for (;;) {
    // The break signal stays free: the user may stop the wait and the
    // command; the apply step guards its own writes.
    LIoFile* writer = new LIoFile(path, 'a', false, /*holdBreak=*/false);
    if (writer->isOpen()) {
      archive.writer = writer;
      break;
    }
    int error = SysLastError();
    delete writer;
    if (!SysFileBusy(error)) return false;
    if (!told)
      FMsgText("アーカイブファイル「%s」は他のプロセスが更新中です。終わるのを待っています...",
               path);
    told = true;
    SysSleep(kRetryMilliseconds);
  }
  // The open made the file: it becomes a new archive here, under the lock,
  // so that two processes that both found it missing cannot both start it.
  if (!existed && archive.writer->seek(-1) == 0) {
    FWriteNewArchive(*archive.writer);
    archive.writer->flush();
  }
  return true;
}
