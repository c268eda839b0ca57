# Warnings are errors, for our code and for tests: link tavo_warnings PRIVATE.
add_library(tavo_warnings INTERFACE)
target_compile_options(tavo_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
    -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Werror)
# GCC 12 sees overlapping copies in `"text" + std::string(...)` that are not there (its bug 105329).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(tavo_warnings INTERFACE -Wno-restrict)
endif()
