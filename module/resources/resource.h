// Numbers of the module's resources. A number may serve several kinds: a dialog, a control, an icon and a cursor each
// have a space of their own.
#pragma once

// Strings: titles, prompts and what the dialogs say.
#define IDS_VONDRAKE 101 // title of the palette and section of the profile
#define IDS_TAB_ATTRIBUTES 102
#define IDS_TAB_TEXT_OPTIONS 103
#define IDS_TAB_PROPERTIES 104
#define IDS_COLUMN_DESCRIPTION 105
#define IDS_COLUMN_DATA 106
#define IDS_SELECT_BLOCK 107
#define IDS_NOT_A_BLOCK 108
#define IDS_BLOCK_NAME 109
#define IDS_SPECIFY_INSERTION_POINT 427
#define IDS_COULD_NOT_LOAD_DRAWING 430
#define IDS_INSERT 432

// What the module says when it can't do what it was asked for. `%s` is a block's name.
#define IDS_NO_SUCH_BLOCK 901
#define IDS_BLOCK_NOT_READABLE 902
#define IDS_SPACE_NOT_WRITABLE 903
#define IDS_NOT_A_BLOCK_NAME 904
#define IDS_HOLDS_OWN_NAME 905
#define IDS_NOTHING_TO_INSERT 906

// Dialogs. A page's controls may have the numbers of other dialogs' controls.
#define IDD_ENHANCED_ATTRIBUTES 262
#define IDD_GETTING_STARTED 266
#define IDD_BLOCK_PALETTE 400
#define IDD_PREVIEW 402
#define IDD_EDIT_ATTRIBUTE 404
#define IDD_ATTR_TEXT_OPTIONS 15222
#define IDD_ATTR_PROPERTIES 15223

// Tab control of the palette, the preview and the enhanced attribute editor.
#define IDC_TABS 200

// Palette.
#define IDC_FOLDERS 201
#define IDC_DRAWINGS 202
#define IDC_GRIPS 203
#define IDC_BLOCKS 204
#define IDC_PREVIEW 207
#define IDC_UP_LEVEL 208

// Preview.
#define IDC_ZOOM 208
#define IDC_PAN 209
#define IDC_ORBIT 210
#define IDC_WIREFRAME_2D 212
#define IDC_WIREFRAME_3D 213
#define IDC_HIDDEN 214
#define IDC_FLAT_SHADED 215
#define IDC_GOURAUD_SHADED 216
#define IDC_FLAT_SHADED_EDGES 217
#define IDC_GOURAUD_SHADED_EDGES 218
#define IDC_OPEN 337

// Enhanced attribute editor.
#define IDC_APPLY 3
#define IDC_EDITOR_HELP 9
#define IDC_BLOCK_NAME 222
#define IDC_TAG_NAME 223
#define IDC_SELECT_BLOCK 251
#define IDC_ATTRIBUTES 253

// Its page of text options.
#define IDC_TEXT_STYLE 254
#define IDC_JUSTIFICATION 255
#define IDC_HEIGHT 256
#define IDC_ROTATION 257
#define IDC_UPSIDE_DOWN 259
#define IDC_OBLIQUE_ANGLE 261
#define IDC_BACKWARDS 266
#define IDC_WIDTH_FACTOR 268

// Its page of properties.
#define IDC_COLOR 262
#define IDC_PLOT_STYLE 263
#define IDC_LINEWEIGHT 264
#define IDC_LINETYPE 267
#define IDC_LAYER 268

// Attribute editor of one block.
#define IDC_ATTRIBUTE_LIST 220
#define IDC_BLOCK_LABEL 222
#define IDC_EDIT_OK 223

// Tips.
#define IDC_TIPS_TEXT 269
#define IDC_DO_NOT_SHOW 270

// Menu of the list of drawings: two popups, for previews that are hidden and shown.
#define IDR_DRAWINGS_MENU 250
#define ID_SHOW_PREVIEWS 32768
#define ID_HIDE_PREVIEWS 32769
#define ID_OPEN_DRAWING 32908
#define ID_INSERT_INTELLIGENT_BLOCK 32909
#define ID_INSERT_XREF 32910
#define ID_SHOW_IN_PREVIEW 32911

// Icons, 16 x 16, but for the stock block's 32 x 32.
#define IDI_PAN 221
#define IDI_ORBIT 222
#define IDI_ZOOM 223
#define IDI_PREVIEW 224
#define IDI_HIDDEN 225
#define IDI_GOURAUD_SHADED 226
#define IDI_FLAT_SHADED_EDGES 227
#define IDI_GOURAUD_SHADED_EDGES 229
#define IDI_WIREFRAME_2D 230
#define IDI_WIREFRAME_3D 231
#define IDI_FLAT_SHADED 232
#define IDI_UP_LEVEL 243
#define IDI_STOCK_BLOCK 246
#define IDI_SELECT_BLOCK 263

// Cursors of the drawing view.
#define IDC_CURSOR_PAN 221
#define IDC_CURSOR_ORBIT 222
#define IDC_CURSOR_ZOOM 223

// Bitmaps for image lists; black is the mask colour.
#define IDB_SHELL_IMAGES 129 // ten images side by side
#define IDB_DRAWING_FILE 252
#define IDB_FOLDER 255

// The tips, of the type "RTF".
#define IDR_TIPS 502
