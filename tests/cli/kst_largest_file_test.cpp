// A file of nearly the largest size an archive accepts goes in with kst add
// and comes out of kst extract byte for byte. The test command takes a size
// just past the sizes that once failed; the long checks set
// KST_LARGE_FILE_SIZE to the largest, 2 147 483 647 bytes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "kst_process.h"
#include "lib/io_file.h"
#include "lib/lstr.h"
#include "support/address_space.h"
#include "support/temp_dir.h"

namespace {

// The first size that once ended in an allocator failure.
const int64_t kShortSize = 2147483624;
const int32_t kChunk = 1 << 20;

int32_t testSize() {
  const char* set = std::getenv("KST_LARGE_FILE_SIZE");
  return static_cast<int32_t>(set != nullptr ? std::atoll(set) : kShortSize);
}

// Marks at the start, at 1.5 GiB and at the end, zeros between them: the
// first run of zeros is longer than one token holds. Written with seeks, so
// the file takes no space where the system keeps holes.
const struct Mark {
  int64_t at;  // from the start, or from the end when negative
  const char* text;
} kMarks[] = {{0, "head"}, {1610612736, "middle"}, {-4, "tail"}};

void makeFile(const char* path, int32_t size) {
  LIoFile file(path, 'w', true);
  for (const Mark& mark : kMarks) {
    file.seek(static_cast<int32_t>(mark.at >= 0 ? mark.at : size + mark.at));
    file.write(mark.text, static_cast<int32_t>(std::string(mark.text).size()));
  }
}

// Whether two files hold the same bytes, read a chunk at a time.
bool sameBytes(const char* a, const char* b) {
  LIoFile first(a, 'r', true);
  LIoFile second(b, 'r', true);
  LStr x, y;
  for (;;) {
    x.clear();
    y.clear();
    int32_t got = first.readInto(x, kChunk);
    if (second.readInto(y, kChunk) != got || std::memcmp(x.ptr, y.ptr, got) != 0) return false;
    if (got == 0) return true;
  }
}

TEST(KstLargestFile, GoesInAndComesBackWhole) {
  KST_SKIP_WITHOUT_ROOM_FOR_2_GIB();
  TestTempDir dir;
  LStr archive = dir.file("big.kst");
  LStr source = dir.file("big.bin");
  LStr settings = dir.file("none.ini");
  const int32_t size = testSize();
  makeFile(source.ptr, size);
  auto kst = [&](std::vector<std::string> words) {
    words.insert(words.begin() + 1, {"--settings", settings.ptr});
    return RunKst(words, dir.path());
  };
  KstResult add = kst({"add", archive.ptr, source.ptr});
  ASSERT_EQ(add.status, 0) << add.err;
  EXPECT_EQ(add.out, "1 個のファイルを追加しました\n");
  KstResult check = kst({"check", archive.ptr});
  EXPECT_EQ(check.status, 0) << check.out << check.err;

  LStr out = dir.file("out");
  KstResult extract = kst({"extract", archive.ptr, "-d", out.ptr});
  ASSERT_EQ(extract.status, 0) << extract.err;
  LStr extracted(out);
  extracted.append("/big.bin");
  EXPECT_TRUE(sameBytes(extracted.ptr, source.ptr));
}

}  // namespace
