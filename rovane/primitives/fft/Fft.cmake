# Instruction-set flags of the FFT pass compilations. Each file holds the same
# passes (fft/FftKernels.inc); the set in use is picked at load time.
set(_rovane_fdir ${CMAKE_CURRENT_LIST_DIR})
set(_rovane_fopt -O3 -fno-trapping-math)
set_source_files_properties(${_rovane_fdir}/FftKernelsReference.cpp ${_rovane_fdir}/FftKernelsBaseline.cpp
  PROPERTIES COMPILE_OPTIONS "${_rovane_fopt}")
set_source_files_properties(${_rovane_fdir}/FftKernelsAvx2.cpp
  PROPERTIES COMPILE_OPTIONS "${_rovane_fopt};-mavx2;-mfma")
set_source_files_properties(${_rovane_fdir}/FftKernelsAvx512.cpp
  PROPERTIES COMPILE_OPTIONS "${_rovane_fopt};-mavx512f;-mavx512dq;-mavx512vl;-mavx512bw;-mavx2;-mfma;-mprefer-vector-width=512")
