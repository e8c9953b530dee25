#include "ui/name_index.h"

#include <algorithm>

#include "lib/strfunc.h"

void TNameIndex::add(const char* name, intptr_t item) {
  entries_.push_back(Entry{LStr(name), item, static_cast<int32_t>(entries_.size())});
}

intptr_t TNameIndex::find(const char* name) {
  auto before = [](const Entry& a, const Entry& b) {
    int order = FStrCmp(a.name.ptr, b.name.ptr, /*ignoreCase=*/true);
    return order != 0 ? order < 0 : a.order < b.order;
  };
  if (!sorted_) {
    std::sort(entries_.begin(), entries_.end(), before);
    sorted_ = true;
  }
  auto first = std::lower_bound(entries_.begin(), entries_.end(), name,
                                [](const Entry& entry, const char* key) {
                                  return FStrCmp(entry.name.ptr, key, /*ignoreCase=*/true) < 0;
                                });
  if (first == entries_.end() || FStrCmp(first->name.ptr, name, /*ignoreCase=*/true) != 0) return 0;
  return first->item;
}
