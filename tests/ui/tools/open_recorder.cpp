// Test tool: the application registered for an extension. It appends the
// path it was asked to open, and a line end, to the record file, so that a
// test can see every path the shell gave it and how often. The shell may
// start several copies at once: each holds the record file to itself while
// it writes.
//
// Usage: open_recorder RECORD_FILE OPENED_PATH
#include <windows.h>

#include <string>

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  HANDLE record = INVALID_HANDLE_VALUE;
  // Another copy holding the file lets go within milliseconds.
  for (int tries = 0; tries < 100 && record == INVALID_HANDLE_VALUE; tries++) {
    record = CreateFileA(argv[1], GENERIC_WRITE, /*share=*/0, nullptr, OPEN_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
    if (record == INVALID_HANDLE_VALUE) Sleep(50);
  }
  if (record == INVALID_HANDLE_VALUE) return 1;
  std::string line = std::string(argv[2]) + "\n";
  DWORD written = 0;
  bool ok = SetFilePointer(record, 0, nullptr, FILE_END) != INVALID_SET_FILE_POINTER &&
            WriteFile(record, line.data(), static_cast<DWORD>(line.size()), &written, nullptr) &&
            written == line.size();
  return CloseHandle(record) && ok ? 0 : 1;
}
