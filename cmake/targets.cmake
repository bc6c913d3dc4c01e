# How this project's own libraries and programs are made: compiler settings, warnings as errors, source
# lists by folder. Outside code is never compiled with these.

add_library(tarn_options INTERFACE)
target_compile_features(tarn_options INTERFACE cxx_std_20)
target_include_directories(tarn_options INTERFACE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
target_compile_options(tarn_options INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wpedantic;-Wconversion>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")  # the other compiler has warnings of its own
  target_compile_options(tarn_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Werror>)
endif()
# GCC 12 warns of overlapping copies in the library's own strings when it optimises (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT WIN32)
  target_compile_options(tarn_options INTERFACE -Wno-restrict)
endif()
if(TARN_COVERAGE)
  target_compile_options(tarn_options INTERFACE -fprofile-instr-generate -fcoverage-mapping)
  target_link_options(tarn_options INTERFACE -fprofile-instr-generate)
endif()
if(WIN32)
  target_compile_definitions(tarn_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
    WINVER=0x0A00 _WIN32_WINNT=0x0A00)
endif()

# tarn_glob(VARIABLE PATTERN...): files below the project folder, in any depth, kept up to date.
function(tarn_glob variable)
  list(TRANSFORM ARGN PREPEND ${PROJECT_SOURCE_DIR}/)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS ${ARGN})
  set(${variable} ${files} PARENT_SCOPE)
endfunction()

function(tarn_library name)
  if(NOT ARGN)
    file(TOUCH ${CMAKE_BINARY_DIR}/empty.cpp)
    set(ARGN ${CMAKE_BINARY_DIR}/empty.cpp)
  endif()
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC tarn_options)
endfunction()

function(tarn_program name)
  if(NOT ARGN)
    message(STATUS "${name}: no sources yet, left out")
    return()
  endif()
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tarn_options)
endfunction()

# A GoogleTest program. Its own code is not optimised: it compiles in half the time and runs as fast. For Windows it
# has no lines of the sources, which would be 200 megabytes to link and to load each time.
function(tarn_test name)
  tarn_program(${name} ${ARGN})
  if(TARGET ${name})
    target_compile_options(${name} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-O0> $<$<BOOL:${WIN32}>:-g0>)
    target_link_libraries(${name} PRIVATE tarn_sim GTest::gmock_main)
  endif()
endfunction()

# A program with windows, as it is shipped: no console, wide-character entry point, no symbols.
function(tarn_windows_program name)
  tarn_program(${name} ${ARGN})
  if(TARGET ${name})
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
    target_link_options(${name} PRIVATE -municode -s)
    target_link_libraries(${name} PRIVATE tarn_win32)
  endif()
endfunction()
