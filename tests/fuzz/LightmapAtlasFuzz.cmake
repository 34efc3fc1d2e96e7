kestrel_add_fuzzer(LightmapAtlasFuzz SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/LightmapAtlasFuzz.cpp LIBS kestrel_geometry)
