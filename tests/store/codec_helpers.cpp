#include "store/codec_helpers.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "lib/mem_stream.h"
#include "lib/num_coding.h"
#include "store/gap_encoder.h"
#include "store/pack_bytes.h"
#include "store/version_encoder.h"
#include "store/version_expand.h"
#include "support/recorder.h"

namespace {
Bytes toBytes(const LStr& s) { return Bytes(s.ptr, s.length); }
Bytes toBytes(const THeldBuf& b) {
  return Bytes(reinterpret_cast<const char*>(b.data()), b.size());
}
}  // namespace

Bytes Pack(const Bytes& raw, const TCodecSettings& settings) {
  LStr out;
  LMemOutStream stream(out);
  FPackBytes(U8(raw), static_cast<int32_t>(raw.size()), stream, settings);
  return toBytes(out);
}

Bytes Encode(const Bytes& target, const Bytes* reference, int32_t* matched,
             const TCodecSettings& settings) {
  THeldBuf t = Held(target);
  THeldBuf r = Held(reference != nullptr ? *reference : Bytes());
  THeldView tv(t), rv(r);
  LStr out;
  LMemOutStream stream(out);
  int32_t count = FEncodeVersion(tv, reference != nullptr ? &rv : nullptr, stream, settings);
  if (matched != nullptr) *matched = count;
  return toBytes(out);
}

Bytes EncodeGap(const Bytes& target, int32_t from, int32_t reseed, int32_t splitLength) {
  THeldBuf buf = Held(target);
  TGapChains table(buf.data());
  LStr out;
  LMemOutStream stream(out);
  TTokenWriter tokens(stream);
  FEncodeGap(buf.data(), from, buf.size(), tokens, reseed, table, splitLength);
  tokens.finish();
  return toBytes(out);
}

Bytes ExpandStored(const Bytes& stored, int32_t rawSize, const Bytes* referenceHeld) {
  THeldBuf r = Held(referenceHeld != nullptr ? *referenceHeld : Bytes());
  THeldView rv(r);
  THeldBuf held;
  FExpandStored(U8(stored), static_cast<int32_t>(stored.size()), rawSize,
                referenceHeld != nullptr ? &rv : nullptr, held);
  return toBytes(held);
}

Bytes ExpandRaw(const Bytes& held, int32_t rawSize) {
  THeldBuf h = Held(held);
  THeldBuf raw;
  FExpandRaw(THeldView(h), rawSize, raw);
  return toBytes(raw);
}

std::string Describe(const Bytes& tokens) {
  LMemSrm in(tokens.data(), static_cast<int32_t>(tokens.size()));
  std::string text;
  while (in.tell() < static_cast<int32_t>(tokens.size())) {
    uint32_t head = FReadNum(in);
    uint32_t n = head >> 2;
    if (!text.empty()) text += " ";
    if ((head & 3) == 1) {
      std::string bytes(n, '\0');
      if (n > 0) in.read(&bytes[0], static_cast<int32_t>(n));
      text += "L" + std::to_string(n) + ":" + bytes;
    } else {
      int32_t d = static_cast<int32_t>(FReadDiff(in, 0));
      text += ((head & 3) == 2 ? "S" : "R") + std::to_string(n) + "@" + std::to_string(d);
    }
  }
  return text;
}

int FormatFailure(const std::function<void()>& run) {
  RecorderScope recorder;
  try {
    run();
  } catch (int) {
    if (recorder->boxes.count != 1) return -1;
    const char* at = std::strrchr(recorder->boxes[0]->ptr, '=');
    return at != nullptr ? std::atoi(at + 1) : -1;
  }
  return 0;
}

Bytes RandomBytes(std::mt19937& rng, size_t n, int alphabet) {
  Bytes b(n, '\0');
  for (char& c : b) c = static_cast<char>(rng() % alphabet);
  return b;
}
