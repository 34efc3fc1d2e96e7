kestrel_add_fuzzer(SceneLoaderFuzz
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/SceneLoaderFuzz.cpp ${PROJECT_SOURCE_DIR}/tests/importers/AssimpLeakSuppression.cpp
  LIBS kestrel_importers)
