// FFT passes compiled for the reference instruction set (flags in Fft.cmake).
#define FFT_KNS kreference
#define FFT_SETNAME FftKernelsReference
#define FFT_MAXB_D 16
#define FFT_MAXB_S 8
#include "rovane/primitives/fft/FftKernels.inc"
