# Files, modules, memory, profiles, text. Paths are relative to platform/win32.
set(KERNEL_SOURCES
  kernel/automation.cpp
  kernel/codepage.cpp
  kernel/drive_map.cpp
  kernel/drives.cpp
  kernel/error.cpp
  kernel/file_changes.cpp
  kernel/file_facts.cpp
  kernel/files.cpp
  kernel/loader.cpp
  kernel/memory.cpp
  kernel/profile.cpp
  kernel/profile_file.cpp
  kernel/wildcard.cpp)
