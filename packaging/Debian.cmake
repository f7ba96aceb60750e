# `cpack -G DEB --config build/release/CPackConfig.cmake` makes the Debian package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME burnwick)
set(CPACK_PACKAGE_VERSION "${BURNWICK_BUILD}")
set(CPACK_PACKAGE_VENDOR "${BURNWICK_VENDOR}")
set(CPACK_PACKAGE_CONTACT "${BURNWICK_VENDOR} <${BURNWICK_EMAIL}>")
set(CPACK_PACKAGE_HOMEPAGE_URL "${BURNWICK_WEB_SITE}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${BURNWICK_SUMMARY}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}")
set(CPACK_STRIP_FILES ON)
# Whatever the umask of whoever makes the package.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
file(READ debian/description CPACK_DEBIAN_PACKAGE_DESCRIPTION)
string(STRIP "${CPACK_DEBIAN_PACKAGE_DESCRIPTION}" CPACK_DEBIAN_PACKAGE_DESCRIPTION)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# libsystemd0 is loaded when it is there: it keeps the computer awake during a run.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "desktop-file-utils, hicolor-icon-theme, libsystemd0, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "bash-completion, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# "copyright" is made of LICENSE, a blank before each line and a dot in the empty ones.
file(READ "${PROJECT_SOURCE_DIR}/LICENSE" license)
string(REGEX REPLACE "^.*\n\n(Permission)" "\\1" license "${license}")
string(STRIP "${license}" license)
string(REPLACE "\n\n" "\n.\n" license "${license}")
string(REPLACE "\n" "\n " license " ${license}")
string(REGEX REPLACE "^Copyright © " "" copyright "${BURNWICK_COPYRIGHT}")
set(BURNWICK_DEBIAN_COPYRIGHT "${CMAKE_CURRENT_BINARY_DIR}/debian-copyright")
configure_file(debian/copyright.in "${BURNWICK_DEBIAN_COPYRIGHT}" @ONLY)
set(CPACK_BURNWICK_DEBIAN_COPYRIGHT "${BURNWICK_DEBIAN_COPYRIGHT}")
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_SOURCE_DIR}/debian/stage.cmake")

include(CPack)
