// TVec and TMtx: sizing, sub-ranges, cache slots, reset and foreign memory.
#include "rovane/containers/Rovane.h"

#include "rovane/containers/OperationFrame.h"
#include "rovane/containers/RovaneInt.h"
#include "rovane/storage/ReportChannel.h"

namespace rovane {

using namespace frame;

namespace {

int32_t BytesPerElement(TMtxFloatPrecision p) {
    static constexpr int32_t bytes[] = {4, 8, 8, 16};
    return bytes[p];
}

TMtxFloatPrecision PrecisionOf(bool complex, bool isDouble) {
    return static_cast<TMtxFloatPrecision>((complex ? 2 : 0) + (isDouble ? 1 : 0));
}

// The float container behind src, or null. Vectors and matrices answer by
// their type tag (a dynamic_cast across the library boundary compares type
// names, which showed in the cost of every sized call); other kinds ask.
const TRovane* AsFloat(const TRovaneBase& src) {
    if (src.fRovaneType == rvTVec || src.fRovaneType == rvTMtx) return static_cast<const TRovane*>(&src);
    if (src.fRovaneType == rvTVecInt || src.fRovaneType == rvTMtxInt) return nullptr;
    return dynamic_cast<const TRovane*>(&src);
}

// The core of sizing, shared by vectors and matrices: length and precision,
// precision lock, memory by slot or capacity, header. `kind` names the class
// in the messages.
void SizeCore(TRovane& self, int32_t aLength, TMtxFloatPrecision precision, const char* kind) {
    const bool isDouble = precision == rvDouble || precision == rvDoubleComplex;
    // Both refusals come before any field changes, so that a refused Size
    // leaves the object as it was. A change of width releases the block
    // first, and then no handle can be in the way.
    if (isDouble != self.fIsDouble && self.fFloatPrecisionLock)
        EInvalidArgumentRaise(self.fIsDouble ? "Self.FloatPrecisionLock = True. Cant change from Double to Single."
                                             : "Self.FloatPrecisionLock = True. Cant change from Single to Double.");
    if (isDouble == self.fIsDouble && self.fActualSizeInBytes > 0 && self.HeaderRefCount() > 1)
        EInvalidArgumentRaiseFmt("%s.Size: External references to internal array detected: RefCount  = %d", kind,
                                 self.HeaderRefCount());
    self.fLength = aLength;
    self.fFloatPrecision = precision;
    self.fComplex = precision >= rvSingleComplex;
    if (isDouble != self.fIsDouble) {
        const int32_t capacity = self.GetCapacityInElements();
        self.SetCapacityInElements(0);
        self.setActualSize(0);
        self.fIsDouble = isDouble;
        self.SetCapacityInElements(capacity);
    }
    self.fIsDouble = isDouble;
    const int64_t bytes = (int64_t(aLength) * BytesPerElement(precision) + 15) / 16 * 16;
    const bool inSlot = self.fCacheIndex >= 0 && self.fActualSizeInBytes == self.CacheLengthInBytes() &&
                        bytes <= self.CacheLengthInBytes();
    if (!inSlot) self.setActualSize(bytes);
    self.HookPointers();
    if (self.fActualSizeInBytes > 0 && self.ipoint) {
        auto* h = detail::HeaderOf(self.ValuesPointer);
        h->RefCount.store(1, std::memory_order_relaxed);
        h->Length = self.fLength;
    }
}

// Reset steps shared by TVec and TMtx.
// The state a sub-range restores on SetFullRange, shared by vectors and
// matrices (a matrix adds its shape).
void SaveFloatState(TRovane& self) {
    self.SActualSize = self.fActualSizeInBytes;
    self.SLength = self.fLength;
    self.SComplex = self.fComplex;
    self.SFloatPrecision = self.fFloatPrecision;
    self.SIsDouble = self.fIsDouble;
    self.SOffset = self.FDataOffset;
    self.COffset = self.FCDataOffset;
    self.SValuesPointer = self.ValuesPointer;
    self.fSubRangeLevel = 0;
}

void ResetCore(TDenseRovane& self, const char* kind) {
    self.SetFullRange();
    if (self.fSubRangeLevel >= 0)
        ERaiseFmt("%s.Reset: fSubRangeLevel >= 0; Unmatched SetSubRangeLevel/SetFullRangeLevel calls! fSubRangeLevel = %d",
                  kind, self.fSubRangeLevel);
    if (self.BlockLevel > 0) ERaiseFmt("%s.Reset: BlockLevel > 0, Unfinished block processing section!", kind);
    if (self.fActualSizeInBytes > 0 && self.HeaderRefCount() > 1)
        EInvalidArgumentRaiseFmt("%s.Reset: External references to internal array detected: RefCount  = %d", kind,
                                 self.HeaderRefCount());
    self.fLength = 0;
    self.fComplex = false;
    self.fCapacityInBytes = 0;
    self.fCapacityStep = 0;
    self.fFloatPrecisionLock = false;
    self.FTag = 0;
    self.Alfa = TCplx(1, 0);
    self.Beta = TCplx(0, 0);
    self.fFFTStorageFormat = fsfCCS;
    self.fFFTScrambledOrder = false;
    self.fFFTOddLength = false;
    if (!self.fIsDouble) self.setActualSize(0);
    self.fIsDouble = true;
    self.fFloatPrecision = rvDouble;
    if (self.fCacheIndex >= 0 && self.fActualSizeInBytes != self.CacheLengthInBytes())
        self.setActualSize(self.CacheLengthInBytes());
    self.HookPointers();
    if (self.fActualSizeInBytes > 0 && self.ipoint) {
        auto* h = detail::HeaderOf(self.ValuesPointer);
        h->RefCount.store(1, std::memory_order_relaxed);
        h->Length = 0;
    }
}

// Destruction of a vector or matrix: back to the full range (an unmatched
// level is left straight to the object's own state, touching no source), then
// the block goes. Never throws: a misuse is reported and the cleanup goes on.
void DestroyCore(TRovane& self) noexcept {
    self.ReportDestroyProblem();
    try {
        self.SetFullRange();
        if (self.fIsSubRange) {
            self.fSubRangeLevel = 0;
            self.SetFullRangeLevel();
        }
        self.SetCapacityInElements(0);
        self.setActualSize(0);
    } catch (const std::exception& e) {
        ReportText(e.what());
    } catch (...) {
        ReportText("TRovane.Destroy: cleanup failed");
    }
    self.fSubRangeLevel = -1;
}

void* SlotOf(const TRovaneBase& self, bool matrix) {
    if (!Controller || self.fCacheIndex < 0 || self.fMemIndex < 0) return nullptr;
    TRovanePoolItem& pool = *Controller->Pool[self.fPoolIndex];
    return matrix ? pool.Mtx.SlotPointer(self.fMemIndex) : pool.Vec.SlotPointer(self.fMemIndex);
}

int32_t SlotElements(const TRovaneBase& self, bool matrix) {
    if (!Controller || self.fCacheIndex < 0) return 0;
    TRovanePoolItem& pool = *Controller->Pool[self.fPoolIndex];
    return matrix ? pool.Mtx.CacheElements() : pool.Vec.CacheElements();
}

// Sub-range onto another object's memory, shared by TVec and TMtx.
void DirectFromSrc(TRovane& self, const TRovane& src, int32_t index, int32_t len) {
    self.fComplex = src.fComplex;
    self.fIsDouble = src.fIsDouble;
    self.fFloatPrecision = src.fFloatPrecision;
    if (len < 1) {
        self.SData = nullptr;
        self.CData = nullptr;
        self.SSData = nullptr;
        self.SCData = nullptr;
        self.ValuesPointer = nullptr;
        self.FDataOffset = 0;
        self.FCDataOffset = 0;
    } else {
        if (self.fComplex) {
            self.FCDataOffset = index + src.FCDataOffset;
            self.FDataOffset = 2 * self.FCDataOffset;
        } else {
            self.FDataOffset = index + src.FDataOffset;
            self.FCDataOffset = self.FDataOffset / 2;
        }
        self.SData = src.SData;
        self.CData = src.CData;
        self.SSData = src.SSData;
        self.SCData = src.SCData;
        ByPrecision(self.fFloatPrecision,
                    [&](auto t) { self.ValuesPointer = Base<decltype(t)>(self) + Offset<decltype(t)>(self); });
    }
}

// Sub-range onto the object's own saved range.
void DirectSelf(TRovane& self, int32_t index) {
    if (self.fComplex) {
        self.FCDataOffset = self.COffset + index;
        self.FDataOffset = 2 * self.FCDataOffset;
    } else {
        self.FDataOffset = self.SOffset + index;
        self.FCDataOffset = self.FDataOffset / 2;
    }
    ByPrecision(self.fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        if (T* base = Base<T>(self)) self.ValuesPointer = base + Offset<T>(self);
    });
}

// Forgets memory without releasing it, shared by TVec and TMtx: this is how
// adopted memory is given back and a view is cut loose from a vanished source.
void DisownCore(TRovane& self) {
    self.fLength = 0;
    self.ValuesPointer = nullptr;
    self.SData = nullptr;
    self.CData = nullptr;
    self.SSData = nullptr;
    self.SCData = nullptr;
    self.fActualSizeInBytes = 0;
    self.FDataOffset = 0;
    self.FCDataOffset = 0;
    self.fComplex = false;
    self.fFloatPrecision = self.fIsDouble ? rvDouble : rvSingle;
    self.fIsSubRange = false;
    self.fSubRangeLevel = -1;  // cut loose: no level is left open
    self.aPoint = nullptr;
}

}  // namespace

// ===========================================================================
// TVec
// ===========================================================================
TVec::TVec() {
    fConditionCheck = VecConditionCheckDefault;
    fRovaneType = rvTVec;
}

TVec::~TVec() { DestroyCore(*this); }

TVec& TVec::Size(int32_t aLength) { return Size(aLength, PrecisionOf(false, fIsDouble)); }
TVec& TVec::Size(int32_t aLength, bool aIsComplex) { return Size(aLength, PrecisionOf(aIsComplex, fIsDouble)); }
TVec& TVec::Size(int32_t aLength, bool aIsComplex, bool aIsDouble) {
    return Size(aLength, PrecisionOf(aIsComplex, aIsDouble));
}
TVec& TVec::Size(int32_t aLength, const TRovane& src) { return Size(aLength, src.fFloatPrecision); }

TVec& TVec::Size(int32_t aLength, TMtxFloatPrecision precision) {
    if (aLength < 0) EInvalidArgumentRaise("TVec.Length can not be smaller than zero!");
    if (aLength == fLength && precision == fFloatPrecision) return *this;
    if (fIsSubRange)
        ERaise(
            "TVec.IsSubRange = True! Destination would need to be resized, but is already subranged from another "
            "object. Both FloatPrecision and Length of source and destination would need to match.");
    SizeCore(*this, aLength, precision, "TVec");
    FireOnSetSize();
    return *this;
}

TVec& TVec::Size(const TRovaneBase& src) {
    if (const TRovane* f = AsFloat(src)) return Size(f->fLength, f->fFloatPrecision);
    return Size(src.fLength, fFloatPrecision);
}

TVec& TVec::Size(const TRovaneBase& src, bool complex) {
    if (const TRovane* f = AsFloat(src)) return Size(f->fLength, PrecisionOf(complex, f->fIsDouble));
    if (dynamic_cast<const TRovaneInt*>(&src)) return Size(src.fLength, PrecisionOf(complex, fIsDouble));
    ERaise("TVec.Size: Src type not recognized!");
}

TVec& TVec::Size(const TRovaneBase& src, TMtxFloatPrecision precision) { return Size(src.fLength, precision); }

void TVec::DoSetLength(int32_t value) {
    if (value != fLength) Size(value, fFloatPrecision);
}

void TVec::Clear() { Size(0, false, fIsDouble); }

TVec& TVec::Resize(int32_t len, bool zeroIt) {
    InternalResize(len, zeroIt);
    FireOnSetSize();
    return *this;
}

void TVec::InternalResize(int32_t len, bool zeroIt) {
    if (len == fLength) return;
    const int32_t old = fLength;
    const int64_t newBytes = int64_t(len) * ElemSize();
    const bool slotFits = fCacheIndex >= 0 && fActualSizeInBytes == CacheLengthInBytes() &&
                          int64_t(old) * ElemSize() <= CacheLengthInBytes() && newBytes <= CacheLengthInBytes();
    const bool capacityFits = fCapacityInBytes > 0 && fActualSizeInBytes == fCapacityInBytes &&
                              int64_t(old) * ElemSize() <= fCapacityInBytes && newBytes <= fCapacityInBytes;
    if (slotFits || capacityFits) {
        if (fIsSubRange) ERaise("TVec.IsSubRange = True! Destination would need to be resized, but is already subranged from another object. Both FloatPrecision and Length of source and destination would need to match.");
        fLength = len;
        WriteHeader(len);
        if (zeroIt && len > old) SetZero(old, len - old);
        return;
    }
    const int32_t keep = std::min(old, len);
    CachedVec t;
    t->Copy(*this);
    TRovane::SetLength(len);
    if (zeroIt && len > old) SetZero(old, len - old);
    if (keep > 0) Copy(*t, 0, 0, keep);
}

TVec& TVec::Resize(const TRovane& src, int32_t len, bool zeroIt) {
    Size(len, src.fFloatPrecision);
    const int32_t keep = std::min(len, src.fLength);
    if (keep > 0) Copy(src, 0, 0, keep);
    if (zeroIt && len > src.fLength) SetZero(src.fLength, len - src.fLength);
    return *this;
}

void TVec::DoSetComplex() {
    if (fComplex)
        fLength /= 2;
    else
        fLength *= 2;
    HookPointers();
    WriteHeader(fLength);
    FireOnSetSize();
}

void TVec::Assign(const TRovaneBase& src) {
    if (&src == this) ERaise("TVec.Assign: Src = Self");
    TDenseRovane::Assign(src);
    if (const auto* v = dynamic_cast<const TVec*>(&src); v && AssignCopiesValues) Copy(*v);
}

void TVec::SubRangeSaveState() { SaveFloatState(*this); }

void TVec::SetSubRangeDirect(int32_t index, int32_t len) {
    DirectSelf(*this, index);
    fIsSubRange = true;
    HookPointers();
    fActualSizeInBytes = int64_t(len) * ElemSize();
    fLength = len;
    FireOnSetSize();
}

void TVec::SetSubRangeDirect(TRovaneBase& src, int32_t index, int32_t len) {
    const auto* s = AsFloat(src);
    if (!s || (src.fRovaneType != rvTVec && src.fRovaneType != rvTMtx && src.fRovaneType != rvTSparseMtx))
        ERaise("TVec.SetSubRange: Src is not of TVec or TMtx or TSparseMtx type!");
    DirectFromSrc(*this, *s, index, len);
    fIsSubRange = true;
    HookPointers();
    fActualSizeInBytes = len;  // a count in this form
    fLength = len;
    FireOnSetSize();
}

int32_t TVec::CacheLength() const { return SlotElements(*this, false); }
int64_t TVec::CacheLengthInBytes() const { return fCacheIndex < 0 ? 0 : fSlotBytes; }
void* TVec::DoubleCachePointer() const { return SlotOf(*this, false); }
void* TVec::SingleCachePointer() const { return SlotOf(*this, false); }

void TVec::Reset() {
    ResetCore(*this, "TVec");
    FireOnSetSize();
    fConditionCheck = VecConditionCheckDefault;
}

void TVec::FreeToCache() {
    TVec* self = this;
    FreeIt(self);
}

TVec& TVec::Adopt(void* pointer, int32_t length, TMtxFloatPrecision precision) {
    if (fIsSubRange) ERaiseFmt("TVec.Adopt: IsSubRange = True, SubRangeLevel = %d", fSubRangeLevel);
    SetCapacityInElements(0);
    setActualSize(0);
    fLength = length;
    fFloatPrecision = precision;
    fComplex = precision >= rvSingleComplex;
    fIsDouble = precision == rvDouble || precision == rvDoubleComplex;
    ValuesPointer = pointer;
    SetBaseViews(pointer);
    FDataOffset = 0;
    FCDataOffset = 0;
    HookPointers();
    return *this;
}

TVec& TVec::Adopt(void* pointer, int32_t length, bool isComplex, bool isDouble) {
    return Adopt(pointer, length, PrecisionOf(isComplex, isDouble));
}

void TVec::Disown(void*& pointer, int32_t& length, TMtxFloatPrecision& precision) {
    if (fIsSubRange) ERaiseFmt("TVec.Disown: IsSubRange = True, SubRangeLevel = %d", fSubRangeLevel);
    pointer = ValuesPointer;
    length = fLength;
    precision = fFloatPrecision;
    Disown();
}

void TVec::Disown(void*& pointer, int32_t& length, bool& isComplex, bool& isDouble) {
    TMtxFloatPrecision p;
    Disown(pointer, length, p);
    isComplex = p >= rvSingleComplex;
    isDouble = p == rvDouble || p == rvDoubleComplex;
}

void TVec::Disown() {
    DisownCore(*this);
    HookPointers();
}

// ===========================================================================
// TMtx
// ===========================================================================
TMtx::TMtx() {
    fConditionCheck = MtxConditionCheckDefault;
    fRovaneType = rvTMtx;
}

TMtx::~TMtx() { DestroyCore(*this); }

void TMtx::SetShape(int32_t rows, int32_t cols) {
    fRows = rows;
    fCols = cols;
    fLeadingCols = cols;
    fQuadratic = rows == cols;
}

TMtx& TMtx::Size(int32_t aRows, int32_t aCols) { return Size(aRows, aCols, PrecisionOf(false, fIsDouble)); }
TMtx& TMtx::Size(int32_t aRows, int32_t aCols, bool aIsComplex) {
    return Size(aRows, aCols, PrecisionOf(aIsComplex, fIsDouble));
}
TMtx& TMtx::Size(int32_t aRows, int32_t aCols, bool aIsComplex, bool aIsDouble) {
    return Size(aRows, aCols, PrecisionOf(aIsComplex, aIsDouble));
}

TMtx& TMtx::Size(int32_t aRows, int32_t aCols, TMtxFloatPrecision precision) {
    if (aRows < 0 || aCols < 0) EInvalidArgumentRaise("TMtx.Rows and TMtx.Cols can not be smaller than zero!");
    // The element count is a 32-bit Length: a larger product is refused before
    // anything changes, instead of wrapping around.
    if (int64_t(aRows) * aCols > INT32_MAX)
        EInvalidArgumentRaise("TMtx.Size: Rows*Cols can not be larger than 2147483647!");
    const int32_t length = aRows * aCols;
    if (aRows == fRows && aCols == fCols && precision == fFloatPrecision && length == fLength) return *this;
    if (fIsSubRange)
        ERaise(
            "TMtx.IsSubRange = True! Destination would need to be resized, but is already subranged from another "
            "object. Both FloatPrecision and Length of source and destination would need to match.");
    // A refused size leaves the shape as it was.
    const int32_t oldRows = fRows, oldCols = fCols;
    SetShape(aRows, aCols);
    try {
        SizeCore(*this, length, precision, "TMtx");
    } catch (...) {
        SetShape(oldRows, oldCols);
        throw;
    }
    FireOnSetSize();
    return *this;
}

TMtx& TMtx::Size(const TRovaneBase& src) {
    if (const auto* m = dynamic_cast<const TMtx*>(&src)) return Size(m->fRows, m->fCols, m->fFloatPrecision);
    if (const TRovane* f = AsFloat(src)) {
        if (f->fLength != fLength)
            ERaise("TRovane.Size: Initializing matrix with vector having different length!");
        return Size(fRows, fCols, f->fFloatPrecision);
    }
    if (src.fLength != fLength) ERaise("TRovane.Size: Initializing matrix with vector having different length!");
    return *this;
}

TMtx& TMtx::Size(const TRovaneBase& src, bool complex) {
    if (const auto* m = dynamic_cast<const TMtx*>(&src))
        return Size(m->fRows, m->fCols, PrecisionOf(complex, m->fIsDouble));
    if (const TRovane* f = AsFloat(src)) {
        if (f->fLength != fLength)
            ERaise("TRovane.Size: Initializing matrix with vector having different length!");
        return Size(fRows, fCols, PrecisionOf(complex, f->fIsDouble));
    }
    if (dynamic_cast<const TRovaneInt*>(&src)) {
        if (src.fLength != fLength)
            ERaise("TRovane.Size: Initializing matrix with vector having different length!");
        return Size(fRows, fCols, PrecisionOf(complex, fIsDouble));
    }
    ERaise("TMtx.Size: Src type not recognized!");
}

TMtx& TMtx::Size(const TRovaneBase& src, TMtxFloatPrecision precision) {
    if (const auto* m = dynamic_cast<const TMtx*>(&src)) return Size(m->fRows, m->fCols, precision);
    if (src.fLength != fLength) ERaise("TRovane.Size: Initializing matrix with vector having different length!");
    return Size(fRows, fCols, precision);
}

void TMtx::DoSetLength(int32_t value) {
    if (value != fLength) EInvalidArgumentRaise("TMtx: Length can not be set. Use Size!");
}

void TMtx::Clear() { Size(0, 0, PrecisionOf(false, fIsDouble)); }

void TMtx::InternalResize(int32_t len, bool) {
    if (len != fLength) EInvalidArgumentRaise("TMtx: Length can not be set. Use Size!");
}

void TMtx::DoSetComplex() {
    if (fComplex)
        fCols /= 2;
    else
        fCols *= 2;
    fLeadingCols = fCols;
    fLength = fRows * fCols;
    fQuadratic = fRows == fCols;
    HookPointers();
    WriteHeader(fLength);
    FireOnSetSize();
}

void TMtx::Assign(const TRovaneBase& src) {
    if (&src == this) ERaise("TMtx.Assign: Src = Self");
    TDenseRovane::Assign(src);
    Size(src);
    if (const auto* m = dynamic_cast<const TMtx*>(&src)) {
        fQuadratic = m->fQuadratic;
        FAutoMtxType = m->FAutoMtxType;
        FBalance = m->FBalance;
        FConditionNumber = m->FConditionNumber;
        FRefineSolution = m->FRefineSolution;
        FTriangleForm = m->FTriangleForm;
        FTriangleUnit = m->FTriangleUnit;
        FSuperDiag = m->FSuperDiag;
        FSubDiag = m->FSubDiag;
        if (AssignCopiesValues) Copy(*m);
    }
}

void TMtx::SubRangeSaveState() {
    SaveFloatState(*this);
    SRows = fRows;
    SCols = fCols;
    SLeadingCols = fLeadingCols;
}

void TMtx::SubRangeLoadState() {
    TRovane::SubRangeLoadState();
    fRows = SRows;
    fCols = SCols;
    fLeadingCols = SLeadingCols;
    fQuadratic = fRows == fCols;
}

void TMtx::SetSubRangeDirect(int32_t index, int32_t len) {
    DirectSelf(*this, index);
    SetShape(1, len);
    fIsSubRange = true;
    HookPointers();
    fActualSizeInBytes = int64_t(len) * ElemSize();
    fLength = len;
    FireOnSetSize();
}

void TMtx::SetSubRangeDirect(TRovaneBase& src, int32_t index, int32_t len) {
    const auto* s = AsFloat(src);
    if (!s || (src.fRovaneType != rvTVec && src.fRovaneType != rvTMtx))
        ERaise("TMtx.SetSubRange: Src is not of TVec or TMtx type!");
    DirectFromSrc(*this, *s, index, len);
    SetShape(1, len);
    fIsSubRange = true;
    HookPointers();
    fActualSizeInBytes = int64_t(len) * ElemSize();
    fLength = len;
    FireOnSetSize();
}

void TMtx::SetSubRange(TRovaneBase& src, int32_t index, int32_t rows, int32_t cols) {
    int32_t len = rows * cols;
    src.ValidateParams(index, len);
    const bool entering = !fIsSubRange;
    if (entering) {
        SubRangeSaveState();
        EnsureStack();
    }
    fSubRangeStack[fSubRangeLevel] = TSubRangeItem{index, len, &src};
    try {
        SetSubRangeDirect2(src, index, rows, cols);
    } catch (...) {
        // A source of the wrong kind leaves no level open.
        if (entering && !fIsSubRange) {
            fSubRangeStack[0].Src = nullptr;
            fSubRangeLevel = -1;
        }
        throw;
    }
}

void TMtx::SetSubRangeDirect2(TRovaneBase& src, int32_t index, int32_t rows, int32_t cols) {
    const auto* s = AsFloat(src);
    if (!s || (src.fRovaneType != rvTVec && src.fRovaneType != rvTMtx && src.fRovaneType != rvTSparseMtx))
        ERaise("TMtx.SetSubRange: Src is not of TVec or TMtx or TMtxSparse type!");
    DirectFromSrc(*this, *s, index, rows * cols);
    SetShape(rows, cols);
    fIsSubRange = true;
    HookPointers();
    fLength = rows * cols;
    fActualSizeInBytes = int64_t(fLength) * ElemSize();
    FireOnSetSize();
}

int32_t TMtx::CacheLength() const { return SlotElements(*this, true); }
int64_t TMtx::CacheLengthInBytes() const { return fCacheIndex < 0 ? 0 : fSlotBytes; }
void* TMtx::DoubleCachePointer() const { return SlotOf(*this, true); }
void* TMtx::SingleCachePointer() const { return SlotOf(*this, true); }

void TMtx::Reset() {
    ResetCore(*this, "TMtx");
    SetShape(0, 0);
    fQuadratic = true;
    // The matrix settings go back to those of a new matrix.
    FAutoMtxType = false;
    FBalance = btFull;
    FConditionNumber = cnNone;
    FRefineSolution = false;
    FTriangleForm = tfUpper;
    FTriangleUnit = false;
    FSuperDiag = 0;
    FSubDiag = 0;
    FireOnSetSize();
    fConditionCheck = MtxConditionCheckDefault;
}

void TMtx::FreeToCache() {
    TMtx* self = this;
    FreeIt(self);
}

TMtx& TMtx::Adopt(void* pointer, int32_t rows, int32_t cols, TMtxFloatPrecision precision) {
    if (fIsSubRange) ERaiseFmt("TMtx.Adopt: IsSubRange = True, SubRangeLevel = %d", fSubRangeLevel);
    SetCapacityInElements(0);
    setActualSize(0);
    SetShape(rows, cols);
    fLength = rows * cols;
    fFloatPrecision = precision;
    fComplex = precision >= rvSingleComplex;
    fIsDouble = precision == rvDouble || precision == rvDoubleComplex;
    ValuesPointer = pointer;
    SetBaseViews(pointer);
    FDataOffset = 0;
    FCDataOffset = 0;
    HookPointers();
    return *this;
}

void TMtx::Disown() {
    DisownCore(*this);
    SetShape(0, 0);
    fQuadratic = false;
    HookPointers();
}

}  // namespace rovane
