vndk_add_test(test_rich_edit
  SOURCES rich_edit_test.cpp rtf_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
target_include_directories(test_rich_edit PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32)
