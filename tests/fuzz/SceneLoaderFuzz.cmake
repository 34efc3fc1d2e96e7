kestrel_add_fuzzer(SceneLoaderFuzz SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/SceneLoaderFuzz.cpp LIBS kestrel_importers)
