// TCond: one set of conditions on versions (and, for the add command, on
// files on disk). The dialogs and the command line fill the text fields;
// Parse turns them into the lists that the tests read. A list that is null
// is a condition that is not tested. All conditions must hold; inside one
// list any entry may fit. Each exclude flag turns its condition's result
// around.
//
// Filled on the main thread and only read by the worker while a command
// runs. Not copied: the lists and compiled expressions are owned.
#pragma once

#include <cstdint>

#include "lib/alloc.h"
#include "lib/larr.h"
#include "lib/lstr.h"
#include "lib/option.h"
#include "rex/node.h"

// How a comment or path text is compared with the entries of its list.
enum : int32_t { kCondExact = 0, kCondPartial = 1, kCondRegex = 2 };

// The wanted state of one attribute bit.
enum : int32_t { kAttrAny = -1, kAttrOff = 0, kAttrOn = 1 };

class TCond {
 public:
  KST_POOLED_NEW
  TCond() = default;
  ~TCond();
  TCond(const TCond&) = delete;
  TCond& operator=(const TCond&) = delete;

  // What the user typed.
  LStr nameText;
  LStr dateText;
  LStr storeNoText;
  LStr commentText;
  LStr sizeText;
  LStr pathText;
  LStr verText;
  LStr userText;
  LStr checkoutText;

  // 0 or 1: turns the result of the condition around.
  int32_t nameExcl = 0;
  int32_t dateExcl = 0;
  int32_t storeNoExcl = 0;
  int32_t commentExcl = 0;
  int32_t sizeExcl = 0;
  int32_t pathExcl = 0;
  int32_t verExcl = 0;
  int32_t userExcl = 0;
  int32_t checkoutExcl = 0;

  // Read-only, archive, hidden, system: kAttrAny, kAttrOff or kAttrOn.
  int32_t attrWant[4] = {kAttrAny, kAttrAny, kAttrAny, kAttrAny};
  int32_t existingOnly = 0;   // add: only files that already have a record
  int32_t fromOldest = 0;     // walk a file's versions from the oldest
  int32_t maxVersions = 1;    // hits per file; 0 or less: no limit
  int32_t verFromNewest = 0;  // version numbers count from the newest
  int32_t commentMode = kCondExact;
  int32_t pathMode = kCondExact;
  int32_t commentCase = 0;  // non-zero: case counts in comment tests
  int32_t pathCase = 0;

  // Built by Parse; null when the condition is not tested.
  LStrs* names = nullptr;  // wildcard patterns
  LDtPairs* dates = nullptr;
  LIntPairs* storeNos = nullptr;
  LStrs* comments = nullptr;
  URexList* commentRex = nullptr;  // in kCondRegex mode only
  LIntPairs* sizes = nullptr;
  LStrs* paths = nullptr;
  URexList* pathRex = nullptr;  // in kCondRegex mode only
  LIntPairs* vers = nullptr;
  LStrs* users = nullptr;
  LStrs* checkouts = nullptr;

  int32_t attrActive = 0;  // set by Parse when any attrWant is not kAttrAny
  LStr addComment;         // the comment the add command stores on new versions

  // Rebuilds every list from the text fields and sets attrActive. Text
  // lists split at "," (names at ";" too), with blanks around entries
  // dropped; number lists are "1-3,5", where an empty side of a range reads
  // as 0; a blank field sets no condition. A bad value is reported by its
  // parser as a numbered error, and parsing goes on with the rest. Returns
  // true when the reporter's error count grew, that is when the input
  // should be refused.
  bool Parse();
  // What the condition dialogs show: 2 when a condition of the expanded
  // part is set (size, path, version, user, check-out user, attributes), 1
  // when one of the rest is (name, date, store number, comment, existing
  // files only), else 0.
  int32_t Level() const;

 private:
  void clearLists();
  bool anyAttrWanted() const;
};
