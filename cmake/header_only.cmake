# header_only(TARGET NAME...): makes an interface library of header-only packages.
#
# The cross compiler must never see /usr/include as a whole, so each NAME (a folder or file of
# /usr/include) is linked into one folder of the build tree, and only that folder is searched.
function(header_only target)
  set(folder ${CMAKE_BINARY_DIR}/headers)
  file(MAKE_DIRECTORY ${folder})
  foreach(name ${ARGN})
    if(NOT EXISTS /usr/include/${name})
      message(FATAL_ERROR "/usr/include/${name} is missing: run scripts/setup.sh")
    endif()
    file(CREATE_LINK /usr/include/${name} ${folder}/${name} SYMBOLIC)
  endforeach()
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${folder})
endfunction()
