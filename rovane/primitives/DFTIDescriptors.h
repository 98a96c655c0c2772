// Fourier transform descriptors: the dfti_* interface (descriptor creation,
// configuration, commit and the _Idx compute calls) served by the library's
// own FFT engine, and TDFTIDescriptorCache, the one process-wide cache of
// committed descriptors through which every container transform goes.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "rovane/primitives/ippspl_core.h"

namespace rovane {

// ---------------------------------------------------------------------------
// The dfti_* interface.
// ---------------------------------------------------------------------------
struct TDftiDescriptor;
using TDftiHandle = TDftiDescriptor*;

// Configuration parameters and values.
inline constexpr int32_t DFTI_FORWARD_SCALE = 4;
inline constexpr int32_t DFTI_BACKWARD_SCALE = 5;
inline constexpr int32_t DFTI_NUMBER_OF_TRANSFORMS = 7;
inline constexpr int32_t DFTI_PLACEMENT = 11;
inline constexpr int32_t DFTI_INPUT_STRIDES = 12;
inline constexpr int32_t DFTI_OUTPUT_STRIDES = 13;
inline constexpr int32_t DFTI_INPUT_DISTANCE = 14;
inline constexpr int32_t DFTI_OUTPUT_DISTANCE = 15;
inline constexpr int32_t DFTI_ORDERING = 18;
inline constexpr int32_t DFTI_PACKED_FORMAT = 21;
inline constexpr int32_t DFTI_COMPLEX = 32;
inline constexpr int32_t DFTI_REAL = 33;
inline constexpr int32_t DFTI_SINGLE = 35;
inline constexpr int32_t DFTI_DOUBLE = 36;
inline constexpr int32_t DFTI_INPLACE = 43;
inline constexpr int32_t DFTI_NOT_INPLACE = 44;
inline constexpr int32_t DFTI_ORDERED = 48;
inline constexpr int32_t DFTI_BACKWARD_SCRAMBLED = 49;
inline constexpr int32_t DFTI_CCS_FORMAT = 54;
inline constexpr int32_t DFTI_PACK_FORMAT = 55;
inline constexpr int32_t DFTI_PERM_FORMAT = 56;

// Status values.
inline constexpr int32_t DFTI_NO_ERROR = 0;
inline constexpr int32_t DFTI_MEMORY_ERROR = 1;
inline constexpr int32_t DFTI_INVALID_CONFIGURATION = 2;
inline constexpr int32_t DFTI_INCONSISTENT_CONFIGURATION = 3;
inline constexpr int32_t DFTI_BAD_DESCRIPTOR = 5;
inline constexpr int32_t DFTI_UNIMPLEMENTED = 6;

// Creates a descriptor of dimension 1 or 2; lengths holds one length per
// dimension. In two dimensions lengths[0] is the dimension that runs along
// the first stride (by default the contiguous one); a real transform stores
// that dimension as a half spectrum.
ROVANE_API int32_t dfti_create_descriptor_highd(TDftiHandle& handle, int32_t precision, int32_t domain,
                                                int32_t dimension, const int32_t* lengths);
ROVANE_API int32_t dfti_commit_descriptor_external(TDftiHandle& handle);
// Frees the descriptor and sets the handle to null; a null handle is accepted.
ROVANE_API int32_t dfti_free_descriptor_external(TDftiHandle& handle);
ROVANE_API int32_t dfti_set_value_intval(TDftiHandle& handle, int32_t param, int32_t value);
// Strides: three values, the offset, the stride of lengths[0] and the stride
// of lengths[1], counted in the elements of the domain (reals for a real
// transform, complex numbers for a complex one).
ROVANE_API int32_t dfti_set_value_intvec(TDftiHandle& handle, int32_t param, const int32_t* values);
ROVANE_API int32_t dfti_set_value_sglval(TDftiHandle& handle, int32_t param, float value);
ROVANE_API int32_t dfti_set_value_dblval(TDftiHandle& handle, int32_t param, double value);

// Compute calls. In place: the data array and its index; out of place: the
// source, its index, the destination and its index. A real transform takes
// and gives real arrays (the spectrum in the descriptor's packed format), so
// its indexes count reals; a complex one counts complex elements.
ROVANE_API int32_t dfti_compute_forward_z_Idx(TDftiHandle handle, TCplx* x, int32_t xIndex);
ROVANE_API int32_t dfti_compute_backward_z_Idx(TDftiHandle handle, TCplx* x, int32_t xIndex);
ROVANE_API int32_t dfti_compute_forward_z_out_Idx(TDftiHandle handle, const TCplx* x, int32_t xIndex, TCplx* y,
                                                  int32_t yIndex);
ROVANE_API int32_t dfti_compute_backward_z_out_Idx(TDftiHandle handle, const TCplx* x, int32_t xIndex, TCplx* y,
                                                   int32_t yIndex);
ROVANE_API int32_t dfti_compute_forward_c_Idx(TDftiHandle handle, TSCplx* x, int32_t xIndex);
ROVANE_API int32_t dfti_compute_backward_c_Idx(TDftiHandle handle, TSCplx* x, int32_t xIndex);
ROVANE_API int32_t dfti_compute_forward_c_out_Idx(TDftiHandle handle, const TSCplx* x, int32_t xIndex, TSCplx* y,
                                                  int32_t yIndex);
ROVANE_API int32_t dfti_compute_backward_c_out_Idx(TDftiHandle handle, const TSCplx* x, int32_t xIndex, TSCplx* y,
                                                   int32_t yIndex);
ROVANE_API int32_t dfti_compute_forward_d_Idx(TDftiHandle handle, double* x, int32_t xIndex);
ROVANE_API int32_t dfti_compute_backward_d_Idx(TDftiHandle handle, double* x, int32_t xIndex);
ROVANE_API int32_t dfti_compute_forward_d_out_Idx(TDftiHandle handle, const double* x, int32_t xIndex, double* y,
                                                  int32_t yIndex);
ROVANE_API int32_t dfti_compute_backward_d_out_Idx(TDftiHandle handle, const double* x, int32_t xIndex, double* y,
                                                   int32_t yIndex);
ROVANE_API int32_t dfti_compute_forward_s_Idx(TDftiHandle handle, float* x, int32_t xIndex);
ROVANE_API int32_t dfti_compute_backward_s_Idx(TDftiHandle handle, float* x, int32_t xIndex);
ROVANE_API int32_t dfti_compute_forward_s_out_Idx(TDftiHandle handle, const float* x, int32_t xIndex, float* y,
                                                  int32_t yIndex);
ROVANE_API int32_t dfti_compute_backward_s_out_Idx(TDftiHandle handle, const float* x, int32_t xIndex, float* y,
                                                   int32_t yIndex);

ROVANE_API const char* DftiErrorMessage(int32_t status);
// The transforms run on the calling thread: the counts are kept and reported
// but change nothing.
ROVANE_API int32_t dftMKL_Set_Num_Threads(int32_t n);
ROVANE_API int32_t dftMKL_Domain_Set_Num_Threads(int32_t n, int32_t domain);
ROVANE_API int32_t dftMKL_Domain_Get_Max_Threads(int32_t domain);

// Text of DftiErrorMessage(Status) as a string value.
ROVANE_API std::string GetDftiErrorMessage(int32_t status);

// ---------------------------------------------------------------------------
// The descriptor cache.
// ---------------------------------------------------------------------------

// Transform flags of a cache slot.
inline constexpr uint32_t dftfReal = 1;
inline constexpr uint32_t dftfInPlace = 2;
inline constexpr uint32_t dftfScaleBackward = 4;
inline constexpr uint32_t dftfBatch = 8;
inline constexpr uint32_t dftfFullRows = 16;
inline constexpr uint32_t dftfPaddedInput = 32;
inline constexpr uint32_t dftfScrambled = 64;
inline constexpr uint32_t dftfPack = 128;
inline constexpr uint32_t dftfPerm = 256;
inline constexpr uint32_t dftfSingle = 512;

// One slot: five 32-bit words.
struct TCacheEntry {
    TDftiHandle descriptor = nullptr;  // null when the slot is empty
    int32_t firstSize = 0;             // length (1-D), rows (2-D or batched)
    int32_t secondSize = 0;            // 0 for 1-D, else columns
    uint32_t flags = 0;
    std::atomic<int32_t> useCount{0};  // computations running on this slot

    TCacheEntry() = default;
    TCacheEntry(const TCacheEntry& e)
        : descriptor(e.descriptor), firstSize(e.firstSize), secondSize(e.secondSize), flags(e.flags),
          useCount(e.useCount.load()) {}
    TCacheEntry& operator=(const TCacheEntry& e) {
        descriptor = e.descriptor;
        firstSize = e.firstSize;
        secondSize = e.secondSize;
        flags = e.flags;
        useCount.store(e.useCount.load());
        return *this;
    }
};

class ROVANE_API TDFTIDescriptorCache {
public:
    TDFTIDescriptorCache();
    ~TDFTIDescriptorCache();
    TDFTIDescriptorCache(const TDFTIDescriptorCache&) = delete;
    TDFTIDescriptorCache& operator=(const TDFTIDescriptorCache&) = delete;

    // Returns the committed descriptor of the shape; the slot's use count and
    // CacheCounter have gone up by one, to be matched by ReleaseDscr.
    // DescIndex names the slot that served the caller last (a hint) and on
    // return the slot that serves it now.
    TDftiHandle GetDesc(int32_t Length, uint32_t Flags, int32_t& DescIndex);
    TDftiHandle GetDesc(int32_t Rows, int32_t Cols, uint32_t Flags, int32_t& DescIndex);
    void ReleaseDscr(int32_t DescIndex);
    void IncreaseCounters(int32_t DescIndex);
    // Frees every descriptor; raises while a transform runs.
    void Reset();
    void SetMaxCacheSize(int32_t n);
    int32_t MaxCacheSize() const { return fMaxCacheSize; }
    void SetFastCache(bool value);
    bool FastCache() const { return FFastCache; }
    void CsEnter() { cs.lock(); }
    void CsLeave() { cs.unlock(); }
    [[noreturn]] void Error(int32_t Status, const std::string& Text);

    // Inspection (tests and the controller's reports).
    int32_t Counter() const { return CacheCounter.load(); }
    int32_t SlotCount() const { return static_cast<int32_t>(Cache.size()); }
    // Copy of a slot, taken under the lock.
    TCacheEntry Slot(int32_t i);

private:
    TDftiHandle FindOrCreateDscr(int32_t Rows, int32_t Cols, uint32_t Flags, int32_t& DescIndex);
    TDftiHandle FindOrCreateDscr1(int32_t Rows, int32_t Cols, uint32_t Flags, int32_t& DescIndex);
    uint32_t NormaliseFlags(int32_t Cols, uint32_t Flags) const;
    bool Matches(const TCacheEntry& e, int32_t Rows, int32_t Cols, uint32_t Flags) const;
    void TakeSlot(int32_t i);
    void BuildEntry(int32_t Rows, int32_t Cols, uint32_t Flags);
    void ResetLocked();

    std::recursive_mutex cs;
    TCacheEntry fLRU;  // the entry being built
    int32_t fMaxCacheSize = 0;
    std::vector<TCacheEntry> Cache;
    std::atomic<int32_t> CacheCounter{0};
    int32_t fIntVec[3] = {0, 0, 0};
    std::atomic<bool> FFastCache{false};
};

// The process-wide cache.
ROVANE_API TDFTIDescriptorCache& DFTIDescriptorCache();

}  // namespace rovane
