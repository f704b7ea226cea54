vndk_add_test(test_list_view
  SOURCES list_view_input_test.cpp list_view_items_test.cpp list_view_layout_test.cpp list_view_paint_test.cpp
          list_view_state_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
