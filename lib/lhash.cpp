#include "lib/lhash.h"

#include <cstring>

#include "lib/strfunc.h"

void LHash::add(uint32_t hash, intptr_t element) {
  if (buckets == nullptr) {
    buckets = static_cast<LArr**>(FAlloc(bucketCount * static_cast<int32_t>(sizeof(LArr*))));
    std::memset(buckets, 0, bucketCount * sizeof(LArr*));
  }
  LArr*& bucket = buckets[hash % bucketCount];
  if (bucket == nullptr) bucket = new LArr;
  bucket->add(element);
  elementCount++;
}

intptr_t LHash::find(uint32_t hash, const void* key, Compare compare) const {
  if (buckets == nullptr) return 0;
  LArr* bucket = buckets[hash % bucketCount];
  if (bucket == nullptr) return 0;
  for (intptr_t element : *bucket)
    if (compare(element, key) == 0) return element;
  return 0;
}

void LHash::addInt(intptr_t key) { add(static_cast<uint32_t>(key), key); }

void LHash::addPair(intptr_t key, intptr_t value) {
  LIntPair* pair = new LIntPair{key, value};
  add(static_cast<uint32_t>(key), reinterpret_cast<intptr_t>(pair));
}

void LHash::addStr(LStr* text) {
  add(FHashStr(text->ptr, text->length), reinterpret_cast<intptr_t>(text));
}

void LHash::addUStr(UStr* text) {
  add(FHashUStr(text->ptr, text->length), reinterpret_cast<intptr_t>(text));
}

bool LHash::containsInt(intptr_t key) const {
  if (buckets == nullptr) return false;
  const LArr* bucket = buckets[static_cast<uint32_t>(key) % bucketCount];
  if (bucket == nullptr) return false;
  for (intptr_t element : *bucket)
    if (element == key) return true;
  return false;
}

intptr_t LHash::findInt(intptr_t key, Compare compare) const {
  return find(static_cast<uint32_t>(key), &key, compare);
}

intptr_t LHash::findStr(const char* key, Compare compare) const {
  return find(FHashStr(key), key, compare);
}

intptr_t LHash::findUStr(const UChar* key, Compare compare) const {
  return find(FHashUStr(key), key, compare);
}

void LHash::collect(LArr& out) const {
  if (buckets == nullptr) return;
  for (int32_t i = 0; i < bucketCount; i++)
    if (buckets[i]) out.addAll(*buckets[i]);
}

void LHash::clear() {
  if (buckets == nullptr) return;
  for (int32_t i = 0; i < bucketCount; i++) {
    LArr* bucket = buckets[i];
    if (bucket == nullptr) continue;
    for (intptr_t element : *bucket) {
      if (kind_ == kPairs) delete reinterpret_cast<LIntPair*>(element);
      if (kind_ == kStrs) delete reinterpret_cast<LStr*>(element);
      if (kind_ == kUStrs) delete reinterpret_cast<UStr*>(element);
    }
    delete bucket;
  }
  FFree(buckets);
  buckets = nullptr;
  elementCount = 0;
}
