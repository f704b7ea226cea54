# Compiled resources. Paths are relative to platform/win32.
set(RESOURCES_SOURCES
  resources/resource_table.cpp
  resources/resources.cpp)
