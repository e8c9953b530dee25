// The application's side of the open archive: its paths come from the work
// folder, its history from TApp, and its panes (when there are any) from
// the user interface.
#pragma once

#include "archive/archive_host.h"

class TApp;

class TAppHost : public TArchiveHost {
 public:
  explicit TAppHost(TApp& app) : app_(app) {}
  void untitledPath(LStr& out) override;
  void updatePath(LStr& out) override;
  void addRecent(const char* fullPath) override;
  void removeRecent(const char* fullPath) override;
  void setArchiveFolder(const char* folder) override;
  void resetWork() override;

 private:
  TApp& app_;
};
