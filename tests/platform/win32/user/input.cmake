# Queue, input and painting of windows.
vndk_add_test(test_input
  SOURCES queue_test.cpp timer_test.cpp keyboard_test.cpp mouse_test.cpp capture_test.cpp caret_test.cpp
          clipboard_test.cpp memory_test.cpp monkey_test.cpp
          ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
target_include_directories(test_input PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32)

vndk_add_test(test_painting
  SOURCES paint_test.cpp paint_children_test.cpp window_dc_test.cpp area_test.cpp area_random_test.cpp scroll_test.cpp
          ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
target_include_directories(test_painting PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32)
