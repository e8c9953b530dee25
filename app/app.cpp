#include "app/app.h"

#include <initializer_list>

#include "lib/strfunc.h"

namespace {
TApp* gApp = nullptr;

const int32_t kFcols[] = {1, 164, 3, 46, 4, 69, 2, 100, 5, 125, 9, 100};
const int32_t kVcols[] = {3, 46, 4, 69, 5, 125, 7, 64, 8, 64, 6, 45, 9, 100, 13, 64};
const int32_t kScols[] = {1, 164, 17, 164, 3, 46, 4, 69, 5, 125, 9, 100};
const int32_t kFcolsAll[] = {1,   164, 4,   69, 2,   100, 5,   125, 7,  64, 8,   64, 6,   45, 9,
                             100, 10,  125, 11, 125, 12,  125, 13,  64, 14, 100, 17, 164, 16, 250};
const int32_t kVcolsAll[] = {4,   69, 5,   125, 7,   64, 8,   64, 6,  45, 9,
                             100, 10, 125, 11,  125, 12, 125, 13, 64, 14, 100};
const int32_t kScolsAll[] = {17,  164, 4,   69, 5,   125, 7,   64, 8,  64, 6,   45, 9,
                             100, 10,  125, 11, 125, 12,  125, 13, 64, 14, 100, 16, 250};

template <size_t N>
void fillIfEmpty(TColumns& list, const int32_t (&defaults)[N]) {
  if (list.count == 0) FSetColumns(list, defaults, static_cast<int32_t>(N / 2));
}

int32_t findRecent(const LStrs& mru, const char* path) {
  for (int32_t i = 0; i < mru.count; i++)
    if (FStrCmp(mru[i]->ptr, path, true) == 0) return i;
  return -1;
}
}  // namespace

const TRect32 kDefaultMainRect = {100, 100, 920, 671};

TApp* FApp() { return gApp; }
void FSetApp(TApp* app) { gApp = app; }

TApp::TApp() : rcMain(kDefaultMainRect) { fillEmptyColumns(); }

void TApp::addRecent(const char* path) {
  removeRecent(path);
  while (mru.count >= kRecentMax) mru.removeRange(mru.count - 1, 1);
  mru.insert(new LStr(path), 0);
}

void TApp::removeRecent(const char* path) {
  int32_t at = findRecent(mru, path);
  if (at >= 0) mru.removeRange(at, 1);
}

void TApp::fillEmptyColumns() {
  fillIfEmpty(fcols, kFcols);
  fillIfEmpty(vcols, kVcols);
  fillIfEmpty(scols, kScols);
  fillIfEmpty(fcolsAll, kFcolsAll);
  fillIfEmpty(vcolsAll, kVcolsAll);
  fillIfEmpty(scolsAll, kScolsAll);
}

void TApp::fixSettings(int32_t screenWidth, int32_t screenHeight) {
  fillEmptyColumns();
  for (TColumns* list : {&fcols, &vcols, &scols, &fcolsAll, &vcolsAll, &scolsAll})
    for (TColumn* column : *list)
      if (column->width < 10) column->width = 10;
  if (rcMain.left > screenWidth - 10 || rcMain.top > screenHeight - 10 || rcMain.width < 10 ||
      rcMain.height < 10)
    rcMain = kDefaultMainRect;
  if (leftWidth < 10) leftWidth = 10;
}
