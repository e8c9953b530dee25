// The decisions of the tree and list panes: which rows a view holds and in
// which order, which columns it shows, how a column click sorts, what the
// status bar says of a folder, and the rules of in-place rename.
#pragma once

#include <cstdint>

#include "app/column.h"
#include "lib/lstr.h"
#include "ui/selection.h"

class TApp;
class TFile;
class TFolder;
class TRec;

// The list pane's views.
enum TListViewKind : char { kViewFolder = 'f', kViewVersions = 'v', kViewSearch = 's' };

// A folder's rows: folders, then files, each group by name; a file with no
// version has no row.
void FFolderRows(const TFolder* folder, TRecList& out);
// A folder's nodes in the tree: folders, then files, each group by name,
// files without versions included. Any other child breaks the tree, and is
// internal failure 1269.
void FTreeChildren(const TFolder* folder, TRecList& out);
// A file's versions, newest first.
void FVersionRows(const TFile* file, TRecList& out);
// The column set of a view: the three short sets, or with allColumns the
// three full ones.
TColumns& FViewColumns(TApp& app, char view, bool allColumns);
// The status text when a folder is selected in the tree.
LStr FFolderStatus(const TFolder* folder);

// The list modes, as the ids of their commands (3010 to 3045); 3045 is the
// details mode with every column.
bool FIsListMode(int32_t id);

// The order of two rows under a column click. dir is 'A' or 'D'. The name
// column keeps folders and files apart; otherwise the cell texts decide,
// as text (FStrCmp) or, for sortKind 'i', as numbers with their commas
// removed.
int FCompareRows(const TRec* a, const TRec* b, const char* textA, const char* textB,
                 int32_t columnId, char sortKind, char dir);

// In-place rename. A list row can take a new name only when the first
// column is the name.
bool FListRenameAllowed(int32_t firstColumnId);
// Gives rec the name `text` when the rules allow it: an empty text is
// dropped silently; a sibling of that name (the record's own present name
// included) and the characters \/:;,*?"<>| are refused with a message box.
// On success the archive's tree is marked dirty. True when renamed.
bool FRenameRecord(TRec* rec, const char* text);
