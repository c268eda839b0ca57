# Rebuilds are quicker with ccache where it is installed.
find_program(TAVO_CCACHE ccache)
if(TAVO_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${TAVO_CCACHE})
endif()
