#include "store/work_set.h"

#include "lib/fail.h"
#include "lib/sys.h"
#include "store/ver_info.h"

namespace {
TWorkSet* gWorkSet = nullptr;

// Records are 8-byte aligned: without the low bits the addresses fall into
// every bucket, not one in eight.
intptr_t keyOf(const TVer* ver) { return reinterpret_cast<intptr_t>(ver) >> 3; }

int sameKey(intptr_t element, const void* key) {
  return reinterpret_cast<const LIntPair*>(element)->key == *static_cast<const intptr_t*>(key) ? 0
                                                                                               : 1;
}
}  // namespace

TWorkSet::~TWorkSet() {
  LArr all;
  infos.collect(all);
  for (intptr_t element : all)
    delete reinterpret_cast<TVerInfo*>(reinterpret_cast<LIntPair*>(element)->value);
  all.clear();
  opened.collect(all);
  for (intptr_t element : all)
    delete reinterpret_cast<LStr*>(reinterpret_cast<LIntPair*>(element)->value);
}

TVerInfo* TWorkSet::findInfo(const TVer* ver) const {
  intptr_t key = keyOf(ver);
  intptr_t pair = infos.findInt(key, sameKey);
  return pair ? reinterpret_cast<TVerInfo*>(reinterpret_cast<LIntPair*>(pair)->value) : nullptr;
}

TVerInfo* TWorkSet::NewInfo(const TVer* ver) {
  TVerInfo* info = new TVerInfo;
  infos.addPair(keyOf(ver), reinterpret_cast<intptr_t>(info));
  return info;
}

const char* TWorkSet::openedPath(const TVer* ver) const {
  intptr_t key = keyOf(ver);
  intptr_t pair = opened.findInt(key, sameKey);
  return pair ? reinterpret_cast<LStr*>(reinterpret_cast<LIntPair*>(pair)->value)->ptr : nullptr;
}

void TWorkSet::noteOpened(const TVer* ver, LStr* path) {
  opened.addPair(keyOf(ver), reinterpret_cast<intptr_t>(path));
}

TWorkSet* FWorkSet() { return gWorkSet; }

void FNewWorkSet() {
  delete gWorkSet;
  gWorkSet = new TWorkSet;
}

void FDeleteWorkSet() {
  delete gWorkSet;
  gWorkSet = nullptr;
}

void FCheckStop() {
  while (gWorkSet->stopState == kStopHold) SysSleep(300);
  if (gWorkSet->stopState == kStopNow) throw static_cast<int>(kThrowStopped);
}

void FPollStop() {
  if (gWorkSet != nullptr && gWorkSet->stopState != kStopRun) FCheckStop();
}
