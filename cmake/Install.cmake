# What other programs need: headers, libraries, a CMake package and a pkg-config file. Nothing in
# the tree names the place where it stands, so it may be moved.

include(CMakePackageConfigHelpers)

set(zr_installed ZRCodecParserUtils ZRCodecParserUtils_static)
install(DIRECTORY include/zrcodecparser DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# A device's own platform is the device's to install, and to tell programs about.
if(NOT ZR_PLATFORM_DIR STREQUAL "${PROJECT_SOURCE_DIR}/platform")
  install(TARGETS ${zr_installed})
  return()
endif()

install(DIRECTORY platform/include/platform DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS ${zr_installed} zrplatform EXPORT ZRCodecParserUtils)
set_target_properties(ZRCodecParserUtils PROPERTIES INSTALL_RPATH "$ORIGIN")

set(package "${CMAKE_INSTALL_LIBDIR}/cmake/ZRCodecParserUtils")
install(EXPORT ZRCodecParserUtils
  NAMESPACE ZRCodecParserUtils::
  FILE ZRCodecParserUtilsConfig.cmake
  DESTINATION "${package}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ZRCodecParserUtilsConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/ZRCodecParserUtilsConfigVersion.cmake"
  DESTINATION "${package}")

# From the file to the top of the tree.
file(RELATIVE_PATH up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" up "${up}")
configure_file(cmake/zrcodecparserutils.pc.in zrcodecparserutils.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/zrcodecparserutils.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
