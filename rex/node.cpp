#include "rex/node.h"

URexBin::~URexBin() {
  delete left;
  delete right;
}

URexRepeat::~URexRepeat() { delete child; }

URexStt::~URexStt() { delete child; }

URexBrace::~URexBrace() { delete child; }

int32_t URexBin::fixedLength() const {
  int32_t a = left->fixedLength();
  int32_t b = right->fixedLength();
  return a < 0 || b < 0 ? -1 : a + b;
}

int32_t URexAnd::fixedLength() const {
  int32_t longest = 0;
  for (const URex* item : items) {
    int32_t n = item->fixedLength();
    if (n < 0) return -1;
    if (n > longest) longest = n;
  }
  return longest;
}

int32_t URexOr::fixedLength() const {
  if (items.count == 0) return 0;
  int32_t common = items[0]->fixedLength();
  for (const URex* item : items)
    if (item->fixedLength() != common) return -1;
  return common;
}
