# Loadable libraries (.arx, .dbx): shared objects that export a few names, carry their resources in themselves and
# announce themselves to the loader (platform/win32/include/win32/loader.h).
include_guard(GLOBAL)

find_program(VONDRAKE_RC NAMES llvm-rc llvm-rc-14 DOC "LLVM's resource compiler (Debian package llvm)")
set(VNDK_MODULE_FILES ${CMAKE_CURRENT_LIST_DIR})

# vndk_compile_resources(out RC file.rc [INCLUDES dirs] [DEPENDS pictures]): `out` gets the path of the compiled .res.
# The folders hold headers and pictures besides those of the script's own folder. Relative names start at the sources.
function(vndk_compile_resources out)
  cmake_parse_arguments(ARG "" "RC" "INCLUDES;DEPENDS" ${ARGN})
  if(NOT VONDRAKE_RC)
    message(FATAL_ERROR "llvm-rc is missing; install the package llvm.")
  endif()
  cmake_path(ABSOLUTE_PATH ARG_RC BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
  set(depends "")
  foreach(file IN LISTS ARG_DEPENDS)
    cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
    list(APPEND depends ${file})
  endforeach()
  set(picture_folders "")
  foreach(directory IN LISTS ARG_INCLUDES)
    list(APPEND picture_folders /I ${directory})
  endforeach()
  cmake_path(GET ARG_RC PARENT_PATH folder)
  cmake_path(GET ARG_RC STEM name)
  set(res ${CMAKE_CURRENT_BINARY_DIR}/${name}.res)
  set(text ${name}.pp.rc)
  list(TRANSFORM ARG_INCLUDES PREPEND -I)
  # The resource compiler leaves a partial file when it fails; only a whole one gets the name that others depend on.
  # Its input is named from where it stands: a path that begins with "/c" would be taken for an option.
  add_custom_command(OUTPUT ${res}
    COMMAND ${CMAKE_CXX_COMPILER} -E -xc -DRC_INVOKED -MD -MT ${res} -MF ${res}.d
            -I${folder} -I${PROJECT_SOURCE_DIR}/platform/win32/include ${ARG_INCLUDES} ${ARG_RC} -o ${text}
    COMMAND ${VONDRAKE_RC} /no-preprocess /C 1252 /I ${folder} ${picture_folders} /FO ${res}.part ${text}
    COMMAND ${CMAKE_COMMAND} -E rename ${res}.part ${res}
    DEPENDS ${ARG_RC} ${depends}
    DEPFILE ${res}.d
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    COMMENT "Compiling resources ${name}.rc"
    VERBATIM)
  set(${out} ${res} PARENT_SCOPE)
endfunction()

# vndk_draw_pictures(folder files SOURCE_FOLDER): draws the icons, cursors and bitmaps that stand as text (*.txt) in a
# folder of the sources. `folder` gets the place of the results, `files` their paths.
function(vndk_draw_pictures folder files source_folder)
  find_program(VONDRAKE_PICTURE_PYTHON python3 REQUIRED DOC "Python 3, which draws pictures")
  set(results_folder ${CMAKE_CURRENT_BINARY_DIR}/pictures)
  set(script ${PROJECT_SOURCE_DIR}/scripts/make_pictures.py)
  set(suffix_icon ico)
  set(suffix_cursor cur)
  set(suffix_bitmap bmp)
  set(results "")
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${source_folder}/*.txt)
  foreach(source IN LISTS sources)
    file(STRINGS ${source} kind REGEX "^(icon|cursor|bitmap) ")
    string(REGEX REPLACE " .*" "" kind "${kind}")
    cmake_path(GET source STEM name)
    list(APPEND results ${results_folder}/${name}.${suffix_${kind}})
  endforeach()
  add_custom_command(OUTPUT ${results}
    COMMAND ${VONDRAKE_PICTURE_PYTHON} -B ${script} ${results_folder} ${sources}
    DEPENDS ${script} ${sources}
    COMMENT "Drawing pictures"
    VERBATIM)
  set(${folder} ${results_folder} PARENT_SCOPE)
  set(${files} ${results} PARENT_SCOPE)
endfunction()

# vndk_embed_resources(source TARGET name [RES file.res]): `source` gets an assembler file for that target, with the
# compiled resources (or nothing) between the labels vndk_resources_begin and vndk_resources_end.
function(vndk_embed_resources source)
  cmake_parse_arguments(ARG "" "TARGET;RES" "" ${ARGN})
  set(target ${ARG_TARGET})
  set(embed_line "")
  if(ARG_RES)
    set(embed_line ".incbin \"${ARG_RES}\"")
  endif()
  set(embed ${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.S)
  configure_file(${VNDK_MODULE_FILES}/resources.S.in ${embed} @ONLY)
  if(ARG_RES)
    set_source_files_properties(${embed} PROPERTIES OBJECT_DEPENDS ${ARG_RES})
  endif()
  set(${source} ${embed} PARENT_SCOPE)
endfunction()

# vndk_add_module(target EXTENSION .arx|.dbx SOURCES ... [RC file.rc [RC_INCLUDES dirs] [RC_DEPENDS pictures]]
#                 EXPORTS names... | EXPORT_ALL_DEFAULT_VISIBILITY
#                 [LIBS ...])
# EXPORTS: C names; all else stays inside. EXPORT_ALL_DEFAULT_VISIBILITY: everything that has default visibility, for a
# library whose classes others derive from or cast to; other targets may link it.
function(vndk_add_module target)
  cmake_parse_arguments(ARG "EXPORT_ALL_DEFAULT_VISIBILITY" "EXTENSION;RC" "SOURCES;EXPORTS;LIBS;RC_INCLUDES;RC_DEPENDS"
    ${ARGN})
  set(res "")
  if(ARG_RC)
    vndk_compile_resources(res RC ${ARG_RC} INCLUDES ${ARG_RC_INCLUDES} DEPENDS ${ARG_RC_DEPENDS})
  endif()
  vndk_embed_resources(embed TARGET ${target} RES ${res})

  add_library(${target} SHARED ${ARG_SOURCES} ${embed} ${PROJECT_SOURCE_DIR}/platform/win32/module/announce.cpp)
  vndk_target(${target})
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  set_target_properties(${target} PROPERTIES PREFIX "" SUFFIX ${ARG_EXTENSION})
  # One unique symbol would keep gcc's libraries from ever being unmapped.
  target_compile_options(${target} PRIVATE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
  target_link_libraries(${target} PUBLIC ${ARG_LIBS} PRIVATE vndk_win32)
  if(NOT ARG_EXPORT_ALL_DEFAULT_VISIBILITY)
    vndk_limit_exports(${target} ${ARG_EXPORTS})
  endif()
  # Sanitizer builds leave their run-time's names open until the program is there.
  if(NOT VONDRAKE_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,-z,defs)
  endif()
endfunction()

# The library shows exactly these names.
function(vndk_limit_exports target)
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  list(JOIN ARGN "; " names)
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.ver)
  file(CONFIGURE OUTPUT ${script} CONTENT "{ global: ${names}; local: *; };\n" @ONLY)
  target_link_options(${target} PRIVATE -Wl,--version-script=${script})
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${script})
endfunction()
