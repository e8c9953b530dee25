// The decisions the dialogs of add, extract and delete share: what their
// text calls the selection, whether the selection gives the conditions
// anything to choose from, the mark on the conditions button, and whether an
// extract destination was given. Plain functions over the selection; no
// window.
#pragma once

#include "lib/lstr.h"
#include "ui/selection.h"

class TCond;

// "%d 個の項目" for several records, "すべてのファイル" for the root alone,
// otherwise the record's name and a blank, ready to be followed by a
// particle ("%sを削除します。").
LStr FSubjectText(const TRecList& records);
// True when the selection expands to at least two versions: with one
// version or none there is nothing for a condition to choose between. The
// walk stops as soon as the answer is known.
bool FSelectionHasVersionsToChoose(const TRecList& records);
// The caption of the conditions button after the conditions dialog: with
// one "*" at its end when any condition is set, without when none is.
LStr FCondCaption(const char* caption, const TCond& cond);
// An empty destination is refused with a message; the dialog stays.
bool FExtractDestGiven(const char* destination);
