# Runs wxrc -c in the current directory and fails when it reports an error. wxrc itself only
# fails on malformed XML; a picture a layout refers to but that is missing is reported and then
# embedded as an empty file.
#   -D WXRC=<wxrc> -D FUNCTION=<name> -D OUTPUT=<file> -D LAYOUTS=<a.xrc;b.xrc> -P run_wxrc.cmake
execute_process(
    COMMAND ${WXRC} -c -n ${FUNCTION} -o ${OUTPUT} ${LAYOUTS}
    RESULT_VARIABLE rc
    OUTPUT_VARIABLE out
    ERROR_VARIABLE err)
if(NOT rc EQUAL 0 OR err MATCHES "Error" OR out MATCHES "Error")
    file(REMOVE ${OUTPUT})
    message(FATAL_ERROR "wxrc failed (${rc}):\n${out}${err}")
endif()
