# Warnings are errors, for our code and for tests: link tavo_warnings PRIVATE.
add_library(tavo_warnings INTERFACE)
target_compile_options(tavo_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
    -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Werror)
