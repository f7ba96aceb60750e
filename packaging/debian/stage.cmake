# Run by cpack on what was installed, before the package is made of it: papers as Debian wants them.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(root "${CPACK_TEMPORARY_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}")
set(doc "${root}/share/doc/${CPACK_PACKAGE_NAME}")

# The licence stands in "copyright".
file(REMOVE "${doc}/LICENSE")
file(RENAME "${doc}/CHANGELOG.md" "${doc}/changelog")
configure_file("${CPACK_BURNWICK_DEBIAN_COPYRIGHT}" "${doc}/copyright" COPYONLY)
configure_file("${CMAKE_CURRENT_LIST_DIR}/changelog" "${doc}/changelog.Debian" COPYONLY)
file(CHMOD "${doc}/copyright" "${doc}/changelog" "${doc}/changelog.Debian"
  PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

file(GLOB pages "${root}/share/man/man1/*.1")
execute_process(
  COMMAND gzip -9 --no-name "${doc}/changelog" "${doc}/changelog.Debian" ${pages}
  COMMAND_ERROR_IS_FATAL ANY)
