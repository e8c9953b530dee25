// The open archive's host in the desktop program: the application's paths
// and recent list, and the panes, which follow each load and close.
#pragma once

#include "app/app_host.h"

class TDesktopHost : public TAppHost {
 public:
  using TAppHost::TAppHost;
  void treeLoaded(TFolder* root) override;
  void treeClosing() override;
};
