#include "archive/archive_stamp.h"

#include "archive/format.h"
#include "lib/fail.h"
#include "lib/fixed_coding.h"
#include "lib/io_file.h"
#include "lib/lstr.h"
#include "lib/msg.h"

namespace {

const int32_t kChunk = 65536;

// 64-bit FNV-1a: any change of the bytes changes it, for all a stamp needs.
class Sum64 {
 public:
  void add(const unsigned char* bytes, int32_t n) {
    for (int32_t i = 0; i < n; i++) value_ = (value_ ^ bytes[i]) * 1099511628211ull;
  }
  uint64_t value() const { return value_; }

 private:
  uint64_t value_ = 14695981039346656037ull;
};

// Adds the bytes from `from` to the end of the file.
void addRange(LIoFile& file, int32_t from, Sum64& sum) {
  LStr chunk;
  file.seek(from);
  for (;;) {
    chunk.clear();
    int32_t got = file.readInto(chunk, kChunk);
    if (got <= 0) return;
    sum.add(reinterpret_cast<const unsigned char*>(chunk.ptr), got);
  }
}

}  // namespace

bool TArchiveStamp::operator==(const TArchiveStamp& other) const {
  return valid && other.valid && file.volume == other.file.volume &&
         file.index == other.file.index && file.size == other.file.size &&
         file.modified == other.file.modified && sum == other.sum;
}

TArchiveStamp FStampArchive(LIoFile& file) {
  TArchiveStamp stamp;
  if (!file.isOpen() || !SysStampFile(file.systemFile(), &stamp.file)) return stamp;
  unsigned char header[kHeaderSize] = {};
  file.seek(0);
  int32_t got = file.read(header, kHeaderSize);
  Sum64 sum;
  sum.add(header, got);
  // A footer position that is not one leaves only the header to compare,
  // which is enough: such a file cannot have been loaded.
  int32_t treePos = got == kHeaderSize ? FGetI32(header + kOffsetTreePos) : 0;
  if (treePos >= kHeaderSize && treePos <= stamp.file.size) addRange(file, treePos, sum);
  stamp.sum = sum.value();
  stamp.valid = true;
  return stamp;
}

void FCheckUnchanged(const char* path, LIoFile& writer, const TArchiveStamp& loaded) {
  LIoFile reader(path, 'r', false);
  TArchiveStamp now = FStampArchive(reader);
  SysFileStamp held;
  bool same = SysStampFile(writer.systemFile(), &held) && held.volume == now.file.volume &&
              held.index == now.file.index && now == loaded;
  if (!same)
    FError(kMsgErrorBox,
           "アーカイブファイル「%s」は、読み込んだ後で他のプログラムによって変更されました。\n"
           "このコマンドの変更は書き込まれていません。もう一度実行してください。",
           path);
}
