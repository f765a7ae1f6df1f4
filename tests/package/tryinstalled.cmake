# Installs build folder BUILD below FOLDER, builds the hosts against that alone, and runs them.
file(REMOVE_RECURSE ${FOLDER})
set(prefix ${FOLDER}/usr)
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE text)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "${ARGV} gave ${code}\n${text}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
file(COPY ${ROOT}/tests/package/host/ ${SNIPPET} DESTINATION ${FOLDER}/host)
file(COPY_FILE ${CLERK} ${FOLDER}/host/clerk.so)
set(ENV{CMAKE_PREFIX_PATH} ${prefix})
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
run(${ROOT}/tests/package/tryhost.sh ${FOLDER}/host)

# The tools, and the sample suite, which is a host as any other.
execute_process(COMMAND ${prefix}/bin/orvensql "Provider=SQLite;Data Source=${FOLDER}/tool.db;Mode=Create" INPUT_FILE /dev/null
  COMMAND_ERROR_IS_FATAL ANY)
run(${CMAKE_COMMAND} -S ${ROOT}/examples/host -B ${FOLDER}/suite -G Ninja -DCMAKE_CXX_FLAGS=-O0)
run(${CMAKE_COMMAND} --build ${FOLDER}/suite)
set(ENV{XDG_CONFIG_HOME} ${FOLDER}/settings)
run(${FOLDER}/suite/orvensuite --database ${FOLDER}/sample.db --create --items 5)
