vndk_add_test(test_entities
  SOURCES
    entity_sequence_test.cpp
    entity_transform_test.cpp
    explode_test.cpp
  LIBS vndk_drawing)
