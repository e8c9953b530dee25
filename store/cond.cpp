#include "store/cond.h"

#include "lib/convert.h"
#include "lib/msg.h"
#include "lib/text_split.h"
#include "lib/ustr.h"
#include "rex/parse.h"

namespace {
// Entries of the text lists: blanks around a separator are the user's
// spacing, not part of a name or comment, and an empty entry asks for nothing.
const int kEntrySplit = kSplitTrim | kSplitSkipEmpty;

// Gives the text to the descriptor as "-<name>:<text>", the one form its
// parser reads; a bad value is reported there. A blank text is no condition.
void parseText(LOptBase&& descriptor, const LStr& text) {
  if (text.isBlank()) return;
  LStr argument("-");
  argument.append(descriptor.name).append(':').append(text);
  descriptor.parse(argument.ptr);
}

template <typename List>
void dropIfEmpty(List*& list) {
  if (list != nullptr && list->count == 0) {
    delete list;
    list = nullptr;
  }
}

template <typename List>
void deleteList(List*& list) {
  delete list;
  list = nullptr;
}

// A pattern that does not compile has been reported by the compiler and is
// left out of the list.
URexList* compileAll(const LStrs* patterns) {
  if (patterns == nullptr) return nullptr;
  URexList* list = new URexList;
  for (const LStr* pattern : *patterns) {
    UStr wide;
    FToUStr(pattern->ptr, pattern->length, wide);
    URex* rex = FRexCompile(wide.ptr);
    if (rex != nullptr) list->add(rex);
  }
  dropIfEmpty(list);
  return list;
}
}  // namespace

TCond::~TCond() { clearLists(); }

void TCond::clearLists() {
  deleteList(names);
  deleteList(dates);
  deleteList(storeNos);
  deleteList(comments);
  deleteList(commentRex);
  deleteList(sizes);
  deleteList(paths);
  deleteList(pathRex);
  deleteList(vers);
  deleteList(users);
  deleteList(checkouts);
}

bool TCond::Parse() {
  int32_t errorsBefore = FReporter()->errorTotal();
  clearLists();

  // ";" separates names as "," does. Neither byte can be the second byte
  // of a double-byte character, so a plain replacement is safe.
  LStr nameList(nameText);
  nameList.replaceAll(";", ",");
  parseText(LStrsOpt("name", &names, true, kEntrySplit), nameList);
  parseText(LDtPairsOpt("date", &dates), dateText);
  parseText(LIntPairsOpt("storeNo", &storeNos), storeNoText);
  parseText(LStrsOpt("comment", &comments, true, kEntrySplit), commentText);
  parseText(LIntPairsOpt("size", &sizes), sizeText);
  parseText(LStrsOpt("path", &paths, true, kEntrySplit), pathText);
  parseText(LIntPairsOpt("ver", &vers), verText);
  parseText(LStrsOpt("user", &users, true, kEntrySplit), userText);
  parseText(LStrsOpt("checkout", &checkouts, true, kEntrySplit), checkoutText);
  dropIfEmpty(names);
  dropIfEmpty(comments);
  dropIfEmpty(paths);
  dropIfEmpty(users);
  dropIfEmpty(checkouts);

  if (commentMode == kCondRegex) commentRex = compileAll(comments);
  if (pathMode == kCondRegex) pathRex = compileAll(paths);

  attrActive = anyAttrWanted() ? 1 : 0;
  return FReporter()->errorTotal() > errorsBefore;
}

bool TCond::anyAttrWanted() const {
  for (int32_t want : attrWant)
    if (want != kAttrAny) return true;
  return false;
}

int32_t TCond::Level() const {
  // A blank field is no condition, as Parse reads it.
  if (!sizeText.isBlank() || !pathText.isBlank() || !verText.isBlank() || !userText.isBlank() ||
      !checkoutText.isBlank() || anyAttrWanted())
    return 2;
  if (!nameText.isBlank() || !dateText.isBlank() || !storeNoText.isBlank() ||
      !commentText.isBlank() || existingOnly != 0)
    return 1;
  return 0;
}
