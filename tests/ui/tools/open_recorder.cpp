// Test tool: the application registered for an extension. It writes the
// path it was asked to open into the record file, so that a test can see
// what the shell gave it.
//
// Usage: open_recorder RECORD_FILE OPENED_PATH
#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  FILE* record = std::fopen(argv[1], "wb");
  if (record == nullptr) return 1;
  std::fputs(argv[2], record);
  return std::fclose(record) == 0 ? 0 : 1;
}
