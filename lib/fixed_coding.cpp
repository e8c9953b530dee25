#include "lib/fixed_coding.h"

#include "lib/fail.h"
#include "lib/num_coding.h"

void FPutI32(void* at, int32_t value) {
  unsigned char* p = static_cast<unsigned char*>(at);
  uint32_t v = static_cast<uint32_t>(value);
  for (int i = 0; i < 4; i++) p[i] = static_cast<unsigned char>(v >> (8 * i));
}

int32_t FGetI32(const void* at) {
  const unsigned char* p = static_cast<const unsigned char*>(at);
  return static_cast<int32_t>(p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24);
}

void FWriteI32(LStream& stream, int32_t value) {
  unsigned char bytes[4];
  FPutI32(bytes, value);
  stream.write(bytes, 4);
}

void FWriteU16(LStream& stream, uint16_t value) {
  unsigned char bytes[2] = {static_cast<unsigned char>(value),
                            static_cast<unsigned char>(value >> 8)};
  stream.write(bytes, 2);
}

int32_t FReadI32(LSrmBase& srm) {
  int64_t value = srm.getDword();
  if (value < 0) FFormatError(kFormatEndOfData);
  return static_cast<int32_t>(static_cast<uint32_t>(value));
}

uint16_t FReadU16(LSrmBase& srm) {
  int32_t value = srm.getWord();
  if (value < 0) FFormatError(kFormatEndOfData);
  return static_cast<uint16_t>(value);
}
