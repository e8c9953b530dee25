// Feeds arbitrary tokens to the token reader, with and without a reference,
// into an output of exactly its capacity so that any write or read past a
// buffer is caught; and round-trips arbitrary versions through the encoder.
// Input: one byte of switches, two bytes of output capacity, one byte of
// reference length, then the reference and the rest.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "fuzz/fuzz_support.h"
#include "lib/mem_stream.h"
#include "lib/msg.h"
#include "store/codec_settings.h"
#include "store/held_buf.h"
#include "store/pack_bytes.h"
#include "store/token_expander.h"
#include "store/version_encoder.h"
#include "store/version_expand.h"

namespace {

enum : uint8_t {
  kSwitchReference = 0x01,   // reference copies may read the reference
  kSwitchEncode = 0x02,      // the rest is a version to round-trip
  kSwitchSmallSteps = 0x04,  // coarse and gap settings that make many passes
};

void expandTokens(const uint8_t* tokens, int32_t tokenLen, int32_t outCap, const uint8_t* reference,
                  int32_t referenceLen) {
  std::unique_ptr<uint8_t[]> out(new uint8_t[outCap > 0 ? outCap : 1]);
  try {
    int32_t written = FExpandTokens(tokens, tokenLen, out.get(), outCap, reference, referenceLen);
    check(written >= 0 && written <= outCap);
  } catch (int) {
    // A format failure: the only way damage may end.
  }
}

void pack(const uint8_t* raw, int32_t size, const TCodecSettings& settings, THeldBuf& held) {
  LStr packed;
  LMemOutStream out(packed);
  FPackBytes(raw, size, out, settings);
  held.assign(packed.ptr, packed.length);
  THeldBuf back;
  FExpandRaw(THeldView(held), size, back);
  check(back.size() == size && std::equal(raw, raw + size, back.data()));
}

void roundTrip(const uint8_t* target, int32_t targetLen, const uint8_t* reference,
               int32_t referenceLen, bool withReference, const TCodecSettings& settings) {
  THeldBuf targetHeld;
  THeldBuf referenceHeld;
  pack(target, targetLen, settings, targetHeld);
  pack(reference, referenceLen, settings, referenceHeld);
  const THeldView referenceView(referenceHeld);
  LStr stored;
  LMemOutStream out(stored);
  int32_t matched = FEncodeVersion(THeldView(targetHeld), withReference ? &referenceView : nullptr,
                                   out, settings);
  check(matched >= 0 && matched <= targetHeld.size());
  THeldBuf back;
  FExpandStored(reinterpret_cast<const uint8_t*>(stored.ptr), stored.length, targetLen,
                withReference ? &referenceView : nullptr, back);
  check(back.size() == targetHeld.size() &&
        std::equal(targetHeld.data(), targetHeld.data() + back.size(), back.data()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool quiet = false;
  if (!quiet) {
    FSetReporter(new SilentReporter);
    quiet = true;
  }
  if (size < 4 || size > 1 << 20) return 0;
  const uint8_t switches = data[0];
  const int32_t outCap = data[1] | (data[2] & 0x0F) << 8;
  int32_t referenceLen = data[3];
  data += 4;
  size -= 4;
  if (static_cast<size_t>(referenceLen) > size) referenceLen = static_cast<int32_t>(size);
  // The reference in a block of exactly its size.
  std::unique_ptr<uint8_t[]> reference(new uint8_t[referenceLen > 0 ? referenceLen : 1]);
  std::copy(data, data + referenceLen, reference.get());
  const uint8_t* rest = data + referenceLen;
  const int32_t restLen = static_cast<int32_t>(size) - referenceLen;
  const bool withReference = (switches & kSwitchReference) != 0;

  if ((switches & kSwitchEncode) != 0) {
    TCodecSettings settings;
    if ((switches & kSwitchSmallSteps) != 0) {
      settings.coarseDiv = 1 + (switches >> 4);
      settings.gapWindow = outCap;
      settings.stopPercent = switches >> 3 & 1;
    }
    roundTrip(rest, restLen, reference.get(), referenceLen, withReference, settings);
    return 0;
  }
  if (withReference)
    expandTokens(rest, restLen, outCap, reference.get(), referenceLen);
  else
    expandTokens(rest, restLen, outCap, nullptr, (switches & 0x10) != 0 ? 0 : -1);
  return 0;
}
