kestrel_add_fuzzer(WorldTextFuzz SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/WorldTextFuzz.cpp LIBS kestrel_formats)
