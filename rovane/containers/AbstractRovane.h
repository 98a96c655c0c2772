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
    ROVANE_UNARY_MEMBER(TRovane, Sin)
    ROVANE_UNARY_MEMBER(TRovane, Cos)
    ROVANE_UNARY_MEMBER(TRovane, Tan)
    ROVANE_UNARY_MEMBER(TRovane, Cot)
    ROVANE_UNARY_MEMBER(TRovane, Sec)
    ROVANE_UNARY_MEMBER(TRovane, Csc)
    ROVANE_UNARY_MEMBER(TRovane, ArcSin)
    ROVANE_UNARY_MEMBER(TRovane, ArcCos)
    ROVANE_UNARY_MEMBER(TRovane, ArcTan)
    ROVANE_UNARY_MEMBER(TRovane, ArcCot)
    ROVANE_UNARY_MEMBER(TRovane, ArcSec)
    ROVANE_UNARY_MEMBER(TRovane, ArcCsc)
    ROVANE_UNARY_MEMBER(TRovane, Sinh)
    ROVANE_UNARY_MEMBER(TRovane, Cosh)
    ROVANE_UNARY_MEMBER(TRovane, Tanh)
    ROVANE_UNARY_MEMBER(TRovane, Coth)
    ROVANE_UNARY_MEMBER(TRovane, Sech)
    ROVANE_UNARY_MEMBER(TRovane, Csch)
    ROVANE_UNARY_MEMBER(TRovane, ArcSinh)
    ROVANE_UNARY_MEMBER(TRovane, ArcCosh)
    ROVANE_UNARY_MEMBER(TRovane, ArcTanh)
    ROVANE_UNARY_MEMBER(TRovane, ArcCoth)
    ROVANE_UNARY_MEMBER(TRovane, ArcSech)
    ROVANE_UNARY_MEMBER(TRovane, ArcCsch)
    // Multiplication by pi/180 and 180/pi; complex data in both parts.
    ROVANE_UNARY_MEMBER(TRovane, DegToRad)
    ROVANE_UNARY_MEMBER(TRovane, RadToDeg)
    // Sine and cosine of the real Self into SinX and CosX. The whole form sizes
    // both like Self; the range form reads Self from Index and writes from
    // SinXIndex and CosXIndex.
    TRovane& SinCos(TRovane& sinX, TRovane& cosX);
    TRovane& SinCos(TRovane& sinX, TRovane& cosX, int32_t sinXIndex, int32_t cosXIndex, int32_t index, int32_t len);
    // sinh and cosh of the real Self from one exponential: (E - R) / 2 and
    // (E + R) / 2 with E = exp(x), R = 1 / E.
    TRovane& SinhCosh(TRovane& sinhX, TRovane& coshX);
    TRovane& SinhCosh(TRovane& sinhX, TRovane& coshX, int32_t sinhXIndex, int32_t coshXIndex, int32_t index,
                      int32_t len);
    // Angle of the points (X, Y), the ordinate first; real data.
    TRovane& ArcTan2(const TRovane& y, const TRovane& x);
    TRovane& ArcTan2(const TRovane& y, const TRovane& x, int32_t yIndex, int32_t xIndex, int32_t index, int32_t len);
    // exp(i omega) = cos omega + i sin omega of a real angle. The in-place forms
    // make a real Self complex (the range form all of it, writing the range);
    // the range form from Omega writes into a complex Self.
    TRovane& Expj();
    TRovane& Expj(int32_t index, int32_t len);
    TRovane& Expj(const TRovane& omega);
    TRovane& Expj(const TRovane& omega, int32_t omegaIndex, int32_t index, int32_t len);
    // ---- end of trigonometric and hyperbolic functions ------------------

    // ---- powers, roots, exponentials and logarithms (Powers.cpp) ---------
    ROVANE_UNARY_MEMBER(TRovane, Sqrt)
    ROVANE_UNARY_MEMBER(TRovane, Sqr)
    ROVANE_UNARY_MEMBER(TRovane, Cbrt)
    ROVANE_UNARY_MEMBER(TRovane, Ln)
    ROVANE_UNARY_MEMBER(TRovane, Log10)
    ROVANE_UNARY_MEMBER(TRovane, Log2)
    ROVANE_UNARY_MEMBER(TRovane, Exp)
    ROVANE_UNARY_MEMBER(TRovane, Exp2)
    ROVANE_UNARY_MEMBER(TRovane, Exp10)
    ROVANE_UNARY_MEMBER(TRovane, Inv)
    ROVANE_UNARY_MEMBER(TRovane, InvSqrt)
    ROVANE_UNARY_MEMBER(TRovane, InvCbrt)
    // Real data only: complex data are refused, also with ConditionCheck off.
    ROVANE_UNARY_MEMBER(TRovane, Erf)
    ROVANE_UNARY_MEMBER(TRovane, Erfc)
    ROVANE_UNARY_MEMBER(TRovane, ErfInv)

    // Reciprocal with a floor on the magnitude: |x| < Threshold counts as
    // Threshold, keeping sign or phase; 0 is exact, below 0 leaves the data.
    TRovane& Inv(double threshold);
    TRovane& Inv(double threshold, int32_t index, int32_t len);
    TRovane& Inv(const TRovane& x, double threshold);
    TRovane& Inv(const TRovane& x, double threshold, int32_t xIndex, int32_t index, int32_t len);

    // Logarithm to the base N: Ln, then a multiplication by 1 / ln(N).
    TRovane& LogN(double n);
    TRovane& LogN(double n, int32_t index, int32_t len);
    TRovane& LogN(double n, const TRovane& x);
    TRovane& LogN(double n, const TRovane& x, int32_t xIndex, int32_t index, int32_t len);

    // Powers. A complex result passes the zero rule element by element: a
    // zero base gives CNAN (complex exponent), 0 (Re > 0), (INF, 0) (Re < 0)
    // or 1 (exponent 0); exponent 0 gives 1; a negative real base with a
    // complex exponent is recomputed by the scalar complex Power.
    TRovane& Power(double value);
    TRovane& Power(const TCplx& value);
    TRovane& Power(const TRovane& base, double value);
    TRovane& Power(const TRovane& base, const TCplx& value);
    TRovane& Power(double value, const TRovane& exponent);
    TRovane& Power(const TCplx& value, const TRovane& exponent);
    TRovane& Power(const TRovane& base, const TRovane& exponent);
    TRovane& PowerVec(const TRovane& base, const TRovane& exponent);
    // Square-and-multiply on |n|, the reciprocal at the end for n < 0.
    TRovane& IntPower(int32_t n);
    TRovane& IntPower(const TRovane& base, int32_t n);
    // ---- end of powers, roots, exponentials and logarithms ---------------

    // ---- rounding, sign, remainder and complex parts (Parts.cpp) ---------
    // Real results from real or complex data: |x|, re, im, re^2 + im^2 and
    // atan2(im, re). The in-place forms make complex data real; a range
    // form never writes a real result into a complex range.
    ROVANE_UNARY_MEMBER(TRovane, Abs)
    ROVANE_UNARY_MEMBER(TRovane, Mag)
    ROVANE_UNARY_MEMBER(TRovane, RealPart)
    ROVANE_UNARY_MEMBER(TRovane, ImagPart)
    ROVANE_UNARY_MEMBER(TRovane, PowerSpectrum)
    ROVANE_UNARY_MEMBER(TRovane, PhaseSpectrum)
    // Complex results: conj(z) (a copy on real data), i * z, (im, re) and
    // (im, -re). A real source a gives (0, a) for MulI and Flip, (0, -a) for
    // FlipConj, and Self becomes complex.
    ROVANE_UNARY_MEMBER(TRovane, Conj)
    ROVANE_UNARY_MEMBER(TRovane, MulI)
    ROVANE_UNARY_MEMBER(TRovane, Flip)
    ROVANE_UNARY_MEMBER(TRovane, FlipConj)
    // Sign negates; Sgn is the sign function (-1, 0, +1, and +1 for a NaN),
    // on complex data decided by the real part, or by the imaginary part when
    // the real part is 0. Sgn(X) writes a real Self.
    ROVANE_UNARY_MEMBER(TRovane, Sign)
    ROVANE_UNARY_MEMBER(TRovane, Sgn)
    // Self[i] times the sign of Src[i]: negated, set to 0, or left.
    TRovane& SgnMul(const TRovane& src);
    // Rounding of each real and imaginary part: to nearest with halves to
    // even, toward zero, up, down; Frac keeps the fraction with the sign of
    // the source.
    ROVANE_UNARY_MEMBER(TRovane, Round)
    ROVANE_UNARY_MEMBER(TRovane, Trunc)
    ROVANE_UNARY_MEMBER(TRovane, Ceil)
    ROVANE_UNARY_MEMBER(TRovane, Floor)
    ROVANE_UNARY_MEMBER(TRovane, Frac)
    // Rounded or truncated to integers: dst is sized to Length, twice that
    // for complex data. Self is unchanged.
    TRovane& Round(TIntegerArray& dst);
    TRovane& Trunc(TIntegerArray& dst);
    // Whole parts to truncDst, fractions to fracDst, from Self.
    TRovane& TruncAndFrac(TRovane& truncDst, TRovane& fracDst);
    TRovane& TruncAndFrac(TRovane& truncDst, TRovane& fracDst, int32_t truncIndex, int32_t fracIndex, int32_t index,
                          int32_t len);
    // x - trunc(x / y) * y on real data, the quotient truncated through a
    // 64-bit integer. The scalar forms multiply by 1 / value, formed once.
    TRovane& Rem(const TRovane& x, const TRovane& y);
    TRovane& Rem(const TRovane& x, const TRovane& y, int32_t xIndex, int32_t yIndex, int32_t index, int32_t len);
    TRovane& Rem(const TRovane& x, double value);
    TRovane& Rem(const TRovane& x, double value, int32_t xIndex, int32_t index, int32_t len);
    // Angles folded into (-2 pi, 2 pi) by the scalar Rem with 2 pi, keeping
    // the sign; real data only.
    ROVANE_UNARY_MEMBER(TRovane, FixAngle)
    // Complex Self to magnitude and phase, and back into Self.
    TRovane& CartToPolar(TRovane& ampltVec, TRovane& phaseVec);
    TRovane& CartToPolar(TRovane& ampltVec, TRovane& phaseVec, int32_t ampltIndex, int32_t phaseIndex, int32_t index,
                         int32_t len);
    TRovane& PolarToCart(const TRovane& ampltVec, const TRovane& phaseVec);
    TRovane& PolarToCart(const TRovane& ampltVec, const TRovane& phaseVec, int32_t ampltIndex, int32_t phaseIndex,
                         int32_t index, int32_t len);
    // Complex Self split into real and imaginary parts, and joined into Self.
    TRovane& CplxToReal(TRovane& reVec, TRovane& imVec);
    TRovane& CplxToReal(TRovane& reVec, TRovane& imVec, int32_t reIndex, int32_t imIndex, int32_t index,
                        int32_t len);
    TRovane& RealToCplx(const TRovane& reVec, const TRovane& imVec);
    TRovane& RealToCplx(const TRovane& reVec, const TRovane& imVec, int32_t reIndex, int32_t imIndex, int32_t index,
                        int32_t len);
    // ---- end of rounding, sign, remainder and complex parts --------------

    // ---- thresholds, replacement and random values (Thresholds.cpp) -----
    // Each has four forms: in place, in place on a range, from Vec (Self sized
    // like Vec) and from a range of Vec into an existing range of Self.
    // x < Value becomes Value; on complex data |z| < Value keeps the phase and
    // takes magnitude Value, and 0 becomes (Value, 0).
    TRovane& ThreshBottom(double value);
    TRovane& ThreshBottom(double value, int32_t index, int32_t len);
    TRovane& ThreshBottom(const TRovane& vec, double value);
    TRovane& ThreshBottom(const TRovane& vec, double value, int32_t vecIndex, int32_t index, int32_t len);
    // x > Value becomes Value; on complex data |z| > Value keeps the phase.
    TRovane& ThreshTop(double value);
    TRovane& ThreshTop(double value, int32_t index, int32_t len);
    TRovane& ThreshTop(const TRovane& vec, double value);
    TRovane& ThreshTop(const TRovane& vec, double value, int32_t vecIndex, int32_t index, int32_t len);
    // Real data: 0 < x < Value becomes Value, -Value < x <= 0 becomes -Value.
    TRovane& ThreshAbsLT(double value);
    TRovane& ThreshAbsLT(double value, int32_t index, int32_t len);
    TRovane& ThreshAbsLT(const TRovane& vec, double value);
    TRovane& ThreshAbsLT(const TRovane& vec, double value, int32_t vecIndex, int32_t index, int32_t len);
    // Real data: x > Value becomes Value, x < -Value becomes -Value.
    TRovane& ThreshAbsGT(double value);
    TRovane& ThreshAbsGT(double value, int32_t index, int32_t len);
    TRovane& ThreshAbsGT(const TRovane& vec, double value);
    TRovane& ThreshAbsGT(const TRovane& vec, double value, int32_t vecIndex, int32_t index, int32_t len);

    // x < Level (|z| < Level on complex data) becomes NewValue; a real
    // NewValue on complex data is (NewValue, 0), a complex one needs complex data.
    TRovane& ThresholdLT(double level, double newValue);
    TRovane& ThresholdLT(double level, const TCplx& newValue);
    TRovane& ThresholdLT(double level, double newValue, int32_t index, int32_t len);
    TRovane& ThresholdLT(double level, const TCplx& newValue, int32_t index, int32_t len);
    TRovane& ThresholdLT(const TRovane& vec, double level, double newValue);
    TRovane& ThresholdLT(const TRovane& vec, double level, const TCplx& newValue);
    TRovane& ThresholdLT(const TRovane& vec, double level, double newValue, int32_t vecIndex, int32_t index,
                         int32_t len);
    TRovane& ThresholdLT(const TRovane& vec, double level, const TCplx& newValue, int32_t vecIndex, int32_t index,
                         int32_t len);
    // x > Level (|z| > Level) becomes NewValue.
    TRovane& ThresholdGT(double level, double newValue);
    TRovane& ThresholdGT(double level, const TCplx& newValue);
    TRovane& ThresholdGT(double level, double newValue, int32_t index, int32_t len);
    TRovane& ThresholdGT(double level, const TCplx& newValue, int32_t index, int32_t len);
    TRovane& ThresholdGT(const TRovane& vec, double level, double newValue);
    TRovane& ThresholdGT(const TRovane& vec, double level, const TCplx& newValue);
    TRovane& ThresholdGT(const TRovane& vec, double level, double newValue, int32_t vecIndex, int32_t index,
                         int32_t len);
    TRovane& ThresholdGT(const TRovane& vec, double level, const TCplx& newValue, int32_t vecIndex, int32_t index,
                         int32_t len);
    // Real data: x < LTLevel becomes LTValue, x > GTLevel becomes GTValue.
    TRovane& ThresholdGT_LT(double gtLevel, double gtValue, double ltLevel, double ltValue);
    TRovane& ThresholdGT_LT(double gtLevel, double gtValue, double ltLevel, double ltValue, int32_t index,
                            int32_t len);
    TRovane& ThresholdGT_LT(const TRovane& vec, double gtLevel, double gtValue, double ltLevel, double ltValue);
    TRovane& ThresholdGT_LT(const TRovane& vec, double gtLevel, double gtValue, double ltLevel, double ltValue,
                            int32_t vecIndex, int32_t index, int32_t len);

    // Elements matching Value become NewValue: a NaN Value matches NaNs, an
    // infinite one infinities of either sign, any other Value the elements
    // within Tolerance of it. On complex data a real Value also needs a zero
    // imaginary part and NewValue goes in as (NewValue, 0). Single data
    // compare with Value and Tolerance narrowed to single.
    TRovane& Replace(double value, double newValue, double tolerance = 0);
    TRovane& Replace(double value, double newValue, int32_t index, int32_t len, double tolerance = 0);
    TRovane& Replace(float value, float newValue, float tolerance = 0);
    TRovane& Replace(float value, float newValue, int32_t index, int32_t len, float tolerance = 0);
    TRovane& Replace(const TCplx& value, const TCplx& newValue, double tolerance = 0);
    TRovane& Replace(const TCplx& value, const TCplx& newValue, int32_t index, int32_t len, double tolerance = 0);
    TRovane& Replace(const TSCplx& value, const TSCplx& newValue, float tolerance = 0);
    TRovane& Replace(const TSCplx& value, const TSCplx& newValue, int32_t index, int32_t len, float tolerance = 0);
    // Every NaN becomes Value; real and imaginary parts count as separate reals.

    // (x - SubOffset) / DivFactor.
    TRovane& Normalize(double subOffset, double divFactor);
    TRovane& Normalize(double subOffset, double divFactor, int32_t index, int32_t len);
    TRovane& Normalize(const TRovane& vec, double subOffset, double divFactor);
    TRovane& Normalize(const TRovane& vec, double subOffset, double divFactor, int32_t vecIndex, int32_t index,
                       int32_t len);
    TRovane& Normalize(const TCplx& subOffset, double divFactor);
    TRovane& Normalize(const TCplx& subOffset, double divFactor, int32_t index, int32_t len);
    TRovane& Normalize(const TRovane& vec, const TCplx& subOffset, double divFactor);
    TRovane& Normalize(const TRovane& vec, const TCplx& subOffset, double divFactor, int32_t vecIndex, int32_t index,
                       int32_t len);
    TRovane& Normalize(const TCplx& subOffset, const TCplx& divFactor);
    TRovane& Normalize(const TCplx& subOffset, const TCplx& divFactor, int32_t index, int32_t len);
    TRovane& Normalize(const TRovane& vec, const TCplx& subOffset, const TCplx& divFactor);
    TRovane& Normalize(const TRovane& vec, const TCplx& subOffset, const TCplx& divFactor, int32_t vecIndex,
                       int32_t index, int32_t len);

    // Fill Length elements (both parts of complex data): uniform on [A, B)
    // or Gaussian with mean A and deviation B. Without a seed one is drawn
    // from the process-wide generator; a fill's starting seed is kept in
    // RISeed (uniform) or GISeed (Gauss).
    TRovane& RandUniform();
    TRovane& RandUniform(double a, double b);
    TRovane& RandUniform(uint32_t seed, double a, double b);
    TRovane& RandGauss();
    TRovane& RandGauss(double a, double b);
    TRovane& RandGauss(uint32_t seed, double a, double b);
    // ---- end of thresholds, replacement and random values ----------------

    // ---- streams and text forms (containers/RovaneStreams.cpp) ------------
    // Binary form: the header of the class, then Length values (complex:
    // pairs, real part first) in a sample format of TPrecision. The short
    // forms of WriteHeader and WriteValues use prDouble or prSingle by the
    // object's precision, rnTrunc and little-endian order. A header that
    // fails its checks raises before the object changes.
    void WriteHeader(std::ostream& stream, TPrecision precision, TRounding rounding, TEndianness endianness);
    void WriteHeader(std::ostream& stream);
    TPrecision ReadHeader(std::istream& stream, TEndianness endianness = boLittleEndian);
    void WriteValues(std::ostream& stream, TPrecision precision, TRounding rounding, TEndianness endianness) const;
    void WriteValues(std::ostream& stream) const;
    // Reads Length values into the object; returns the number of values the
    // stream held for it (more than Length for streams of versions below 104).
    virtual int64_t ReadValues(std::istream& stream, TPrecision precision, TEndianness endianness = boLittleEndian);
    // Header and values with Precision, Rounding and little-endian order.
    virtual void SaveToStream(std::ostream& stream);
    // Reads one object; a damaged or short stream raises and the object keeps
    // its previous state.
    virtual void LoadFromStream(std::istream& stream);
    // Creates the file, or with Append writes at its end, so that objects
    // can follow one another in one file. LoadFromFile reads the first one.
    void SaveToFile(const std::string& fileName, bool append = false);
    void LoadFromFile(const std::string& fileName);
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

    // Every NaN, in real and imaginary parts alike, becomes Value.
    TDenseRovane& ReplaceNAN(double value);
    TDenseRovane& ReplaceNAN(double value, int32_t index, int32_t len);
};

}  // namespace rovane
