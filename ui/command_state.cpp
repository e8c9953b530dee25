#include "ui/command_state.h"

#include "ui/command_table.h"
#include "ui/selection.h"

namespace {
const int32_t kGoverned[] = {kCmdSaveAs,      kCmdAdd,    kCmdPaste,  kCmdOptions,
                             kCmdExtract,     kCmdDelete, kCmdRename, kCmdNewFolder,
                             kCmdOpenWithApp, kCmdSearch, kCmdStop};

bool any(int32_t kinds, int32_t bits) { return (kinds & bits) != 0; }

struct TCtrlKey {
  char letter;
  int32_t id;
};
const TCtrlKey kCtrlKeys[] = {{'A', kCmdSelectAll}, {'D', kCmdOpenWithApp}, {'E', kCmdExtract},
                              {'F', kCmdSearch},    {'I', kCmdAdd},         {'N', kCmdNew},
                              {'O', kCmdOpen},      {'S', kCmdSaveAs},      {'V', kCmdPaste}};
}  // namespace

bool FCommandEnabled(int32_t id, const TCommandState& state) {
  const int32_t s = state.kinds;
  // Find keeps its idle state while a command runs, and Stop is its mirror.
  if (id == kCmdSearch) return state.allowsFind;
  if (id == kCmdStop) return state.busy;
  bool idle = !state.busy;
  switch (id) {
    case kCmdSaveAs:
    case kCmdAdd:
    case kCmdPaste:
    case kCmdOptions:
      return idle;
    case kCmdExtract:
      return idle && any(s, kSelFolder | kSelFile | kSelRootWithItems);
    case kCmdDelete:
      return idle && any(s, kSelFolder | kSelFile);
    case kCmdRename:
      return idle && any(s, kSelFolder | kSelFile) && !any(s, kSelMany);
    case kCmdNewFolder:
      return idle && state.treeOnFolder;
    case kCmdOpenWithApp:
      return idle && any(s, kSelFile) && !any(s, kSelFolder);
    default:
      return true;
  }
}

const int32_t* FGovernedCommands(int32_t* count) {
  *count = sizeof(kGoverned) / sizeof(kGoverned[0]);
  return kGoverned;
}

void FContextMenu(const TCommandState& state, bool listFocusedEmpty, LInts& out) {
  const int32_t s = state.kinds;
  out.clear();
  if (any(s, kSelFile) && !any(s, kSelFolder)) out.add(kCmdOpenWithApp);
  if (state.allowsFind) out.add(kCmdSearch);
  if (any(s, kSelFolder) && !any(s, kSelMany)) out.add(kCmdNewFolder);
  out.add(kSeparator);
  if (!any(s, kSelMany)) out.add(kCmdAdd);
  if (any(s, kSelFolder | kSelFile | kSelRootWithItems)) out.add(kCmdExtract);
  if (any(s, kSelFolder | kSelFile)) out.add(kCmdDelete);
  if (listFocusedEmpty) out.add(kCmdSelectAll);
  if (any(s, kSelFolder | kSelFile) && !any(s, kSelMany)) out.add(kCmdRename);
}

int32_t FKeyCommand(int32_t key, bool ctrl, bool busy) {
  if (busy) return kKeySwallowed;
  switch (key) {
    case kKeyTab:
      return kKeyNextPane;
    case kKeyDelete:
      return kCmdDelete;
    case kKeyF2:
      return kCmdRename;
    case kKeyF1:
      return ctrl ? int32_t{kKeyIgnored} : int32_t{kCmdHelp};
    default:
      break;
  }
  if (!ctrl) return kKeyIgnored;
  for (const TCtrlKey& k : kCtrlKeys)
    if (k.letter == key) return k.id;
  return kKeyIgnored;
}
