kestrel_add_fuzzer(SettingsBlockFuzz SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/SettingsBlockFuzz.cpp LIBS kestrel_settings)
