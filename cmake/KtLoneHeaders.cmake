# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

# Compiles each header that has no source file of its own name, alone. The others compile alone because their source
# includes them first, see scripts/check-headers. Without precompiled headers, which would hide a missing include.
function(kt_compile_lone_headers)
    cmake_parse_arguments(ARG "" "" "INCLUDES;LINKS" ${ARGN})
    if(KT_PCH OR KT_FUZZ)
        return()
    endif()
    execute_process(COMMAND ${PROJECT_SOURCE_DIR}/scripts/check-headers --lone
        OUTPUT_VARIABLE headers OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE "\n" ";" headers "${headers}")
    foreach(header ${headers})
        string(MAKE_C_IDENTIFIER ${header} name)
        set(source ${CMAKE_BINARY_DIR}/lone-headers/${name}.cpp)
        file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${PROJECT_SOURCE_DIR}/${header}\"\n")
        list(APPEND sources ${source})
    endforeach()
    add_library(kt-lone-headers OBJECT ${sources})
    target_include_directories(kt-lone-headers PRIVATE ${ARG_INCLUDES})
    target_link_libraries(kt-lone-headers PRIVATE ${ARG_LINKS})
endfunction()
