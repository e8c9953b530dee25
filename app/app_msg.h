// TMsg: the reporter of the application. An error box marks the running
// command as failed; the desktop program and the command line derive from it
// to show what is reported in their own way.
#pragma once

#include "lib/msg.h"

class TMsg : public LMsg {
 public:
  void errorBoxShown() override;
};
