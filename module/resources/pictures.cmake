# Draws the resource script's icons, cursors and bitmaps from their text into the build folder.
find_program(VONDRAKE_PICTURE_PYTHON python3 REQUIRED DOC "Python 3, which draws the module's pictures")

set(VNDK_PICTURE_FOLDER ${CMAKE_CURRENT_BINARY_DIR}/pictures)
set(VNDK_PICTURES "")
set(script ${PROJECT_SOURCE_DIR}/scripts/make_pictures.py)
file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/pictures/*.txt)
foreach(source IN LISTS sources)
  file(STRINGS ${source} kind REGEX "^(icon|cursor|bitmap) ")
  string(REGEX REPLACE " .*" "" kind "${kind}")
  set(suffix_icon ico)
  set(suffix_cursor cur)
  set(suffix_bitmap bmp)
  cmake_path(GET source STEM name)
  list(APPEND VNDK_PICTURES ${VNDK_PICTURE_FOLDER}/${name}.${suffix_${kind}})
endforeach()
add_custom_command(OUTPUT ${VNDK_PICTURES}
  COMMAND ${VONDRAKE_PICTURE_PYTHON} -B ${script} ${VNDK_PICTURE_FOLDER} ${sources}
  DEPENDS ${script} ${sources}
  COMMENT "Drawing pictures"
  VERBATIM)
