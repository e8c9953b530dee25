#include "ui/help_page_win32.h"

#include <shellapi.h>

#include <cstdint>

#include "app/config.h"
#include "lib/msg.h"
#include "ui/help_target.h"

void FOpenHelpPage(HWND owner, const char* page) {
  const LStr& helpPath = FConfig()->helpPath;
  LStr target = FHelpTarget(helpPath.ptr, page);
  if (target.empty()) {
    FMsg(kMsgWarning, "ヘルプファイルが見つかりません: %s", helpPath.ptr);
    return;
  }
  HINSTANCE result = ShellExecuteA(owner, "open", target.ptr, nullptr, nullptr, SW_SHOWNORMAL);
  // The shell's results up to 32 are failures.
  if (reinterpret_cast<intptr_t>(result) <= 32) FMsg(kMsgWarning, "%s を開けません", target.ptr);
}
