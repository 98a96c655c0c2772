# Third-party libraries, all from Debian packages (see tools/setup.sh).
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(OPENBLAS REQUIRED IMPORTED_TARGET openblas)   # BLAS and LAPACK
pkg_check_modules(LAPACKE REQUIRED IMPORTED_TARGET lapacke)
pkg_check_modules(SLEEF REQUIRED IMPORTED_TARGET sleef)         # vectorised math
find_library(UMFPACK_LIBRARY NAMES umfpack REQUIRED)
find_path(UMFPACK_INCLUDE_DIR umfpack.h PATH_SUFFIXES suitesparse REQUIRED)
find_package(ZLIB REQUIRED)
find_path(OPENCL_INCLUDE_DIR CL/cl.h REQUIRED)
