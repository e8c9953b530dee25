// Versions on disk: the block of segments that holds a stored form, the
// version header in its first segment, and the reads that bring a version's
// held form and side record into memory.
//
// First segment: i32 length, i32 next, i32 parent (the block of the
// reference version, 0 for none), the version header, the raw size as a
// number, then the stored form or its first part. Further segments: length,
// next, the next part.
#pragma once

#include <cstdint>

#include "store/codec_settings.h"
#include "store/held_buf.h"

class LSrm;
class LStr;
class LStream;
class TArchive;
class TVer;

// The codec tuning that reads and stores use; the application points it at
// its own settings, and until then the defaults hold.
const TCodecSettings& FCodecSettings();
void FSetCodecSettings(const TCodecSettings* settings);

// The version header: ratios, attributes, three times as differences from
// the modification time, store number and string ids.
void FWriteVerHeader(LStream& stream, TVer* ver);
// Reads a header; with a version, makes its side record from it, and with
// null only consumes it.
void FReadVerHeader(LSrm& srm, TVer* ver);

// A block whose held form is already in memory.
struct TKnownBlock {
  int32_t pos = 0;
  THeldBuf held;
};

// Rebuilds the held form of the block at pos into result, following the
// chain of reference blocks up to the newest version, or only up to `known`
// when the chain passes through it: reading a file's versions from the
// newest down with the last one read as `known` decodes each block once. A
// damaged chain (a loop, a position outside the data area, a segment that
// does not fit) is the archive format failure.
void FReadBlock(THeldBuf& result, TArchive& archive, int32_t pos,
                const TKnownBlock* known = nullptr);
// Writes the block of a version into the running update file, keeping the
// version's block position when it had one; with a reference, the parent
// field is patched at commit with the reference's position. Returns the
// block's position.
int32_t FWriteBlock(TVer* ver, const LStr& stored, TVer* reference);
// Reads a new version's source file and makes its held form and checksum;
// a file whose size changed since it was listed is "ファイル %s の読み出しエラーです".
void FReadFileIn(TVer* ver);

// The raw bytes of a version: its held form expanded once more, checked
// against its size.
void FReadRaw(TVer* ver, THeldBuf& raw);

// Re-encodes `older` against `newer`; see the store rules in the .cpp.
void FStoreDelta(TVer* older, TVer* newer, bool dropIfSame);
// Stores a version without a reference.
void FStoreWhole(TVer* ver);
