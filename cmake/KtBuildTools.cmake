# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

# Makes the second build quick. A precompiled header changes with each build of it, which these settings allow for.
# They do not depend on the caller's environment: a command line that changed with it would compile everything again.
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        add_compile_options(-fpch-preprocess)
    endif()
endif()

# Links the many test programs in a tenth of the usual linker's time.
find_program(KT_MOLD mold)
if(KT_MOLD)
    add_link_options(-fuse-ld=mold)
endif()
