// Expression records: Vector, Matrix, VectorInt and MatrixInt.
//
// A record is a value-typed handle on one container (TVec, TMtx, TVecInt,
// TMtxInt). It holds one pointer; the count lives in the object
// (TRovaneBase::fRefCount, atomic). A local record needs no set-up: the first
// touch (Data()) takes an object from the calling thread's cache, and the
// last record that lets go gives it back to the pool it came from. Copying a
// record shares the object (no copy on write); Assign copies the data.
//
// Every container member is forwarded (generated/<Record>.members.h, from
// the member tables); chaining members return the record. Operators compute
// elementwise; an operand that is a temporary no other record shares is
// worked on in place, so a chain like a*b + c*d takes two objects from the
// cache and moves no data but into them.
#pragma once

#include <concepts>
#include <initializer_list>
#include <span>
#include <utility>

#include "rovane/containers/Rovane.h"
#include "rovane/containers/RovaneInt.h"

namespace rovane {

// ---------------------------------------------------------------------------
// The counted handle beneath every record.
// ---------------------------------------------------------------------------
class ROVANE_API TRecordHandle {
public:
    TRecordHandle() noexcept = default;
    TRecordHandle(const TRecordHandle& o) noexcept : fObject(o.fObject) { AddRef(fObject); }
    TRecordHandle(TRecordHandle&& o) noexcept : fObject(std::exchange(o.fObject, nullptr)) {}
    ~TRecordHandle() {
        if (fObject) ReleaseObject(fObject);
    }

    // False while the record is unborn (no object yet).
    bool Born() const noexcept { return fObject != nullptr; }
    // True when another record shares the object (or a caller holds a
    // counted reference of its own), so that changing it in place would be
    // seen elsewhere.
    bool Shared() const noexcept {
        if (!fObject) return false;
        return fObject->fRefCount.load(std::memory_order_acquire) > (fObject->FCacheOwned ? 2 : 1);
    }
    // The object, or null for an unborn record.
    TRovaneBase* Object() const noexcept { return fObject; }
    // Counts one more reference. An object from the cache starts at 1 (the
    // cache's own reference), one made directly at 0.
    static void AddRef(TRovaneBase* obj) noexcept {
        if (obj) obj->fRefCount.fetch_add(1, std::memory_order_relaxed);
    }
    // Drops one reference: an object from the cache goes back to its pool at
    // 1, one made directly is destroyed at 0. Never throws: a failure (a
    // marked thread's object given back on another thread) goes to the
    // report channel.
    static void ReleaseObject(TRovaneBase* obj) noexcept;

protected:
    // Shares o's object (both records then see one object).
    void ShareFrom(const TRecordHandle& o) noexcept {
        TRovaneBase* old = fObject;
        fObject = o.fObject;
        AddRef(fObject);
        if (old) ReleaseObject(old);
    }
    void StealFrom(TRecordHandle& o) noexcept {
        if (this == &o) return;
        TRovaneBase* old = std::exchange(fObject, std::exchange(o.fObject, nullptr));
        if (old) ReleaseObject(old);
    }
    // Wraps an existing object and counts it.
    void Wrap(TRovaneBase* obj) noexcept {
        AddRef(obj);
        TRovaneBase* old = std::exchange(fObject, obj);
        if (old) ReleaseObject(old);
    }
    mutable TRovaneBase* fObject = nullptr;
};

// Whether two operands are one object (a record's and a container's).
inline bool SameObject(const TRecordHandle& a, const TRovaneBase& b) noexcept { return a.Object() == &b; }

class Vector;
class Matrix;
class VectorInt;
class MatrixInt;


// The face that Vector and Matrix share, written once: the object on first
// touch, the conversions to it, the switches of its sub-range forms, the
// forwarded properties and the element access. Rec is the record, Obj its
// container class.
template <class Rec, class Obj>
class TFloatRecord : public TRecordHandle {
public:
    // The object, created from the thread's cache on first touch.
    Obj& Data() const {
        if (!fObject) static_cast<const Rec*>(this)->CreateFromCache(true);
        return *static_cast<Obj*>(fObject);
    }
    operator Obj&() const { return Data(); }
    Obj* operator->() const { return &Data(); }

    // The self form of SetSubRange (and Select) blocked or allowed again;
    // EnableSelect blocks and DisableSelect allows, reversed on purpose.
    Rec& DisableSubrange() { return Data().DisableSubrange(), Self(); }
    Rec& EnableSubrange() { return Data().EnableSubrange(), Self(); }
    Rec& EnableSelect() { return Data().EnableSelect(), Self(); }
    Rec& DisableSelect() { return Data().DisableSelect(), Self(); }

    // ---- properties ----------------------------------------------------
    int32_t Length() const { return Data().Length(); }
    bool Complex() const { return Data().Complex(); }
    void SetComplex(bool value) { Data().SetComplex(value); }
    bool IsDouble() const { return Data().IsDouble(); }
    TMtxFloatPrecision FloatPrecision() const { return Data().FloatPrecision(); }
    void SetFloatPrecision(TMtxFloatPrecision value) { Data().SetFloatPrecision(value); }
    int32_t Capacity() const { return Data().Capacity(); }
    double CapacityStep() const { return Data().CapacityStep(); }
    void SetCapacityStep(double value) { Data().SetCapacityStep(value); }
    TPrecision Precision() const { return Data().Precision(); }
    void SetPrecision(TPrecision value) { Data().SetPrecision(value); }
    TRounding Rounding() const { return Data().Rounding(); }
    void SetRounding(TRounding value) { Data().SetRounding(value); }
    bool ConditionCheck() const { return Data().ConditionCheck(); }
    void SetConditionCheck(bool value) { Data().SetConditionCheck(value); }
    TCplx Alfa() const { return Data().Alfa; }
    void SetAlfa(const TCplx& value) { Data().Alfa = value; }
    TCplx Beta() const { return Data().Beta; }
    void SetBeta(const TCplx& value) { Data().Beta = value; }
    double ZeroTolerance() const { return Data().ZeroTolerance(); }
    void SetZeroTolerance(double value) { Data().SetZeroTolerance(value); }
    std::string Caption() const { return Data().Caption(); }
    void SetCaption(std::string value) { Data().SetCaption(std::move(value)); }
    int32_t Tag() const { return Data().Tag(); }
    void SetTag(int32_t value) { Data().SetTag(value); }
    bool IsSubRange() const { return Data().IsSubRange(); }
    int32_t SubRangeLevel() const { return Data().SubRangeLevel(); }
    bool BlockEnd() const { return Data().BlockEnd(); }
    double First() const { return Data().First(); }
    TCplx Firstc() const { return Data().Firstc(); }
    double Last() const { return Data().Last(); }
    TCplx Lastc() const { return Data().Lastc(); }
    bool FFTScrambled() const { return Data().FFTScrambled(); }
    bool FFTOddLength() const { return Data().FFTOddLength(); }
    std::string RealValues() const { return Data().RealValues(); }
    std::string ComplexValues() const { return Data().ComplexValues(); }

    // ---- elements ------------------------------------------------------
    // Element i of the real view (a matrix: its rows end to end) as a double
    // over either precision (a single value widened); writing narrows to the
    // storage. Unchecked. A const record reads a double (what printf and
    // other variadic calls need); Values(i) reads one on any record.
    TRovane::ElementRef operator[](int32_t i) { return Data()[i]; }
    double operator[](int32_t i) const { return Data().GetElement(i); }
    double Values(int32_t i) const { return Data().GetElement(i); }
    double* PValues1D(int32_t i) const { return Data().PValues1D(i); }
    TCplx* PCValues1D(int32_t i) const { return Data().PCValues1D(i); }
    float* PSValues1D(int32_t i) const { return Data().PSValues1D(i); }
    TSCplx* PSCValues1D(int32_t i) const { return Data().SCData + Data().FCDataOffset + i; }

protected:
    TFloatRecord() noexcept = default;

private:
    Rec& Self() { return static_cast<Rec&>(*this); }
};

// ---------------------------------------------------------------------------
// Vector
// ---------------------------------------------------------------------------
class ROVANE_API Vector : public TFloatRecord<Vector, TVec> {
public:
    using Object_t = TVec;

    Vector() noexcept = default;
    Vector(const Vector& o) noexcept = default;
    Vector(Vector&& o) noexcept = default;
    // Record assignment shares the object (AssignWithoutCopy).
    Vector& operator=(const Vector& o) noexcept {
        ShareFrom(o);
        return *this;
    }
    Vector& operator=(Vector&& o) noexcept {
        StealFrom(o);
        return *this;
    }
    // A new object made directly (not from the cache), then sized.
    explicit Vector(int32_t aLength);
    Vector(int32_t aLength, bool complex);
    Vector(int32_t aLength, bool complex, bool isDouble);
    Vector(int32_t aLength, TMtxFloatPrecision floatPrecision);
    // A new object, from the cache when the flag is true.
    explicit Vector(bool aFromCache);
    // Wraps obj (made with new, or taken with CreateIt) and counts it; the
    // last record destroys it or gives it back to the cache by its origin.
    explicit Vector(TVec* obj) noexcept { Wrap(obj); }
    // Conversions: a double array implicitly, the others explicitly; each
    // makes a fresh record with a copy of the data.
    Vector(const TDoubleArray& values);
    Vector(std::initializer_list<double> values);
    explicit Vector(const TCplxArray& values);
    explicit Vector(const TSingleArray& values);
    explicit Vector(const TVec& src);
    explicit Vector(const TVecInt& src);
    explicit Vector(const VectorInt& src);

    // Nothing when the record has an object; else a new one, from the cache
    // or made directly.
    void CreateFromCache(bool aFromCache) const;

    // Deep copy (the container's Assign and the values).
    Vector& Assign(const TRovaneBase& src);
    Vector& Assign(const Vector& src) { return Assign(static_cast<const TRovaneBase&>(src.Data())); }
    // Shares src's object, as record assignment does.
    Vector& AssignWithoutCopy(const Vector& src) noexcept { return *this = src; }
    Vector& Adopt(TVec* obj) noexcept {
        Wrap(obj);
        return *this;
    }
    Vector& Adopt(void* pointer, int32_t length, TMtxFloatPrecision precision);
    Vector& Adopt(void* pointer, int32_t length, bool isComplex, bool isDouble);
    void Disown(void*& pointer, int32_t& length, TMtxFloatPrecision& precision);
    void Disown(void*& pointer, int32_t& length, bool& isComplex, bool& isDouble);
    void Disown();

    // Conversions to arrays: the object's own block, shared without a copy.
    explicit operator TDoubleArray() const;
    explicit operator TSingleArray() const;
    explicit operator TCplxArray() const;
    explicit operator TSCplxArray() const;

    // ---- sizing --------------------------------------------------------
    Vector& Size(int32_t aLength);
    Vector& Size(int32_t aLength, bool complex);
    Vector& Size(int32_t aLength, bool complex, bool isDouble);
    Vector& Size(int32_t aLength, TMtxFloatPrecision floatPrecision);
    Vector& Size(const TRovaneBase& src);
    Vector& Size(const TRovaneBase& src, bool complex);
    Vector& Size(const TRovaneBase& src, TMtxFloatPrecision floatPrecision);
    Vector& Resize(int32_t len, bool zeroIt = false);
    // Sizes Self like the array (complex arrays give a complex record), and
    // an array like Self.
    Vector& SizeFromArray(const TDoubleArray& src);
    Vector& SizeFromArray(const TSingleArray& src);
    Vector& SizeFromArray(const TCplxArray& src);
    Vector& SizeFromArray(const TSCplxArray& src);
    template <class T>
    void SizeToArray(TArray<T>& dst) const {
        Data().SizeToArray(dst);
    }
    // Narrows the object to a range of its own (a sub-range), and back.
    Vector& Select(int32_t index, int32_t len);
    Vector& SelectAll();

    // ---- properties (the rest in TFloatRecord) ---------------------------
    void SetLength(int32_t value) { Data().SetLength(value); }

    // ---- elements (the rest in TFloatRecord) -----------------------------
    TCplx CValues(int32_t i) const;
    float& SValues(int32_t i) const { return Data().SValues[i]; }
    TSCplx& SCValues(int32_t i) const { return Data().SCValues[i]; }

    // ---- compound assignment: in place, seen by every sharing record ------
    Vector& operator+=(const TRovane& x);
    Vector& operator-=(const TRovane& x);
    Vector& operator*=(const TRovane& x);
    Vector& operator/=(const TRovane& x);
    Vector& operator+=(double x);
    Vector& operator-=(double x);
    Vector& operator*=(double x);
    Vector& operator/=(double x);
    Vector& operator+=(const TCplx& x);
    Vector& operator-=(const TCplx& x);
    Vector& operator*=(const TCplx& x);
    Vector& operator/=(const TCplx& x);

    // ==== forwarders of the table members, returning Vector& ================
#include "rovane/records/generated/Vector.members.h"
};

// ---------------------------------------------------------------------------
// Matrix
// ---------------------------------------------------------------------------
class ROVANE_API Matrix : public TFloatRecord<Matrix, TMtx> {
public:
    using Object_t = TMtx;

    Matrix() noexcept = default;
    Matrix(const Matrix& o) noexcept = default;
    Matrix(Matrix&& o) noexcept = default;
    Matrix& operator=(const Matrix& o) noexcept {
        ShareFrom(o);
        return *this;
    }
    Matrix& operator=(Matrix&& o) noexcept {
        StealFrom(o);
        return *this;
    }
    Matrix(int32_t aRows, int32_t aCols);
    Matrix(int32_t aRows, int32_t aCols, bool complex);
    Matrix(int32_t aRows, int32_t aCols, bool complex, bool isDouble);
    Matrix(int32_t aRows, int32_t aCols, TMtxFloatPrecision floatPrecision);
    explicit Matrix(bool aFromCache);
    explicit Matrix(TMtx* obj) noexcept { Wrap(obj); }
    // A one-row matrix from an array of doubles, and one matrix from rows of
    // equal length (implicit); copies of other containers (explicit).
    Matrix(const TDoubleArray& values);
    Matrix(const T2DDoubleArray& rows);
    Matrix(std::initializer_list<std::initializer_list<double>> rows);
    explicit Matrix(const TCplxArray& values);
    explicit Matrix(const TMtx& src);

    void CreateFromCache(bool aFromCache) const;

    Matrix& Assign(const TRovaneBase& src);
    Matrix& Assign(const Matrix& src) { return Assign(static_cast<const TRovaneBase&>(src.Data())); }
    Matrix& AssignWithoutCopy(const Matrix& src) noexcept { return *this = src; }
    Matrix& Adopt(TMtx* obj) noexcept {
        Wrap(obj);
        return *this;
    }
    Matrix& Adopt(void* pointer, int32_t rows, int32_t cols, TMtxFloatPrecision precision);
    void Disown();

    explicit operator TDoubleArray() const;
    explicit operator TSingleArray() const;
    explicit operator TCplxArray() const;
    explicit operator TSCplxArray() const;

    Matrix& Size(int32_t aRows, int32_t aCols);
    Matrix& Size(int32_t aRows, int32_t aCols, bool complex);
    Matrix& Size(int32_t aRows, int32_t aCols, bool complex, bool isDouble);
    Matrix& Size(int32_t aRows, int32_t aCols, TMtxFloatPrecision floatPrecision);
    Matrix& Size(const TRovaneBase& src);
    Matrix& Size(const TRovaneBase& src, bool complex);
    Matrix& Size(const TRovaneBase& src, TMtxFloatPrecision floatPrecision);
    // A one-row matrix like the array.
    Matrix& SizeFromArray(const TDoubleArray& src);
    Matrix& SizeFromArray(const TCplxArray& src);
    template <class T>
    void SizeToArray(TArray<T>& dst) const {
        Data().SizeToArray(dst);
    }
    Matrix& Select(int32_t index, int32_t len);
    Matrix& SelectAll();

    int32_t Rows() const { return Data().Rows(); }
    int32_t Cols() const { return Data().Cols(); }
    int32_t LeadingCols() const { return Data().LeadingCols(); }
    bool Quadratic() const { return Data().Quadratic(); }

    // Element (row, col); element i of the rows end to end in TFloatRecord.
    using TFloatRecord::Values;
    double Values(int32_t row, int32_t col) const;
    TCplx CValues(int32_t i) const;
    TCplx CValues(int32_t row, int32_t col) const;

    // Compound assignment; *= is elementwise, as * is.
    Matrix& operator+=(const TRovane& x);
    Matrix& operator-=(const TRovane& x);
    Matrix& operator*=(const TRovane& x);
    Matrix& operator/=(const TRovane& x);
    Matrix& operator+=(double x);
    Matrix& operator-=(double x);
    Matrix& operator*=(double x);
    Matrix& operator/=(double x);
    Matrix& operator+=(const TCplx& x);
    Matrix& operator-=(const TCplx& x);
    Matrix& operator*=(const TCplx& x);
    Matrix& operator/=(const TCplx& x);

    // ==== forwarders of the table members, returning Matrix& ================
#include "rovane/records/generated/Matrix.members.h"
};

// ---------------------------------------------------------------------------
// Operators of Vector and Matrix. Elementwise through Add, Sub, Mul, Divide
// and the value forms; Matrix * Matrix is elementwise too (the matrix
// product is Mul). A temporary operand that no other record shares carries
// the result; with `-` and `/` a temporary on the right is reused only where
// the reversed form is exact (the value forms, and L - R as -(R - L)).
// ---------------------------------------------------------------------------
// ---- Vector ----
ROVANE_API Vector operator+(const Vector& l, const Vector& r);
ROVANE_API Vector operator+(Vector&& l, const Vector& r);
ROVANE_API Vector operator+(const Vector& l, Vector&& r);
ROVANE_API Vector operator+(Vector&& l, Vector&& r);
ROVANE_API Vector operator+(const Vector& l, const TRovane& r);
ROVANE_API Vector operator+(Vector&& l, const TRovane& r);
ROVANE_API Vector operator+(const TRovane& l, const Vector& r);
ROVANE_API Vector operator+(const TRovane& l, Vector&& r);
ROVANE_API Vector operator+(const Vector& l, double r);
ROVANE_API Vector operator+(Vector&& l, double r);
ROVANE_API Vector operator+(double l, const Vector& r);
ROVANE_API Vector operator+(double l, Vector&& r);
ROVANE_API Vector operator+(const Vector& l, const TCplx& r);
ROVANE_API Vector operator+(Vector&& l, const TCplx& r);
ROVANE_API Vector operator+(const TCplx& l, const Vector& r);
ROVANE_API Vector operator+(const TCplx& l, Vector&& r);
ROVANE_API Vector operator-(const Vector& l, const Vector& r);
ROVANE_API Vector operator-(Vector&& l, const Vector& r);
ROVANE_API Vector operator-(const Vector& l, Vector&& r);
ROVANE_API Vector operator-(Vector&& l, Vector&& r);
ROVANE_API Vector operator-(const Vector& l, const TRovane& r);
ROVANE_API Vector operator-(Vector&& l, const TRovane& r);
ROVANE_API Vector operator-(const TRovane& l, const Vector& r);
ROVANE_API Vector operator-(const TRovane& l, Vector&& r);
ROVANE_API Vector operator-(const Vector& l, double r);
ROVANE_API Vector operator-(Vector&& l, double r);
ROVANE_API Vector operator-(double l, const Vector& r);
ROVANE_API Vector operator-(double l, Vector&& r);
ROVANE_API Vector operator-(const Vector& l, const TCplx& r);
ROVANE_API Vector operator-(Vector&& l, const TCplx& r);
ROVANE_API Vector operator-(const TCplx& l, const Vector& r);
ROVANE_API Vector operator-(const TCplx& l, Vector&& r);
ROVANE_API Vector operator*(const Vector& l, const Vector& r);
ROVANE_API Vector operator*(Vector&& l, const Vector& r);
ROVANE_API Vector operator*(const Vector& l, Vector&& r);
ROVANE_API Vector operator*(Vector&& l, Vector&& r);
ROVANE_API Vector operator*(const Vector& l, const TRovane& r);
ROVANE_API Vector operator*(Vector&& l, const TRovane& r);
ROVANE_API Vector operator*(const TRovane& l, const Vector& r);
ROVANE_API Vector operator*(const TRovane& l, Vector&& r);
ROVANE_API Vector operator*(const Vector& l, double r);
ROVANE_API Vector operator*(Vector&& l, double r);
ROVANE_API Vector operator*(double l, const Vector& r);
ROVANE_API Vector operator*(double l, Vector&& r);
ROVANE_API Vector operator*(const Vector& l, const TCplx& r);
ROVANE_API Vector operator*(Vector&& l, const TCplx& r);
ROVANE_API Vector operator*(const TCplx& l, const Vector& r);
ROVANE_API Vector operator*(const TCplx& l, Vector&& r);
ROVANE_API Vector operator/(const Vector& l, const Vector& r);
ROVANE_API Vector operator/(Vector&& l, const Vector& r);
ROVANE_API Vector operator/(const Vector& l, Vector&& r);
ROVANE_API Vector operator/(Vector&& l, Vector&& r);
ROVANE_API Vector operator/(const Vector& l, const TRovane& r);
ROVANE_API Vector operator/(Vector&& l, const TRovane& r);
ROVANE_API Vector operator/(const TRovane& l, const Vector& r);
ROVANE_API Vector operator/(const TRovane& l, Vector&& r);
ROVANE_API Vector operator/(const Vector& l, double r);
ROVANE_API Vector operator/(Vector&& l, double r);
ROVANE_API Vector operator/(double l, const Vector& r);
ROVANE_API Vector operator/(double l, Vector&& r);
ROVANE_API Vector operator/(const Vector& l, const TCplx& r);
ROVANE_API Vector operator/(Vector&& l, const TCplx& r);
ROVANE_API Vector operator/(const TCplx& l, const Vector& r);
ROVANE_API Vector operator/(const TCplx& l, Vector&& r);
ROVANE_API Vector operator-(const Vector& x);
ROVANE_API Vector operator-(Vector&& x);

// ---- Matrix (and Matrix with Vector, which would otherwise be ambiguous) ----
ROVANE_API Matrix operator+(const Matrix& l, const Matrix& r);
ROVANE_API Matrix operator+(Matrix&& l, const Matrix& r);
ROVANE_API Matrix operator+(const Matrix& l, Matrix&& r);
ROVANE_API Matrix operator+(Matrix&& l, Matrix&& r);
ROVANE_API Matrix operator+(const Matrix& l, const TRovane& r);
ROVANE_API Matrix operator+(Matrix&& l, const TRovane& r);
ROVANE_API Matrix operator+(const TRovane& l, const Matrix& r);
ROVANE_API Matrix operator+(const TRovane& l, Matrix&& r);
ROVANE_API Matrix operator+(const Matrix& l, double r);
ROVANE_API Matrix operator+(Matrix&& l, double r);
ROVANE_API Matrix operator+(double l, const Matrix& r);
ROVANE_API Matrix operator+(double l, Matrix&& r);
ROVANE_API Matrix operator+(const Matrix& l, const TCplx& r);
ROVANE_API Matrix operator+(Matrix&& l, const TCplx& r);
ROVANE_API Matrix operator+(const TCplx& l, const Matrix& r);
ROVANE_API Matrix operator+(const TCplx& l, Matrix&& r);
ROVANE_API Matrix operator+(const Matrix& l, const Vector& r);
ROVANE_API Vector operator+(const Vector& l, const Matrix& r);
ROVANE_API Matrix operator-(const Matrix& l, const Matrix& r);
ROVANE_API Matrix operator-(Matrix&& l, const Matrix& r);
ROVANE_API Matrix operator-(const Matrix& l, Matrix&& r);
ROVANE_API Matrix operator-(Matrix&& l, Matrix&& r);
ROVANE_API Matrix operator-(const Matrix& l, const TRovane& r);
ROVANE_API Matrix operator-(Matrix&& l, const TRovane& r);
ROVANE_API Matrix operator-(const TRovane& l, const Matrix& r);
ROVANE_API Matrix operator-(const TRovane& l, Matrix&& r);
ROVANE_API Matrix operator-(const Matrix& l, double r);
ROVANE_API Matrix operator-(Matrix&& l, double r);
ROVANE_API Matrix operator-(double l, const Matrix& r);
ROVANE_API Matrix operator-(double l, Matrix&& r);
ROVANE_API Matrix operator-(const Matrix& l, const TCplx& r);
ROVANE_API Matrix operator-(Matrix&& l, const TCplx& r);
ROVANE_API Matrix operator-(const TCplx& l, const Matrix& r);
ROVANE_API Matrix operator-(const TCplx& l, Matrix&& r);
ROVANE_API Matrix operator-(const Matrix& l, const Vector& r);
ROVANE_API Vector operator-(const Vector& l, const Matrix& r);
ROVANE_API Matrix operator*(const Matrix& l, const Matrix& r);
ROVANE_API Matrix operator*(Matrix&& l, const Matrix& r);
ROVANE_API Matrix operator*(const Matrix& l, Matrix&& r);
ROVANE_API Matrix operator*(Matrix&& l, Matrix&& r);
ROVANE_API Matrix operator*(const Matrix& l, const TRovane& r);
ROVANE_API Matrix operator*(Matrix&& l, const TRovane& r);
ROVANE_API Matrix operator*(const TRovane& l, const Matrix& r);
ROVANE_API Matrix operator*(const TRovane& l, Matrix&& r);
ROVANE_API Matrix operator*(const Matrix& l, double r);
ROVANE_API Matrix operator*(Matrix&& l, double r);
ROVANE_API Matrix operator*(double l, const Matrix& r);
ROVANE_API Matrix operator*(double l, Matrix&& r);
ROVANE_API Matrix operator*(const Matrix& l, const TCplx& r);
ROVANE_API Matrix operator*(Matrix&& l, const TCplx& r);
ROVANE_API Matrix operator*(const TCplx& l, const Matrix& r);
ROVANE_API Matrix operator*(const TCplx& l, Matrix&& r);
ROVANE_API Matrix operator*(const Matrix& l, const Vector& r);
ROVANE_API Vector operator*(const Vector& l, const Matrix& r);
ROVANE_API Matrix operator/(const Matrix& l, const Matrix& r);
ROVANE_API Matrix operator/(Matrix&& l, const Matrix& r);
ROVANE_API Matrix operator/(const Matrix& l, Matrix&& r);
ROVANE_API Matrix operator/(Matrix&& l, Matrix&& r);
ROVANE_API Matrix operator/(const Matrix& l, const TRovane& r);
ROVANE_API Matrix operator/(Matrix&& l, const TRovane& r);
ROVANE_API Matrix operator/(const TRovane& l, const Matrix& r);
ROVANE_API Matrix operator/(const TRovane& l, Matrix&& r);
ROVANE_API Matrix operator/(const Matrix& l, double r);
ROVANE_API Matrix operator/(Matrix&& l, double r);
ROVANE_API Matrix operator/(double l, const Matrix& r);
ROVANE_API Matrix operator/(double l, Matrix&& r);
ROVANE_API Matrix operator/(const Matrix& l, const TCplx& r);
ROVANE_API Matrix operator/(Matrix&& l, const TCplx& r);
ROVANE_API Matrix operator/(const TCplx& l, const Matrix& r);
ROVANE_API Matrix operator/(const TCplx& l, Matrix&& r);
ROVANE_API Matrix operator/(const Matrix& l, const Vector& r);
ROVANE_API Vector operator/(const Vector& l, const Matrix& r);
ROVANE_API Matrix operator-(const Matrix& x);
ROVANE_API Matrix operator-(Matrix&& x);

// ---- record-only free functions ----
// A new record gathered from Src: Len elements from Index, or every Step-th
// element from Index (Len of them). Ranges are checked in 64 bits.
ROVANE_API Vector Select(const Vector& src, int32_t index, int32_t len);
ROVANE_API Vector Select(const Vector& src, int32_t index, int32_t step, int32_t len);
ROVANE_API Matrix Select(const Matrix& src, int32_t index, int32_t len);
ROVANE_API Matrix Select(const Matrix& src, int32_t index, int32_t step, int32_t len);
// Column and row sums and means of a matrix as a new vector record.
ROVANE_API Vector SumCols(const Matrix& src);
ROVANE_API Vector SumRows(const Matrix& src);
ROVANE_API Vector MeanCols(const Matrix& src);
ROVANE_API Vector MeanRows(const Matrix& src);
// A new record from a list of text lines: one value per line for a vector;
// for a matrix one row per line, the columns split at Delimiter.
ROVANE_API Vector StringsToValues(const TStringList& src);
// A sorted copy: values ascending or descending (complex data by
// magnitude), a matrix as one run in row order.
ROVANE_API Vector SortAscend(const Vector& src);
ROVANE_API Vector SortDescend(const Vector& src);
ROVANE_API Matrix SortAscend(const Matrix& src);
ROVANE_API Matrix SortDescend(const Matrix& src);
ROVANE_API Matrix StringsToValues(const TStringList& src, std::string_view delimiter);
// A new record of Len elements of the precision, element i = Offset + i*Step
// (a complex step for complex data), or sized and typed like Src. Templates
// over the record type, bound to the containers' Ramp where used.
template <class R = Vector>
    requires std::same_as<R, Vector>
R Ramp(int32_t len, TMtxFloatPrecision precision, double offset = 0, double step = 1) {
    R r;
    r.Size(len, precision);
    r.Data().Ramp(offset, step);
    return r;
}
template <class R = Vector>
    requires std::same_as<R, Vector>
R Ramp(int32_t len, TMtxFloatPrecision precision, const TCplx& offset, const TCplx& step) {
    R r;
    r.Size(len, precision);
    r.Data().Ramp(offset, step);
    return r;
}
template <class R>
    requires std::same_as<R, Vector> || std::same_as<R, Matrix>
R Ramp(const R& src, double offset = 0, double step = 1) {
    R r;
    r.Size(src.Data());
    r.Data().Ramp(offset, step);
    return r;
}

// ---- comparisons: true when the relation holds for every element ----------
// == and != against a container are Equal with tolerance 0 (sizes first);
// against a value, every element. The order relations compare element by
// element (an unordered real pair counts as true, complex values use the
// library's complex order); an empty record compares true. The reversed
// forms of == and != (value == record) come from the language.
ROVANE_API bool operator==(const Vector& l, const Vector& r);
ROVANE_API bool operator==(const Vector& l, const TRovane& r);
ROVANE_API bool operator==(const Vector& l, double r);
ROVANE_API bool operator==(const Vector& l, const TCplx& r);
ROVANE_API bool operator==(const Matrix& l, const Matrix& r);
ROVANE_API bool operator==(const Matrix& l, const TRovane& r);
ROVANE_API bool operator==(const Matrix& l, const Vector& r);
ROVANE_API bool operator==(const Matrix& l, double r);
ROVANE_API bool operator==(const Matrix& l, const TCplx& r);
#define ROVANE_RECORD_ORDER(OP)                                  \
    ROVANE_API bool operator OP(const Vector& l, const Vector& r); \
    ROVANE_API bool operator OP(const Vector& l, double r);        \
    ROVANE_API bool operator OP(double l, const Vector& r);        \
    ROVANE_API bool operator OP(const Vector& l, const TCplx& r);  \
    ROVANE_API bool operator OP(const TCplx& l, const Vector& r);  \
    ROVANE_API bool operator OP(const Matrix& l, const Matrix& r); \
    ROVANE_API bool operator OP(const Matrix& l, const Vector& r); \
    ROVANE_API bool operator OP(const Vector& l, const Matrix& r); \
    ROVANE_API bool operator OP(const Matrix& l, double r);        \
    ROVANE_API bool operator OP(double l, const Matrix& r);        \
    ROVANE_API bool operator OP(const Matrix& l, const TCplx& r);  \
    ROVANE_API bool operator OP(const TCplx& l, const Matrix& r);
ROVANE_RECORD_ORDER(<)
ROVANE_RECORD_ORDER(<=)
ROVANE_RECORD_ORDER(>)
ROVANE_RECORD_ORDER(>=)
#undef ROVANE_RECORD_ORDER

// ---------------------------------------------------------------------------
// VectorInt and MatrixInt
// ---------------------------------------------------------------------------
class ROVANE_API VectorInt : public TRecordHandle {
public:
    using Object_t = TVecInt;

    VectorInt() noexcept = default;
    VectorInt(const VectorInt& o) noexcept = default;
    VectorInt(VectorInt&& o) noexcept = default;
    VectorInt& operator=(const VectorInt& o) noexcept {
        ShareFrom(o);
        return *this;
    }
    VectorInt& operator=(VectorInt&& o) noexcept {
        StealFrom(o);
        return *this;
    }
    explicit VectorInt(int32_t aLength, TIntPrecision precision = prInt32);
    explicit VectorInt(bool aFromCache);
    explicit VectorInt(TVecInt* obj) noexcept { Wrap(obj); }
    // From an array of 32-bit integers (implicit), of 16- and 8-bit ones and
    // from an integer container (explicit): copies.
    VectorInt(const TIntegerArray& values);
    VectorInt(std::initializer_list<int32_t> values);
    explicit VectorInt(const TSmallIntArray& values);
    explicit VectorInt(const TByteArray& values);
    explicit VectorInt(const TRovaneInt& src);

    TVecInt& Data() const {
        if (!fObject) CreateFromCache(true);
        return *static_cast<TVecInt*>(fObject);
    }
    operator TVecInt&() const { return Data(); }
    TVecInt* operator->() const { return &Data(); }
    void CreateFromCache(bool aFromCache) const;

    VectorInt& Assign(const TRovaneInt& src);
    VectorInt& Assign(const VectorInt& src) { return Assign(static_cast<const TRovaneInt&>(src.Data())); }
    VectorInt& AssignWithoutCopy(const VectorInt& src) noexcept { return *this = src; }
    VectorInt& Adopt(TVecInt* obj) noexcept {
        Wrap(obj);
        return *this;
    }

    // The object's block, shared without a copy, when the width matches.
    explicit operator TIntegerArray() const;
    explicit operator TSmallIntArray() const;
    explicit operator TByteArray() const;

    VectorInt& Size(int32_t aLength);
    VectorInt& Size(int32_t aLength, TIntPrecision precision);
    VectorInt& Select(int32_t index, int32_t len);
    VectorInt& SelectAll();
    // The self form of SetSubRange (and Select) blocked or allowed again;
    // EnableSelect blocks and DisableSelect allows, reversed on purpose.
    VectorInt& DisableSubrange() { return Data().DisableSubrange(), *this; }
    VectorInt& EnableSubrange() { return Data().EnableSubrange(), *this; }
    VectorInt& EnableSelect() { return Data().EnableSelect(), *this; }
    VectorInt& DisableSelect() { return Data().DisableSelect(), *this; }

    int32_t Length() const { return Data().Length(); }
    void SetLength(int32_t value) { Data().SetLength(value); }
    TIntPrecision IntPrecision() const { return Data().IntPrecision(); }
    bool IsSubRange() const { return Data().IsSubRange(); }
    std::string Caption() const { return Data().Caption(); }
    void SetCaption(std::string value) { Data().SetCaption(std::move(value)); }
    int32_t Tag() const { return Data().Tag(); }
    void SetTag(int32_t value) { Data().SetTag(value); }
    bool ConditionCheck() const { return Data().ConditionCheck(); }
    void SetConditionCheck(bool value) { Data().SetConditionCheck(value); }

    // Element i, widened to 32 bits; writing narrows to the width. Unchecked.
    int32_t operator[](int32_t i) const;
    void SetElement(int32_t i, int32_t value);
    int32_t* PIValues(int32_t i) const { return Data().IValues + i; }
    int16_t* PSValues(int32_t i) const { return Data().SIValues + i; }
    uint8_t* PBValues(int32_t i) const { return Data().BValues + i; }

#include "rovane/records/generated/VectorInt.members.h"
};

class ROVANE_API MatrixInt : public TRecordHandle {
public:
    using Object_t = TMtxInt;

    MatrixInt() noexcept = default;
    MatrixInt(const MatrixInt& o) noexcept = default;
    MatrixInt(MatrixInt&& o) noexcept = default;
    MatrixInt& operator=(const MatrixInt& o) noexcept {
        ShareFrom(o);
        return *this;
    }
    MatrixInt& operator=(MatrixInt&& o) noexcept {
        StealFrom(o);
        return *this;
    }
    // Rows x Cols; the integer matrix object keeps the elements end to end.
    MatrixInt(int32_t aRows, int32_t aCols, TIntPrecision precision = prInt32);
    explicit MatrixInt(bool aFromCache);
    explicit MatrixInt(TMtxInt* obj) noexcept { Wrap(obj); }
    MatrixInt(const TIntegerArray& values);
    explicit MatrixInt(const TRovaneInt& src);

    TMtxInt& Data() const {
        if (!fObject) CreateFromCache(true);
        return *static_cast<TMtxInt*>(fObject);
    }
    operator TMtxInt&() const { return Data(); }
    TMtxInt* operator->() const { return &Data(); }
    void CreateFromCache(bool aFromCache) const;

    MatrixInt& Assign(const TRovaneInt& src);
    MatrixInt& Assign(const MatrixInt& src) { return Assign(static_cast<const TRovaneInt&>(src.Data())); }
    MatrixInt& AssignWithoutCopy(const MatrixInt& src) noexcept { return *this = src; }
    MatrixInt& Adopt(TMtxInt* obj) noexcept {
        Wrap(obj);
        return *this;
    }

    explicit operator TIntegerArray() const;
    explicit operator TSmallIntArray() const;
    explicit operator TByteArray() const;

    MatrixInt& Size(int32_t aRows, int32_t aCols, TIntPrecision precision = prInt32);
    int32_t Rows() const { return Data().Rows(); }
    int32_t Cols() const { return Data().Cols(); }

    int32_t Length() const { return Data().Length(); }
    TIntPrecision IntPrecision() const { return Data().IntPrecision(); }
    int32_t operator[](int32_t i) const;
    void SetElement(int32_t i, int32_t value);
    // The self form of SetSubRange blocked or allowed again; EnableSelect
    // blocks and DisableSelect allows, reversed on purpose.
    MatrixInt& DisableSubrange() { return Data().DisableSubrange(), *this; }
    MatrixInt& EnableSubrange() { return Data().EnableSubrange(), *this; }
    MatrixInt& EnableSelect() { return Data().EnableSelect(), *this; }
    MatrixInt& DisableSelect() { return Data().DisableSelect(), *this; }

#include "rovane/records/generated/MatrixInt.members.h"
};

// Comparisons of the integer records: every element (an empty record
// compares true). The arithmetic, bit and shift operators of the integer
// records forward to the integer containers' members (below).
// Functional forms on integer vectors: a new record (rotated, shifted,
// sorted, gathered, magnitudes) or a value (the mean, in double).
ROVANE_API VectorInt Rotate(const VectorInt& src, int32_t offset);
ROVANE_API VectorInt Shift(const VectorInt& src, int32_t offset);
ROVANE_API VectorInt SortAscend(const VectorInt& src);
ROVANE_API VectorInt SortDescend(const VectorInt& src);
ROVANE_API VectorInt Select(const VectorInt& src, int32_t index, int32_t len);
ROVANE_API VectorInt Mag(const VectorInt& src);
ROVANE_API double Mean(const VectorInt& src);

ROVANE_API bool operator==(const VectorInt& l, const VectorInt& r);
ROVANE_API bool operator==(const VectorInt& l, const TRovaneInt& r);
ROVANE_API bool operator==(const VectorInt& l, int32_t r);
ROVANE_API bool operator==(const MatrixInt& l, const MatrixInt& r);
ROVANE_API bool operator==(const MatrixInt& l, const TRovaneInt& r);
ROVANE_API bool operator==(const MatrixInt& l, int32_t r);
#define ROVANE_RECORD_INT_ORDER(OP)                                       \
    ROVANE_API bool operator OP(const VectorInt& l, const VectorInt& r); \
    ROVANE_API bool operator OP(const VectorInt& l, int32_t r);          \
    ROVANE_API bool operator OP(int32_t l, const VectorInt& r);          \
    ROVANE_API bool operator OP(const MatrixInt& l, const MatrixInt& r); \
    ROVANE_API bool operator OP(const MatrixInt& l, int32_t r);          \
    ROVANE_API bool operator OP(int32_t l, const MatrixInt& r);
ROVANE_RECORD_INT_ORDER(<)
ROVANE_RECORD_INT_ORDER(<=)
ROVANE_RECORD_INT_ORDER(>)
ROVANE_RECORD_INT_ORDER(>=)
#undef ROVANE_RECORD_INT_ORDER

// ---- arithmetic, bit and shift operators of the integer records ----------
// Templates over the record type, so that they bind to the integer
// containers' members (Add, Subtract, ..., BitShiftLeft) where they are used.
// Elementwise with the width's saturation; a temporary left operand that no
// other record shares carries the result of + - * / and of the shifts.
template <class R>
concept IntRecord = std::same_as<R, VectorInt> || std::same_as<R, MatrixInt>;

#define ROVANE_INT_RECORD_ARITH(OP, VEC, VALUE, FROMVALUE)                                  \
    template <IntRecord R>                                                                  \
    R operator OP(const R& l, const TRovaneInt& r) {                                        \
        R res;                                                                              \
        res.Data().VEC(l.Data(), r);                                                        \
        return res;                                                                         \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R operator OP(const R& l, const R& r) {                                                 \
        return l OP static_cast<const TRovaneInt&>(r.Data());                               \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R operator OP(R&& l, const TRovaneInt& r) {                                             \
        if (l.Shared() || SameObject(l, r)) return std::as_const(l) OP r;                  \
        l.Data().VEC(r);                                                                    \
        return std::move(l);                                                                \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R operator OP(R&& l, const R& r) {                                                      \
        return std::move(l) OP static_cast<const TRovaneInt&>(r.Data());                   \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R operator OP(const TRovaneInt& l, const R& r) {                                        \
        R res;                                                                              \
        res.Data().VEC(l, r.Data());                                                        \
        return res;                                                                         \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R operator OP(const R& l, int32_t r) {                                                  \
        R res;                                                                              \
        res.Data().VALUE(l.Data(), r);                                                      \
        return res;                                                                         \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R operator OP(R&& l, int32_t r) {                                                       \
        if (l.Shared()) return std::as_const(l) OP r;                                       \
        l.Data().VALUE(r);                                                                  \
        return std::move(l);                                                                \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R operator OP(int32_t l, const R& r) {                                                  \
        R res;                                                                              \
        res.Data().FROMVALUE(r.Data(), l);                                                  \
        return res;                                                                         \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R& operator OP##=(R& l, const TRovaneInt& r) {                                          \
        l.Data().VEC(r);                                                                    \
        return l;                                                                           \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R& operator OP##=(R& l, int32_t r) {                                                    \
        l.Data().VALUE(r);                                                                  \
        return l;                                                                           \
    }
ROVANE_INT_RECORD_ARITH(+, Add, AddValue, AddValue)
ROVANE_INT_RECORD_ARITH(-, Subtract, SubtractValue, SubtractFromValue)
ROVANE_INT_RECORD_ARITH(*, Multiply, MultiplyValue, MultiplyValue)
ROVANE_INT_RECORD_ARITH(/, Divide, DivideValue, DivideByValue)
#undef ROVANE_INT_RECORD_ARITH

// Bit operators: the result goes to a new record, no reuse.
#define ROVANE_INT_RECORD_BITS(OP, MEMBER)                                                 \
    template <IntRecord R>                                                                  \
    R operator OP(const R& l, const R& r) {                                                 \
        R res;                                                                              \
        res.Data().MEMBER(l.Data(), r.Data());                                              \
        return res;                                                                         \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R operator OP(const R& l, const TRovaneInt& r) {                                        \
        R res;                                                                              \
        res.Data().MEMBER(l.Data(), r);                                                     \
        return res;                                                                         \
    }                                                                                       \
    template <IntRecord R>                                                                  \
    R operator OP(const TRovaneInt& l, const R& r) {                                        \
        R res;                                                                              \
        res.Data().MEMBER(l, r.Data());                                                     \
        return res;                                                                         \
    }
ROVANE_INT_RECORD_BITS(&, BinaryAnd)
ROVANE_INT_RECORD_BITS(|, BinaryOr)
ROVANE_INT_RECORD_BITS(^, BinaryXor)
#undef ROVANE_INT_RECORD_BITS

// Shifts keep the width of the record.
template <IntRecord R>
R operator<<(const R& l, int32_t bits) {
    R res;
    res.Data().BitShiftLeft(l.Data(), bits);
    return res;
}
template <IntRecord R>
R operator>>(const R& l, int32_t bits) {
    R res;
    res.Data().BitShiftRight(l.Data(), bits);
    return res;
}
// Elements that are 0 become 1, the others 0.
template <IntRecord R>
R operator!(const R& x) {
    R res;
    res.Data().LogicalNot(x.Data());
    return res;
}
template <IntRecord R>
R operator~(const R& x) {
    R res;
    res.Data().BinaryNot(x.Data());
    return res;
}
template <IntRecord R>
R operator-(const R& x) {
    R res;
    res.Data().SubtractFromValue(x.Data(), 0);
    return res;
}

// ---- free functions, generated from the member tables ----
#include "rovane/records/generated/Free.h"
#include "rovane/records/generated/FreeInt.h"

}  // namespace rovane
