#include "lib/lobj.h"

#include "lib/fail.h"

LObj& LObj::operator=(const LObj&) { FInternal("object assign"); }
