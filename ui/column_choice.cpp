#include "ui/column_choice.h"

#include "lib/lstr.h"

namespace {
bool contains(const LInts& ids, int32_t id) {
  for (int32_t known : ids)
    if (known == id) return true;
  return false;
}

bool inRange(const LInts& ids, int32_t index) { return index >= 0 && index < ids.count; }

// Where the selection stays after an entry left the list.
int32_t keptSelection(const LInts& ids, int32_t index) {
  return index < ids.count ? index : ids.count - 1;
}
}  // namespace

TColumnChoice::TColumnChoice(const TColumns& set) {
  for (const TColumn* column : set)
    if (column->id >= kColName && column->id <= kColFolder && !contains(shown_, column->id))
      shown_.add(column->id);
  for (int32_t id = kColName; id <= kColFolder; id++)
    if (!contains(shown_, id)) hidden_.add(id);
}

int32_t TColumnChoice::show(int32_t hiddenIndex) {
  if (!inRange(hidden_, hiddenIndex)) return hiddenIndex;
  shown_.add(hidden_.detach(hiddenIndex));
  return keptSelection(hidden_, hiddenIndex);
}

int32_t TColumnChoice::hide(int32_t shownIndex) {
  if (!inRange(shown_, shownIndex) || shown_.count == 1) return shownIndex;
  int32_t id = shown_.detach(shownIndex);
  int32_t place = 0;
  while (place < hidden_.count && hidden_[place] < id) place++;
  hidden_.insert(id, place);
  return keptSelection(shown_, shownIndex);
}

int32_t TColumnChoice::moveUp(int32_t shownIndex) {
  if (!inRange(shown_, shownIndex) || shownIndex == 0) return shownIndex;
  int32_t id = shown_[shownIndex];
  shown_[shownIndex] = shown_[shownIndex - 1];
  shown_[shownIndex - 1] = id;
  return shownIndex - 1;
}

int32_t TColumnChoice::moveDown(int32_t shownIndex) {
  if (!inRange(shown_, shownIndex) || !inRange(shown_, shownIndex + 1)) return shownIndex;
  return moveUp(shownIndex + 1) + 1;
}

void TColumnChoice::applyTo(TColumns& set) const {
  if (shown_.count == 0) return;
  // The records move from the set into the chosen order; the ones left
  // behind were hidden and go with the set's clear.
  LArrOf<TColumn*> chosen;
  for (int32_t id : shown_) {
    int32_t at = set.find(id, [](const TColumn* column, int32_t key) { return column->id - key; });
    chosen.add(at >= 0 ? set.detach(at) : new TColumn{id, FNewColumnWidth(id)});
  }
  set.clear();
  for (TColumn* column : chosen) set.add(column);
}

void FColumnNames(const LInts& ids, LStrs& out) {
  out.clear();
  for (int32_t id : ids) out.add(new LStr(FColumnHeading(id)));
}
