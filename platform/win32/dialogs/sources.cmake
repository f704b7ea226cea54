# The common dialogs. Paths are relative to platform/win32.
set(DIALOGS_SOURCES
  dialogs/file_dialog.cpp
  dialogs/file_name_calls.cpp
  dialogs/folder_listing.cpp)
