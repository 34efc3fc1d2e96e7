# Compiles through ccache when it is installed. Paths are hashed relative to the source tree, so
# that builds of the same sources in other checkouts (worktrees, CI clones) share the cache.
option(KESTREL_CCACHE "Compile through ccache when it is installed" ON)
if(KESTREL_CCACHE)
  find_program(KESTREL_CCACHE_PROGRAM ccache)
  if(KESTREL_CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros ${KESTREL_CCACHE_PROGRAM})
  endif()
endif()
