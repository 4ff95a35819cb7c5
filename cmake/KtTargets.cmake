# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

# kt_library(NAME folder [FORMS] SOURCES ... LINKS ... [PRIVATE_LINKS ...])
#
# One static library for one source folder. Its headers are included as "folder/header.h", and only by those who
# link it: each library exports an include directory that holds nothing but a link to its own folder, so that an
# include against the direction of the arrows in docs/architecture.md does not compile. FORMS: it uses forms of src/forms.
function(kt_library)
    cmake_parse_arguments(ARG "FORMS" "NAME" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    set(target kt-${ARG_NAME})
    set(include_dir ${CMAKE_BINARY_DIR}/include/${ARG_NAME})
    file(MAKE_DIRECTORY ${include_dir})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_dir}/${ARG_NAME} SYMBOLIC)
    add_library(${target} STATIC ${ARG_SOURCES})
    target_include_directories(${target} PUBLIC ${include_dir})
    target_link_libraries(${target} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    if(ARG_FORMS)
        set_target_properties(${target} PROPERTIES AUTOUIC ON AUTOUIC_SEARCH_PATHS ${PROJECT_SOURCE_DIR}/src/forms)
    endif()
    kt_precompile(${target})
endfunction()

# kt_program(TARGET SOURCES ... LINKS ...)
#
# One program of build/*/bin.
function(kt_program target)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${target} ${ARG_SOURCES})
    target_link_libraries(${target} PRIVATE ${ARG_LINKS})
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    kt_precompile(${target})
endfunction()

# kt_test(NAME name [NAMESPACE] SOURCES ... LINKS ... [ENVIRONMENT ...] [TIMEOUT seconds])
#
# One Qt Test program. It runs off screen and under the leak suppressions of the libraries that we do not own.
# NAMESPACE runs it in a network namespace of its own; where none can be had the test is reported as skipped.
function(kt_test)
    cmake_parse_arguments(ARG "NAMESPACE" "NAME;TIMEOUT" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
    kt_test_program(test_${ARG_NAME} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS})
    kt_add_test(${ARG_NAME} "${ARG_NAMESPACE}" "${ARG_TIMEOUT}" "${ARG_ENVIRONMENT}" test_${ARG_NAME})
endfunction()

# kt_tests(NAME folder [TESTS class ...] [NAMESPACE class ...] [SOURCES ...] LINKS ... [ENVIRONMENT ...] [TIMEOUT seconds])
#
# The Qt Test classes of one folder in one program, which is quicker to build. Each class is a test of its own,
# "folder_classname", and runs in a process of its own; "mergetest.cpp" holds the class that TESTS or NAMESPACE names
# "merge", and ends with QTEST_MAIN or one of its sisters as usual. SOURCES are the files that they share.
function(kt_tests)
    cmake_parse_arguments(ARG "" "NAME;TIMEOUT" "TESTS;NAMESPACE;SOURCES;LINKS;ENVIRONMENT" ${ARGN})
    set(target test_${ARG_NAME})
    set(sources ${ARG_SOURCES})
    foreach(class ${ARG_TESTS} ${ARG_NAMESPACE})
        list(APPEND sources ${class}test.cpp)
    endforeach()
    kt_test_program(${target} SOURCES ${sources} LINKS ${ARG_LINKS})
    foreach(class ${ARG_TESTS})
        kt_add_test(${ARG_NAME}_${class} OFF "${ARG_TIMEOUT}" "${ARG_ENVIRONMENT}" ${target} ${class}test)
    endforeach()
    foreach(class ${ARG_NAMESPACE})
        kt_add_test(${ARG_NAME}_${class} ON "${ARG_TIMEOUT}" "${ARG_ENVIRONMENT}" ${target} ${class}test)
    endforeach()
endfunction()

function(kt_test_program target)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${target} ${ARG_SOURCES})
    target_link_libraries(${target} PRIVATE ${ARG_LINKS} kt-test-group)
    set_target_properties(${target} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    kt_precompile(${target} TESTS)
    if(NOT KT_PCH)
        target_compile_options(${target} PRIVATE -include testgroup.h)
    endif()
endfunction()

function(kt_add_test name namespace timeout environment target)
    set(prefix)
    if(namespace)
        set(prefix ${PROJECT_SOURCE_DIR}/lab/in-namespace)
    endif()
    if(NOT timeout)
        set(timeout 120)
    endif()
    add_test(NAME ${name} COMMAND ${prefix} $<TARGET_FILE:${target}> ${ARGN})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${timeout}
        SKIP_RETURN_CODE 77
        ENVIRONMENT "${KT_TEST_ENVIRONMENT};${environment}")
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

function(kt_tls_tests)
    set_property(TEST ${ARGN} APPEND PROPERTY ENVIRONMENT ${KT_TLS_ENVIRONMENT})
endfunction()
