# The Debian packages: `./dev package`, or `cpack -G DEB` in a release build.
set(CPACK_PACKAGE_VENDOR "Quillon developers")
set(CPACK_PACKAGE_CONTACT "Quillon developers <quillon@example.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://quillon.example/)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL cli data)
if(QUILLON_DESKTOP)
  list(APPEND CPACK_COMPONENTS_ALL desktop)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_CLI_DEPENDS data)
set(CPACK_COMPONENT_DESKTOP_DEPENDS data)

set(CPACK_DEBIAN_CLI_PACKAGE_NAME quillon-cli)
set(CPACK_DEBIAN_CLI_PACKAGE_SECTION otherosfs)
set(CPACK_COMPONENT_CLI_DESCRIPTION "pocket computer simulator for the terminal
Quillon simulates a pocket computer that runs a line-numbered BASIC on a
one-line display of twelve characters.

This package has the program for terminals and scripts. It needs no
graphical desktop.")

set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME quillon)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_SECTION otherosfs)
# The icons are read by a plug-in, which no library tells of.
set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS libqt6svg6)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS "xdg-utils, qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_SUGGESTS "quillon-cli")
set(CPACK_COMPONENT_DESKTOP_DESCRIPTION "pocket computer simulator with a line-numbered BASIC
Quillon simulates a pocket computer that runs a line-numbered BASIC on a
one-line display of twelve characters, exact to the tick, as slow or as
fast as you like. Listings are plain text files.

This package has the program with a window: display, soft keyboard, trace
windows and sound.")

set(CPACK_DEBIAN_DATA_PACKAGE_NAME quillon-data)
set(CPACK_DEBIAN_DATA_PACKAGE_SECTION otherosfs)
set(CPACK_DEBIAN_DATA_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DATA_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_DATA_DESCRIPTION "pocket computer simulator - messages, examples and manual
Quillon simulates a pocket computer that runs a line-numbered BASIC on a
one-line display of twelve characters.

This package has what its programs share: the texts of their messages in
English and Japanese, example listings, and the manual.")

# What Debian wants beside the installed files is added to each package before it is closed.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian_files.cmake)
set(CPACK_QUILLON_SOURCE ${PROJECT_SOURCE_DIR})
set(CPACK_QUILLON_RELEASE_DATE ${QUILLON_RELEASE_DATE})
foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_FILE_NAME DEB-DEFAULT)
  set(CPACK_QUILLON_PACKAGE_${component} ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
endforeach()
include(CPack)
