# SPDX-License-Identifier: MIT
# What all targets share: warnings, sanitizers, and arithmetic that is the same on every machine.

add_library(molvane_options INTERFACE)
target_compile_options(molvane_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
    # No fused multiply-add: results must be the same bits with every compiler and processor.
    -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Clang cannot tell the tables of the path filter, sized at run time, from an array.
    target_compile_options(molvane_options INTERFACE -Wvla)
endif()
target_compile_definitions(molvane_options INTERFACE QT_NO_CAST_TO_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
if(MOLVANE_SANITIZE)
    target_compile_options(molvane_options INTERFACE -fsanitize=${MOLVANE_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(molvane_options INTERFACE -fsanitize=${MOLVANE_SANITIZE})
    if(MOLVANE_SANITIZE MATCHES "undefined")
        target_compile_options(molvane_options INTERFACE -fno-sanitize-recover=undefined,float-cast-overflow)
    endif()
endif()
if(MOLVANE_COVERAGE)
    target_compile_options(molvane_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(molvane_options INTERFACE --coverage)
endif()
