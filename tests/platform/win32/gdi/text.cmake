# Fonts, text, drawn parts, icons and image lists.
vndk_add_test(test_gdi_text
  SOURCES text_test.cpp draw_text_test.cpp draw_test.cpp frame_control_test.cpp icon_test.cpp load_image_test.cpp
    image_list_test.cpp
  LIBS vndk_win32)
target_include_directories(test_gdi_text PRIVATE ${PROJECT_SOURCE_DIR}/platform/win32 ${CMAKE_CURRENT_SOURCE_DIR})
