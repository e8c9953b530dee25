// LCtrl: a control of a dialog bound to a variable of the program. It is
// built with its dialog, the control's number in the template and the
// variable; the dialog binds and loads it as it opens (variable to
// control) and saves it on OK (control to variable). Derived classes add
// one kind of control and one kind of variable each. Main thread only.
#pragma once

#include <windows.h>

#include "lib/lobj.h"
#include "lib/lstr.h"

class LDialog;

class LCtrl : public LObj {
 public:
  HWND hwnd = nullptr;
  const int id;
  // The control takes the keyboard focus when the dialog opens.
  bool takesFocus = false;

  // Registers the control with the dialog, whose member it normally is: the
  // dialog must outlive it.
  LCtrl(LDialog& dialog, int id);
  LCtrl(const LCtrl&) = delete;
  LCtrl& operator=(const LCtrl&) = delete;

  // Finds the control in the open dialog. "GetDlgItem() failed".
  virtual void bind();
  // Buttons carry no variable of their own.
  virtual bool isButton() const { return false; }
  virtual void load() {}
  // false refuses the control's value (the user has been told why) and
  // keeps the dialog open.
  virtual bool save() { return true; }
  virtual void enable(bool on);
  virtual void show(bool on);
  // A command of this control (a notification code); 1 passes it on to the
  // dialog's onCommand.
  virtual int onCommand(int /*code*/) { return 1; }
  // The user changed the control's value; the control calls it from the
  // notification that means so for its kind.
  virtual int onChange() { return 1; }
  // After every control of the dialog has been loaded.
  virtual void afterLoad() {}
  virtual void afterInit() {}

  // The control's text, as the user sees it now.
  LStr text() const;
  // "SetWindowText() failed".
  void setText(const char* text);

 protected:
  LDialog& dialog_;
};
