#include "store/token_writer.h"

#include <algorithm>
#include <cstring>

#include "lib/num_coding.h"
#include "store/token_format.h"

void TTokenWriter::number(uint32_t value) {
  if (used_ > kBufferSize - kNumWriteRoom) finish();
  used_ += FEncodeNum(value, buffer_ + used_);
}

void TTokenWriter::finish() {
  if (used_ > 0) out_.write(buffer_, used_);
  used_ = 0;
}

// Runs longer than a token's length field are written as several tokens: a
// literal in pieces, a copy in pieces with the same distance, which reads
// on where the piece before stopped.
void TTokenWriter::literalRun(const uint8_t* bytes, int32_t n) {
  for (int32_t done = 0; done < n;) {
    const int32_t piece = std::min(n - done, kTokenMaxLength);
    number(head(piece, kTokenLiteral));
    if (piece <= kBufferSize - used_) {
      std::memcpy(buffer_ + used_, bytes + done, piece);
      used_ += piece;
    } else {
      finish();
      out_.write(bytes + done, piece);
    }
    done += piece;
  }
}

void TTokenWriter::copyPieces(int32_t n, int32_t d, uint32_t kind) {
  for (int32_t done = 0; done < n;) {
    const int32_t piece = std::min(n - done, kTokenMaxLength);
    number(head(piece, kind));
    number(FDiffNum(static_cast<uint32_t>(d), 0));
    done += piece;
  }
}
