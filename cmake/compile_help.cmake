# Runs CHMCMD in the folder PROJECT, where it finds everything under plain names. Its status says nothing: what it says goes
# to the file "report".
execute_process(COMMAND ${CHMCMD} help.hhp WORKING_DIRECTORY ${PROJECT} OUTPUT_FILE report ERROR_FILE report)
