# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

option(KT_PCH "Precompile Qt's headers; without it every source must include what it uses" ON)

# The headers that are compiled once. Each is a target of its own, so that all libraries and programs share it. The compiler
# accepts one only where the macros are defined that it was made with. So each links as little as its users do, and tests
# with windows have their own.
function(kt_make_precompiled_header name)
    if(NOT KT_PCH)
        return()
    endif()
    set(source ${CMAKE_BINARY_DIR}/pch/${name}.cpp)
    if(NOT EXISTS ${source})
        file(WRITE ${source} "")
    endif()
    add_library(kt-pch-${name} OBJECT EXCLUDE_FROM_ALL ${source})
    # In angle brackets, so that ccache finds the same text in every working copy.
    target_include_directories(kt-pch-${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/pch
        $<TARGET_PROPERTY:Qt5::Network,INTERFACE_INCLUDE_DIRECTORIES>)
    target_link_libraries(kt-pch-${name} PRIVATE ${ARGN})
    target_precompile_headers(kt-pch-${name} PRIVATE <${name}.h>)
endfunction()

# kt_precompile(TARGET [TESTS]): lets a target, whose links are known, use the headers that fit it.
function(kt_precompile target)
    if(NOT KT_PCH)
        return()
    endif()
    get_target_property(links ${target} LINK_LIBRARIES)
    kt_find_widgets(has_widgets ${links})
    if(ARGN AND has_widgets)
        set(name widgettests)
    elseif(ARGN)
        set(name tests)
    elseif(has_widgets)
        set(name widgets)
    else()
        set(name core)
    endif()
    target_precompile_headers(${target} REUSE_FROM kt-pch-${name})
endfunction()

# Whether these libraries, or those that they link, have windows.
function(kt_find_widgets result)
    set(${result} OFF PARENT_SCOPE)
    foreach(link ${ARGN})
        set(further)
        if(TARGET ${link})
            get_target_property(further ${link} INTERFACE_LINK_LIBRARIES)
        endif()
        if(link STREQUAL "Qt5::Widgets")
            set(${result} ON PARENT_SCOPE)
        elseif(further)
            kt_find_widgets(found ${further})
            if(found)
                set(${result} ON PARENT_SCOPE)
            endif()
        endif()
    endforeach()
endfunction()
