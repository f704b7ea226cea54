# Combo boxes.
vndk_add_test(test_combo_box
  SOURCES combo_box_test.cpp combo_box_dropping_test.cpp combo_box_field_test.cpp
    ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
