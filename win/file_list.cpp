#include "win/file_list.h"

#include <commdlg.h>

#include <cstring>
#include <string>

#include "lib/path_parts.h"

namespace {
// Room for the open dialog's several names.
const DWORD kNamesRoom = 32768;
}  // namespace

void FReadFileList(HDROP list, LStrs& paths) {
  UINT count = DragQueryFileA(list, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; i++) {
    char path[10000];
    if (DragQueryFileA(list, i, path, sizeof(path)) > 0) paths.add(new LStr(path));
  }
}

bool FChooseFilesToOpen(HWND owner, LOpenFiles& request) {
  std::string names(kNamesRoom, '\0');
  std::strncpy(names.data(), request.name.ptr, kNamesRoom - 1);
  OPENFILENAMEA dialog = {};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = request.filter;
  dialog.nFilterIndex = request.filterIdx;
  dialog.lpstrFile = names.data();
  dialog.nMaxFile = kNamesRoom;
  dialog.lpstrInitialDir = request.folder.empty() ? nullptr : request.folder.ptr;
  dialog.lpstrTitle = request.title;
  dialog.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY;
  if (request.several) dialog.Flags |= OFN_ALLOWMULTISELECT;
  if (!GetOpenFileNameA(&dialog)) return false;
  // One name is a full path; several follow their folder, each ended by a NUL.
  const char* first = names.data();
  const char* next = first + std::strlen(first) + 1;
  if (!request.several || *next == 0) {
    request.chosen.add(new LStr(first));
  } else {
    for (; *next != 0; next += std::strlen(next) + 1) {
      LStr* path = new LStr(first);
      FAddSep(*path);
      path->append(next);
      request.chosen.add(path);
    }
  }
  request.filterIdx = static_cast<int32_t>(dialog.nFilterIndex);
  return true;
}
