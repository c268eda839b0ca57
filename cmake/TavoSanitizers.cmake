# -DTAVO_SANITIZE=address,undefined instruments everything that is built.
set(TAVO_SANITIZE "" CACHE STRING "Sanitizers for the whole build, as for -fsanitize")
if(TAVO_SANITIZE)
    add_compile_options(-fsanitize=${TAVO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TAVO_SANITIZE})
endif()

# Everything that a fuzz target runs is watched by the sanitizers and tells the fuzzer which branches it took.
if(TAVO_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=fuzzer-no-link,address,undefined)
endif()
