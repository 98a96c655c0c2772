// The process-wide cache of committed transform descriptors.
#include "rovane/primitives/DFTIDescriptors.h"

#include <mutex>

namespace rovane {

namespace {

constexpr uint32_t kFormatMask = dftfReal | dftfInPlace | dftfPack | dftfPerm;

bool RealCCS(uint32_t flags) { return (flags & dftfReal) && !(flags & (dftfPack | dftfPerm)); }

}  // namespace

TDFTIDescriptorCache::TDFTIDescriptorCache() {
    SetMaxCacheSize(64);
    CacheCounter.store(0);
}

TDFTIDescriptorCache::~TDFTIDescriptorCache() {
    for (TCacheEntry& e : Cache)
        if (e.descriptor) dfti_free_descriptor_external(e.descriptor);
    if (fLRU.descriptor) dfti_free_descriptor_external(fLRU.descriptor);
}

TDftiHandle TDFTIDescriptorCache::GetDesc(int32_t Length, uint32_t Flags, int32_t& DescIndex) {
    return GetDesc(Length, 0, Flags, DescIndex);
}

TDftiHandle TDFTIDescriptorCache::GetDesc(int32_t Rows, int32_t Cols, uint32_t Flags, int32_t& DescIndex) {
    return FFastCache ? FindOrCreateDscr1(Rows, Cols, Flags, DescIndex)
                      : FindOrCreateDscr(Rows, Cols, Flags, DescIndex);
}

void TDFTIDescriptorCache::ReleaseDscr(int32_t DescIndex) {
    if (DescIndex < 0 || DescIndex >= static_cast<int32_t>(Cache.size()))
        ERaiseFmt("DescIndex out of range = %d", DescIndex);
    Cache[size_t(DescIndex)].useCount.fetch_sub(1);
    CacheCounter.fetch_sub(1);
}

void TDFTIDescriptorCache::IncreaseCounters(int32_t DescIndex) {
    if (DescIndex < 0 || DescIndex >= static_cast<int32_t>(Cache.size()))
        ERaiseFmt("DescIndex out of range = %d", DescIndex);
    TakeSlot(DescIndex);
}

void TDFTIDescriptorCache::TakeSlot(int32_t i) {
    Cache[size_t(i)].useCount.fetch_add(1);
    CacheCounter.fetch_add(1);
}

void TDFTIDescriptorCache::Error(int32_t Status, const std::string& Text) {
    ERaiseFmt("TDFTIDescriptorCache.FindOrCreateDscr: %s: %s", Text, GetDftiErrorMessage(Status));
}

uint32_t TDFTIDescriptorCache::NormaliseFlags(int32_t Cols, uint32_t Flags) const {
    // The padded-input bit matters only to a two-dimensional real CCS
    // transform out of place (and is kept with the scrambled order).
    if (!(Flags & dftfScrambled) && !(Cols != 0 && (Flags & kFormatMask) == dftfReal)) Flags &= ~dftfPaddedInput;
    return Flags;
}

bool TDFTIDescriptorCache::Matches(const TCacheEntry& e, int32_t Rows, int32_t Cols, uint32_t Flags) const {
    return e.descriptor && e.firstSize == Rows && e.secondSize == Cols && e.flags == Flags;
}

TCacheEntry TDFTIDescriptorCache::Slot(int32_t i) {
    std::lock_guard<std::recursive_mutex> g(cs);
    if (i < 0 || i >= static_cast<int32_t>(Cache.size())) ERaiseFmt("DescIndex out of range = %d", i);
    return Cache[size_t(i)];
}

TDftiHandle TDFTIDescriptorCache::FindOrCreateDscr(int32_t Rows, int32_t Cols, uint32_t Flags, int32_t& DescIndex) {
    Flags = NormaliseFlags(Cols, Flags);
    if (DescIndex >= static_cast<int32_t>(Cache.size())) ERaise("DescIndex >= Length(Cache)");
    std::lock_guard<std::recursive_mutex> g(cs);
    const int32_t count = static_cast<int32_t>(Cache.size());
    if (DescIndex < 0 || DescIndex > count - 1) ERaiseFmt("DescIndex out of range = %d", DescIndex);
    {
        TCacheEntry& e = Cache[size_t(DescIndex)];
        if (Matches(e, Rows, Cols, Flags) && e.useCount.load() == 0) {
            TakeSlot(DescIndex);
            return e.descriptor;
        }
    }
    int32_t empty = -1;
    for (int32_t i = 0; i < count; ++i) {
        TCacheEntry& e = Cache[size_t(i)];
        if (!e.descriptor) {
            empty = i;
            continue;
        }
        if (Matches(e, Rows, Cols, Flags) && e.useCount.load() == 0) {
            DescIndex = i;
            TakeSlot(i);
            return e.descriptor;
        }
    }
    if (empty < 0) {
        // Full: every idle shape goes at once. CacheCounter counts running
        // computations only, and an idle slot has none, so it stays as it is.
        for (int32_t i = 0; i < count; ++i) {
            TCacheEntry& e = Cache[size_t(i)];
            if (e.descriptor && e.useCount.load() == 0) {
                const int32_t st = dfti_free_descriptor_external(e.descriptor);
                if (st != DFTI_NO_ERROR) Error(st, "dfti_Free_descriptor_external failed");
                e.descriptor = nullptr;
                empty = i;
            }
        }
    }
    if (empty < 0)
        ERaise("FFT Descriptor cache is full and all descriptors are currently in use. This can happen only if "
               "thread count is greater than descriptor cache size. Please adjust the FFT descriptor cache size!");
    BuildEntry(Rows, Cols, Flags);
    TCacheEntry& e = Cache[size_t(empty)];
    e.descriptor = fLRU.descriptor;
    e.firstSize = Rows;
    e.secondSize = Cols;
    e.flags = Flags;
    e.useCount.store(0);
    fLRU.descriptor = nullptr;
    DescIndex = empty;
    TakeSlot(empty);
    return e.descriptor;
}

TDftiHandle TDFTIDescriptorCache::FindOrCreateDscr1(int32_t Rows, int32_t Cols, uint32_t Flags,
                                                    int32_t& DescIndex) {
    Flags = NormaliseFlags(Cols, Flags);
    if (DescIndex >= static_cast<int32_t>(Cache.size())) ERaise("DescIndex >= Length(Cache)");
    std::lock_guard<std::recursive_mutex> g(cs);
    const int32_t count = static_cast<int32_t>(Cache.size());
    if (DescIndex < 0 || DescIndex > count - 1) ERaiseFmt("DescIndex out of range = %d", DescIndex);
    {
        TCacheEntry& e = Cache[size_t(DescIndex)];
        if (Matches(e, Rows, Cols, Flags) && e.useCount.load() == 0) {
            TakeSlot(DescIndex);
            return e.descriptor;
        }
    }
    int32_t first = -1;
    for (int32_t i = 0; i < count; ++i) {
        TCacheEntry& e = Cache[size_t(i)];
        if (!e.descriptor) continue;
        if (first < 0) first = i;
        if (Matches(e, Rows, Cols, Flags) && e.useCount.load() == 0) {
            DescIndex = i;
            TakeSlot(i);
            return e.descriptor;
        }
    }
    if (first < 0) ERaise("Running fast FFT cache: FFT Descritpor cache is full!");
    // A miss takes the first slot that holds a descriptor and rebuilds it for
    // the new shape: a descriptor of another shape would give a wrong result.
    TCacheEntry& e = Cache[size_t(first)];
    if (e.useCount.load() != 0)
        ERaise("FFT Descriptor cache is full and all descriptors are currently in use. This can happen only if "
               "thread count is greater than descriptor cache size. Please adjust the FFT descriptor cache size!");
    BuildEntry(Rows, Cols, Flags);
    dfti_free_descriptor_external(e.descriptor);
    e.descriptor = fLRU.descriptor;
    e.firstSize = Rows;
    e.secondSize = Cols;
    e.flags = Flags;
    fLRU.descriptor = nullptr;
    DescIndex = first;
    TakeSlot(first);
    return e.descriptor;
}

void TDFTIDescriptorCache::BuildEntry(int32_t Rows, int32_t Cols, uint32_t Flags) {
    if (fLRU.descriptor) dfti_free_descriptor_external(fLRU.descriptor);  // left by a failed build
    fLRU.firstSize = Rows;
    fLRU.secondSize = Cols;
    fLRU.flags = Flags;
    const bool real = Flags & dftfReal;
    const int32_t domain = real ? DFTI_REAL : DFTI_COMPLEX;
    const int32_t packed = (Flags & dftfPack) ? DFTI_PACK_FORMAT : (Flags & dftfPerm) ? DFTI_PERM_FORMAT : DFTI_CCS_FORMAT;
    int32_t dims = 1;
    int32_t lengths[2] = {Rows, 0};
    if (Cols == 0) {
        lengths[0] = Rows;
    } else if (Flags & dftfBatch) {
        lengths[0] = Cols;
    } else {
        dims = 2;
        lengths[0] = Cols;
        lengths[1] = Rows;
    }
    const bool sgl = Flags & dftfSingle;
    int32_t st = dfti_create_descriptor_highd(fLRU.descriptor, sgl ? DFTI_SINGLE : DFTI_DOUBLE, domain, dims, lengths);
    if (st != DFTI_NO_ERROR) Error(st, "Can't create descriptor");
    if (Flags & (dftfPack | dftfPerm)) {
        st = dfti_set_value_intval(fLRU.descriptor, DFTI_PACKED_FORMAT, packed);
        if (st != DFTI_NO_ERROR) Error(st, "Can't update descriptor: pack format param");
    }
    const int32_t h = (Cols % 2 != 0) ? 1 : 2;
    const bool inPlace = Flags & dftfInPlace;
    if (Flags & dftfBatch) {
        int32_t inDist = Cols, outDist = Cols;
        if (RealCCS(Flags)) {
            if (inPlace) {
                inDist = outDist = Cols + h;
            } else {
                inDist = Cols + ((Flags & dftfPaddedInput) ? h : 0);
                outDist = (Flags & dftfFullRows) ? 2 * Cols : Cols + h;
            }
        }
        st = dfti_set_value_intval(fLRU.descriptor, DFTI_NUMBER_OF_TRANSFORMS, Rows);
        if (st != DFTI_NO_ERROR) Error(st, "Can't update descriptor: number of transformations");
        st = dfti_set_value_intval(fLRU.descriptor, DFTI_INPUT_DISTANCE, inDist);
        if (st != DFTI_NO_ERROR) Error(st, "Can't update descriptor: input distance param");
        st = dfti_set_value_intval(fLRU.descriptor, DFTI_OUTPUT_DISTANCE, outDist);
        if (st != DFTI_NO_ERROR) Error(st, "Can't update descriptor: output distance param");
    }
    st = dfti_set_value_intval(fLRU.descriptor, DFTI_PLACEMENT, inPlace ? DFTI_INPLACE : DFTI_NOT_INPLACE);
    if (st != DFTI_NO_ERROR) Error(st, "Can't update descriptor: placement param");
    if (Flags & dftfScaleBackward) {
        double points;
        if (Cols == 0) points = Rows;
        else if (Flags & dftfBatch) points = Cols;
        else points = static_cast<double>(Rows) * static_cast<double>(Cols);
        const double scale = 1.0 / points;
        st = sgl ? dfti_set_value_sglval(fLRU.descriptor, DFTI_BACKWARD_SCALE, static_cast<float>(scale))
                 : dfti_set_value_dblval(fLRU.descriptor, DFTI_BACKWARD_SCALE, scale);
        if (st != DFTI_NO_ERROR) Error(st, "Can't update descriptor: backward scale param");
    }
    if (Cols != 0 && RealCCS(Flags) && !(Flags & dftfBatch)) {
        fIntVec[0] = 0;
        fIntVec[1] = 1;
        fIntVec[2] = (Flags & (dftfInPlace | dftfPaddedInput)) ? Cols + h : Cols;
        st = dfti_set_value_intvec(fLRU.descriptor, DFTI_INPUT_STRIDES, fIntVec);
        if (st != DFTI_NO_ERROR) Error(st, "Can't update descriptor: input strides param");
        if (!inPlace) {
            fIntVec[2] = Cols + h;
            st = dfti_set_value_intvec(fLRU.descriptor, DFTI_OUTPUT_STRIDES, fIntVec);
            if (st != DFTI_NO_ERROR) Error(st, "Can't update descriptor: output strides param");
        }
    }
    if (Flags & dftfScrambled) {
        st = dfti_set_value_intval(fLRU.descriptor, DFTI_ORDERING, DFTI_BACKWARD_SCRAMBLED);
        if (st != DFTI_NO_ERROR) Error(st, "Can't update descriptor: scrambled order param");
    }
    st = dfti_commit_descriptor_external(fLRU.descriptor);
    if (st == DFTI_MEMORY_ERROR)
        ERaise("Descriptor cache is too large for the FFT types computed and caused out of memory condition! You "
               "can adjust descriptor cache size via Controller.FFTDescriptorCacheSize property! If you see this "
               "message, the FFT usage pattern in your application may be in need of a smaller cache or of fewer "
               "distinct transform shapes.");
    if (st != DFTI_NO_ERROR) Error(st, "Can't commit descriptor");
}

void TDFTIDescriptorCache::ResetLocked() {
    if (CacheCounter.load() > 0) ERaise("FFT Descriptor cache cannot be reset while FFTs are being executed!");
    for (TCacheEntry& e : Cache) {
        if (!e.descriptor) continue;
        if (e.useCount.load() != 0)
            ERaise("FFT descriptor cache cannot be reset while it is still in use. Make sure all threads have "
                   "finished executing FFTs first!");
        const int32_t st = dfti_free_descriptor_external(e.descriptor);
        if (st != DFTI_NO_ERROR) Error(st, "dfti_Free_descriptor_external failed");
        e.descriptor = nullptr;
    }
}

void TDFTIDescriptorCache::Reset() {
    std::lock_guard<std::recursive_mutex> g(cs);
    ResetLocked();
}

void TDFTIDescriptorCache::SetMaxCacheSize(int32_t n) {
    if (n <= 0) ERaiseFmt("TDFTIDescriptorCache.SetMaxCacheSize: Invalid cache size: %d (expected >= 0)", n);
    if (n < 8) ERaise("TDFTIDescriptorCache.SetMaxCacheSize: Minimum cache size allowed = 8");
    std::lock_guard<std::recursive_mutex> g(cs);
    ResetLocked();
    fMaxCacheSize = n;
    Cache = std::vector<TCacheEntry>(size_t(n));
}

void TDFTIDescriptorCache::SetFastCache(bool value) {
    if (value == FFastCache) return;
    std::lock_guard<std::recursive_mutex> g(cs);
    if (!value) ResetLocked();
    FFastCache.store(value);
}

TDFTIDescriptorCache& DFTIDescriptorCache() {
    static TDFTIDescriptorCache cache;
    return cache;
}

}  // namespace rovane
