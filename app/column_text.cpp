#include "app/column_text.h"

#include "app/column.h"
#include "archive/record.h"
#include "archive/string_table.h"
#include "lib/file_time.h"
#include "lib/sys_file_type.h"
#include "store/ver_info.h"

namespace {

LStr pathFrom(const TRec* rec, const TRec* base) {
  LStr path;
  if (rec != nullptr) rec->pathOf(path, base, '/');
  return path;
}

LStr folderText(const TRec* folder, int32_t id) {
  switch (id) {
    case kColName:
      return LStr(folder->name());
    case kColPath:
      return pathFrom(folder, nullptr);
    case kColFolder:
      return pathFrom(folder->parent, nullptr);
    default:
      return LStr();
  }
}

LStr percent(uint8_t ratio) { return LStr().format("%d%%", ratio); }

// The columns of a version that its header holds.
LStr headerText(TVer* ver, int32_t id) {
  const TVerInfo* info = ver->Info();
  switch (id) {
    case kColAttributes:
      return FAttrLetters(info->attrs);
    case kColUniqueRatio:
      return percent(info->uniqueRatio);
    case kColCompressed:
      return percent(info->compRatio);
    case kColComment:
      return LStr(FStrings().text(static_cast<uint32_t>(info->commentId)));
    case kColCreated:
      return FFormatTime(info->createTime);
    case kColAccessed:
      return FFormatTime(info->accessTime);
    case kColStored:
      return FFormatTime(info->storeTime);
    case kColStoreNo:
      return LStr().format("%d", info->storeNo);
    case kColUser:
      return LStr(FStrings().text(static_cast<uint32_t>(info->userId)));
    case kColCheckout:
      return LStr(FStrings().text(static_cast<uint32_t>(info->checkoutId)));
    default:
      return LStr();
  }
}

LStr versionText(TVer* ver, int32_t id, const TRec* base) {
  const TRec* file = ver->parent;
  switch (id) {
    case kColName:
      return LStr(ver->name());
    case kColType: {
      LStr type;
      SysFileTypeName(ver->name(), type);
      return type;
    }
    case kColVersion:
      return LStr().format("%d", ver->IndexInFile(false) + 1);
    case kColSize:
      return FGroupDigits(ver->size);
    case kColModified:
      return FFormatTime(ver->time);
    case kColPath:
      return pathFrom(file, base);
    case kColFolder:
      return file != nullptr ? pathFrom(file->parent, base) : LStr();
    default:
      return headerText(ver, id);
  }
}

}  // namespace

LStr FColumnText(TRec* rec, int32_t id, const TRec* base) {
  if (rec->isFolder()) return folderText(rec, id);
  TVer* ver = rec->isVer() ? static_cast<TVer*>(rec) : rec->latestVer();
  if (ver == nullptr) return id == kColName ? LStr(rec->name()) : LStr();
  return versionText(ver, id, base);
}

LStr FGroupDigits(int64_t value) {
  // The digits of the magnitude, taken as unsigned so that the lowest value
  // has one too.
  uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
  LStr digits;
  digits.format("%llu", static_cast<unsigned long long>(magnitude));
  LStr out;
  if (value < 0) out.append('-');
  for (int32_t i = 0; i < digits.length; i++) {
    if (i > 0 && (digits.length - i) % 3 == 0) out.append(',');
    out.append(digits[i]);
  }
  return out;
}

LStr FAttrLetters(uint8_t attrs) {
  const char letters[] = {'r', 'a', 'h', 's'};
  const uint8_t bits[] = {kAttrReadOnly, kAttrArchive, kAttrHidden, kAttrSystem};
  LStr out;
  for (int i = 0; i < 4; i++) out.append((attrs & bits[i]) ? letters[i] : '-');
  return out;
}
