# List boxes.
vndk_add_test(test_list_box
  SOURCES list_box_test.cpp list_box_layout_test.cpp list_box_draw_test.cpp list_box_input_test.cpp
    list_box_store_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
target_include_directories(test_list_box PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32)
