// The numbers of the controls in the program's dialog templates. Plain
// macros, since the resource compiler reads this file too.
#pragma once

// The about box's four lines, top to bottom.
#define IDC_ABOUT_NAME 1001
#define IDC_ABOUT_PATH 1002
#define IDC_ABOUT_RIGHTS 1003
#define IDC_ABOUT_HOME 1004

// The general page of the options.
#define IDC_OPT_SKIP_SAME_TIME 1101
#define IDC_OPT_SKIP_SAME_CONTENT 1102
#define IDC_OPT_TEMP_DIR 1103
#define IDC_OPT_TEMP_BROWSE 1104

// The column page of the options: two pairs of lists, the folder view's
// from 1200 and the version view's from 1220, each laid out from its base
// as the offsets below.
#define IDC_OPT_FILE_COLUMNS 1200
#define IDC_OPT_VERSION_COLUMNS 1220
#define IDC_OPT_SHOWN_LABEL 0
#define IDC_OPT_SHOWN_LIST 1
#define IDC_OPT_HIDDEN_LABEL 2
#define IDC_OPT_HIDDEN_LIST 3
#define IDC_OPT_SHOW 4
#define IDC_OPT_HIDE 5
#define IDC_OPT_UP 6
#define IDC_OPT_DOWN 7

// The dialogs of add, extract and delete, the confirmation of an add with
// conditions, and the registration: 1300-1399.
#define IDC_COND 1300  // the conditions button of add, extract and delete
#define IDC_ADD_TARGET 1301
#define IDC_ADD_LIST 1302
#define IDC_ADD_FOLDER 1303
#define IDC_ADD_FILES 1304
#define IDC_ADD_REMOVE 1305
#define IDC_ADD_COMMENT 1306
#define IDC_EXT_DEST 1310
#define IDC_EXT_BROWSE 1311
#define IDC_EXT_SUBJECT 1312
#define IDC_DEL_SUBJECT 1320
#define IDC_DETAIL_TEXT 1330
#define IDC_DETAIL_COND 1331
#define IDC_USER_NAME 1340
#define IDC_USER_ID 1341
#define IDC_USER_PWD 1342

// The conditions dialogs ("SCH_COND_DLG", "ADD_COND_DLG"): for each text
// field (in the order of a condition set, from 0) its box, its exclude
// check box and its picker button at these bases plus the field.
#define IDC_COND_TEXT 1400
#define IDC_COND_EXCL 1410
#define IDC_COND_PICK 1420
#define IDC_COND_ATTR 1440  // four, read-only, archive, hidden, system
#define IDC_COND_EXISTING 1444
#define IDC_COND_MAX_VERSIONS 1445
#define IDC_COND_MAX_SPIN 1446
#define IDC_COND_FROM_OLDEST 1447
#define IDC_COND_COMMENT_MODE 1450  // three, exact, partial, expression
#define IDC_COND_COMMENT_CASE 1453
#define IDC_COND_PATH_MODE 1454  // three, as the comment's
#define IDC_COND_PATH_CASE 1457
#define IDC_COND_EXPAND 1458

// The pickers: the values ("STR_INPUT"), the number range ("NUMA_INPUT")
// and the date range ("DTA_INPUT").
#define IDC_PICK_PROMPT 1500
#define IDC_PICK_VALUE 1501
#define IDC_PICK_LOW 1510
#define IDC_PICK_LOW_SPIN 1511
#define IDC_PICK_HIGH 1512
#define IDC_PICK_HIGH_SPIN 1513
#define IDC_PICK_LOW_DATE 1520
#define IDC_PICK_LOW_TIME 1521
#define IDC_PICK_HIGH_DATE 1522
#define IDC_PICK_HIGH_TIME 1523
