# The version of the product, from resources/version.h, the one place where it is written.
set(header ${CMAKE_CURRENT_LIST_DIR}/../resources/version.h)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
file(STRINGS ${header} numbers REGEX "define TARN_(MAJOR|MINOR|REVISION) ")
list(TRANSFORM numbers REPLACE "[^0-9]" "")
list(JOIN numbers . TARN_VERSION)
