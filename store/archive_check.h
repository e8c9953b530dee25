// A full check of the open archive: every version of every file is read back
// to its raw bytes and compared with its size and checksum, and the free
// chain on disk is compared with the blocks: every free extent and every
// block segment must lie inside the data area (from the header to the
// footer), and none may overlap another.
//
// Each fault is handed to the caller as one line of text and the check goes
// on; a read failure has shown its own message first. Needs a work set and
// runs on the thread that owns the archive.
#pragma once

#include <cstdint>

class TArchive;

struct TCheckTotals {
  int32_t files = 0;
  int32_t versions = 0;
  int32_t extents = 0;
  int32_t faults = 0;
};

typedef void (*FCheckFault)(const char* text, void* context);

TCheckTotals FCheckArchive(TArchive& archive, FCheckFault fault, void* context);
