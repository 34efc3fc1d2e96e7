kestrel_add_fuzzer(HarvestModelFuzz
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/HarvestModelFuzz.cpp ${PROJECT_SOURCE_DIR}/tests/importers/AssimpLeakSuppression.cpp
  LIBS kestrel_harvest kestrel_importers)
