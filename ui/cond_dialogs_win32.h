// The dialogs that fill a TCond: the conditions dialog of extract, delete
// and search ("SCH_COND_DLG") and the conditions of add ("ADD_COND_DLG").
// Each runs modally and returns true when the user pressed OK; the fields'
// texts then are in the TCond, parsed, and in the histories of the
// settings.
#pragma once

#include <windows.h>

#include <cstdint>

#include "ui/selection.h"

class TCond;

// expanded is the flag kept for the calling command; the dialog flips it
// when the user shows or hides the expanded part. title replaces the
// template's when not empty. The selection gives the candidates of the
// pickers.
bool FRunLimitDialog(HWND owner, TCond& cond, int32_t& expanded, const char* title,
                     const TRecList& selection);
bool FRunAddCondDialog(HWND owner, TCond& cond);
