#include "app/app_host.h"

#include "app/app.h"
#include "store/work_set.h"

void TAppHost::untitledPath(LStr& out) {
  out = app_.workDir;
  out.append("無題");
}

void TAppHost::updatePath(LStr& out) { out = app_.updatePath; }
void TAppHost::addRecent(const char* fullPath) { app_.addRecent(fullPath); }
void TAppHost::removeRecent(const char* fullPath) { app_.removeRecent(fullPath); }
void TAppHost::setArchiveFolder(const char* folder) { app_.arcDlgDir = folder; }
void TAppHost::resetWork() { FNewWorkSet(); }
