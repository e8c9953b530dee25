// The single tests of a condition set. Each returns whether its condition
// holds, with its exclude flag already applied. A test whose list is empty
// (null) holds whatever its exclude flag says: an unset condition asks for
// nothing. Tests that take a version read its side record through
// TVer::Info only when their list is set, and its texts through the open
// archive's string table ("Internal Error #1578" for an id beyond it).
#pragma once

#include <cstdint>

class TCond;
class TVer;

// The name fits a pattern of `names` when the bases and the extensions
// (FSplitExt) both fit by FWildMatch.
bool FNameTest(const char* name, const TCond& cond);
// time within a pair of `dates`, both ends included.
bool FDateTest(int64_t time, const TCond& cond);
// The version's store number within a pair of `storeNos`.
bool FStoreNoTest(TVer* ver, const TCond& cond);
// The version's comment against `comments` by commentMode (exact or
// partial; no entry fits in the regular expression mode) and commentCase.
bool FCommentTest(TVer* ver, const TCond& cond);
// The version's comment searched by each of `commentRex`.
bool FCommentRexTest(TVer* ver, const TCond& cond);
bool FSizeTest(int32_t size, const TCond& cond);
// The path against `paths` by pathMode and pathCase.
bool FPathTest(const char* path, const TCond& cond);
bool FPathRexTest(const char* path, const TCond& cond);
// FPathRexTest when `pathRex` is set, else FPathTest.
bool FPathCondTest(const char* path, const TCond& cond);
// The version's number, from 1, counted from the oldest or (verFromNewest)
// from the newest, within a pair of `vers`.
bool FVerNoTest(const TVer* ver, const TCond& cond);
// The version's user (check-out user) byte for byte equal to an entry.
bool FUserTest(TVer* ver, const TCond& cond);
bool FCheckoutTest(TVer* ver, const TCond& cond);
// Every bit of kAttrReadOnly, kAttrArchive, kAttrHidden, kAttrSystem whose
// wanted state is not kAttrAny must be in that state. No exclude flag.
bool FAttrTest(int32_t attrs, const TCond& cond);
