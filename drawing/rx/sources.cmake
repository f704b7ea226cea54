set(RX_SOURCES rx/class.cpp rx/lisp_functions.cpp rx/registry.cpp rx/status.cpp)
