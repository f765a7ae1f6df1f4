# Reads from a built program or library what the platform does against a memory error that somebody wants to use:
#   cmake -DPROGRAM=... -DREADELF=... -P hardened.cmake
foreach(part file-header program-headers dynamic symbols)
  execute_process(COMMAND ${READELF} --wide --${part} ${PROGRAM} OUTPUT_VARIABLE text RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "${PROGRAM} can't be read")
  endif()
  string(APPEND all "${text}")
endforeach()
execute_process(COMMAND ${READELF} --wide --dyn-syms ${PROGRAM} OUTPUT_VARIABLE symbols)

# expect(TEXT PATTERN WHAT)
function(expect text pattern what)
  if(NOT "${text}" MATCHES "${pattern}")
    message(SEND_ERROR "${PROGRAM}: no ${what}")
  endif()
endfunction()

expect("${all}" "Type: *DYN" "addresses of its own each time")
expect("${all}" "GNU_RELRO" "tables that can only be read")
expect("${all}" "BIND_NOW|Flags: NOW" "names resolved at the start")
expect("${all}" "GNU_STACK[^\n]* RW " "stack that holds no code")
expect("${symbols}" "__stack_chk_fail" "guard of the stack")
expect("${symbols}" "__[a-z]+_chk" "checked calls of the C library")
