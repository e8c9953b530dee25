// TColumnChoice: the decisions of one pair of lists on the column page of
// the options: the columns a view shows, in order, and the ones it hides,
// the moves between and within the lists, and how the chosen order goes
// back into the view's column set. Plain state, no window.
#pragma once

#include <cstdint>

#include "app/column.h"
#include "lib/larr.h"

class TColumnChoice {
 public:
  // The shown columns are the set's known ids in its order, each once; the
  // hidden ones are the other known ids, in id order.
  explicit TColumnChoice(const TColumns& set);
  TColumnChoice(const TColumnChoice&) = delete;
  TColumnChoice& operator=(const TColumnChoice&) = delete;

  const LInts& shown() const { return shown_; }
  const LInts& hidden() const { return hidden_; }

  // The moves take the selected index of the list they act on and return
  // that list's new selection. A move to the other list leaves the
  // selection at the same index, or on the last entry if the list got
  // shorter (-1 when it is empty); the entry goes to the end of the shown
  // list or to its id's place in the hidden one. The shown list keeps at
  // least one entry. An index out of range changes nothing.
  int32_t show(int32_t hiddenIndex);
  int32_t hide(int32_t shownIndex);
  // Swap the entry with its neighbour; the selection follows the entry.
  int32_t moveUp(int32_t shownIndex);
  int32_t moveDown(int32_t shownIndex);

  // Gives set the shown order: a column that stays keeps its record and
  // width, a new one takes its default width. An empty choice leaves the
  // set as it was.
  void applyTo(TColumns& set) const;

 private:
  LInts shown_;
  LInts hidden_;
};

// The headings of the ids, for a list box.
void FColumnNames(const LInts& ids, LStrs& out);
