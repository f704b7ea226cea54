# The host's windows. Paths are relative to host.
set(UI_SOURCES
  ui/canvas.cpp
  ui/command_edit.cpp
  ui/command_window.cpp
  ui/document_tabs.cpp
  ui/edge_strip.cpp
  ui/main_frame.cpp
  ui/main_frame_commands.cpp
  ui/menu_commands.cpp
  ui/sash.cpp
  ui/status_line.cpp
  ui/text_window.cpp
  ui/window_prompts.cpp)
