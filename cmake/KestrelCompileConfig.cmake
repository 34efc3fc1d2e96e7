# One place for the language level, warnings and sanitizer flags of every target.
function(kestrel_compile_config target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -Wshadow=local)
    # g++ 12 at -O3 reports overlapping copies inside std::string concatenation that cannot
    # happen (GCC bug 105329); the warning would otherwise fail Release builds with -Werror.
    if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
  endif()
  if(KESTREL_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(KESTREL_SANITIZE)
    target_compile_options(${target} PUBLIC -fsanitize=address,undefined -fno-sanitize-recover=all
                                            -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
  if(KESTREL_FUZZ)
    # Libraries carry coverage so that the fuzzers can steer into them.
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link,address,undefined)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
endfunction()

# A GoogleTest executable whose tests are registered one by one with CTest.
function(kestrel_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  kestrel_compile_config(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest_main GTest::gmock)
  target_compile_definitions(${name} PRIVATE
    KESTREL_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
    KESTREL_SHARED_SCENES_DIR="${PROJECT_SOURCE_DIR}/../shared/scenes")
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60)
endfunction()
