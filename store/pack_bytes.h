// The self compression that turns a version's raw bytes into its held form.
#pragma once

#include <cstdint>

#include "lib/stream.h"
#include "store/codec_settings.h"

// Writes the held form of bytes[0, length) to `out`: a token stream of
// literal runs and self copies that finds only repeats at a distance of at
// most 8 bytes (zero fill, runs, small repeated records). With noPack set the
// whole input is one literal run; an empty input writes nothing.
void FPackBytes(const uint8_t* bytes, int32_t length, LStream& out, const TCodecSettings& settings);
