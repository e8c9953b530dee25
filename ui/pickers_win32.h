// The pickers behind the "指定..." buttons of the condition dialogs: values
// ("STR_INPUT"), a number range ("NUMA_INPUT") and a date range
// ("DTA_INPUT"). Each offers what the statistics of the archive give.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/lstr.h"

struct TStats;

// Runs the picker of a condition field; true with the field's new text
// when the user chose one. Nothing to offer is said in a message, and no
// picker opens. stats may be null.
bool FRunPicker(HWND owner, int32_t field, const TStats* stats, LStr& text);
