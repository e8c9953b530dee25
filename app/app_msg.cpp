#include "app/app_msg.h"

#include "store/work_set.h"

void TMsg::errorBoxShown() {
  if (TWorkSet* work = FWorkSet()) work->failed = 1;
}
