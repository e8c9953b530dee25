// The gap encoder: what the coarse matcher left of the target is written as
// literal runs and copies from the target's own earlier bytes.
#pragma once

#include <cstdint>

#include "store/gap_chains.h"
#include "store/token_writer.h"

// Encodes target[from, to) with tokens of kinds 1 and 2. Candidates may lie
// anywhere earlier in the target while their bucket still holds them; first
// the `reseed` positions before `from` are hashed again, since positions
// inside coarse matches reach the table only that way. Copies end at `to`,
// so the range's last 6 bytes are never the start of one. The target must
// have the zero tail of a THeldBuf: positions near `to` are hashed on bytes
// behind it.
//
// A gap of at least `splitLength` bytes (0: none) into a table that nothing
// went into before is parsed on two threads when the codec's budget has one
// idle; the tokens are the same either way.
void FEncodeGap(const uint8_t* target, int32_t from, int32_t to, TTokenWriter& out, int32_t reseed,
                TGapChains& table, int32_t splitLength);
