set(GI_SOURCES
  gi/curve_drawing.cpp
  gi/drawable.cpp
  gi/entity_drawing.cpp
  gi/mtext_drawing.cpp
  gi/polyline_drawing.cpp
  gi/text_codes.cpp
  gi/text_drawing.cpp)
