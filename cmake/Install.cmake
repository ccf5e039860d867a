# What other programs need: headers, libraries, a CMake package and pkg-config files. Nothing in the
# tree names the place where it stands, so it may be moved.

include(CMakePackageConfigHelpers)

set(zr_installed ZRCodecParserUtils ZRCodecParserUtils_static)
install(DIRECTORY include/zrcodecparser DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development)

# A device's own platform is the device's to install, and to tell programs about.
if(NOT ZR_PLATFORM_DIR STREQUAL "${PROJECT_SOURCE_DIR}/platform")
  install(TARGETS ${zr_installed})
  return()
endif()

install(DIRECTORY platform/include/platform DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development)
install(TARGETS ${zr_installed} zrplatform EXPORT ZRCodecParserUtils
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
set_target_properties(ZRCodecParserUtils PROPERTIES INSTALL_RPATH "$ORIGIN")

set(package "${CMAKE_INSTALL_LIBDIR}/cmake/ZRCodecParserUtils")
install(EXPORT ZRCodecParserUtils
  NAMESPACE ZRCodecParserUtils::
  FILE ZRCodecParserUtilsConfig.cmake
  DESTINATION "${package}"
  COMPONENT development)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ZRCodecParserUtilsConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/ZRCodecParserUtilsConfigVersion.cmake"
  DESTINATION "${package}"
  COMPONENT development)

# From the file to the top of the tree.
file(RELATIVE_PATH up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" up "${up}")
foreach(kind IN ITEMS "" _static)
  configure_file(cmake/zrcodecparserutils.pc.in "zrcodecparserutils${kind}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/zrcodecparserutils${kind}.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT development)
endforeach()
