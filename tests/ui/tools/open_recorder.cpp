// Test tool: the application registered for an extension. It adds the path
// it was asked to open to the record file, one line per start, so that a
// test can see what the shell gave it and how often.
//
// Usage: open_recorder RECORD_FILE OPENED_PATH
#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  FILE* record = std::fopen(argv[1], "ab");
  if (record == nullptr) return 1;
  std::fputs(argv[2], record);
  std::fputc('\n', record);
  return std::fclose(record) == 0 ? 0 : 1;
}
