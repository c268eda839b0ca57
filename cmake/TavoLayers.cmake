# tavo_plain_layer(NAME source...): a layer over core that knows the C++ standard library alone.
function(tavo_plain_layer name)
    add_library(${name} STATIC ${ARGN})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name} PUBLIC tavo_core PRIVATE tavo_warnings)
    # The same digits on every machine: no fused multiply-add.
    target_compile_options(${name} PRIVATE -ffp-contract=off)
endfunction()

# tavo_window_layer(NAME PLAIN source...): windows over the plain layer PLAIN, the shell and the controls.
function(tavo_window_layer name plain)
    add_library(${name} STATIC ${ARGN})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    tavo_qt_pch(${name})
    target_link_libraries(${name} PUBLIC ${plain} tavo_shell tavo_controls Qt6::Widgets PRIVATE tavo_warnings)
endfunction()
