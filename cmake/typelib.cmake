# compile_idl(TARGET FILE...): compiles each IDL file to <name>.tlb, <name>.other.tlb (the same library for programs
# of the other width), <name>.h and <name>_i.c in the build tree's `generated` folder. TARGET gets the identifiers compiled in; it and its users find the header
# and, for their resource scripts, the type library.
find_program(WIDL ${TARN_TRIPLE}-widl REQUIRED)
find_path(WINE_IDL_DIR oaidl.idl PATHS /usr/include/wine/wine/windows /usr/include/wine/windows
          NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(GLOB WINE_TYPELIB_DIRS /usr/lib/*/wine/x86_64-windows)
list(TRANSFORM WINE_TYPELIB_DIRS PREPEND "-L" OUTPUT_VARIABLE WIDL_LIBRARY_FLAGS)

set(TARN_WIDL_OTHER --win32)
if(TARN_WIDL_TARGET STREQUAL --win32)
  set(TARN_WIDL_OTHER --win64)
endif()

add_custom_target(typelibs)  # all of them, without the programs

function(compile_idl target)
  set(folder ${CMAKE_BINARY_DIR}/generated)
  file(MAKE_DIRECTORY ${folder})
  target_include_directories(${target} SYSTEM PUBLIC ${folder})
  foreach(idl ${ARGN})
    get_filename_component(name ${idl} NAME_WE)
    set(out ${folder}/${name})
    set(flags -I ${WINE_IDL_DIR} ${WIDL_LIBRARY_FLAGS})
    set(widl ${WIDL} ${TARN_WIDL_TARGET} ${flags})
    add_custom_command(
      OUTPUT ${out}.tlb ${out}.other.tlb ${out}.h ${out}_i.c
      COMMAND ${widl} -t -o ${out}.tlb ${idl}
      COMMAND ${WIDL} ${TARN_WIDL_OTHER} ${flags} -t -o ${out}.other.tlb ${idl}
      COMMAND ${widl} -h -o ${out}.h ${idl}
      COMMAND ${widl} -u -o ${out}_i.c ${idl}
      DEPENDS ${idl}
      COMMENT "Type library ${name}.tlb"
      VERBATIM)
    target_sources(${target} PRIVATE ${out}.tlb ${out}.h ${out}_i.c)
    add_custom_target(${name}_typelib DEPENDS ${out}.tlb ${out}.h)
    add_dependencies(typelibs ${name}_typelib)
    set_property(GLOBAL APPEND PROPERTY TARN_TYPELIBS ${out}.tlb ${out}.other.tlb)
  endforeach()
endfunction()
