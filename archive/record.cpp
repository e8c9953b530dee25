#include "archive/record.h"

#include <algorithm>

#include "archive/archive.h"
#include "archive/string_table.h"
#include "lib/chartype.h"
#include "lib/fail.h"
#include "lib/msg.h"
#include "lib/strfunc.h"

void TRec::pathOf(LStr& out, const TRec* stopAt, char separator) const {
  LArrOf<const TRec*> chain;
  for (const TRec* rec = this; rec != nullptr && rec != stopAt && !rec->isRoot();
       rec = rec->parent) {
    if (!rec->isVer()) chain.add(rec);
  }
  for (int32_t i = chain.count - 1; i >= 0; i--) {
    out.append(chain[i]->name());
    if (i > 0) out.append(separator);
  }
}

void TRec::displayPath(LStr& out) const {
  out.append('/');
  pathOf(out, nullptr, '/');
  if (isFolder() && out[out.length - 1] != '/') out.append('/');
}

void TRec::pathNames(LArrOf<const char*>& list) const {
  LArrOf<const char*> reversed;
  for (const TRec* rec = this; rec != nullptr && !rec->isRoot(); rec = rec->parent)
    if (!rec->isVer()) reversed.add(rec->name());
  for (int32_t i = reversed.count - 1; i >= 0; i--) list.add(reversed[i]);
}

TFolder* TRec::ownerFolder() const {
  for (TRec* rec = parent; rec != nullptr; rec = rec->parent)
    if (rec->isFolder()) return static_cast<TFolder*>(rec);
  FInternalBox(1253);
}

TFile* TRec::ownerFile() const {
  if (parent == nullptr || !parent->isFile()) FInternalBox(1254);
  return static_cast<TFile*>(parent);
}

void TRec::unlink() {
  if (parent != nullptr) static_cast<TRecF*>(parent)->removeChild(this);
  FArchive()->removedRecords.add(this);
}

void TRec::unlinkAndDestroy() {
  unlink();
  delete this;
}

TRecF::~TRecF() {
  // The descendants are taken out of their parents before they are
  // destroyed, so that no destructor below this one has children left and a
  // deep tree costs no stack.
  LArrOf<TRec*> pending;
  for (TRec* child : children) pending.add(child);
  children.clear();
  while (pending.count > 0) {
    TRec* rec = pending.pop();
    if (rec->isNamed()) {
      LArrOf<TRec*>& below = static_cast<TRecF*>(rec)->children;
      for (TRec* child : below) pending.add(child);
      below.clear();
    }
    delete rec;
  }
}

const char* TRecF::name() const { return FStrings().text(nameIdx); }

void TRecF::addChild(TRec* record) {
  children.add(record);
  record->parent = this;
}

TFolder* TRecF::addFolder(const char* name) {
  TFolder* folder = new TFolder;
  folder->nameIdx = FInternString(name);
  addChild(folder);
  return folder;
}

void TRecF::removeChild(TRec* record) {
  int32_t index = children.find(record, [](TRec* a, TRec* b) { return a == b ? 0 : 1; });
  if (index >= 0) children.detach(index);
}

TRec* TRecF::findChild(const char* name) const {
  for (TRec* child : children)
    if (FStrCmp(child->name(), name, true) == 0) return child;
  return nullptr;
}

TRec* TRecF::findPath(const char* const* names) const {
  const TRec* rec = this;
  for (; *names != nullptr; names++) {
    if (!rec->isNamed()) return nullptr;
    rec = static_cast<const TRecF*>(rec)->findChild(*names);
    if (rec == nullptr || !rec->isNamed()) return nullptr;
  }
  return const_cast<TRec*>(rec);
}

void TRecF::setName(const char* name) { nameIdx = FStrings().lookupOrAdd(name); }

TVer* TFile::latestVer() const {
  return children.count > 0 ? static_cast<TVer*>(children.last()) : nullptr;
}

const char* TVer::name() const { return parent ? parent->name() : ""; }

int32_t TVer::IndexInFile(bool fromNewest) const {
  const TFile* file = ownerFile();
  int32_t index = file->children.find(this, [](TRec* a, const TVer* b) { return a == b ? 0 : 1; });
  if (index < 0) FInternalBox(1021);
  return fromNewest ? file->children.count - index - 1 : index;
}

int FCompareForDisplay(const TRec* a, const TRec* b) {
  int ka = a->kind();
  int kb = b->kind();
  if (ka != kb) return ka < kb ? -1 : 1;
  return FStrCmp(a->name(), b->name(), true);
}

void FSortForDisplay(LArrOf<TRec*>& records) {
  std::stable_sort(records.begin(), records.end(),
                   [](const TRec* a, const TRec* b) { return FCompareForDisplay(a, b) < 0; });
}

bool FCheckNewName(const TRecF* parent, const char* name, const TRec* renaming) {
  if (name == nullptr || *name == 0) return false;
  // A record renamed to its own name in other letter cases is no clash.
  TRec* existing = parent->findChild(name);
  if (existing != nullptr && existing != renaming) {
    FMsg(kMsgWarning, "項目 '%s' はすでに存在します", name);
    return false;
  }
  const char* forbidden = "\\/:;,*?\"<>|";
  for (int32_t i = 0; name[i] != 0; i++) {
    unsigned char c = static_cast<unsigned char>(name[i]);
    // A double-byte character is one unit: its trail byte may look like "\".
    if (FIsLeadByte(c) && name[i + 1] != 0) {
      i++;
      continue;
    }
    for (const char* f = forbidden; *f; f++)
      if (c == static_cast<unsigned char>(*f)) {
        FMsg(kMsgWarning, "文字 '%c' は使用できません", c);
        return false;
      }
  }
  return true;
}
