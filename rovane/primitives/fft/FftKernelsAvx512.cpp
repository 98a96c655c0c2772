// FFT passes compiled for the avx512 instruction set (flags in Fft.cmake).
#define FFT_KNS kavx512
#define FFT_SETNAME FftKernelsAvx512
#define FFT_MAXB_D 64
#define FFT_MAXB_S 64
#include "rovane/primitives/fft/FftKernels.inc"
