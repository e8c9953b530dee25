// kst ls and kst log: the folder view and the version view of the list pane.
#include "archive/archive.h"
#include "cli/cli_session.h"
#include "cli/commands.h"
#include "cli/item_path.h"
#include "cli/list_table.h"

int FRunLs(TCliContext& context) {
  const LStrs& plain = context.request.plain;
  TFolder* root = context.session.archive().root;
  // Without a folder, the root.
  TRec* rec = plain.count < 2 ? root : FFindItem(root, plain[1]->ptr);
  if (rec == nullptr) return 1;
  LInts columns;
  FViewColumns(kViewFolder, context.request.all != 0, columns);
  TCliTable table(columns, nullptr);
  if (rec->isFolder()) {
    LArrOf<TRec*> children;
    children.addAll(static_cast<TRecF*>(rec)->children);
    FSortForDisplay(children);
    // A file whose versions are all gone has no row.
    for (TRec* child : children)
      if (child->isFolder() || child->latestVer() != nullptr) table.addRow(child);
  } else if (rec->latestVer() != nullptr) {
    table.addRow(rec);
  }
  table.print(context.console);
  return 0;
}

int FRunLog(TCliContext& context) {
  TFile* file = FFindFile(context.session.archive().root, context.request.plain[1]->ptr);
  if (file == nullptr) return 1;
  LInts columns;
  FViewColumns(kViewVersions, context.request.all != 0, columns);
  TCliTable table(columns, nullptr);
  for (int32_t i = file->childCount() - 1; i >= 0; i--) table.addRow(file->version(i));
  table.print(context.console);
  return 0;
}
