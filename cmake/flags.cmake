# Code generation and linking, the same for our code and for the test framework.

# Paths in messages and in debug information start at the project, wherever it was checked out.
add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")

if(TARN_SANITIZE)
  add_compile_options(-fsanitize=${TARN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=${TARN_SANITIZE})
endif()

# libFuzzer steers by what the code under test runs through. Needs clang.
if(TARN_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# One executable without any run-time library beside it, and only what is used in it. It waits for a person and for
# the host, so small counts more than fast: a third less of it to load. Wine names the functions of a crash from debug
# information of version 4.
if(WIN32)
  set(CMAKE_C_FLAGS_RELEASE "-Os -g1 -gdwarf-4 -DNDEBUG")
  set(CMAKE_CXX_FLAGS_RELEASE "-Os -g1 -gdwarf-4 -DNDEBUG")
  add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:-ffunction-sections;-fdata-sections>")
  add_link_options(-static -Wl,--gc-sections -Wl,--dynamicbase -Wl,--nxcompat)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    add_link_options(-Wl,--high-entropy-va)
  endif()
endif()
