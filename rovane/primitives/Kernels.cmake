# Instruction-set flags of the kernel compilations. Each file holds the same
# kernels (kernels/Kernels.inc); the table in use is picked at load time.
set(_rovane_kdir ${CMAKE_CURRENT_LIST_DIR}/kernels)
set(_rovane_kopt -O3 -fno-trapping-math)
set_source_files_properties(${_rovane_kdir}/KernelsBaseline.cpp ${_rovane_kdir}/KernelsReference.cpp
  PROPERTIES COMPILE_OPTIONS "${_rovane_kopt}")
set_source_files_properties(${_rovane_kdir}/KernelsAvx2.cpp
  PROPERTIES COMPILE_OPTIONS "${_rovane_kopt};-mavx2;-mfma")
set_source_files_properties(${_rovane_kdir}/KernelsAvx512.cpp
  PROPERTIES COMPILE_OPTIONS "${_rovane_kopt};-mavx512f;-mavx512dq;-mavx512vl;-mavx512bw;-mavx2;-mfma;-mprefer-vector-width=512")
