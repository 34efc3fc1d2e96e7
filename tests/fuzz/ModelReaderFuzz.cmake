kestrel_add_fuzzer(ModelReaderFuzz SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/ModelReaderFuzz.cpp LIBS kestrel_formats)
