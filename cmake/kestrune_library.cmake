# Compiler settings that every target of the tree shares.
add_library(kestrune_settings INTERFACE)
target_compile_options(kestrune_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
    -Werror)
# _REENTRANT comes with some libraries only, and a precompiled header serves none or all.
target_compile_definitions(kestrune_settings INTERFACE QT_NO_FOREACH QT_NO_CAST_TO_ASCII _REENTRANT)
if(KESTRUNE_SANITIZE)
    target_compile_options(kestrune_settings INTERFACE
        -fsanitize=${KESTRUNE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    target_link_options(kestrune_settings INTERFACE -fsanitize=${KESTRUNE_SANITIZE})
endif()
if(KESTRUNE_FUZZ)
    # The code of the tree tells the fuzzer which ways it took.
    target_compile_options(kestrune_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# What nearly every file includes is compiled once for all of the tree: that halves the time of a build. A file still
# includes what it uses; the static analysis reads it without these.
set(precompiledCore
    <algorithm> <array> <cmath> <functional> <limits> <memory> <optional> <vector>
    <QByteArray> <QDir> <QFile> <QFileInfo> <QHash> <QList> <QObject> <QString> <QStringList> <QTimer> <QVariant>)
set(precompiledWidgets
    <QAbstractButton> <QApplication> <QComboBox> <QKeyEvent> <QLabel> <QLineEdit> <QMenu> <QMouseEvent> <QPainter>
    <QPainterPath> <QWidget>)
set(precompiledTests <QTemporaryDir> <gmock/gmock.h> <gtest/gtest.h>)

# kestrune_precompiled(NAME HEADERS headers... LINK targets... [OPTIONS compiler options...])
# Something for other targets to take their precompiled headers from, if they are compiled with the same options.
function(kestrune_precompiled name)
    cmake_parse_arguments(ARG "" "" "HEADERS;LINK;OPTIONS" ${ARGN})
    add_library(${name} OBJECT ${CMAKE_SOURCE_DIR}/cmake/precompiled.cpp)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_compile_options(${name} PRIVATE ${ARG_OPTIONS})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} kestrune_settings)
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

kestrune_precompiled(kestrune_precompiled_core HEADERS ${precompiledCore} LINK Qt6::Core)
kestrune_precompiled(kestrune_precompiled_ui
    HEADERS ${precompiledCore} ${precompiledWidgets}
    LINK Qt6::Widgets)

# kestrune_library(NAME SOURCES... [LINK targets...])
# A static library of the tree. Its headers are reached from src/, as "folder/header.h". One whose name ends in _ui
# holds windows.
function(kestrune_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE kestrune_settings)
    if(name MATCHES "_ui$")
        target_precompile_headers(${name} REUSE_FROM kestrune_precompiled_ui)
    else()
        target_precompile_headers(${name} REUSE_FROM kestrune_precompiled_core)
    endif()
endfunction()

# A test need not be fast, but it is compiled often. The checks for undefined behaviour, which take the compiler longest,
# are for what it tests.
set(testOptions -O0 $<$<CONFIG:RelWithDebInfo>:-g1>)
if(KESTRUNE_SANITIZE MATCHES undefined)
    list(APPEND testOptions -fno-sanitize=undefined)
endif()
if(KESTRUNE_TESTS)
    find_package(GTest REQUIRED)
    kestrune_precompiled(kestrune_precompiled_test
        HEADERS ${precompiledTests} ${precompiledCore}
        LINK Qt6::Core GTest::gmock
        OPTIONS ${testOptions})
    kestrune_precompiled(kestrune_precompiled_window_test
        HEADERS ${precompiledTests} ${precompiledCore} ${precompiledWidgets}
        LINK Qt6::Widgets GTest::gmock
        OPTIONS ${testOptions})
endif()

# kestrune_test(NAME [ON_SCREEN] SOURCES... [LINK targets...] [LABELS labels...])
# A GoogleTest executable, known to ctest as one test. With ON_SCREEN it runs on an X server of its own.
function(kestrune_test name)
    cmake_parse_arguments(ARG "ON_SCREEN" "" "SOURCES;LINK;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${ARG_LINK} GTest::gmock kestrune_settings)
    target_compile_options(${name} PRIVATE ${testOptions})
    if(Qt6::Test IN_LIST ARG_LINK)
        target_precompile_headers(${name} REUSE_FROM kestrune_precompiled_window_test)
    else()
        target_precompile_headers(${name} REUSE_FROM kestrune_precompiled_test)
    endif()
    if(ARG_ON_SCREEN)
        add_test(NAME ${name} COMMAND ${CMAKE_SOURCE_DIR}/tools/private_screen.sh $<TARGET_FILE:${name}>)
    else()
        add_test(NAME ${name} COMMAND ${name})
    endif()
    if(ARG_LABELS)
        set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS}")
    endif()
endfunction()

# kestrune_threads_only(NAME FILTER)
# Under the thread sanitizer only those cases of a test are run, in GoogleTest's way: the others use one thread, and take
# ten times as long.
function(kestrune_threads_only name filter)
    if(KESTRUNE_SANITIZE MATCHES thread)
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "GTEST_FILTER=${filter}")
    endif()
endfunction()
