# Compiler settings that every target of the tree shares.
add_library(kestrune_settings INTERFACE)
target_compile_options(kestrune_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
    -Werror)
target_compile_definitions(kestrune_settings INTERFACE QT_NO_FOREACH QT_NO_CAST_TO_ASCII)
if(KESTRUNE_SANITIZE)
    target_compile_options(kestrune_settings INTERFACE
        -fsanitize=${KESTRUNE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    target_link_options(kestrune_settings INTERFACE -fsanitize=${KESTRUNE_SANITIZE})
endif()

# kestrune_library(NAME SOURCES... [LINK targets...])
# A static library of the tree. Its headers are reached from src/, as "folder/header.h".
function(kestrune_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE kestrune_settings)
endfunction()

# kestrune_test(NAME SOURCES... [LINK targets...] [LABELS labels...])
# A GoogleTest executable, known to ctest as one test. What every test includes is compiled once for it, which
# halves the time its build takes.
function(kestrune_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${ARG_LINK} GTest::gmock kestrune_settings)
    # A test need not be fast, but it is compiled often.
    target_compile_options(${name} PRIVATE $<$<CONFIG:RelWithDebInfo>:-O1;-g1>)
    target_precompile_headers(${name} PRIVATE <gmock/gmock.h> <gtest/gtest.h> <QObject> <QStringList> <QTemporaryDir>)
    if(Qt6::Test IN_LIST ARG_LINK)
        target_precompile_headers(${name} PRIVATE <QtTest/QtTest> <QtWidgets/QApplication> <QtWidgets/QMenu>)
    endif()
    add_test(NAME ${name} COMMAND ${name})
    if(ARG_LABELS)
        set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABELS}")
    endif()
endfunction()
