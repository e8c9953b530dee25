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

#include "lib/lstr.h"
#include "store/codec_settings.h"
#include "store/held_buf.h"

class LSrm;
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

// The stored form of an older version against a newer one, and what its
// encoding found: the matched count, and whether the two are the same.
struct TDeltaForm {
  LStr stored;
  int32_t targetSize = 0;  // of the older version's held form
  int32_t matched = 0;
  bool same = false;
};

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
// does not fit) is the archive format failure, which leaves result empty.
// The room that result has already is used.
void FReadBlock(THeldBuf& result, TArchive& archive, int32_t pos,
                const TKnownBlock* known = nullptr);
// The stored form of a version whose block refers to no other (the newest
// of its file, or one stored whole), read so that another thread may expand
// it: its held form is FExpandHeld(stored, rawSize). False, with nothing
// read, when the version is not in the archive, has its held form in
// memory, or is stored against another block: only Hold brings those.
bool FReadStandalone(TVer* ver, LStr& stored, int32_t* rawSize);
// The held form of a stored form that refers to no other, for a version
// of `size` bytes, with the checks that Hold makes. Any thread.
void FExpandHeld(const LStr& stored, int32_t rawSize, int32_t size, THeldBuf& held);
// Writes the block of a version into the running update file, keeping the
// version's block position when it had one; with a reference, the parent
// field is patched at commit with the reference's position. Returns the
// block's position.
int32_t FWriteBlock(TVer* ver, const LStr& stored, TVer* reference);
// Reads a new version's source file and makes its held form and checksum;
// a file whose size changed since it was listed is "ファイル %s の読み出しエラーです".
void FReadFileIn(TVer* ver);
// What FReadFileIn does without the records, for any thread: false when the
// file cannot be opened (reported only with `report`) or read at `size`
// bytes.
bool FReadHeld(const char* path, int32_t size, bool report, THeldBuf& held, uint16_t* checksum);
// Makes `held` (owned from now on) the held form of a version that has a
// side record and no hold yet.
void FTakeHeld(TVer* ver, THeldBuf* held);

// The raw bytes of a version: its held form expanded once more, checked
// against its size.
void FReadRaw(TVer* ver, THeldBuf& raw);

// Re-encodes `older` against `newer`: drops `newer` when the two are the same
// and dropIfSame is set, else marks `older` as the same; stores the delta
// unless the newer one was dropped or the two share under 5 percent.
void FStoreDelta(TVer* older, TVer* newer, bool dropIfSame);
// Stores a version without a reference.
void FStoreWhole(TVer* ver);

// The two steps of each store: the encoding, which touches no record and
// may run on any thread, and the applying, which sets the flags and ratios
// and writes the block on the command's thread, in the command's order.
void FEncodeDelta(const THeldBuf& target, const THeldBuf& reference, TDeltaForm& delta);
// Both versions must be held, `older` with the target of the delta.
void FApplyDelta(TVer* older, TVer* newer, bool dropIfSame, const TDeltaForm& delta);
void FEncodeWhole(const THeldBuf& held, LStr& stored);
void FApplyWhole(TVer* ver, const LStr& stored);
