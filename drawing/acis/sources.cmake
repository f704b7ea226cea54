set(ACIS_SOURCES acis/body.cpp acis/face_mesh.cpp acis/sat_text.cpp acis/surface.cpp)
