#include "win/edit_box.h"

bool LEditBox::save() {
  text_ = text();
  return true;
}
