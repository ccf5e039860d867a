# Run by cpack when the packages are made: takes the maintainer scripts out of the library's.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  if(package MATCHES "/lib[^/]*[0-9]_[^/]*$")
    set(tree "${CPACK_TEMPORARY_DIRECTORY}-rebuilt")
    file(REMOVE_RECURSE "${tree}")
    execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${tree}" COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE "${tree}/DEBIAN/postinst" "${tree}/DEBIAN/postrm")
    execute_process(COMMAND dpkg-deb --root-owner-group --build "${tree}" "${package}"
      OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
