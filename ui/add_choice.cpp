#include "ui/add_choice.h"

#include "lib/file_util.h"
#include "store/add_command.h"

TAddChoice::TAddChoice(bool fileTarget, const LStrs& paths) : fileTarget_(fileTarget) {
  if (fileTarget_) return;
  for (const LStr* path : paths) addExisting(path->ptr);
}

bool TAddChoice::add(const char* path, bool isFolder) {
  if (fileTarget_ && (isFolder || entries_.count > 0)) return false;
  LStr* entry = new LStr(path);
  if (isFolder) entry->append(kFolderSuffix);
  entries_.add(entry);
  return true;
}

bool TAddChoice::addExisting(const char* path) { return add(path, FExists(path) == kExistsFolder); }

int32_t TAddChoice::remove(int32_t index) {
  if (index < 0 || index >= entries_.count) return index;
  entries_.removeRange(index, 1);
  return index < entries_.count ? index : entries_.count - 1;
}
