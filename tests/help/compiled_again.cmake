# The same sources give the same bytes, at another time, in another folder, and whatever its name.
set(work "${BUILD}/Testing/otra compilación")
file(GLOB files ${BUILD}/data/*.chm)
list(GET files 0 file)
get_filename_component(language ${file} NAME_WE)
file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")
execute_process(COMMAND ${HELP_SOURCES} write ${SOURCE}/data/help ${language} ${BUILD}/help/${language}/pictures
    ${SOURCE}/data/idioma.lng "${work}/project" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} -DCHMCMD=${CHMCMD} "-DPROJECT=${work}/project" -P
    ${SOURCE}/cmake/compile_help.cmake COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${HELP_SOURCES} finish "${work}/project/report" "${work}/project/help.chm"
    "${work}/${language}.chm" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${file} "${work}/${language}.chm" RESULT_VARIABLE differ)
if(differ)
    message(FATAL_ERROR "${language}.chm differs from the one that the build made")
endif()
file(REMOVE_RECURSE "${work}")
