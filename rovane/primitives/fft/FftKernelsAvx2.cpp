// FFT passes compiled for the avx2 instruction set (flags in Fft.cmake).
#define FFT_KNS kavx2
#define FFT_SETNAME FftKernelsAvx2
#define FFT_MAXB_D 32
#define FFT_MAXB_S 32
#include "rovane/primitives/fft/FftKernels.inc"
