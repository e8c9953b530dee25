// The root of the library's classes with virtual operations.
#pragma once

#include "lib/alloc.h"

class LObj {
 public:
  KST_POOLED_NEW
  LObj() = default;
  virtual ~LObj() = default;

 protected:
  // Objects that own resources are not copied: an assignment is a
  // programming error that ends the process ("object assign").
  LObj(const LObj&) = default;
  LObj& operator=(const LObj&);
};
