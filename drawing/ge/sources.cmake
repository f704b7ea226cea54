set(GE_SOURCES ge/extents.cpp ge/line_seg3d.cpp ge/matrix3d.cpp ge/unit_text.cpp ge/vector.cpp)
