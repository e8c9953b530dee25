// A slow, plain transcription of the codec: every probe tested one after the
// other, every ring walked slot by slot, every byte compared alone. The fast
// codec must write the very same bytes.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "store/coarse_match.h"
#include "store/codec_settings.h"

struct TRefCodecOptions {
  TCodecSettings settings;
  // Off: a backward coarse probe may read its four bytes past the end of the
  // whole reference (the unguarded matcher, to show what the guard prevents).
  bool guardReferenceEnd = true;
};

void RefPackBytes(const uint8_t* bytes, int32_t length, LStr& out, const TRefCodecOptions& opt);
// The inputs must have a zero tail, as for the fast encoder.
int32_t RefEncodeVersion(const uint8_t* target, int32_t targetLen, const uint8_t* reference,
                         int32_t referenceLen, LStr& out, const TRefCodecOptions& opt);
void RefFindMatches(const TCoarseInput& in, int32_t tFrom, int32_t tTo, int32_t rFrom, int32_t rTo,
                    TMatchList& list, bool guardReferenceEnd);
// Throws the format failure like the fast reader.
int32_t RefExpandTokens(const uint8_t* tokens, int32_t tokenLen, uint8_t* out, int32_t outCap,
                        const uint8_t* reference, int32_t referenceLen);
