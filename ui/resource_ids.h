// The numbers of the controls in the program's dialog templates. Plain
// macros, since the resource compiler reads this file too.
#pragma once

// The about box's four lines, top to bottom.
#define IDC_ABOUT_NAME 1001
#define IDC_ABOUT_PATH 1002
#define IDC_ABOUT_RIGHTS 1003
#define IDC_ABOUT_HOME 1004
