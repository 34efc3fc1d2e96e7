kestrel_add_fuzzer(MayaAsciiFuzz SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/MayaAsciiFuzz.cpp LIBS kestrel_importers)
