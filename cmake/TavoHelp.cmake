# One compiled help file for each folder of data/help but common/: data/help/English becomes data/English.chm in the build
# folder. Checked, written as a project in Windows-1252 and completed by tools/help_sources; compiled by chmcmd.
find_program(TAVO_CHMCMD NAMES chmcmd chmcmd-3.2.2 DOC "Compiler of the help files")
if(NOT TAVO_CHMCMD)
    message(FATAL_ERROR "The help is compiled by chmcmd, which is not installed: install Debian's package fp-utils-3.2.2, "
                        "or build without help files by -DTAVO_HELP=OFF.")
endif()

set(help_folder ${CMAKE_SOURCE_DIR}/data/help)
file(GLOB help_languages CONFIGURE_DEPENDS LIST_DIRECTORIES true RELATIVE ${help_folder} ${help_folder}/*)
list(FILTER help_languages EXCLUDE REGEX "^common$|\\.")
file(GLOB help_common CONFIGURE_DEPENDS ${help_folder}/common/*)

# tavo_compile_help(LANGUAGE PICTURES PROJECT FILE depends...): FILE from the pages of the language in the folder PROJECT.
function(tavo_compile_help language pictures project file)
    add_custom_command(OUTPUT ${file}
        COMMAND help_sources write ${help_folder} ${language} "${pictures}" ${CMAKE_SOURCE_DIR}/data/idioma.lng ${project}
        COMMAND ${CMAKE_COMMAND} -DCHMCMD=${TAVO_CHMCMD} -DPROJECT=${project} -P
                ${CMAKE_SOURCE_DIR}/cmake/compile_help.cmake
        COMMAND help_sources finish ${project}/report ${project}/help.chm ${file}
        DEPENDS help_sources ${CMAKE_SOURCE_DIR}/cmake/compile_help.cmake ${CMAKE_SOURCE_DIR}/data/idioma.lng ${ARGN}
        COMMENT "Compiling ${file}" VERBATIM)
endfunction()

set(help_files)
foreach(language IN LISTS help_languages)
    file(GLOB pages CONFIGURE_DEPENDS ${help_folder}/${language}/*)
    list(APPEND pages ${help_folder}/contents.txt ${help_common})
    set(work ${CMAKE_BINARY_DIR}/help/${language})
    set(compiled ${CMAKE_BINARY_DIR}/data/${language}.chm)
    # The viewer shows the help, and the help shows the viewer: that one is drawn with a help without pictures.
    tavo_compile_help(${language} "" ${work}/text ${work}/text.chm ${pages})
    # The list of pictures changes only with them: a new program that looks as before leaves the help as it is.
    add_custom_command(OUTPUT ${work}/pictures/list
        COMMAND help_pictures ${CMAKE_SOURCE_DIR}/data ${language} ${work}/text.chm ${work}/pictures
        DEPENDS help_pictures ${CMAKE_SOURCE_DIR}/data/data ${CMAKE_SOURCE_DIR}/data/idioma.lng ${work}/text.chm
        COMMENT "Drawing the help's pictures in ${language}" VERBATIM)
    tavo_compile_help(${language} ${work}/pictures ${work}/project ${compiled} ${pages} ${work}/pictures/list)
    list(APPEND help_files ${compiled})
endforeach()
add_custom_target(help_files ALL DEPENDS ${help_files})
install(FILES ${help_files} DESTINATION ${CMAKE_INSTALL_DATADIR}/tavo-gas)
