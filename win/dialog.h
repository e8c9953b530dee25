// LDialog: a modal dialog run from a template of the program's resources.
// One dialog procedure finds the object in the dialog's user data and calls
// the virtual operation of the message; each returns 0 for done (result 0),
// 1 for not handled (the system's default runs), or any other value for
// done with the result TRUE. Controls bound to the dialog (LCtrl) are loaded
// from their variables when it opens and saved into them on OK. The object
// lives across its run only. Main thread only.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include "lib/larr.h"
#include "lib/lobj.h"
#include "lib/lstr.h"

class LCtrl;

class LDialog : public LObj {
 public:
  HWND hwnd = nullptr;
  // Replaces the template's title when not empty.
  LStr title;
  bool acceptsFiles = false;
  bool centredOnOwner = false;

  explicit LDialog(const char* templateName) : templateName_(templateName) {}
  LDialog(const LDialog&) = delete;
  LDialog& operator=(const LDialog&) = delete;

  // Shows the dialog until a button ends it; returns that button's number
  // (IDOK for OK). "DialogBoxParam() failed".
  int run(HWND owner);
  // Ends the run with the button's number.
  void end(int button);

  virtual int onInit() { return 1; }
  // Runs after every control saved its value; 0 keeps the dialog open.
  virtual int onOk() { return 1; }
  // A command of a control that its LCtrl left unhandled.
  virtual int onCommand(int /*id*/, int /*code*/) { return 1; }
  // The help button (IDHELP) or F1.
  virtual int onHelp() { return 1; }
  // 0 keeps the dialog open.
  virtual int onCancel() { return 1; }
  virtual int onDropFiles(HDROP) { return 1; }

  // Routes one message; the dialog procedure's body.
  virtual INT_PTR route(UINT message, WPARAM wParam, LPARAM lParam);
  // A failure was shown to the user while the dialog opened: it goes away.
  virtual void abandon() { end(IDCANCEL); }

  // Controls register themselves as they are built; the dialog does not own
  // them.
  void addCtrl(LCtrl* ctrl) { ctrls_.add(ctrl); }
  const char* templateName() const { return templateName_; }

 protected:
  // The controls save their values in order; false at the first refusal,
  // whose control has told the user why.
  bool saveControls();
  // The message's result by the return-code rule.
  INT_PTR answer(int rc);

 private:
  INT_PTR initialise();
  INT_PTR command(int id, int code);
  void centreOnOwner();

  const char* templateName_;
  LArrOf<LCtrl*> ctrls_;
};

// Gives the keyboard focus back, when it goes out of scope, to the window
// that had it when it was made: a modal run hands the focus to its owner
// window, not to the control inside it that the user was on.
class LFocusReturn {
 public:
  LFocusReturn() : focus_(GetFocus()) {}
  ~LFocusReturn() {
    if (focus_ != nullptr && IsWindow(focus_)) SetFocus(focus_);
  }
  LFocusReturn(const LFocusReturn&) = delete;
  LFocusReturn& operator=(const LFocusReturn&) = delete;

 private:
  HWND focus_;
};

// The dialog procedure of property pages: their WM_INITDIALOG carries the
// page's PROPSHEETPAGE, whose lParam is the LDialog.
INT_PTR CALLBACK FPageProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
