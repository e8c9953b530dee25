#include "archive/string_table.h"

#include <cstring>

#include "lib/fail.h"
#include "lib/strfunc.h"

uint32_t TStringTable::intern(const char* text, int32_t n) {
  if (n < 0) n = LText<char>::measure(text);
  strings.add(new LStr(text, n));
  uint32_t index = static_cast<uint32_t>(strings.count);
  stringIndex.addPair(FHashStr(text, n), index);
  return index;
}

uint32_t TStringTable::find(const char* text, int32_t n) const {
  if (n < 0) n = LText<char>::measure(text);
  uint32_t hash = FHashStr(text, n);
  if (stringIndex.buckets == nullptr) return 0;
  const LArr* bucket = stringIndex.buckets[hash % stringIndex.bucketCount];
  if (bucket == nullptr) return 0;
  for (intptr_t element : *bucket) {
    const LIntPair* pair = reinterpret_cast<const LIntPair*>(element);
    if (static_cast<uint32_t>(pair->key) != hash) continue;
    const LStr* entry = strings[static_cast<int32_t>(pair->value) - 1];
    if (entry->length == n && std::memcmp(entry->ptr, text, n) == 0)
      return static_cast<uint32_t>(pair->value);
  }
  return 0;
}

uint32_t TStringTable::lookupOrAdd(const char* text) {
  if (text == nullptr || *text == 0) return 0;
  uint32_t index = find(text);
  return index ? index : intern(text);
}

const char* TStringTable::text(uint32_t index) const {
  if (index == 0) return "";
  if (index > static_cast<uint32_t>(strings.count)) FInternalBox(1578);
  return strings[static_cast<int32_t>(index) - 1]->ptr;
}

void TStringTable::clear() {
  strings.clear();
  stringIndex.clear();
}
