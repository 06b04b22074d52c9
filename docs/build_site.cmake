# Builds the site by CONFIGURATION, and fails where DOXYGEN has anything to say.
if(NOT DOXYGEN)
  message("there is no doxygen")
  return()
endif()
file(REMOVE_RECURSE "${SITE}")
execute_process(COMMAND "${DOXYGEN}" "${CONFIGURATION}"
  OUTPUT_VARIABLE said ERROR_VARIABLE complained RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT said STREQUAL "" OR NOT complained STREQUAL "")
  message(FATAL_ERROR "doxygen ended with ${status}\n${said}${complained}")
endif()
message("the site is at ${SITE}/index.html")
