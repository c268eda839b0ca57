# tavo_qt_pch(TARGET...): the Qt targets share one precompiled header of what nearly all of their files include.
# Few headers on purpose: the whole of QtWidgets makes a file so large that reading it costs more than it saves.
# Measured with ten files of shell/ and controls/ in Debug: 26 s of compiling become 16 s.
file(WRITE ${CMAKE_BINARY_DIR}/generated/tavo_qt_pch.cpp "")
add_library(tavo_qt_pch OBJECT ${CMAKE_BINARY_DIR}/generated/tavo_qt_pch.cpp)
set_target_properties(tavo_qt_pch PROPERTIES AUTOMOC OFF)
target_link_libraries(tavo_qt_pch PRIVATE Qt6::Widgets tavo_warnings)
target_precompile_headers(tavo_qt_pch PRIVATE <QString> <QStringList> <QWidget> <QPainter> <QLabel> <functional>)

function(tavo_qt_pch)
    foreach(target IN LISTS ARGN)
        target_precompile_headers(${target} REUSE_FROM tavo_qt_pch)
    endforeach()
endfunction()
