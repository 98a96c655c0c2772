# Compiles every public header of the library on its own (-fsyntax-only), so
# that each one includes what it needs. Internal headers are left out.
# Arguments: SOURCE_DIR, COMPILER, INTERNAL (a ;-list relative to rovane/).
cmake_policy(SET CMP0057 NEW)
file(GLOB_RECURSE headers RELATIVE ${SOURCE_DIR}/rovane ${SOURCE_DIR}/rovane/*.h)
set(failed "")
foreach(h IN LISTS headers)
  # The generated member lists are fragments of class bodies, not headers.
  if(h MATCHES "^primitives/kernels/" OR h MATCHES "(^|/)generated/" OR h IN_LIST INTERNAL)
    continue()
  endif()
  execute_process(COMMAND ${COMPILER} -std=c++20 -fsyntax-only -I${SOURCE_DIR} -x c++ ${SOURCE_DIR}/rovane/${h}
                  RESULT_VARIABLE rc ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    list(APPEND failed ${h})
    message("${h}:\n${err}")
  endif()
endforeach()
if(failed)
  message(FATAL_ERROR "headers that do not compile on their own: ${failed}")
endif()
