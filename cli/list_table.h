// The rows of a list view as text: a heading line and one line per record,
// each column padded to its widest cell (numbers to the right, text to the
// left) and two blanks between columns. The texts are those of the panes.
#pragma once

#include <cstdint>

#include "cli/text_width.h"
#include "lib/larr.h"
#include "lib/lstr.h"

class TCliConsole;
class TRec;

// The three views of the list pane.
enum TListView : char { kViewFolder = 'f', kViewVersions = 'v', kViewSearch = 's' };

// The columns a view shows: the panes' default set, or with `all` every
// column that the view can show.
void FViewColumns(TListView view, bool all, LInts& out);

class TCliTable {
 public:
  // Path columns run from base (null: the root).
  TCliTable(const LInts& columns, const TRec* base);
  TCliTable(const TCliTable&) = delete;
  TCliTable& operator=(const TCliTable&) = delete;

  // Takes the texts of the record's row now (see column_text.h for who may
  // call it when).
  void addRow(TRec* rec);
  int32_t rowCount() const { return rows_.count; }
  // The lines, the heading first, without line ends, for a stream that
  // shows escapes in that form.
  void lines(LStrs& out, TEscapeForm escapes) const;
  void print(TCliConsole& console) const;

 private:
  LInts columns_;
  const TRec* base_;
  LArrOf<LStrs*, LDelete<LStrs*>> rows_;
};
