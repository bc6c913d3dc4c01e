# The Windows library, the tool, the simulated host and the tests that need Windows.
include(typelib)

tarn_glob(platformSources src/platform/win32/*.cpp)
tarn_library(tarn_win32 ${platformSources})
target_link_libraries(tarn_win32 PUBLIC tarn_core
  comctl32 comdlg32 htmlhelp ole32 oleaut32 uuid shlwapi shell32 version advapi32 gdi32 user32)

tarn_glob(interfaces resources/*.idl simulator/win32/*.idl)
compile_idl(tarn_win32 ${interfaces})

# All programs ask the same of the system; only the name differs.
foreach(name QVRKvTARNCfg SimHost EmptyWindow)
  configure_file(resources/program.manifest.in generated/${name}.manifest @ONLY)
endforeach()

# Resource scripts name icons, manifests and type libraries by bare file name: of their own folder, of
# `resources`, or generated.
function(tarn_resources target folder)
  if(NOT TARGET ${target})
    return()
  endif()
  tarn_glob(scripts ${folder}/*.rc)
  tarn_glob(inputs ${folder}/*)
  get_property(typelibs GLOBAL PROPERTY TARN_TYPELIBS)
  set_source_files_properties(${scripts} PROPERTIES OBJECT_DEPENDS "${inputs};${typelibs};${CMAKE_BINARY_DIR}/generated/QVRKvTARNCfg.manifest"
    INCLUDE_DIRECTORIES "${PROJECT_SOURCE_DIR}/${folder};${PROJECT_SOURCE_DIR}/resources;${CMAKE_BINARY_DIR}/generated")
  target_sources(${target} PRIVATE ${scripts})
endfunction()

tarn_glob(appSources src/app/*.cpp)
tarn_windows_program(tarn_tool ${appSources})
tarn_resources(tarn_tool resources)
if(TARGET tarn_tool)
  set_target_properties(tarn_tool PROPERTIES OUTPUT_NAME QVRKvTARNCfg)
endif()

# The stand-in host, and the one that measures: the same with more commands for its scripts.
tarn_glob(hostSources simulator/win32/*.cpp)
list(FILTER hostSources EXCLUDE REGEX "/main.cpp$")
tarn_library(tarn_host ${hostSources})
target_link_libraries(tarn_host PUBLIC tarn_win32 tarn_sim)
tarn_windows_program(SimHost ${PROJECT_SOURCE_DIR}/simulator/win32/main.cpp)
tarn_glob(benchHostSources bench/win32/host/*.cpp)
tarn_windows_program(BenchHost ${benchHostSources})
foreach(program SimHost BenchHost)
  target_link_libraries(${program} PRIVATE tarn_host)
  tarn_resources(${program} simulator/win32)
endforeach()

# The maker's editing controls, a COM library that the system loads into the tool.
tarn_glob(controlSources simulator/controls/win32/*.cpp)
add_library(SimControls MODULE ${controlSources} ${PROJECT_SOURCE_DIR}/simulator/controls/win32/SimControls.def)
target_link_libraries(SimControls PRIVATE tarn_options tarn_win32 tarn_sim)
target_link_options(SimControls PRIVATE -s -Wl,--enable-stdcall-fixup)
set_target_properties(SimControls PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
compile_idl(SimControls ${PROJECT_SOURCE_DIR}/simulator/controls/win32/SimControls.idl)
tarn_resources(SimControls simulator/controls/win32)

tarn_glob(win32Tests tests/win32/*.cpp)
tarn_test(win32_tests ${win32Tests})
tarn_resources(win32_tests tests/win32)
if(TARGET win32_tests)
  target_link_libraries(win32_tests PRIVATE tarn_win32)
  target_compile_definitions(win32_tests PRIVATE SIM_DATA_DIR="data")
  add_dependencies(win32_tests SimControls tarn_tool)
endif()

tarn_windows_program(EmptyWindow ${PROJECT_SOURCE_DIR}/bench/win32/empty_window.cpp)
tarn_resources(EmptyWindow bench/win32)

# What a user needs, without the tests.
add_custom_target(programs DEPENDS sim_data)
foreach(program tarn_tool SimHost SimControls ovxping ovxpeer)
  if(TARGET ${program})
    add_dependencies(programs ${program})
  endif()
endforeach()
