# The host's windows. Paths are relative to host.
set(UI_SOURCES
  ui/canvas.cpp
  ui/command_window.cpp
  ui/main_frame.cpp
  ui/window_prompts.cpp)
