// Fixed-width little-endian fields, the other half of the archive's byte
// coding (the variable numbers are in num_coding.h).
#pragma once

#include <cstdint>

#include "lib/srm_base.h"
#include "lib/stream.h"

void FWriteI32(LStream& stream, int32_t value);
void FWriteU16(LStream& stream, uint16_t value);
// The next four (two) bytes, or the archive format failure 312 when the
// stream ends first.
int32_t FReadI32(LSrmBase& srm);
uint16_t FReadU16(LSrmBase& srm);
// The same on memory that the caller knows to be long enough.
void FPutI32(void* at, int32_t value);
int32_t FGetI32(const void* at);
