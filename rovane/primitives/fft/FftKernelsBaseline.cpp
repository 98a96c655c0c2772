// FFT passes compiled for the baseline instruction set (flags in Fft.cmake).
#define FFT_KNS kbaseline
#define FFT_SETNAME FftKernelsBaseline
#define FFT_MAXB_D 16
#define FFT_MAXB_S 16
#include "rovane/primitives/fft/FftKernels.inc"
