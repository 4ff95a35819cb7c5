# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

# kt_library(NAME folder SOURCES ... LINKS ...)
#
# One static library for one source folder. Its headers are included as "folder/header.h", and only by those who
# link it: each library exports an include directory that holds nothing but a link to its own folder, so that an
# include against the direction of the arrows in docs/architecture.md does not compile.
function(kt_library)
    cmake_parse_arguments(ARG "" "NAME" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    set(target kt-${ARG_NAME})
    set(include_dir ${CMAKE_BINARY_DIR}/include/${ARG_NAME})
    file(MAKE_DIRECTORY ${include_dir})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_dir}/${ARG_NAME} SYMBOLIC)
    add_library(${target} STATIC ${ARG_SOURCES})
    target_include_directories(${target} PUBLIC ${include_dir})
    target_link_libraries(${target} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
    set_target_properties(${target} PROPERTIES AUTOUIC_SEARCH_PATHS ${CMAKE_SOURCE_DIR}/src/forms)
endfunction()

# kt_test(NAME name [NAMESPACE] SOURCES ... LINKS ...)
#
# One Qt Test program. It runs off screen and under the leak suppressions of the libraries that we do not own.
# NAMESPACE runs it in a network namespace of its own; where none can be had the test is reported as skipped.
function(kt_test)
    cmake_parse_arguments(ARG "NAMESPACE" "NAME;TIMEOUT" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
    set(target test_${ARG_NAME})
    add_executable(${target} ${ARG_SOURCES})
    target_link_libraries(${target} PRIVATE ${ARG_LINKS} Qt5::Test)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    if(ARG_NAMESPACE)
        add_test(NAME ${ARG_NAME} COMMAND ${CMAKE_SOURCE_DIR}/lab/in-namespace $<TARGET_FILE:${target}>)
    else()
        add_test(NAME ${ARG_NAME} COMMAND ${target})
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    set_tests_properties(${ARG_NAME} PROPERTIES
        TIMEOUT ${ARG_TIMEOUT}
        SKIP_RETURN_CODE 77
        ENVIRONMENT "${KT_TEST_ENVIRONMENT};${ARG_ENVIRONMENT}")
endfunction()

set(KT_TEST_ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen"
    "LC_ALL=C.UTF-8"
    "QT_LOGGING_RULES=kt.*.debug=true"
    "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/leaks.supp:print_suppressions=0"
    "ASAN_OPTIONS=detect_leaks=1"
    "UBSAN_OPTIONS=print_stacktrace=1"
    "KT_BIN_DIR=${CMAKE_BINARY_DIR}/bin"
    "LD_LIBRARY_PATH=${CMAKE_BINARY_DIR}/bin/stand-ins"
    "KT_SOURCE_DIR=${CMAKE_SOURCE_DIR}")

# For tests with TLS connections, see the file named there.
set(KT_TLS_ENVIRONMENT
    "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/leaks-tls.supp:print_suppressions=0")
