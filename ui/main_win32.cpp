// kestrom.exe: the start-up and shutdown of the desktop program. The global
// objects are made in their order; a thrown integer (an error already shown)
// skips to the writing of the settings, and its value is the exit code.
#include <windows.h>

#include <commctrl.h>

#include <clocale>

#include "app/app.h"
#include "app/command_line.h"
#include "app/config.h"
#include "app/product.h"
#include "app/work_dir.h"
#include "app/worker_ui.h"
#include "archive/archive.h"
#include "lib/chartype.h"
#include "lib/file_util.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "lib/sys.h"
#include "lib/thread.h"
#include "store/version_io.h"
#include "store/work_set.h"
#include "ui/desktop_host_win32.h"
#include "ui/desktop_ui_win32.h"
#include "ui/main_logic.h"
#include "ui/main_win_win32.h"
#include "ui/running_copies_win32.h"
#include "win/program_path.h"

namespace {

LStr helpPath() {
  LStr path = FDirOf(FProgramPath().ptr, /*keepSep=*/true);
  path.append("Kestrom.chm");
  return path;
}

int messageLoop() {
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return static_cast<int>(message.wParam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  TDesktopMsg* reporter = new TDesktopMsg;
  FSetReporter(reporter);
  LMainThread* mainThread = new LMainThread;
  FSetMainThread(mainThread);
  InitCommonControls();
  INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_DATE_CLASSES};
  InitCommonControlsEx(&controls);
  FSetLang('J');
  if (std::setlocale(LC_ALL, "jpn") == nullptr)
    FMsg(kMsgCountedWarning, "failed to set locale to %s", "jpn");
  TApp* app = new TApp;
  FSetApp(app);
  TConfig* config = new TConfig;
  FSetConfig(config);
  config->iniPath = kSettingsName;
  config->helpPath = helpPath();
  TDesktopHost host(*app);
  TArchive* archive = new TArchive(&host);
  FSetArchive(archive);
  FNewWorkSet();
  TMainWin* win = nullptr;
  TDesktopUi* ui = nullptr;
  int exitCode = 0;
  try {
    int32_t screenWidth = GetSystemMetrics(SM_CXSCREEN);
    int32_t screenHeight = GetSystemMetrics(SM_CYSCREEN);
    TStartArgs start;
    FParseCommandLine(GetCommandLineA(), start);
    LStr settings =
        FResolveSettingsPath(start.settingsName.empty() ? kSettingsName : start.settingsName.ptr);
    if (!settings.empty()) config->iniPath = settings;
    if (FExists(config->iniPath.ptr) != kExistsNone) FLoadSettings(*app, config->iniPath.ptr);
    FMakeWorkDir(*app);
    app->fixSettings(screenWidth, screenHeight);
    FSetCodecSettings(&app->codec);
    reporter->setTitleWord(kProductName);
    if (start.openLast && start.archivePath.empty() && app->mru.count > 0)
      start.archivePath = *app->mru[0];
    if (FindWindowA(kMainClass, nullptr) != nullptr) config->otherInstance = 1;
    if (start.args.count > 0) {
      TRunningWindows others(nullptr);
      FForwardToRunning(start.args, others);
      // A copy that only passed its job on leaves at once; its work folder
      // goes with the last copy to end.
      if (start.args.count == 0) return 0;
    }
    win = new TMainWin(*app, *config);
    ui = new TDesktopUi(*win);
    FSetWorkerUi(ui);
    win->createWindow();
    archive->loadArchive(start.archivePath.empty() ? nullptr : start.archivePath.ptr,
                         /*addToRecent=*/true,
                         /*keepTree=*/false);
    win->logic().updateTitle();
    win->updateCommands();
    if (start.args.count > 0) win->logic().fcDropFiles(start.args, /*noDialog=*/true);
    exitCode = messageLoop();
    delete archive;
    FSetArchive(nullptr);
    archive = nullptr;
    FDeleteWorkSet();
  } catch (int thrown) {
    exitCode = thrown;
  }
  FSaveSettings(*app, config->iniPath.ptr);
  if (exitCode == 0) {
    FRemoveWorkDir(*app);
    if (FindWindowA(kMainClass, nullptr) == nullptr) FRemoveSharedDir(*app);
  }
  FSetWorkerUi(nullptr);
  delete ui;
  delete win;
  delete archive;
  FSetArchive(nullptr);
  FSetCodecSettings(nullptr);
  FSetConfig(nullptr);
  delete config;
  FSetApp(nullptr);
  delete app;
  FSetMainThread(nullptr);
  delete mainThread;
  FShutdownMessages();
  return exitCode;
}
