// Shared helpers of the codec tests: the three forms of a version as plain
// byte strings, and the number of a format failure.
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>

#include "store/codec_settings.h"
#include "store/held_buf.h"

typedef std::string Bytes;

Bytes Pack(const Bytes& raw, const TCodecSettings& settings = TCodecSettings());
// The stored form of target against reference (none when null); the matched
// count goes to *matched when given.
Bytes Encode(const Bytes& target, const Bytes* reference, int32_t* matched = nullptr,
             const TCodecSettings& settings = TCodecSettings());
// The tokens of one gap, target[from, end), of a fresh table seeded with up
// to `reseed` positions before it; gaps of `splitLength` bytes or more are
// parsed on two threads where one is idle (0: never).
Bytes EncodeGap(const Bytes& target, int32_t from, int32_t reseed, int32_t splitLength = 0);
// The held form back from a stored form; the raw bytes back from a held form.
Bytes ExpandStored(const Bytes& stored, int32_t rawSize, const Bytes* referenceHeld);
Bytes ExpandRaw(const Bytes& held, int32_t rawSize);

// The tokens in words: "L3:abc" for a literal, "S19@1" for a self copy of
// 19 bytes from 1 back, "R36@4" for a reference copy with d = 4.
std::string Describe(const Bytes& tokens);

// The identification number of the archive format failure that `run` raises,
// or 0 when it returns normally.
int FormatFailure(const std::function<void()>& run);

Bytes RandomBytes(std::mt19937& rng, size_t n, int alphabet = 256);
inline THeldBuf Held(const Bytes& b) { return THeldBuf(b.data(), static_cast<int32_t>(b.size())); }
inline const uint8_t* U8(const Bytes& b) { return reinterpret_cast<const uint8_t*>(b.data()); }
