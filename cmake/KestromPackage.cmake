# The portable Windows package: a zip whose one folder holds the two programs,
# the help pages and a read-me; nothing is installed on the user's machine.
# `cmake --build --preset windows --target package` makes it in the build folder.

# The version the programs show is the one the package is named after: it is
# read from the source that compiles it, and a change there reconfigures.
set(kst_product_source ${CMAKE_SOURCE_DIR}/app/product.cpp)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${kst_product_source})
file(STRINGS ${kst_product_source} kst_version_line REGEX "kProductVersion = \"[^\"]+\"")
if(NOT kst_version_line MATCHES "kProductVersion = \"([0-9]+\\.[0-9]+)\"")
  message(FATAL_ERROR "No kProductVersion \"MAJOR.MINOR\" in ${kst_product_source}")
endif()
set(KST_PRODUCT_VERSION ${CMAKE_MATCH_1})

install(TARGETS kestrom kst RUNTIME DESTINATION .)
# The help pages may not be written yet: an absent folder installs nothing.
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/help/ DESTINATION help OPTIONAL)
install(FILES ${CMAKE_SOURCE_DIR}/docs/package/readme.txt DESTINATION .)

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(kst_package_system win64)
else()
  set(kst_package_system win32)
endif()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME ${PROJECT_NAME})
set(CPACK_PACKAGE_VENDOR ${PROJECT_NAME})
set(CPACK_PACKAGE_VERSION ${KST_PRODUCT_VERSION})
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${KST_PRODUCT_VERSION}-${kst_package_system})
# The zip's top level is one folder named like the file, so that unpacking it
# anywhere gives one folder to copy or delete.
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
# Users get the programs without their symbol tables.
set(CPACK_STRIP_FILES ON)
include(CPack)
