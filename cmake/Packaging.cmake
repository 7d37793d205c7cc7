# SPDX-License-Identifier: MIT
# The Debian package, made by cpack. scripts/package calls it with Debian's own compiler flags.

# Three files tell the version to three kinds of readers. The revision, as in 0molvane1, counts packages of
# one version and sorts before any of Debian's own.
file(STRINGS packaging/changelog packageVersion LIMIT_COUNT 1)
file(STRINGS packaging/org.molvane.Molvane.metainfo.xml release LIMIT_COUNT 1 REGEX "<release ")
if(NOT packageVersion MATCHES "^molvane \\(${PROJECT_VERSION}-([^)]+)\\)")
    message(FATAL_ERROR "packaging/changelog starts with another version than ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_1})
if(NOT release MATCHES " version=\"${PROJECT_VERSION}\"")
    message(FATAL_ERROR "The metainfo under packaging/ starts with another version than ${PROJECT_VERSION}")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME molvane)
set(CPACK_PACKAGE_CONTACT "The Molvane developers <developers@molvane.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop program that steadies shaky videos")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Molvane steadies one shaky video at a time. It measures the camera's motion
once and stores it; from then on every change of a filter recomputes only one
number per frame, so it is judged at once, without a second pass.
.
Graphs show the path of the camera and the smoothed path of each axis. Five
kinds of filter, sections to leave out and paths drawn by hand shape it; a
player shows the result before it is exported with crop, rotation and
rescaling. Exported videos have no sound.")
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# One package of all that is installed, and what only Debian reads.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENTS_ALL Unspecified debian)
include(CPack)
