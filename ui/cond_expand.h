// The expanded part of the conditions dialog: shown or hidden by one
// button, whose text tells which way it goes next, and remembered for each
// command in its own flag.
#pragma once

#include <cstdint>

// How much taller the dialog is with its expanded part, in pixels.
const int32_t kExpandedExtra = 300;

// ">>" while collapsed, "<<" while expanded.
const char* FExpandButtonText(int32_t expanded);
// Flips the flag and returns the change of the dialog's height.
int32_t FToggleExpanded(int32_t& expanded);
