# Plays the tour again where it was played before: a box asks what it asks nobody in a new database.
execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=${FOLDER}/settings
  ${SUITE} --database ${FOLDER}/suite.db --tour ${FOLDER}/again RESULT_VARIABLE result
  ERROR_VARIABLE error OUTPUT_QUIET)
if(NOT result EQUAL 1 OR NOT error MATCHES "the tour stopped: instead of item-saved came: 示例中性笔")
  message(FATAL_ERROR "orvensuite gave ${result}\n${error}")
endif()
