# Instruction-set flags of the kernel compilations: every family source
# (kernels/Kernels<Family>.inc) is compiled once per instruction set by a
# translation unit kernels/<Family><Isa>.cpp, which gets that set's flags
# here by its name; the table in use is picked at start.
set(_rovane_kdir ${CMAKE_CURRENT_LIST_DIR}/kernels)
set(_rovane_kopt -O3 -fno-trapping-math)
file(GLOB _rovane_k_plain CONFIGURE_DEPENDS ${_rovane_kdir}/*Baseline.cpp ${_rovane_kdir}/*Reference.cpp)
file(GLOB _rovane_k_avx2 CONFIGURE_DEPENDS ${_rovane_kdir}/*Avx2.cpp)
file(GLOB _rovane_k_avx512 CONFIGURE_DEPENDS ${_rovane_kdir}/*Avx512.cpp)
set_source_files_properties(${_rovane_k_plain} PROPERTIES COMPILE_OPTIONS "${_rovane_kopt}")
set_source_files_properties(${_rovane_k_avx2} PROPERTIES COMPILE_OPTIONS "${_rovane_kopt};-mavx2;-mfma")
set_source_files_properties(${_rovane_k_avx512}
  PROPERTIES COMPILE_OPTIONS "${_rovane_kopt};-mavx512f;-mavx512dq;-mavx512vl;-mavx512bw;-mavx2;-mfma;-mprefer-vector-width=512")
