// kst cat: the raw bytes of one version on standard output.
#include "archive/archive.h"
#include "cli/cli_console.h"
#include "cli/cli_session.h"
#include "cli/commands.h"
#include "cli/item_path.h"
#include "lib/msg.h"
#include "lib/sys_terminal.h"
#include "store/held_buf.h"
#include "store/version_io.h"

int FRunCat(TCliContext& context) {
  TFile* file = FFindFile(context.session.archive().root, context.request.plain[1]->ptr);
  if (file == nullptr) return 1;
  TVer* ver = FFindVersion(file, context.request.version);
  if (ver == nullptr) return 1;
  THeldBuf raw;
  FReadRaw(ver, raw);
  SysBinaryStdout();
  if (!context.console.outBytes(raw.data(), raw.size())) {
    FMsg(kMsgErrno, "標準出力に書き込めません");
    return 1;
  }
  return 0;
}
