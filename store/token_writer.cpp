#include "store/token_writer.h"

#include "lib/num_coding.h"
#include "store/token_format.h"

namespace {
uint32_t tokenHead(int32_t n, uint32_t kind) {
  return static_cast<uint32_t>(n) << kTokenLengthShift | kind;
}
}  // namespace

void TTokenWriter::literal(const uint8_t* bytes, int32_t n) {
  if (n <= 0) return;
  FWriteNum(out_, tokenHead(n, kTokenLiteral));
  out_.write(bytes, n);
}

void TTokenWriter::selfCopy(int32_t n, int32_t d) {
  FWriteNum(out_, tokenHead(n, kTokenSelfCopy));
  FWriteDiff(out_, static_cast<uint32_t>(d), 0);
}

void TTokenWriter::refCopy(int32_t n, int32_t d) {
  FWriteNum(out_, tokenHead(n, kTokenRefCopy));
  FWriteDiff(out_, static_cast<uint32_t>(d), 0);
}
