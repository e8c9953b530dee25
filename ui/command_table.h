// The command table of the main window: every user action is a command id,
// and the texts of menus, tool tips and the status bar are built from its
// rows. Menus, toolbar, keys and the context menu carry only ids. The ids of
// the four long commands and of their completion are those of the worker.
#pragma once

#include <cstdint>

#include "app/worker.h"
#include "lib/larr.h"
#include "lib/lstr.h"

enum TUiCommand : int32_t {
  kCmdNew = 1010,
  kCmdOpen = 1020,
  kCmdClose = 1030,
  kCmdSaveAs = 1050,
  kCmdExit = 1060,
  kCmdRecentFirst = 1500,
  kCmdRecentLast = 1509,
  kCmdRename = 2045,
  kCmdNewFolder = 2046,
  kCmdCut = 2050,
  kCmdCopy = 2060,
  kCmdPaste = 2070,
  kCmdSelectAll = 2080,
  kCmdOpenWithApp = 2090,
  kCmdStop = 2110,
  kCmdLargeIcons = 3010,
  kCmdSmallIcons = 3020,
  kCmdListMode = 3030,
  kCmdDetails = 3040,
  kCmdAllColumns = 3045,
  kCmdProperties = 3050,
  kCmdOptions = 3060,
  kCmdHelp = 4010,
  kCmdAbout = 4020,
  kCmdRegister = 4030,
  kCmdHomePage = 4040,
};

// The separator in the id lists below.
const int32_t kSeparator = 0;

struct TCommandRow {
  int32_t id;
  char mnemonic;     // the letter after "&" in the menu bar's popups
  bool ellipsis;     // the command opens a dialog
  const char* keys;  // shortcut text, display only; null for none
  const char* text;
  const char* help;  // shown on the status bar
};

// The row of an id, or null for an id outside the table.
const TCommandRow* FCommandRow(int32_t id);
// The text of a menu entry: with the mnemonic in the menu bar's popups,
// without it in the context menu.
LStr FMenuText(int32_t id, bool withMnemonic);
// The tool tip of a toolbar button.
LStr FToolTipText(int32_t id);
// The status-bar help of a command id, recent entries included ("" when the
// id has none).
LStr FHelpText(int32_t id, const LStrs& recent);
// The menu text of recent entry `index` (from 0).
LStr FRecentMenuText(int32_t index, const char* path);

// The popups of the menu bar, their titles and their ids (kSeparator for a
// line). The File popup is built each time it opens, around the recent list.
struct TMenuDef {
  const char* title;
  const int32_t* ids;
  int32_t count;
};
const TMenuDef* FMenuBar(int32_t* count);
void FFileMenu(int32_t recentCount, LInts& out);
// The toolbar's buttons from left to right, kSeparator for a gap.
const int32_t* FToolbarButtons(int32_t* count);
