#include "app/config.h"

#include "store/cond.h"

namespace {
TConfig* gConfig = nullptr;
}

TConfig* FConfig() { return gConfig; }
void FSetConfig(TConfig* config) { gConfig = config; }

TConfig::TConfig()
    : addCond_(new TCond),
      extractCond_(new TCond),
      deleteCond_(new TCond),
      searchCond_(new TCond) {}

TConfig::~TConfig() {
  delete addCond_;
  delete extractCond_;
  delete deleteCond_;
  delete searchCond_;
}

TCond& TConfig::fresh(TCond*& slot) {
  delete slot;
  slot = new TCond;
  return *slot;
}
