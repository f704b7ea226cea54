# The edit control and its layout of lines.
set(edit_sources edit_test.cpp edit_input_test.cpp edit_layout_test.cpp)
# The tests in real dialogs build their templates with what the dialogs' own tests have for that.
if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/../user/template_builder.h)
  list(APPEND edit_sources edit_dialog_test.cpp)
endif()
vndk_add_test(test_edit
  SOURCES ${edit_sources} ${PROJECT_SOURCE_DIR}/tests/support/message_recorder.cpp
  LIBS vndk_win32)
target_include_directories(test_edit PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32)
