// What the 1000-byte buffer of the streams costs: writes and reads a 100 MB
// file through LIoFile byte by byte (write of one byte, getByte) and in
// blocks of 64 KB, beside the C library's fwrite/fread and putc/getc on the
// same file, in MB/s. Reads come from the system's cache after the writes.
// Closing is timed apart: LIoFile pushes the file to the disk when it
// closes, the C library does not.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "lib/io_file.h"
#include "lib/sys.h"

namespace {
const int32_t kFileSize = 100 * 1024 * 1024;
const int32_t kBlock = 64 * 1024;

typedef std::chrono::steady_clock Clock;

double seconds(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

void report(const char* what, double elapsed, uint32_t check) {
  std::printf("%-34s %8.1f MB/s  (%.3f s, check %08X)\n", what, kFileSize / 1048576.0 / elapsed,
              elapsed, check);
}

unsigned char patternByte(int32_t i) { return static_cast<unsigned char>(i * 7 + (i >> 11)); }

void writeStreamBytes(const char* path) {
  Clock::time_point start = Clock::now();
  LIoFile file(path, 'w', /*mustExist=*/true);
  for (int32_t i = 0; i < kFileSize; i++) {
    unsigned char b = patternByte(i);
    file.write(&b, 1);
  }
  report("LIoFile write, byte by byte", seconds(start), 0);
}

void writeStreamBlocks(const char* path, const std::vector<unsigned char>& data) {
  Clock::time_point start = Clock::now();
  Clock::time_point closing;
  {
    LIoFile file(path, 'w', /*mustExist=*/true);
    for (int32_t at = 0; at < kFileSize; at += kBlock) file.write(data.data() + at, kBlock);
    report("LIoFile write, 64 KB blocks", seconds(start), 0);
    closing = Clock::now();
  }
  std::printf("%-34s %8.3f s\n", "  LIoFile close (flush to disk)", seconds(closing));
}

void writeCBlocks(const char* path, const std::vector<unsigned char>& data) {
  Clock::time_point start = Clock::now();
  FILE* file = std::fopen(path, "wb");
  for (int32_t at = 0; at < kFileSize; at += kBlock) std::fwrite(data.data() + at, 1, kBlock, file);
  report("fwrite, 64 KB blocks", seconds(start), 0);
  Clock::time_point closing = Clock::now();
  std::fclose(file);
  std::printf("%-34s %8.3f s\n", "  fclose", seconds(closing));
}

void writeCBytes(const char* path) {
  Clock::time_point start = Clock::now();
  FILE* file = std::fopen(path, "wb");
  for (int32_t i = 0; i < kFileSize; i++) std::putc(patternByte(i), file);
  std::fclose(file);
  report("putc, byte by byte", seconds(start), 0);
}

void readStreamBytes(const char* path) {
  Clock::time_point start = Clock::now();
  LIoFile file(path, 'r', /*mustExist=*/true);
  uint32_t sum = 0;
  for (int c = file.getByte(); c >= 0; c = file.getByte()) sum = sum * 31 + c;
  report("LIoFile getByte", seconds(start), sum);
}

void readStreamBlocks(const char* path, std::vector<unsigned char>& buffer) {
  Clock::time_point start = Clock::now();
  LIoFile file(path, 'r', /*mustExist=*/true);
  uint32_t sum = 0;
  for (int32_t n; (n = file.read(buffer.data(), kBlock)) > 0;) sum += buffer[n - 1];
  report("LIoFile read, 64 KB blocks", seconds(start), sum);
}

void readCBytes(const char* path) {
  Clock::time_point start = Clock::now();
  FILE* file = std::fopen(path, "rb");
  uint32_t sum = 0;
  for (int c = std::getc(file); c != EOF; c = std::getc(file)) sum = sum * 31 + c;
  std::fclose(file);
  report("getc", seconds(start), sum);
}

void readCBlocks(const char* path, std::vector<unsigned char>& buffer) {
  Clock::time_point start = Clock::now();
  FILE* file = std::fopen(path, "rb");
  uint32_t sum = 0;
  for (size_t n; (n = std::fread(buffer.data(), 1, kBlock, file)) > 0;) sum += buffer[n - 1];
  std::fclose(file);
  report("fread, 64 KB blocks", seconds(start), sum);
}
}  // namespace

int main() {
  LStr path;
  SysTempFolder(path);
  path.format("kst-stream-bench-%u.bin", SysProcessId());
  std::vector<unsigned char> data(kFileSize);
  for (int32_t i = 0; i < kFileSize; i++) data[i] = patternByte(i);
  std::vector<unsigned char> buffer(kBlock);

  std::printf("%d MB file: %s\n", kFileSize / 1048576, path.ptr);
  writeCBlocks(path.ptr, data);
  writeStreamBlocks(path.ptr, data);
  writeCBytes(path.ptr);
  writeStreamBytes(path.ptr);
  readCBlocks(path.ptr, buffer);
  readStreamBlocks(path.ptr, buffer);
  readCBytes(path.ptr);
  readStreamBytes(path.ptr);
  SysDeleteFile(path.ptr);
  return 0;
}
