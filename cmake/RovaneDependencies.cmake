# Third-party libraries, all from Debian packages (see tools/setup.sh).
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(OPENBLAS REQUIRED IMPORTED_TARGET openblas)   # BLAS and LAPACK
# The library opens OpenBLAS by its run-time name at the first BLAS call
# (primitives/BlasHelper.cpp): read the SONAME of the library found here.
set(ROVANE_BLAS_SONAME libopenblas.so.0)
find_library(ROVANE_BLAS_FILE NAMES openblas HINTS ${OPENBLAS_LIBRARY_DIRS})
find_program(ROVANE_OBJDUMP NAMES objdump)
if(ROVANE_BLAS_FILE AND ROVANE_OBJDUMP)
  execute_process(COMMAND ${ROVANE_OBJDUMP} -p ${ROVANE_BLAS_FILE} OUTPUT_VARIABLE _blas_headers ERROR_QUIET)
  if(_blas_headers MATCHES "SONAME +([^ \n]+)")
    set(ROVANE_BLAS_SONAME ${CMAKE_MATCH_1})
  endif()
endif()
pkg_check_modules(LAPACKE REQUIRED IMPORTED_TARGET lapacke)
pkg_check_modules(SLEEF REQUIRED IMPORTED_TARGET sleef)         # vectorised math
find_library(UMFPACK_LIBRARY NAMES umfpack REQUIRED)
find_path(UMFPACK_INCLUDE_DIR umfpack.h PATH_SUFFIXES suitesparse REQUIRED)
find_package(ZLIB REQUIRED)
find_path(OPENCL_INCLUDE_DIR CL/cl.h REQUIRED)
