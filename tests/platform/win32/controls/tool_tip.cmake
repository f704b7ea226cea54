vndk_add_test(test_tool_tip
  SOURCES tool_tip_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
