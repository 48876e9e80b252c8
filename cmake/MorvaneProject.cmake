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

# What one checkout has compiled serves every other beside it: paths are told relative to the build.
# A precompiled header counts as what its checksum beside it says, see morvane_precompile().
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    get_filename_component(beside "${CMAKE_SOURCE_DIR}" DIRECTORY)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${beside}"
        CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_PCH_EXTSUM=1
        "${CCACHE_PROGRAM}")
endif()

find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
    add_link_options(-fuse-ld=mold)
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

# Headers of Qt and the standard library take most of a compiler's time, so they are read once for
# all that use Qt's core, and once for all that use its widgets.
set(MORVANE_CORE_HEADERS
    <algorithm> <cmath> <functional> <memory> <optional>
    <QCoreApplication> <QDir> <QFileInfo> <QHash> <QJsonArray> <QJsonDocument> <QJsonObject>
    <QPointer> <QProcess> <QRegularExpression> <QSharedPointer> <QTimer> <QVariant> <QVector>)
set(MORVANE_WIDGET_HEADERS
    ${MORVANE_CORE_HEADERS}
    <QApplication> <QBoxLayout> <QDialog> <QLabel> <QLineEdit> <QListWidget> <QMouseEvent>
    <QPainter> <QPushButton> <QStackedWidget> <QTreeWidget>)

# morvane_precompile(NAME QT_MODULE header...): a target whose precompiled headers others use.
function(morvane_precompile name module)
    set(stub "${CMAKE_BINARY_DIR}/${name}.cpp")
    file(CONFIGURE OUTPUT "${stub}" CONTENT "")
    add_library(${name} OBJECT "${stub}")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_link_libraries(${name} PRIVATE ${module} morvane_strict)
    target_precompile_headers(${name} PRIVATE ${ARGN})
    # Equal contents can differ in their bytes; what they are made from tells ccache.
    string(SHA256 sum "${ARGN};${CMAKE_CXX_COMPILER_VERSION};${Qt5_VERSION};${MORVANE_SANITIZE}")
    file(CONFIGURE CONTENT "${sum}"
        OUTPUT "${CMAKE_BINARY_DIR}/CMakeFiles/${name}.dir/cmake_pch.hxx.gch.sum")
endfunction()

# morvane_use_precompiled(NAME LINK...): the precompiled headers that suit a target with these
# links, if any do. Rooms that bring widgets along are remembered.
function(morvane_use_precompiled name)
    get_property(widget_rooms GLOBAL PROPERTY MORVANE_WIDGET_ROOMS)
    set(core OFF)
    foreach(link IN LISTS ARGN)
        if(link STREQUAL "Qt5::Widgets" OR link IN_LIST widget_rooms)
            set_property(GLOBAL APPEND PROPERTY MORVANE_WIDGET_ROOMS ${name})
            target_precompile_headers(${name} REUSE_FROM morvane_widget_headers)
            return()
        elseif(link MATCHES "^Qt5::" OR NOT link MATCHES "::")
            set(core ON)
        endif()
    endforeach()
    if(core)
        target_precompile_headers(${name} REUSE_FROM morvane_core_headers)
    endif()
endfunction()

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
    morvane_use_precompiled(${name} ${ROOM_LINKS})
endfunction()

# morvane_test(NAME LABEL label SOURCES file... LINKS target... [TIMEOUT seconds]):
# one Qt Test program, run by ctest; those with the label "gui" on a display of their own.
function(morvane_test name)
    cmake_parse_arguments(T "" "LABEL;TIMEOUT" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${T_SOURCES})
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
    target_link_libraries(${name} PRIVATE ${T_LINKS} test_support Qt5::Test morvane_strict)
    morvane_use_precompiled(${name} ${T_LINKS} test_support)
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
