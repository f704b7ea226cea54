// Numbers of the dialog "Select Color" and what is in it.
#pragma once

#define IDD_SELECT_COLOR 20100
#define IDC_STANDARD_COLORS 20101
#define IDC_GRAYS 20102
#define IDC_FULL_PALETTE 20103
#define IDC_BYLAYER 20104
#define IDC_BYBLOCK 20105
#define IDC_COLOR_NAME 20106
#define IDC_COLOR_SHOWN 20107
