#include "app/column.h"

#include "lib/ini_fields.h"

namespace {
bool isNumeric(int32_t id) {
  return id == kColVersion || id == kColSize || id == kColUniqueRatio || id == kColCompressed ||
         id == kColStoreNo;
}

const char* const kHeadings[] = {
    "",         "名前",           "ファイルの種類", "V",        "サイズ",       "更新日時", "属性",
    "固有率",   "圧縮後",         "コメント",       "作成日時", "アクセス日時", "格納日時", "格納#",
    "ユーザー", "チェックアウト", "パス",           "フォルダ"};

void columnItem(void* context, int32_t index, LIniIo& io) {
  TColumns& list = *static_cast<TColumns*>(context);
  if (io.writing()) {
    LInts fields;
    fields.add(list[index]->id);
    fields.add(list[index]->width);
    fields.add(list[index]->state);
    FIniInts(&fields, io);
    return;
  }
  LInts fields;
  FIniInts(&fields, io);
  if (fields.count < 2) return;
  TColumn* column = new TColumn{fields[0], fields[1], fields.count > 2 ? fields[2] : 0};
  list.add(column);
}
}  // namespace

char TColumn::align() const { return isNumeric(id) ? 'r' : 'l'; }
char TColumn::sortKind() const { return isNumeric(id) ? 'i' : 's'; }

const char* FColumnHeading(int32_t id) {
  return id >= kColName && id <= kColFolder ? kHeadings[id] : "";
}

int32_t FNewColumnWidth(int32_t id) {
  switch (id) {
    case kColName:
    case kColFolder:
      return 164;
    case kColType:
    case kColComment:
    case kColUser:
    case kColCheckout:
      return 100;
    case kColVersion:
      return 46;
    case kColSize:
      return 69;
    case kColModified:
    case kColCreated:
    case kColAccessed:
    case kColStored:
      return 125;
    case kColAttributes:
      return 45;
    case kColUniqueRatio:
    case kColCompressed:
    case kColStoreNo:
      return 64;
    case kColPath:
      return 250;
    default:
      return 10;
  }
}

void FSetColumns(TColumns& list, const int32_t* idsAndWidths, int32_t pairs) {
  list.clear();
  for (int32_t i = 0; i < pairs; i++)
    list.add(new TColumn{idsAndWidths[2 * i], idsAndWidths[2 * i + 1]});
}

void FIniColumns(void* target, LIniIo& io) {
  TColumns& list = *static_cast<TColumns*>(target);
  if (!io.writing()) list.clear();
  FIniList(io, &list, list.count, columnItem, /*textItems=*/false);
}
