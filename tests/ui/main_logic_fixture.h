// The main window's flows on an untitled archive in a temporary folder,
// with the settings, the run-time objects and a scripted window installed.
#pragma once

#include <string>

#include "app/app.h"
#include "app/config.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"
#include "tests/ui/scripted_view.h"
#include "ui/main_logic.h"

class MainLogicTest : public ArchiveTest {
 protected:
  MainLogicTest() : logic(view, app) {
    FSetApp(&app);
    FSetConfig(&config);
    FNewWorkSet();
    archive->loadArchive(nullptr, true, false);  // the untitled archive
  }
  ~MainLogicTest() override {
    FDeleteWorkSet();
    FSetConfig(nullptr);
    FSetApp(nullptr);
  }
  void fillUntitled() {
    addFile(archive->root, "報告書.txt", 1, 20);
    commit();
  }
  std::string untitled() const { return host.join("無題").ptr; }

  TApp app;
  TConfig config;
  ScriptedView view;
  TMainLogic logic;
};
