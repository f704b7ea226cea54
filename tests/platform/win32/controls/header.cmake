vndk_add_test(test_header
  SOURCES header_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
