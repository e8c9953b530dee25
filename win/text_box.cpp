#include "win/text_box.h"

void LTextBox::load() { setText(text_.ptr); }
