# Scroll bars: the control, and the bars of frames.
vndk_add_test(test_scroll_bar
  SOURCES scroll_bar_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
target_include_directories(test_scroll_bar PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32)
