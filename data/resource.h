/* Identifiers shared by the resource script and the window code. */
#pragma once

#define IDI_FERRY2 1
#define IDB_TICK 2222

/* main window "Ferry2" */
#define IDC_TABS 1001

/* path dialog "PathDlg" */
#define IDC_BROWSE 1100
#define IDC_LEGACY_PATH 1101

/* pages "ListDlg" and "LogDlg" */
#define IDC_IMPORT 101
#define IDC_TABLE 1003
#define IDC_UNDEFINED_OBSERVERS 1006
#define IDC_UNDEFINED_INSTRUMENTS 1007
#define IDC_LINK_ENTRY 1008
#define IDC_CREATE_ENTRY 1009

/* dialog "InstTypeDlg" */
#define IDC_TYPE_TELESCOPE 1010
#define IDC_TYPE_BINOCULARS 1011
#define IDC_TYPE_TEXT 1012

/* dialog "SelectEntryDlg": the list to choose from */
#define IDC_SELECT_LIST 1020

/* buttons of every dialog */
#define IDC_HELP_BUTTON 9
