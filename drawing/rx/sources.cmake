set(RX_SOURCES rx/class.cpp rx/registry.cpp rx/status.cpp)
