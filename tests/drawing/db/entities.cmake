vndk_add_test(test_entities
  SOURCES
    entity_sequence_test.cpp
    entity_transform_test.cpp
    explode_test.cpp
  LIBS vndk_drawing)

vndk_add_test(test_hatches_and_solids SOURCES hatch_test.cpp modeler_geometry_test.cpp LIBS vndk_drawing)
target_include_directories(test_hatches_and_solids PRIVATE ${PROJECT_SOURCE_DIR}/drawing)
