#include "support/file_bytes.h"

#include "lib/file_util.h"
#include "lib/io_file.h"

std::string TestReadFile(const char* path) {
  LIoFile file(path, 'r', false);
  LStr bytes;
  if (file.isOpen()) file.readAll(bytes);
  return std::string(bytes.ptr, bytes.length);
}

void TestWriteFile(const char* path, const std::string& bytes) {
  FMakeDirs(path);
  LIoFile file(path, 'w', true);
  file.write(bytes.data(), static_cast<int32_t>(bytes.size()));
}
