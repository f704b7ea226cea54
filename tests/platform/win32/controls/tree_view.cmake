vndk_add_test(test_tree_view
  SOURCES tree_view_items_test.cpp tree_view_layout_test.cpp tree_view_select_test.cpp
          ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
