# The edit control and its layout of lines.
vndk_add_test(test_edit
  SOURCES edit_test.cpp edit_input_test.cpp edit_dialog_test.cpp edit_layout_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
target_include_directories(test_edit PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32)
