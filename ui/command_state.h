// Which commands are enabled, what the context menu holds and which command
// a key stands for: all from the selection's kinds and whether a command
// runs on the worker.
#pragma once

#include <cstdint>

#include "lib/larr.h"

struct TCommandState {
  int32_t kinds = 0;          // selKinds
  bool busy = false;          // a command runs on the worker
  bool allowsFind = false;    // FSelectionAllowsFind
  bool treeOnFolder = false;  // the tree pane's selected record is a folder
};

// The enabled state of an id of the menus or the toolbar; ids that the
// state does not govern are enabled.
bool FCommandEnabled(int32_t id, const TCommandState& state);
// The ids whose state FCommandEnabled decides, in the menus' order.
const int32_t* FGovernedCommands(int32_t* count);
// The context menu (idle only): ids with kSeparator for the line.
// listFocusedEmpty: the list pane has the focus and nothing in it is selected.
void FContextMenu(const TCommandState& state, bool listFocusedEmpty, LInts& out);

// Keys, by the system's virtual-key numbers (letters are their capitals).
enum TUiKey : int32_t {
  kKeyTab = 0x09,
  kKeyEnter = 0x0D,
  kKeyEsc = 0x1B,
  kKeyLeft = 0x25,
  kKeyRight = 0x27,
  kKeyDelete = 0x2E,
  kKeyF1 = 0x70,
  kKeyF2 = 0x71,
};
// What the main window does with a key.
enum : int32_t {
  kKeyIgnored = 0,     // not a key of the main window
  kKeySwallowed = -1,  // a command runs: the key ends here
  kKeyNextPane = -2,   // the focus moves between tree and list
};
// The command id of a key, or one of the values above. Esc while busy is
// the panes' business (it stops the command) and reaches here as swallowed.
int32_t FKeyCommand(int32_t key, bool ctrl, bool busy);
