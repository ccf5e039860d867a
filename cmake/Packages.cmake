# Debian packages of what is installed: the library, what is needed to build against it, and the tool.

if(NOT ZR_BUILD_TOOLS OR NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  message(FATAL_ERROR "ZR_PACKAGES needs ZR_BUILD_TOOLS and a CMAKE_INSTALL_PREFIX of /usr")
endif()

set(version "${PROJECT_VERSION}-1")
set(ZR_PACKAGE_CONTACT "ZRCodecParserUtils maintainers <maintainers@zrcodecparserutils.invalid>"
    CACHE STRING "Who answers for the packages")

# Everything in them is as old as the release.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(changelog ${Python3_EXECUTABLE} "${PROJECT_SOURCE_DIR}/packaging/changelog"
  "${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${version}" "${ZR_PACKAGE_CONTACT}")
execute_process(COMMAND ${changelog} --time OUTPUT_VARIABLE ZR_RELEASE_TIME
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${changelog} "${PROJECT_BINARY_DIR}/changelog.Debian.gz"
  COMMAND_ERROR_IS_FATAL ANY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  CHANGELOG.md packaging/changelog)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zrcodecparserutils)
set(CPACK_PACKAGE_CONTACT "${ZR_PACKAGE_CONTACT}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library development zrinspect)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE zrcodecparserutils)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}" "${PROJECT_BINARY_DIR}/platform")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libzrcodecparserutils${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "description of media tracks to players and decoders
Says for each track of a media file under which MIME type a mobile device
plays it, or that it does not, and stores codec data in the form in which
decoders take them. Reads ID3 tags and Vorbis comments, converts PCM samples.

This package holds the shared library and a stand-in of the device's platform
for desktops.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzrcodecparserutils-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "description of media tracks to players and decoders - development
Says for each track of a media file under which MIME type a mobile device
plays it, or that it does not, and stores codec data in the form in which
decoders take them. Reads ID3 tags and Vorbis comments, converts PCM samples.

This package holds the headers, the static library, a CMake package and
pkg-config files.")

set(CPACK_DEBIAN_ZRINSPECT_PACKAGE_NAME zrinspect)
set(CPACK_DEBIAN_ZRINSPECT_PACKAGE_SECTION video)
set(CPACK_DEBIAN_ZRINSPECT_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ZRINSPECT_PACKAGE_SUGGESTS ffmpeg)
set(CPACK_COMPONENT_ZRINSPECT_DEPENDS library)
set(CPACK_COMPONENT_ZRINSPECT_DESCRIPTION "whether a media file plays on a mobile device, and what to change
Opens any media file on a desktop and shows what a device would make of it:
under which MIME type each track goes to which decoder, its codec data, its
tags, and why a track does not play. Proposes the smallest change that makes
it play, as an ffmpeg command, and judges for any device whose codec list is
at hand.")

# What lies in every package's folder of documents.
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" upper)
  set(package "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  configure_file(packaging/lintian-overrides.in "lintian/${package}" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/lintian/${package}"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" COMPONENT ${component})
  install(FILES packaging/copyright "${PROJECT_BINARY_DIR}/changelog.Debian.gz"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}" COMPONENT ${component})
endforeach()
install(FILES docs/collections.md docs/devices.md docs/json.md docs/zrinspect.schema.json
  DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/zrinspect" COMPONENT zrinspect)

# cpack runs ldconfig in scripts of its own, for which Debian has the trigger.
set(CPACK_POST_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/drop-scripts.cmake")
include(CPack)
