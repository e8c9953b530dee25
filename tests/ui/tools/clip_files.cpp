// Test tool: puts the paths given on its command line on the clipboard as a
// file list (CF_HDROP), as a file manager's copy does, and exits 0; 1 when
// the clipboard refused it.
#include <windows.h>

#include <shlobj.h>

#include <cstring>
#include <string>

int main(int argc, char** argv) {
  // The list: each path ended by a NUL, the whole ended by one more.
  std::string list;
  for (int i = 1; i < argc; i++) {
    list.append(argv[i]);
    list.push_back('\0');
  }
  list.push_back('\0');
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + list.size());
  if (memory == nullptr) return 1;
  auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
  drop->pFiles = sizeof(DROPFILES);
  drop->fWide = FALSE;
  std::memcpy(reinterpret_cast<char*>(drop) + sizeof(DROPFILES), list.data(), list.size());
  GlobalUnlock(memory);
  if (!OpenClipboard(nullptr)) return 1;
  EmptyClipboard();
  bool put = SetClipboardData(CF_HDROP, memory) != nullptr;
  CloseClipboard();
  return put ? 0 : 1;
}
