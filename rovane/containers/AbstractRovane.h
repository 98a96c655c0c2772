// TRovane and TDenseRovane: the float container base with its element views,
// the Size/Copy door, complexity and precision switching, and the operation
// families that need contiguous storage.
#pragma once

#include <span>

#include "rovane/storage/RovaneBase.h"
#include "rovane/storage/Streams.h"

namespace rovane {

class TVec;
class TMtx;
class TVecInt;
class TRovaneInt;

// Defaults read by the constructors; set through the controller.
ROVANE_API extern std::atomic<bool> VecConditionCheckDefault;
ROVANE_API extern std::atomic<bool> MtxConditionCheckDefault;
// Whether Assign copies the values as well as the settings.
ROVANE_API extern std::atomic<bool> AssignCopiesValues;

class ROVANE_API TRovane : public TRovaneSample {
public:
    TRovane();

    bool FDirty = false;
    double fZeroTolerance = MACHEP;
    uint32_t RISeed = 0, GISeed = 0;
    int32_t COffset = 0;
    TPrecision fPrecision = prDouble;
    TRounding fRounding = rnTrunc;
    // Element views of the current range: raw pointers, null for the other
    // precision. Counted handles over the same memory come from ValuesArray
    // and its siblings.
    double* Values = nullptr;
    TCplx* CValues = nullptr;
    double* Values1D = nullptr;
    TCplx* CValues1D = nullptr;
    float* SValues = nullptr;
    TSCplx* SCValues = nullptr;
    float* SValues1D = nullptr;
    TSCplx* SCValues1D = nullptr;
    TCplx Beta{0, 0};
    TCplx Alfa{1, 0};

    // ---- properties ----------------------------------------------------
    bool Complex() const { return fComplex; }
    void SetComplex(bool value);
    TMtxFloatPrecision FloatPrecision() const { return fFloatPrecision; }
    void SetFloatPrecision(TMtxFloatPrecision value);
    bool Dirty() const { return FDirty; }
    void SetDirty(bool value) { FDirty = value; }
    double ZeroTolerance() const { return fZeroTolerance; }
    void SetZeroTolerance(double value) { fZeroTolerance = value; }
    TPrecision Precision() const { return fPrecision; }
    void SetPrecision(TPrecision value) { fPrecision = value; }
    TRounding Rounding() const { return fRounding; }
    void SetRounding(TRounding value) { fRounding = value; }

    // Default array property: element i of the real view as a double, over
    // single or double storage, unchecked.
    class ElementRef {
    public:
        ElementRef(TRovane& owner, int32_t i) : fOwner(owner), fIndex(i) {}
        operator double() const { return fOwner.GetElement(fIndex); }
        ElementRef& operator=(double v) {
            fOwner.PutElement(fIndex, v);
            return *this;
        }
        ElementRef& operator=(const ElementRef& o) { return *this = static_cast<double>(o); }

    private:
        TRovane& fOwner;
        int32_t fIndex;
    };
    ElementRef operator[](int32_t i) { return ElementRef(*this, i); }
    double operator[](int32_t i) const { return GetElement(i); }
    double GetElement(int32_t i) const { return fIsDouble ? Values1D[i] : static_cast<double>(SValues1D[i]); }
    void PutElement(int32_t i, double v) {
        if (fIsDouble)
            Values1D[i] = v;
        else
            SValues1D[i] = static_cast<float>(v);
    }

    // Counted handles over the block, without a copy. A held handle makes the
    // next Size fail until it is released.
    TDoubleArray ValuesArray();
    TCplxArray CValuesArray();
    TSingleArray SValuesArray();
    TSCplxArray SCValuesArray();

    // ---- overrides of the storage object -------------------------------
    void Assign(const TRovaneBase& src) override;
    std::string DestroyProblem() const override;
    void SubRangeLoadState() override;
    void AllocMemory() override;
    void AllocCacheMemory() override;
    void HookPointers() override;
    int32_t ElemSize() const override;
    void SetCapacityInElements(int32_t count) override;
    int32_t GetCapacityInElements() override;
    void setIsDouble(bool value) override;

    // ---- the Size door -------------------------------------------------
    virtual TRovane& Size(const TRovaneBase& src, bool complex) = 0;
    virtual TRovane& Size(const TRovaneBase& src, TMtxFloatPrecision precision) = 0;
    virtual TRovane& Size(const TRovaneBase& src) = 0;
    virtual void DoSetComplex() = 0;
    virtual void InternalResize(int32_t len, bool zeroIt) = 0;

    // Pointers to the slot memory of this object's cache entry.
    virtual void* DoubleCachePointer() const = 0;
    virtual void* SingleCachePointer() const = 0;
    // The slot seen as complex data, and the element offsets of the data in
    // the slot (a slot holds its data from its start).
    virtual void* CplxDoubleCachePointer() const { return DoubleCachePointer(); }
    virtual void* CplxSingleCachePointer() const { return SingleCachePointer(); }
    virtual int32_t DoubleCacheOffset() const { return 0; }
    virtual int32_t CplxDoubleCacheOffset() const { return 0; }
    virtual int32_t SingleCacheOffset() const { return 0; }
    virtual int32_t CplxSingleCacheOffset() const { return 0; }

    // Text renderings of the values for display: one value a line, real
    // values (both parts of complex data) or complex values (a real value
    // as a complex one with zero imaginary part). At most RealValuesLimit
    // values are shown; a last line "..." says that more follow.
    std::string RealValues() const { return GetRealValues(); }
    std::string ComplexValues() const { return GetComplexValues(); }
    virtual std::string GetRealValues() const;
    virtual std::string GetComplexValues() const;
    static constexpr int32_t RealValuesLimit = 1000;

    // ---- copies into another object and element reads ----------------
    // CopyTo sizes Dst like Self (in the given precision) and returns Dst.
    TRovane& CopyTo(TRovane& dst) const;
    TRovane& CopyTo(TRovane& dst, TMtxFloatPrecision precision) const;
    TRovane& CopyTo(TRovane& dst, int32_t dstIndex, int32_t index, int32_t len) const;
    // To an integer vector or matrix, rounded as asked and saturated at the
    // width's limits (a NaN gives 0); complex data go interleaved, two
    // integers an element. Returns Dst.
    TRovaneInt& CopyTo(TRovaneInt& dst, TRounding rounding) const;
    TRovaneInt& CopyTo(TRovaneInt& dst, TRounding rounding, int32_t dstIndex, int32_t index, int32_t len) const;
    double First() const;
    TCplx Firstc() const;
    double Last() const;
    TCplx Lastc() const;
    // Copies into an array that already has room (see SizeToArray). Complex
    // data go to complex arrays pairwise, to real arrays interleaved.
    void CopyToArray(TDoubleArray& dst, int32_t dstIndex = 0, int32_t index = 0, int32_t len = -1) const;
    void CopyToArray(TSingleArray& dst, int32_t dstIndex = 0, int32_t index = 0, int32_t len = -1) const;
    void CopyToArray(TCplxArray& dst, int32_t dstIndex = 0, int32_t index = 0, int32_t len = -1) const;
    void CopyToArray(TSCplxArray& dst, int32_t dstIndex = 0, int32_t index = 0, int32_t len = -1) const;
    void CopyToArray(TIntegerArray& dst, TRounding rounding, int32_t dstIndex = 0, int32_t index = 0,
                     int32_t len = -1) const;
    void CopyToArray(TSmallIntArray& dst, TRounding rounding, int32_t dstIndex = 0, int32_t index = 0,
                     int32_t len = -1) const;
    void CopyToArray(TByteArray& dst, TRounding rounding, int32_t dstIndex = 0, int32_t index = 0,
                     int32_t len = -1) const;
    // Sizes a real array to what CopyToArray needs: 2 * Length for complex.
    template <class T>
    void SizeToArray(TArray<T>& dst) const {
        dst.SetLength(fComplex && !IsComplexElement<T> ? 2 * fLength : fLength);
    }

    // ==== the chaining members ==========================================
    // Declared from the table containers/members.tbl; each returns Self.
#include "rovane/containers/generated/TRovane.members.h"

    // ---- streams and text forms (containers/RovaneStreams.cpp) ------------
    // WriteHeader, ReadHeader, WriteValues, ReadValues, SaveToStream,
    // LoadFromStream, SaveToFile, LoadFromFile: rows of tables/streams.tbl.
    // The binary property "DataValues" of a persisted owner.
    void SaveBinaryStream(std::ostream& stream);
    void LoadBinaryStream(std::istream& stream);
    virtual void DefineProperties(TFiler& filer);
    // Hooks at the end of a vector's WriteHeader and ReadHeader, empty here,
    // for subclasses that add header fields.
    virtual void InternalWriteHeader(std::ostream& stream);
    virtual void InternalReadHeader(std::istream& stream);
    // The fields of a header as read, before they are applied.
    struct StreamHeader;

protected:
    using TRovaneBase::WriteHeader;
    virtual void WriteStreamHeader(std::ostream& stream, TPrecision precision, TEndianness endianness);
    // Reads and checks a header without changing the object.
    virtual void ParseStreamHeader(std::istream& stream, TEndianness endianness, StreamHeader& h) const;
    virtual void ApplyStreamHeader(std::istream& stream, const StreamHeader& h);

public:
    // ---- end of streams and text forms ---------------------------------

protected:
    template <class T>
    static constexpr bool IsComplexElement = std::is_same_v<T, TCplx> || std::is_same_v<T, TSCplx>;
    template <class T>
    TRovane& CopyFromArrayT(std::span<const T> src, int32_t srcIndex, int32_t index, int32_t len);
    template <class T>
    void CopyToArrayT(TArray<T>& dst, TRounding rounding, int32_t dstIndex, int32_t index, int32_t len) const;
    template <class T>
    TArray<T> ShareBlock(bool wantDouble);
};

// Methods that need contiguous storage, among them the arithmetic families.
class ROVANE_API TDenseRovane : public TRovane {
public:
    TDenseRovane();

    TFFTStorageFormat fFFTStorageFormat = fsfCCS;
    bool fFFTScrambledOrder = false;
    bool fFFTOddLength = false;
    TFFTStorageFormat FFTStorageFormat() const { return fFFTStorageFormat; }
    void SetFFTStorageFormat(TFFTStorageFormat v) { fFFTStorageFormat = v; }
    bool FFTScrambled() const { return fFFTScrambledOrder; }
    void SetFFTScrambled(bool v) { fFFTScrambledOrder = v; }
    bool FFTOddLength() const { return fFFTOddLength; }
    void SetFFTOddLength(bool v) { fFFTOddLength = v; }

    void Assign(const TRovaneBase& src) override;

    // ==== the chaining members ==========================================
    // Declared from the table containers/members.tbl; each returns Self.
#include "rovane/containers/generated/TDenseRovane.members.h"
};

}  // namespace rovane
