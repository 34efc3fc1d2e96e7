# Builds against a real Maya devkit instead of the stand-in in mayaapi/.
#
#   cmake -G Ninja -S . -B build/maya2024 -DKESTREL_MAYA_DEVKIT=/opt/autodesk/devkit/maya2024
#
# KESTREL_MAYA_DEVKIT is the devkit root: it holds include/maya/*.h and lib/ with OpenMaya, OpenMayaAnim,
# OpenMayaUI and Foundation. Harvest, plug-in and importer code includes <maya/...> and links Kestrel::Maya either
# way, so nothing else changes; the command-line exporter, which needs the stand-in's scene and plug-in host, is
# not built. The devkit cannot be obtained here, so this path is kept small and is only checked by review.

find_path(KESTREL_MAYA_INCLUDE_DIR maya/MFnPlugin.h
  PATHS ${KESTREL_MAYA_DEVKIT}/include ${KESTREL_MAYA_DEVKIT}/devkit/include
  NO_DEFAULT_PATH)
if(NOT KESTREL_MAYA_INCLUDE_DIR)
  message(FATAL_ERROR "KESTREL_MAYA_DEVKIT=${KESTREL_MAYA_DEVKIT} has no include/maya/MFnPlugin.h")
endif()

set(KESTREL_MAYA_LIBRARIES)
foreach(library OpenMaya OpenMayaAnim OpenMayaUI Foundation)
  find_library(KESTREL_MAYA_${library}_LIBRARY ${library}
    PATHS ${KESTREL_MAYA_DEVKIT}/lib ${KESTREL_MAYA_DEVKIT}/devkit/lib
    NO_DEFAULT_PATH)
  if(NOT KESTREL_MAYA_${library}_LIBRARY)
    message(FATAL_ERROR "Maya library ${library} not found under ${KESTREL_MAYA_DEVKIT}")
  endif()
  list(APPEND KESTREL_MAYA_LIBRARIES ${KESTREL_MAYA_${library}_LIBRARY})
endforeach()

add_library(kestrel_maya_devkit INTERFACE)
target_include_directories(kestrel_maya_devkit SYSTEM INTERFACE ${KESTREL_MAYA_INCLUDE_DIR})
target_link_libraries(kestrel_maya_devkit INTERFACE ${KESTREL_MAYA_LIBRARIES})
# The devkit headers expect these on every platform Maya ships for.
if(WIN32)
  target_compile_definitions(kestrel_maya_devkit INTERFACE NT_PLUGIN REQUIRE_IOSTREAM)
elseif(APPLE)
  target_compile_definitions(kestrel_maya_devkit INTERFACE OSMac_ MAC_PLUGIN REQUIRE_IOSTREAM)
else()
  target_compile_definitions(kestrel_maya_devkit INTERFACE LINUX LINUX_64 REQUIRE_IOSTREAM _BOOL)
endif()
add_library(Kestrel::Maya ALIAS kestrel_maya_devkit)
