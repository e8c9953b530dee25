// The version encoder: the stored form of a held form, against the held form
// of the next newer version or against nothing.
//
// The coarse matcher finds long stretches shared with the reference, pass
// after pass into the gaps it left, until a pass adds few matches; the gap
// encoder then writes the rest with literals and copies from the target
// itself. With no reference the whole target goes through the gap encoder.
#pragma once

#include <cstdint>

#include "lib/stream.h"
#include "store/codec_settings.h"
#include "store/held_buf.h"

// Writes the stored form of `target` to `out` (null `reference`: none) and
// returns the matched count: the bytes found in the reference less 3 per
// match, raised to the target's length when it comes within 3 of it. So a
// target found whole in the reference reports its length, and an empty one 0.
// Runs on the worker thread; reports progress on a level of its own.
int32_t FEncodeVersion(const THeldView& target, const THeldView* reference, LStream& out,
                       const TCodecSettings& settings);
