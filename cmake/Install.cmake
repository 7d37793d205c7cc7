# SPDX-License-Identifier: MIT
# What a user's machine gets, at the places where desktops look for it; the program needs none of it to
# run. The desktop file has the program's name, by which desktops find the entry of a window; the id of
# the application is org.molvane.Molvane.
include(GNUInstallDirs)

set(packaging ${CMAKE_CURRENT_SOURCE_DIR}/packaging)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${packaging}/molvane.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/org.molvane.Molvane.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${packaging}/molvane.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(DIRECTORY ${packaging}/icons/hicolor/ DESTINATION ${icons})
install(FILES resources/logos/logo-kvar-gross.svg
    DESTINATION ${icons}/scalable/apps RENAME org.molvane.Molvane.svg)
install(FILES ${packaging}/icons/application-x-molvane-project+json.svg DESTINATION ${icons}/scalable/mimetypes)
install(FILES ${packaging}/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

# molvane_packed(FILE NAME install-arguments...): installs a text as NAME, packed by gzip, without a
# time stamp, so that the same sources give the same bytes.
add_custom_target(molvane_documents ALL)
function(molvane_packed file name)
    set(packed ${CMAKE_CURRENT_BINARY_DIR}/packed/${name})
    add_custom_command(OUTPUT ${packed} DEPENDS ${file} VERBATIM
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/packed
        COMMAND gzip -9nc ${file} > ${packed})
    set_property(TARGET molvane_documents APPEND PROPERTY SOURCES ${packed})
    install(FILES ${packed} ${ARGN})
endfunction()
molvane_packed(${packaging}/molvane.1 molvane.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
molvane_packed(${CMAKE_CURRENT_SOURCE_DIR}/CHANGELOG.md changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
# Of use only within a Debian package.
molvane_packed(${packaging}/changelog changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT debian EXCLUDE_FROM_ALL)
