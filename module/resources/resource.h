// Numbers of the module's resources.
#pragma once

#define IDS_VONDRAKE 101

#define IDD_GETTING_STARTED 266
#define IDC_TIPS_TEXT 269
#define IDC_DO_NOT_SHOW 270

// The tips, of the type "RTF".
#define IDR_TIPS 502

// What the module says when it can't do what it was asked for. `%s` is a block's name.
#define IDS_NO_SUCH_BLOCK 901
#define IDS_BLOCK_NOT_READABLE 902
#define IDS_SPACE_NOT_WRITABLE 903

// What isn't part of the module yet.
#define IDS_NO_PALETTE_YET 951
#define IDS_NO_ATTRIBUTE_EDITOR_YET 952
#define IDS_NO_FILE_INSERTION_YET 953
