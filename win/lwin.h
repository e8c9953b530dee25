// LWin: a window of the program. The object holds the handle, which it does
// not own; one window procedure finds the object in the window's user data
// and calls the virtual operation of the message. Each operation returns 0
// for done (the message's result is 0), 1 for not handled (the system's
// default runs), or any other value for done with the result TRUE; for
// onCommand and onUser a non-zero return passes the message on to
// `forwardTo` when there is one. Main thread only.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <cstdint>

#include "lib/lobj.h"

class LWin : public LObj {
 public:
  HWND hwnd = nullptr;
  // Destroying this window ends the message loop.
  bool ownsLoop = false;
  HWND forwardTo = nullptr;

  LWin() = default;
  LWin(const LWin&) = delete;
  LWin& operator=(const LWin&) = delete;
  ~LWin() override;

  // Creates the window of a class that FRegisterWinClass registered; the
  // object answers its messages from then on. "CreateWindowEx() failed".
  void create(const char* className, const char* title, DWORD style, DWORD exStyle, int x, int y,
              int width, int height, HWND parent, HMENU menu);

  virtual int onCreate() { return 1; }
  // 0 lets the window be destroyed.
  virtual int onClose() { return 1; }
  virtual int onDestroy() { return 1; }
  virtual int onSize(int /*width*/, int /*height*/) { return 1; }
  virtual int onSetFocus() { return 1; }
  virtual int onCommand(int /*id*/, int /*code*/) { return 1; }
  virtual int onUser(WPARAM, LPARAM) { return 1; }
  virtual int onNotify(NMHDR* /*header*/) { return 1; }
  virtual int onKeyDown(int /*key*/) { return 1; }
  virtual int onLButtonDown(int /*x*/, int /*y*/) { return 1; }
  virtual int onLButtonUp(int /*x*/, int /*y*/) { return 1; }
  virtual int onMouseMove(int /*x*/, int /*y*/) { return 1; }
  // The mouse capture went elsewhere (or was let go).
  virtual int onCaptureLost() { return 1; }
  virtual int onInitMenuPopup(HMENU) { return 1; }
  virtual int onMenuSelect(int /*id*/, int /*flags*/) { return 1; }
  virtual int onDropFiles(HDROP) { return 1; }
  // The result of a WM_COPYDATA message is the return value itself.
  virtual LRESULT onCopyData(const COPYDATASTRUCT*) { return 0; }
  virtual int onSetCursor() { return 1; }

  // Routes one message; the window procedure's body.
  LRESULT route(UINT message, WPARAM wParam, LPARAM lParam);
};

// Registers a window class answered by LWin objects; a null name gets a
// unique one ("Orva%u"). Returns the name. "RegisterClassEx() failed".
const char* FRegisterWinClass(const char* name);
// A failing system call: the error box 17000 naming the call (it throws).
[[noreturn]] void FWinFail(const char* call);
