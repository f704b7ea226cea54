# Dialogs, menus, accelerators, message boxes, scripted users.
vndk_add_test(test_dialogs
  SOURCES dialog_template_test.cpp dialog_test.cpp dialog_items_test.cpp dialog_keys_test.cpp modal_test.cpp menu_test.cpp
          menu_template_test.cpp menu_track_test.cpp menu_bar_test.cpp message_box_test.cpp accelerator_test.cpp
          user_script_test.cpp
          ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
target_include_directories(test_dialogs PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32)
