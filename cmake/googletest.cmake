# Built from the distribution's sources, so that one version serves every compiler.
set(BUILD_GMOCK ON)
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
foreach(library gtest gmock gmock_main)
  target_compile_options(${library} PRIVATE -O0)
endforeach()
