#include "ui/cond_form.h"

#include "app/app.h"
#include "store/cond.h"
#include "ui/history.h"

void TCondForm::load(const TCond& cond) {
  for (int32_t field = 0; field < kFieldCount; field++) {
    const TCondFieldRow& row = FCondFieldRow(field);
    texts[field] = cond.*row.text;
    excl[field] = cond.*row.excl;
  }
  for (int32_t i = 0; i < 4; i++) attrWant[i] = cond.attrWant[i];
  existingOnly = cond.existingOnly;
  maxVersions = cond.maxVersions;
  fromOldest = cond.fromOldest;
  commentMode = cond.commentMode;
  pathMode = cond.pathMode;
  commentCase = cond.commentCase;
  pathCase = cond.pathCase;
}

void TCondForm::storeInto(TCond& cond) const {
  for (int32_t field = 0; field < kFieldCount; field++) {
    const TCondFieldRow& row = FCondFieldRow(field);
    cond.*row.text = FNormalisedField(texts[field].ptr);
    cond.*row.excl = excl[field];
  }
  for (int32_t i = 0; i < 4; i++) cond.attrWant[i] = attrWant[i];
  cond.existingOnly = existingOnly;
  cond.maxVersions = maxVersions;
  cond.fromOldest = fromOldest;
  cond.commentMode = commentMode;
  cond.pathMode = pathMode;
  cond.commentCase = commentCase;
  cond.pathCase = pathCase;
}

bool TCondForm::save(TCond& cond, TApp& app) {
  // A trial object first: a refused text must not reach the kept conditions.
  TCond trial;
  storeInto(trial);
  if (trial.Parse()) return false;
  storeInto(cond);
  cond.Parse();
  for (int32_t field = 0; field < kFieldCount; field++)
    texts[field] =
        FRememberField(app.*FCondFieldRow(field).history, texts[field].ptr, app.memItemNum);
  return true;
}
