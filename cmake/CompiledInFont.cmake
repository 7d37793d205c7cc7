# SPDX-License-Identifier: MIT
# Open Sans becomes part of the program, so that the window looks the same everywhere. The files are
# taken from the system's font package at build time; the sources hold no font.

set(fontDirs /usr/share/fonts/truetype/open-sans /usr/local/share/fonts/truetype/open-sans)
foreach(weight Regular Bold)
    find_file(MOLVANE_FONT_${weight} OpenSans-${weight}.ttf PATHS ${fontDirs} NO_DEFAULT_PATH
        DOC "Open Sans ${weight}, compiled into the program")
    if(NOT MOLVANE_FONT_${weight})
        message(FATAL_ERROR "OpenSans-${weight}.ttf is missing: install the package fonts-open-sans")
    endif()
endforeach()

# Its base name is the name in Q_INIT_RESOURCE. Written only when it changes.
set(MOLVANE_FONT_QRC ${CMAKE_CURRENT_BINARY_DIR}/molvane_fonts.qrc)
file(CONFIGURE OUTPUT ${MOLVANE_FONT_QRC} @ONLY CONTENT [[
<RCC version="1.0">
    <qresource prefix="/fonts">
        <file alias="OpenSans-Regular.ttf">@MOLVANE_FONT_Regular@</file>
        <file alias="OpenSans-Bold.ttf">@MOLVANE_FONT_Bold@</file>
    </qresource>
</RCC>
]])
