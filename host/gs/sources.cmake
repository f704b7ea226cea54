# The graphics system. Paths are relative to host.
set(GS_SOURCES
  gs/camera.cpp
  gs/display_lists.cpp
  gs/graphics_device.cpp
  gs/graphics_model.cpp
  gs/graphics_view.cpp
  gs/list_builder.cpp
  gs/list_painter.cpp
  gs/manager.cpp
  gs/palette.cpp
  gs/raster.cpp
  gs/stroker.cpp
  gs/styles.cpp
  gs/text_fonts.cpp)
