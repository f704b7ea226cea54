vndk_add_test(test_tab_control
  SOURCES tab_control_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
