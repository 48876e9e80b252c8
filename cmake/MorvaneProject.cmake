# SPDX-License-Identifier: MIT
# What every target of the project shares: language level, warnings, output folders, and one
# function a kind of target.

include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs lie in one folder, with module/ beside them, as when they are installed.
set(MORVANE_PROGRAM_DIR "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${MORVANE_PROGRAM_DIR}")
set(MORVANE_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/morvane")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

set(MORVANE_SANITIZE "" CACHE STRING "Sanitizers to build with, as address,undefined or thread")
if(MORVANE_SANITIZE)
    add_compile_options(-fsanitize=${MORVANE_SANITIZE} -fno-sanitize-recover=undefined
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${MORVANE_SANITIZE})
endif()

# Warnings and Qt's strictness, linked by every target of our own.
add_library(morvane_strict INTERFACE)
target_compile_options(morvane_strict INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
    -Wformat=2 -Wimplicit-fallthrough -Wsuggest-override -Werror)
target_compile_definitions(morvane_strict INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH
    QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

# morvane_room(NAME SOURCES file... [LINKS target...] [FILES prefix]): one static library of the
# source tree. LINKS names exactly the rooms and libraries that the room uses. FILES is the prefix
# of its files where it shares a folder with another room.
function(morvane_room name)
    cmake_parse_arguments(ROOM "" "FILES" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    file(RELATIVE_PATH folder "${CMAKE_SOURCE_DIR}/src" "${CMAKE_CURRENT_SOURCE_DIR}")
    list(JOIN ROOM_LINKS " " links)
    set_property(GLOBAL APPEND PROPERTY MORVANE_ROOMS "${name} ${folder}/${ROOM_FILES} ${links}")
    add_library(${name} STATIC ${ROOM_SOURCES})
    target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    target_link_libraries(${name} PUBLIC ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS} morvane_strict)
endfunction()

# morvane_test(NAME LABEL label SOURCES file... LINKS target... [TIMEOUT seconds]):
# one Qt Test program, run by ctest; those with the label "gui" on a display of their own.
function(morvane_test name)
    cmake_parse_arguments(T "" "LABEL;TIMEOUT" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${T_SOURCES})
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
    target_link_libraries(${name} PRIVATE ${T_LINKS} test_support Qt5::Test morvane_strict)
    if(T_LABEL STREQUAL "gui")
        add_test(NAME ${name} COMMAND "${CMAKE_SOURCE_DIR}/scripts/with-display" $<TARGET_FILE:${name}>)
    else()
        add_test(NAME ${name} COMMAND ${name})
    endif()
    if(NOT T_TIMEOUT)
        set(T_TIMEOUT 120)
    endif()
    set_tests_properties(${name} PROPERTIES LABELS "${T_LABEL}" TIMEOUT ${T_TIMEOUT})
endfunction()
