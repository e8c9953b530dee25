// kstcodec: the version codec on files, for looking into what it writes.
//
//   kstcodec pack FILE                      the held form of FILE
//   kstcodec encode TARGET [REFERENCE]      the stored form of TARGET's held
//                                           form against REFERENCE's (or
//                                           alone); the matched count goes to
//                                           the error output
//   kstcodec expand STORED [REFERENCE_HELD] --size N
//                                           what the tokens expand to, with
//                                           room for a version of N raw bytes
//
// Files are read whole; the result goes to the standard output and nothing
// else does. Failures are reported on the error output with exit code 2.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include "lib/fail.h"
#include "lib/file_stream.h"
#include "lib/lstr.h"
#include "lib/mem_stream.h"
#include "store/codec_settings.h"
#include "store/held_buf.h"
#include "store/pack_bytes.h"
#include "store/side_thread.h"
#include "store/version_encoder.h"
#include "store/version_expand.h"

namespace {

const char kUsage[] =
    "usage: kstcodec pack FILE\n"
    "       kstcodec encode TARGET [REFERENCE]\n"
    "       kstcodec expand STORED [REFERENCE_HELD] --size N\n";

[[noreturn]] void fail(const char* text, const char* detail = "") {
  std::fprintf(stderr, "kstcodec: %s%s\n", text, detail);
  std::exit(2);
}

// One read into a text of the file's size: reading in chunks into a growing
// text was more than half of the time of encoding one 12 MB file.
void readFile(const char* path, LStr& bytes) {
  LFile file;
  if (file.open(path, 'r', /*mustExist=*/false, /*ignoreBreak=*/false) != 0)
    fail("cannot read ", path);
  const int32_t size = file.seek(-1);
  file.seek(0);
  if (file.readInto(bytes, size) != size) fail("cannot read ", path);
}

const uint8_t* bytesOf(const LStr& s) { return reinterpret_cast<const uint8_t*>(s.ptr); }

void writeOut(const void* bytes, size_t size) {
  if (std::fwrite(bytes, 1, size, stdout) != size || std::fflush(stdout) != 0)
    fail("cannot write the standard output");
}

// The held form of a file, in a buffer the encoder can take.
void heldOfFile(const char* path, THeldBuf& held) {
  FStartSideThread();
  LStr raw;
  readFile(path, raw);
  held.prepare(raw.length + 64);
  THeldOutStream out(held);
  FPackBytes(bytesOf(raw), raw.length, out, TCodecSettings());
}

void pack(const char* path) {
  THeldBuf held;
  heldOfFile(path, held);
  writeOut(held.data(), held.size());
}

void encode(const char* targetPath, const char* referencePath) {
  THeldBuf target;
  THeldBuf reference;
  heldOfFile(targetPath, target);
  if (referencePath != nullptr) heldOfFile(referencePath, reference);
  const THeldView referenceView(reference);
  LStr stored;
  stored.reserve(target.size() + 64);
  LMemOutStream out(stored);
  const int32_t matched =
      FEncodeVersion(THeldView(target), referencePath != nullptr ? &referenceView : nullptr, out,
                     TCodecSettings());
  writeOut(stored.ptr, stored.length);
  std::fprintf(stderr, "%d\n", matched);
}

void expand(const char* storedPath, const char* referencePath, int32_t rawSize) {
  LStr stored;
  readFile(storedPath, stored);
  THeldBuf reference;
  if (referencePath != nullptr) {
    LStr bytes;
    readFile(referencePath, bytes);
    reference.assign(bytes.ptr, bytes.length);
  }
  const THeldView referenceView(reference);
  THeldBuf result;
  FExpandStored(bytesOf(stored), stored.length, rawSize,
                referencePath != nullptr ? &referenceView : nullptr, result);
  writeOut(result.data(), result.size());
}

int32_t sizeArgument(const char* text) {
  char* end = nullptr;
  long value = std::strtol(text, &end, 10);
  if (end == text || *end != '\0' || value < 0 || value > INT32_MAX - 100) fail("bad size: ", text);
  return static_cast<int32_t>(value);
}

void run(int argc, char** argv) {
  if (argc < 3) fail(kUsage);
  const char* command = argv[1];
  if (std::strcmp(command, "pack") == 0 && argc == 3) return pack(argv[2]);
  if (std::strcmp(command, "encode") == 0 && (argc == 3 || argc == 4))
    return encode(argv[2], argc == 4 ? argv[3] : nullptr);
  if (std::strcmp(command, "expand") == 0 && (argc == 5 || argc == 6) &&
      std::strcmp(argv[argc - 2], "--size") == 0)
    return expand(argv[2], argc == 6 ? argv[3] : nullptr, sizeArgument(argv[argc - 1]));
  fail(kUsage);
}

}  // namespace

int main(int argc, char** argv) {
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  try {
    run(argc, argv);
  } catch (int) {
    // The failure has been reported already.
    return 2;
  }
  return 0;
}
