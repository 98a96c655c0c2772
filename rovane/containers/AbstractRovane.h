// TRovane and TDenseRovane: the float container base with its element views,
// the Size/Copy door, complexity and precision switching, and the operation
// families that need contiguous storage.
#pragma once

#include <span>

#include "rovane/storage/RovaneBase.h"

namespace rovane {

class TVec;
class TMtx;
class TVecInt;

// The four public forms of a unary member and its range core (the one place
// that dispatches on precision): in place, in place on a range, out of place
// (Self sized like X), and out of place into an existing range of Self.
#define ROVANE_UNARY_MEMBER(CLS, OP)                                          \
    CLS& OP();                                                                \
    CLS& OP(int32_t index, int32_t len);                                      \
    CLS& OP(const TRovane& x);                                                \
    CLS& OP(const TRovane& x, int32_t xIndex, int32_t index, int32_t len);   \
    static void OP(const TRovane& src, TRovane& dst, int32_t len, int32_t dstIndex, int32_t srcIndex);

// Defaults read by the constructors; set through the controller.
ROVANE_API extern bool VecConditionCheckDefault;
ROVANE_API extern bool MtxConditionCheckDefault;
// Whether Assign copies the values as well as the settings.
ROVANE_API extern bool AssignCopiesValues;

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

    // ---- copy family ---------------------------------------------------
    TRovane& Copy(const TRovane& vec);
    TRovane& Copy(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len);
    TRovane& Copy(const TRovane& vec, TMtxFloatPrecision precision);
    TRovane& CopyTo(TRovane& dst) const;
    TRovane& CopyTo(TRovane& dst, TMtxFloatPrecision precision) const;
    TRovane& CopyTo(TRovane& dst, int32_t dstIndex, int32_t index, int32_t len) const;

    // ---- complexity ----------------------------------------------------
    TRovane& ExtendToComplex(bool zeros = true);
    TRovane& ExtendToComplex(const TRovane& src, bool zeros);
    TRovane& ExtendToComplex(const TRovane& src, bool zeros, int32_t srcIndex, int32_t index, int32_t len);

    // ---- scalars and arrays --------------------------------------------
    TRovane& SetVal(double value);
    TRovane& SetVal(double value, int32_t index, int32_t len);
    TRovane& SetVal(const TCplx& value);
    TRovane& SetVal(const TCplx& value, int32_t index, int32_t len);
    TRovane& SetZero();
    TRovane& SetZero(int32_t index, int32_t len);
    // Fills from a list of numbers: reals for a real object, (re, im) pairs
    // for a complex one. Self is sized from the list.
    TRovane& SetIt(bool complex, std::span<const double> values);
    TRovane& SetIt(std::initializer_list<double> values) { return SetIt(false, values); }
    TRovane& SetCplx(std::initializer_list<double> values) { return SetIt(true, values); }
    // Sized forms: the list overwrites from the start of the present length.
    TRovane& SetDouble(std::span<const double> values);
    TRovane& SetSingle(std::span<const float> values);
    TRovane& SetInteger(std::span<const int32_t> values);
    double First() const;
    TCplx Firstc() const;
    double Last() const;
    TCplx Lastc() const;

    TRovane& CopyFromArray(std::span<const double> src, int32_t srcIndex = 0, int32_t index = 0, int32_t len = -1);
    TRovane& CopyFromArray(std::span<const float> src, int32_t srcIndex = 0, int32_t index = 0, int32_t len = -1);
    TRovane& CopyFromArray(std::span<const TCplx> src, int32_t srcIndex = 0, int32_t index = 0, int32_t len = -1);
    TRovane& CopyFromArray(std::span<const TSCplx> src, int32_t srcIndex = 0, int32_t index = 0, int32_t len = -1);
    TRovane& CopyFromArray(std::span<const int32_t> src, int32_t srcIndex = 0, int32_t index = 0, int32_t len = -1);
    TRovane& CopyFromArray(std::span<const int16_t> src, int32_t srcIndex = 0, int32_t index = 0, int32_t len = -1);
    TRovane& CopyFromArray(std::span<const uint8_t> src, int32_t srcIndex = 0, int32_t index = 0, int32_t len = -1);
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

    // ==== elementwise math ==============================================
    // ---- trigonometric and hyperbolic functions (Trigonometric.cpp) -----
    // ---- end of trigonometric and hyperbolic functions ------------------

    // ---- powers, roots, exponentials and logarithms (Powers.cpp) ---------
    ROVANE_UNARY_MEMBER(TRovane, Sqrt)
    // ---- end of powers, roots, exponentials and logarithms ---------------

    // ---- rounding, sign, remainder and complex parts (Parts.cpp) ---------
    // ---- end of rounding, sign, remainder and complex parts --------------

    // ---- thresholds, replacement and random values (Thresholds.cpp) -----
    // ---- end of thresholds, replacement and random values ----------------

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

    // ---- Add: the twelve members --------------------------------------
    TDenseRovane& Add(const TRovane& vec);
    TDenseRovane& Add(const TRovane& vec1, const TRovane& vec2);
    TDenseRovane& Add(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len);
    TDenseRovane& Add(const TRovane& vec1, const TRovane& vec2, int32_t vec1Index, int32_t vec2Index, int32_t index,
                      int32_t len);
    TDenseRovane& Add(double value);
    TDenseRovane& Add(const TCplx& value);
    TDenseRovane& Add(double value, int32_t index, int32_t len);
    TDenseRovane& Add(const TCplx& value, int32_t index, int32_t len);
    TDenseRovane& Add(const TRovane& vec, double value);
    TDenseRovane& Add(const TRovane& vec, const TCplx& value);
    TDenseRovane& Add(const TRovane& vec, double value, int32_t vecIndex, int32_t index, int32_t len);
    TDenseRovane& Add(const TRovane& vec, const TCplx& value, int32_t vecIndex, int32_t index, int32_t len);

    // ---- the further arithmetic families (Arithmetic.cpp) ---------------
    // All overloads of one name sit in this class, the scalar forms of Mul and
    // Scale included, so that no overload hides another across the two classes.
    // A Len of -1 means up to the end of Self.

// The twelve forms of a family shaped like Add: with a vector, two vectors,
// their ranges, a real or complex scalar in place or on a range, and a vector
// with a scalar, whole or on ranges.
#define ROVANE_ARITH_FAMILY(OP)                                                                                   \
    TDenseRovane& OP(const TRovane& vec);                                                                        \
    TDenseRovane& OP(const TRovane& vec1, const TRovane& vec2);                                                  \
    TDenseRovane& OP(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len);                          \
    TDenseRovane& OP(const TRovane& vec1, const TRovane& vec2, int32_t vec1Index, int32_t vec2Index,             \
                     int32_t index, int32_t len);                                                                \
    TDenseRovane& OP(double value);                                                                              \
    TDenseRovane& OP(const TCplx& value);                                                                        \
    TDenseRovane& OP(double value, int32_t index, int32_t len);                                                  \
    TDenseRovane& OP(const TCplx& value, int32_t index, int32_t len);                                            \
    TDenseRovane& OP(const TRovane& vec, double value);                                                          \
    TDenseRovane& OP(const TRovane& vec, const TCplx& value);                                                    \
    TDenseRovane& OP(const TRovane& vec, double value, int32_t vecIndex, int32_t index, int32_t len);            \
    TDenseRovane& OP(const TRovane& vec, const TCplx& value, int32_t vecIndex, int32_t index, int32_t len);
// The scalar forms alone: in place, whole or on a range.
#define ROVANE_SCALAR_FAMILY(OP)                                                                                  \
    TDenseRovane& OP(double value);                                                                              \
    TDenseRovane& OP(const TCplx& value);                                                                        \
    TDenseRovane& OP(double value, int32_t index, int32_t len);                                                  \
    TDenseRovane& OP(const TCplx& value, int32_t index, int32_t len);
// A scalar on the left of each element: in place, and from a vector.
#define ROVANE_REVERSED_FAMILY(OP)                                                                                \
    ROVANE_SCALAR_FAMILY(OP)                                                                                     \
    TDenseRovane& OP(double value, const TRovane& vec);                                                          \
    TDenseRovane& OP(const TCplx& value, const TRovane& vec);                                                    \
    TDenseRovane& OP(double value, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len);            \
    TDenseRovane& OP(const TCplx& value, const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len);

    // Self - Vec, Vec1 - Vec2; Sub(Value) is Add(-Value), Sub(Vec, Value) is Add(Vec, -Value).
    ROVANE_ARITH_FAMILY(Sub)
    // Self * Vec, Vec1 * Vec2, and scaling by a real or complex value.
    ROVANE_ARITH_FAMILY(Mul)
    // Scale is Mul with a scalar, Offset is Add with a scalar.
    ROVANE_SCALAR_FAMILY(Scale)
    ROVANE_SCALAR_FAMILY(Offset)
    // Value - element and Value / element.
    ROVANE_REVERSED_FAMILY(SubFrom)
    ROVANE_REVERSED_FAMILY(DivideBy)

    // Self / Vec and Num / Den. The Threshold forms multiply by the inverse of
    // the denominator, whose elements below Threshold in magnitude count as
    // having that magnitude (keeping sign or phase).
    TDenseRovane& Divide(const TRovane& vec);
    TDenseRovane& Divide(const TRovane& num, const TRovane& den);
    TDenseRovane& Divide(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len);
    TDenseRovane& Divide(const TRovane& num, const TRovane& den, int32_t numIndex, int32_t denIndex, int32_t index,
                         int32_t len);
    TDenseRovane& Divide(const TRovane& vec, double threshold);
    TDenseRovane& Divide(const TRovane& num, const TRovane& den, double threshold);
    TDenseRovane& Divide(const TRovane& vec, double threshold, int32_t vecIndex, int32_t index, int32_t len);
    TDenseRovane& Divide(const TRovane& num, const TRovane& den, double threshold, int32_t numIndex,
                         int32_t denIndex, int32_t index, int32_t len);
    TDenseRovane& DivideVec(const TRovane& vec);
    TDenseRovane& DivideVec(const TRovane& num, const TRovane& den);
    TDenseRovane& DivideVec(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len);

    // Self + Vec * Factor. A factor of exactly one is Add. The two-real form
    // takes the complex factor (Factor1, Factor2).
    TDenseRovane& AddScaled(const TRovane& vec, double factor);
    TDenseRovane& AddScaled(const TRovane& vec, const TCplx& factor);
    TDenseRovane& AddScaled(const TRovane& vec, double factor1, double factor2);
    TDenseRovane& AddScaled(const TRovane& vec, double factor, int32_t vecIndex, int32_t index, int32_t len);
    TDenseRovane& AddScaled(const TRovane& vec, const TCplx& factor, int32_t vecIndex, int32_t index, int32_t len);
    TDenseRovane& AddScaled(const TRovane& vec, double factor1, double factor2, int32_t vecIndex, int32_t index,
                            int32_t len);

    // Self + Vec1 * Vec2, all of one complexity.
    TDenseRovane& AddProduct(const TRovane& vec1, const TRovane& vec2);
    TDenseRovane& AddProduct(const TRovane& vec1, const TRovane& vec2, int32_t vec1Index, int32_t vec2Index,
                             int32_t index, int32_t len);

    // Self * conj(Vec), Vec1 * conj(Vec2).
    TDenseRovane& ConjMul(const TRovane& vec);
    TDenseRovane& ConjMul(const TRovane& vec1, const TRovane& vec2);
    TDenseRovane& ConjMul(const TRovane& vec, int32_t vecIndex, int32_t index, int32_t len);
    TDenseRovane& ConjMul(const TRovane& vec1, const TRovane& vec2, int32_t vec1Index, int32_t vec2Index,
                          int32_t index, int32_t len);

#undef ROVANE_ARITH_FAMILY
#undef ROVANE_SCALAR_FAMILY
#undef ROVANE_REVERSED_FAMILY
    // ---- end of the further arithmetic families --------------------------
};

}  // namespace rovane
