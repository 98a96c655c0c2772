# Installs the built library into WORK_DIR/prefix, then builds and runs
# examples/consumer against it the way the README tells a user to: once
# through find_package (its CMakeLists.txt must be the README's block, to the
# character) and once through pkg-config (with -Wl,-rpath and with
# LD_LIBRARY_PATH, the README's two ways to run from a prefix outside the
# system paths).
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGV}\n${out}")
  endif()
endfunction()

file(READ ${SOURCE_DIR}/examples/consumer/CMakeLists.txt consumer_cmake)
file(READ ${SOURCE_DIR}/README.md readme)
string(FIND "${readme}" "```cmake\n${consumer_cmake}```" at)
if(at EQUAL -1)
  message(FATAL_ERROR "README.md does not show examples/consumer/CMakeLists.txt verbatim in a ```cmake block")
endif()

run(${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${prefix})
# No language level given: the package must bring what its headers need.
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/examples/consumer -B ${WORK_DIR}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Release)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/app)

set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs rovane OUTPUT_VARIABLE flags RESULT_VARIABLE rc
                OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "pkg-config does not know rovane")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
run(c++ ${SOURCE_DIR}/examples/consumer/main.cpp ${flags} -Wl,-rpath,${prefix}/lib -o ${WORK_DIR}/app-rpath)
run(${WORK_DIR}/app-rpath)
run(c++ ${SOURCE_DIR}/examples/consumer/main.cpp ${flags} -o ${WORK_DIR}/app-pc)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib ${WORK_DIR}/app-pc)
