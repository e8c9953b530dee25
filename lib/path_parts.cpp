#include "lib/path_parts.h"

#include "lib/chartype.h"
#include "lib/sys.h"

namespace {
int32_t charSize(const char* text, int32_t index) {
  return FIsLeadByte(static_cast<unsigned char>(text[index])) ? 2 : 1;
}

// The final byte is a separator of its own, not the trail of a double-byte
// character such as 0x95 0x5C.
bool endsInSeparator(const LStr& path) {
  int32_t last = path.length - 1;
  return last >= 0 && FIsSeparator(path[last]) && !FIsTrailByte(path.ptr, last);
}
}  // namespace

LPathParts::LPathParts(const char* text) : path(text), dirEnd(0), nameStart(0), dotPos(0) {
  const char* p = path.ptr;
  int32_t n = path.length;
  extStart = n;
  int32_t i = 0;
  while (i < n) {
    if (FIsSeparator(p[i])) {
      dirEnd = i;
      while (i < n && FIsSeparator(p[i])) i++;
      nameStart = i;
      dotPos = i;
      extStart = n;
    } else if (p[i] == '.' && !FIsSeparator(p[i + 1])) {
      i++;
      if (p[i] != '.') {
        extStart = i;
        dotPos = i - 1;
      }
    }
    // Also after a run of separators: the first character of a name is never
    // taken for the dot of an extension, so "\.txt" has none.
    if (i < n) i += charSize(p, i);
  }
}

bool FIsAbsolute(const char* path) {
  if (path == nullptr) return false;
  if (FIsSeparator(path[0])) return true;
  return FIsLetter(static_cast<unsigned char>(path[0])) && path[1] == ':';
}

void FAddSep(LStr& path) {
  // A colon ends a drive ("C:"); after a name it is part of the name, as
  // POSIX names may hold one.
  bool drive = path.length == 2 && path[1] == ':' &&
               ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
  if (path.empty() || endsInSeparator(path) || drive) return;
  path.append(SysPathSeparator());
}

void FDropSep(LStr& path) {
  if (endsInSeparator(path)) path.truncate(path.length - 1);
}

LStr FDirOf(const char* path, bool keepSep) {
  LPathParts parts(path);
  return LStr(parts.path.ptr, keepSep ? parts.nameStart : parts.dirEnd);
}

LStr FNameOf(const char* path) {
  LPathParts parts(path);
  return LStr(parts.path.ptr + parts.nameStart);
}

LStr FExtOf(const char* path, bool withDot) {
  LPathParts parts(path);
  if (!parts.hasExt()) return LStr();
  return LStr(parts.path.ptr + (withDot ? parts.dotPos : parts.extStart));
}

LStr FBaseOf(const char* path) {
  LPathParts parts(path);
  int32_t end = parts.hasExt() ? parts.dotPos : parts.path.length;
  return LStr(parts.path.ptr + parts.nameStart, end - parts.nameStart);
}

LStr FChangeExt(const char* path, const char* ext) {
  LPathParts parts(path);
  LStr result(parts.path.ptr, parts.hasExt() ? parts.dotPos : parts.path.length);
  if (ext != nullptr && ext[0] == '.') ext++;
  if (ext != nullptr && ext[0] != 0) {
    result.append('.');
    result.append(ext);
  }
  return result;
}
