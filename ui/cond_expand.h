// The expanded part of the conditions dialog: shown or hidden by one
// button, whose text tells which way it goes next, and remembered for each
// command in its own flag.
#pragma once

#include <cstdint>

// The height of the expanded part in dialog units: 300 pixels with the
// system's Japanese dialog font, whose unit is 1.5 pixels high; a larger
// font makes it taller with the controls in it.
const int32_t kExpandedUnits = 200;

// ">>" while collapsed, "<<" while expanded.
const char* FExpandButtonText(int32_t expanded);
// Flips the flag and returns the change of the dialog's height, by the
// height of the expanded part in pixels.
int32_t FToggleExpanded(int32_t& expanded, int32_t extra);
