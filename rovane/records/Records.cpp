// Expression records: lifetime, construction, conversions, operators.
#include "rovane/records/Records.h"

#include <cmath>
#include <cstring>
#include <exception>

#include "rovane/primitives/Prim.h"
#include "rovane/scalars/ScalarMath.h"
#include "rovane/storage/ObjectCache.h"
#include "rovane/storage/ReportChannel.h"

namespace rovane {

// ---------------------------------------------------------------------------
// The counted handle.
// ---------------------------------------------------------------------------
void TRecordHandle::ReleaseObject(TRovaneBase* obj) noexcept {
    // acq_rel: the last holder sees every write made through the others.
    const int32_t left = obj->fRefCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    try {
        if (obj->FCacheOwned) {
            // The cache holds the last reference of its own objects.
            if (left == 1) obj->FreeToCache();
        } else if (left == 0) {
            delete obj;
        }
    } catch (const std::exception& e) {
        ReportText(e.what());
    } catch (...) {
        ReportText("Rovane: record release failed");
    }
}

namespace {

// A new object, from the thread's cache or made directly, counted once for
// the record.
template <class T>
T* NewObject(bool fromCache) {
    T* obj = nullptr;
    if (fromCache)
        CreateIt(obj);
    else
        obj = new T();
    TRecordHandle::AddRef(obj);
    return obj;
}

template <class T>
TArray<T> ShareArray(TRovane& obj, bool wantDouble, bool wantComplex, const char* text) {
    (void)wantComplex;
    if (obj.IsDouble() != wantDouble) ERaise(text);
    if (obj.Length() == 0) return TArray<T>();
    if constexpr (std::is_same_v<T, double>) return obj.ValuesArray();
    if constexpr (std::is_same_v<T, float>) return obj.SValuesArray();
    if constexpr (std::is_same_v<T, TCplx>) return obj.CValuesArray();
    if constexpr (std::is_same_v<T, TSCplx>) return obj.SCValuesArray();
}

// Divides every element by a value, in place: real values by the division
// primitive over the real view (complex data as pairs), complex values by the
// complex one on complex data (real data widened first).
void DivideByValue(TDenseRovane& d, double v) {
    const int32_t n = d.Length() * (d.Complex() ? 2 : 1);
    if (n == 0) return;
    if (d.IsDouble())
        prim::DivC_I(v, d.PValues1D(0), 0, n);
    else
        prim::DivC_I(v, d.PSValues1D(0), 0, n);
}
void DivideByValue(TDenseRovane& d, const TCplx& v) {
    if (!d.Complex()) d.ExtendToComplex(true);
    const int32_t n = d.Length();
    if (n == 0) return;
    if (d.IsDouble())
        prim::DivC_I(v, d.PCValues1D(0), 0, n);
    else
        prim::DivC_I(TSCplx(float(v.Re), float(v.Im)), d.SCData + d.FCDataOffset, 0, n);
}

}  // namespace

// ---------------------------------------------------------------------------
// Vector
// ---------------------------------------------------------------------------
void Vector::CreateFromCache(bool aFromCache) const {
    if (fObject) return;
    fObject = NewObject<TVec>(aFromCache);
}

Vector::Vector(int32_t aLength) { CreateFromCache(false), Data().Size(aLength); }
Vector::Vector(int32_t aLength, bool complex) { CreateFromCache(false), Data().Size(aLength, complex); }
Vector::Vector(int32_t aLength, bool complex, bool isDouble) {
    CreateFromCache(false), Data().Size(aLength, complex, isDouble);
}
Vector::Vector(int32_t aLength, TMtxFloatPrecision floatPrecision) {
    CreateFromCache(false), Data().Size(aLength, floatPrecision);
}
Vector::Vector(bool aFromCache) { CreateFromCache(aFromCache); }
Vector::Vector(const TDoubleArray& values) { Data().CopyFromArray(std::span<const double>(values.data(), values.size())); }
Vector::Vector(std::initializer_list<double> values) { Data().CopyFromArray(std::span<const double>(values)); }
Vector::Vector(const TCplxArray& values) { Data().CopyFromArray(std::span<const TCplx>(values.data(), values.size())); }
Vector::Vector(const TSingleArray& values) {
    Data().Size(values.Length(), false, false);
    Data().CopyFromArray(std::span<const float>(values.data(), values.size()));
}
Vector::Vector(const TVec& src) { Data().Copy(src); }
Vector::Vector(const TVecInt& src) { Data().Copy(src, rvDouble); }
Vector::Vector(const VectorInt& src) { Data().Copy(src.Data(), rvDouble); }

Vector& Vector::Assign(const TRovaneBase& src) {
    Data().Assign(src);
    return *this;
}
Vector& Vector::Adopt(void* pointer, int32_t length, TMtxFloatPrecision precision) {
    Data().Adopt(pointer, length, precision);
    return *this;
}
Vector& Vector::Adopt(void* pointer, int32_t length, bool isComplex, bool isDouble) {
    Data().Adopt(pointer, length, isComplex, isDouble);
    return *this;
}
void Vector::Disown(void*& pointer, int32_t& length, TMtxFloatPrecision& precision) {
    Data().Disown(pointer, length, precision);
}
void Vector::Disown(void*& pointer, int32_t& length, bool& isComplex, bool& isDouble) {
    Data().Disown(pointer, length, isComplex, isDouble);
}
void Vector::Disown() { Data().Disown(); }

Vector::operator TDoubleArray() const {
    return ShareArray<double>(Data(), true, false, "Vector to TDoubleArray: IsDouble = false!");
}
Vector::operator TSingleArray() const {
    return ShareArray<float>(Data(), false, false, "Vector to TSingleArray: IsDouble = true!");
}
Vector::operator TCplxArray() const {
    if (Data().FloatPrecision() != rvDoubleComplex)
        ERaise("Vector to TCplxArray: AValue.FloatPrecision <> rvDoubleComplex");
    return ShareArray<TCplx>(Data(), true, true, "");
}
Vector::operator TSCplxArray() const {
    if (Data().FloatPrecision() != rvSingleComplex)
        ERaise("Vector to TSCplxArray: AValue.FloatPrecision <> rvSingleComplex");
    return ShareArray<TSCplx>(Data(), false, true, "");
}

Vector& Vector::Size(int32_t aLength) { return Data().Size(aLength), *this; }
Vector& Vector::Size(int32_t aLength, bool complex) { return Data().Size(aLength, complex), *this; }
Vector& Vector::Size(int32_t aLength, bool complex, bool isDouble) {
    return Data().Size(aLength, complex, isDouble), *this;
}
Vector& Vector::Size(int32_t aLength, TMtxFloatPrecision floatPrecision) {
    return Data().Size(aLength, floatPrecision), *this;
}
Vector& Vector::Size(const TRovaneBase& src) { return Data().Size(src), *this; }
Vector& Vector::Size(const TRovaneBase& src, bool complex) { return Data().Size(src, complex), *this; }
Vector& Vector::Size(const TRovaneBase& src, TMtxFloatPrecision floatPrecision) {
    return Data().Size(src, floatPrecision), *this;
}
Vector& Vector::Resize(int32_t len, bool zeroIt) { return Data().Resize(len, zeroIt), *this; }
Vector& Vector::SizeFromArray(const TDoubleArray& src) { return Data().Size(src.Length(), false, true), *this; }
Vector& Vector::SizeFromArray(const TSingleArray& src) { return Data().Size(src.Length(), false, false), *this; }
Vector& Vector::SizeFromArray(const TCplxArray& src) { return Data().Size(src.Length(), true, true), *this; }
Vector& Vector::SizeFromArray(const TSCplxArray& src) { return Data().Size(src.Length(), true, false), *this; }
Vector& Vector::Select(int32_t index, int32_t len) { return Data().SetSubRange(index, len), *this; }
Vector& Vector::SelectAll() { return Data().SetFullRange(), *this; }

TCplx Vector::CValues(int32_t i) const {
    const TVec& d = Data();
    if (d.IsDouble()) return d.CValues[i];
    return TCplx(d.SCValues[i].Re, d.SCValues[i].Im);
}

// ---------------------------------------------------------------------------
// Matrix
// ---------------------------------------------------------------------------
void Matrix::CreateFromCache(bool aFromCache) const {
    if (fObject) return;
    fObject = NewObject<TMtx>(aFromCache);
}

Matrix::Matrix(int32_t aRows, int32_t aCols) { CreateFromCache(false), Data().Size(aRows, aCols); }
Matrix::Matrix(int32_t aRows, int32_t aCols, bool complex) {
    CreateFromCache(false), Data().Size(aRows, aCols, complex);
}
Matrix::Matrix(int32_t aRows, int32_t aCols, bool complex, bool isDouble) {
    CreateFromCache(false), Data().Size(aRows, aCols, complex, isDouble);
}
Matrix::Matrix(int32_t aRows, int32_t aCols, TMtxFloatPrecision floatPrecision) {
    CreateFromCache(false), Data().Size(aRows, aCols, floatPrecision);
}
Matrix::Matrix(bool aFromCache) { CreateFromCache(aFromCache); }
Matrix::Matrix(const TDoubleArray& values) {
    Data().Size(1, values.Length());
    Data().CopyFromArray(std::span<const double>(values.data(), values.size()));
}
Matrix::Matrix(const TCplxArray& values) {
    Data().Size(1, values.Length(), true);
    Data().CopyFromArray(std::span<const TCplx>(values.data(), values.size()));
}
Matrix::Matrix(const T2DDoubleArray& rows) {
    const int32_t r = rows.Length(), c = r ? rows[0].Length() : 0;
    for (int32_t i = 1; i < r; ++i)
        if (rows[i].Length() != c) EInvalidArgumentRaise("Matrix: rows of unequal length");
    Data().Size(r, c);
    for (int32_t i = 0; i < r; ++i)
        Data().CopyFromArray(std::span<const double>(rows[i].data(), rows[i].size()), 0, i * c, c);
}
Matrix::Matrix(std::initializer_list<std::initializer_list<double>> rows) {
    const int32_t r = int32_t(rows.size()), c = r ? int32_t(rows.begin()->size()) : 0;
    for (const auto& row : rows)
        if (int32_t(row.size()) != c) EInvalidArgumentRaise("Matrix: rows of unequal length");
    Data().Size(r, c);
    int32_t i = 0;
    for (const auto& row : rows) Data().CopyFromArray(std::span<const double>(row), 0, c * i++, c);
}
Matrix::Matrix(const TMtx& src) { Data().Copy(src); }

Matrix& Matrix::Assign(const TRovaneBase& src) {
    Data().Assign(src);
    return *this;
}
Matrix& Matrix::Adopt(void* pointer, int32_t rows, int32_t cols, TMtxFloatPrecision precision) {
    Data().Adopt(pointer, rows, cols, precision);
    return *this;
}
void Matrix::Disown() { Data().Disown(); }

Matrix::operator TDoubleArray() const { return ShareArray<double>(Data(), true, false, "not AValue.IsDouble"); }
Matrix::operator TSingleArray() const { return ShareArray<float>(Data(), false, false, "AValue.IsDouble"); }
Matrix::operator TCplxArray() const {
    if (Data().FloatPrecision() != rvDoubleComplex) ERaise("AValue.FloatPrecision <> rvDoubleComplex");
    return ShareArray<TCplx>(Data(), true, true, "");
}
Matrix::operator TSCplxArray() const {
    if (Data().FloatPrecision() != rvSingleComplex) ERaise("AValue.FloatPrecision <> rvSingleComplex");
    return ShareArray<TSCplx>(Data(), false, true, "");
}

Matrix& Matrix::Size(int32_t aRows, int32_t aCols) { return Data().Size(aRows, aCols), *this; }
Matrix& Matrix::Size(int32_t aRows, int32_t aCols, bool complex) { return Data().Size(aRows, aCols, complex), *this; }
Matrix& Matrix::Size(int32_t aRows, int32_t aCols, bool complex, bool isDouble) {
    return Data().Size(aRows, aCols, complex, isDouble), *this;
}
Matrix& Matrix::Size(int32_t aRows, int32_t aCols, TMtxFloatPrecision floatPrecision) {
    return Data().Size(aRows, aCols, floatPrecision), *this;
}
Matrix& Matrix::Size(const TRovaneBase& src) { return Data().Size(src), *this; }
Matrix& Matrix::Size(const TRovaneBase& src, bool complex) { return Data().Size(src, complex), *this; }
Matrix& Matrix::Size(const TRovaneBase& src, TMtxFloatPrecision floatPrecision) {
    return Data().Size(src, floatPrecision), *this;
}
Matrix& Matrix::SizeFromArray(const TDoubleArray& src) { return Data().Size(1, src.Length()), *this; }
Matrix& Matrix::SizeFromArray(const TCplxArray& src) { return Data().Size(1, src.Length(), true), *this; }
Matrix& Matrix::Select(int32_t index, int32_t len) { return Data().SetSubRange(index, len), *this; }
Matrix& Matrix::SelectAll() { return Data().SetFullRange(), *this; }

double Matrix::Values(int32_t row, int32_t col) const {
    const TMtx& d = Data();
    return d.GetElement(row * d.LeadingCols() + col);
}
TCplx Matrix::CValues(int32_t i) const {
    const TMtx& d = Data();
    if (d.IsDouble()) return d.CValues[i];
    return TCplx(d.SCValues[i].Re, d.SCValues[i].Im);
}
TCplx Matrix::CValues(int32_t row, int32_t col) const { return CValues(row * Data().LeadingCols() + col); }

// ---------------------------------------------------------------------------
// Operators. One implementation over the record type; a temporary operand
// that no other record shares carries the result.
// ---------------------------------------------------------------------------
namespace {

enum class Op { Add, Sub, Mul, Div };

// Two matrices combine element by element only when their shapes agree
// (equal lengths of different shapes would pair unrelated elements).
void CheckShapes(const TRovane& l, const TRovane& r) {
    const auto* a = dynamic_cast<const TMtx*>(&l);
    const auto* b = dynamic_cast<const TMtx*>(&r);
    if (a && b && (a->Rows() != b->Rows() || a->Cols() != b->Cols()))
        EInvalidArgumentRaise("Matrix: Left.Rows <> Right.Rows or Left.Cols <> Right.Cols");
}

template <class R>
R Binary(Op op, const TRovane& l, const TRovane& r) {
    if constexpr (std::is_same_v<R, Matrix>) CheckShapes(l, r);
    R res;
    auto& d = res.Data();
    switch (op) {
        case Op::Add: d.Add(l, r); break;
        case Op::Sub: d.Sub(l, r); break;
        case Op::Mul: d.Mul(l, r); break;
        case Op::Div: d.Divide(l, r); break;
    }
    return res;
}

template <class D>
void InPlace(Op op, D& d, const TRovane& r) {
    if constexpr (std::is_same_v<D, TMtx>) CheckShapes(d, r);
    switch (op) {
        case Op::Add: d.Add(r); break;
        case Op::Sub: d.Sub(r); break;
        case Op::Mul: d.Mul(r); break;
        case Op::Div: d.Divide(r); break;
    }
}

// L op R with L a temporary: in place on L unless L is shared or is R.
template <class R>
R LeftTemp(Op op, R&& l, const TRovane& r) {
    if (l.Shared() || SameObject(l, r)) return Binary<R>(op, l.Data(), r);
    InPlace(op, l.Data(), r);
    return std::move(l);
}

// L op R with R a temporary: in place on R for the commutative operators
// (the products and sums are the same bits in either order); - and / take
// a new object, since their reversed vector forms would differ in the sign
// of a zero or in rounding.
template <class R>
R RightTemp(Op op, const TRovane& l, R&& r) {
    if ((op != Op::Add && op != Op::Mul) || r.Shared() || SameObject(r, l)) return Binary<R>(op, l, r.Data());
    InPlace(op, r.Data(), l);
    return std::move(r);
}

template <class D, class V>
void ValueInPlace(Op op, D& d, const V& v) {
    switch (op) {
        case Op::Add: d.Add(v); break;
        case Op::Sub: d.Sub(v); break;
        case Op::Mul: d.Mul(v); break;
        case Op::Div: DivideByValue(d, v); break;
    }
}

// L op value.
template <class R, class V>
R WithValue(Op op, const TRovane& l, const V& v) {
    R res;
    auto& d = res.Data();
    switch (op) {
        case Op::Add: d.Add(l, v); break;
        case Op::Sub: d.Sub(l, v); break;
        case Op::Mul: d.Mul(l, v); break;
        case Op::Div:
            d.Copy(l);
            DivideByValue(d, v);
            break;
    }
    return res;
}
template <class R, class V>
R WithValue(Op op, R&& l, const V& v) {
    if (l.Shared()) return WithValue<R>(op, l.Data(), v);
    ValueInPlace(op, l.Data(), v);
    return std::move(l);
}

// value op R: the reversed forms SubFrom and DivideBy.
template <class R, class V>
R ValueWith(Op op, const V& v, const TRovane& r) {
    R res;
    auto& d = res.Data();
    switch (op) {
        case Op::Add: d.Add(r, v); break;
        case Op::Sub: d.SubFrom(v, r); break;
        case Op::Mul: d.Mul(r, v); break;
        case Op::Div: d.DivideBy(v, r); break;
    }
    return res;
}
template <class R, class V>
R ValueWith(Op op, const V& v, R&& r) {
    if (r.Shared()) return ValueWith<R>(op, v, r.Data());
    auto& d = r.Data();
    switch (op) {
        case Op::Add: d.Add(v); break;
        case Op::Sub: d.SubFrom(v); break;
        case Op::Mul: d.Mul(v); break;
        case Op::Div: d.DivideBy(v); break;
    }
    return std::move(r);
}

}  // namespace

#define ROVANE_RECORD_OPS(R, OP, OPC)                                                                          \
    R operator OP(const R& l, const R& r) { return Binary<R>(OPC, l.Data(), r.Data()); }                       \
    R operator OP(R&& l, const R& r) { return LeftTemp<R>(OPC, std::move(l), r.Data()); }                     \
    R operator OP(const R& l, R&& r) { return RightTemp<R>(OPC, l.Data(), std::move(r)); }                    \
    R operator OP(R&& l, R&& r) { return LeftTemp<R>(OPC, std::move(l), r.Data()); }                          \
    R operator OP(const R& l, const TRovane& r) { return Binary<R>(OPC, l.Data(), r); }                        \
    R operator OP(R&& l, const TRovane& r) { return LeftTemp<R>(OPC, std::move(l), r); }                      \
    R operator OP(const TRovane& l, const R& r) { return Binary<R>(OPC, l, r.Data()); }                        \
    R operator OP(const TRovane& l, R&& r) { return RightTemp<R>(OPC, l, std::move(r)); }                     \
    R operator OP(const R& l, double r) { return WithValue<R>(OPC, l.Data(), r); }                             \
    R operator OP(R&& l, double r) { return WithValue<R>(OPC, std::move(l), r); }                             \
    R operator OP(double l, const R& r) { return ValueWith<R>(OPC, l, r.Data()); }                             \
    R operator OP(double l, R&& r) { return ValueWith<R>(OPC, l, std::move(r)); }                             \
    R operator OP(const R& l, const TCplx& r) { return WithValue<R>(OPC, l.Data(), r); }                       \
    R operator OP(R&& l, const TCplx& r) { return WithValue<R>(OPC, std::move(l), r); }                       \
    R operator OP(const TCplx& l, const R& r) { return ValueWith<R>(OPC, l, r.Data()); }                       \
    R operator OP(const TCplx& l, R&& r) { return ValueWith<R>(OPC, l, std::move(r)); }                       \
    R& R::operator OP##=(const TRovane& x) { return InPlace(OPC, Data(), x), *this; }                         \
    R& R::operator OP##=(double x) { return ValueInPlace(OPC, Data(), x), *this; }                            \
    R& R::operator OP##=(const TCplx& x) { return ValueInPlace(OPC, Data(), x), *this; }

ROVANE_RECORD_OPS(Vector, +, Op::Add)
ROVANE_RECORD_OPS(Vector, -, Op::Sub)
ROVANE_RECORD_OPS(Vector, *, Op::Mul)
ROVANE_RECORD_OPS(Vector, /, Op::Div)
ROVANE_RECORD_OPS(Matrix, +, Op::Add)
ROVANE_RECORD_OPS(Matrix, -, Op::Sub)
ROVANE_RECORD_OPS(Matrix, *, Op::Mul)
ROVANE_RECORD_OPS(Matrix, /, Op::Div)
#undef ROVANE_RECORD_OPS

Matrix operator+(const Matrix& l, const Vector& r) { return Binary<Matrix>(Op::Add, l.Data(), r.Data()); }
Vector operator+(const Vector& l, const Matrix& r) { return Binary<Vector>(Op::Add, l.Data(), r.Data()); }
Matrix operator-(const Matrix& l, const Vector& r) { return Binary<Matrix>(Op::Sub, l.Data(), r.Data()); }
Vector operator-(const Vector& l, const Matrix& r) { return Binary<Vector>(Op::Sub, l.Data(), r.Data()); }
Matrix operator*(const Matrix& l, const Vector& r) { return Binary<Matrix>(Op::Mul, l.Data(), r.Data()); }
Vector operator*(const Vector& l, const Matrix& r) { return Binary<Vector>(Op::Mul, l.Data(), r.Data()); }
Matrix operator/(const Matrix& l, const Vector& r) { return Binary<Matrix>(Op::Div, l.Data(), r.Data()); }
Vector operator/(const Vector& l, const Matrix& r) { return Binary<Vector>(Op::Div, l.Data(), r.Data()); }

namespace {
template <class R>
R Negate(const R& x) {
    R res;
    res.Data().Sign(x.Data());
    return res;
}
template <class R>
R Negate(R&& x) {
    if (x.Shared()) return Negate(std::as_const(x));
    x.Data().Sign();
    return std::move(x);
}
}  // namespace

Vector operator-(const Vector& x) { return Negate(x); }
Vector operator-(Vector&& x) { return Negate(std::move(x)); }
Matrix operator-(const Matrix& x) { return Negate(x); }
Matrix operator-(Matrix&& x) { return Negate(std::move(x)); }

// ---------------------------------------------------------------------------
// Select: a gather into a new record.
// ---------------------------------------------------------------------------
namespace {

template <class T>
void GatherStep(const T* src, T* dst, int32_t step, int32_t len) {
    for (int32_t i = 0; i < len; ++i) dst[i] = src[int64_t(i) * step];
}

template <class R>
R SelectFrom(const R& src, int32_t index, int32_t step, int32_t len) {
    const TRovane& s = src.Data();
    const int64_t last = int64_t(index) + int64_t(step) * (int64_t(len) - 1);
    if (s.ConditionCheck() && (index < 0 || step < 1 || len < 0 || (len > 0 && last >= s.Length())))
        ERangeErrorRaiseFmt("Select: Index = %d, Step = %d, Len = %d, Src.Length = %d",
                            index, step, len, s.Length());
    R res;
    auto& d = res.Data();
    if constexpr (std::is_same_v<R, Matrix>)
        d.Size(1, len, s.FloatPrecision());
    else
        d.Size(len, s.FloatPrecision());
    if (len == 0) return res;
    switch (s.FloatPrecision()) {
        case rvDouble: GatherStep(s.Values + index, d.Values, step, len); break;
        case rvDoubleComplex: GatherStep(s.CValues + index, d.CValues, step, len); break;
        case rvSingle: GatherStep(s.SValues + index, d.SValues, step, len); break;
        default: GatherStep(s.SCValues + index, d.SCValues, step, len); break;
    }
    return res;
}

}  // namespace

Vector Select(const Vector& src, int32_t index, int32_t len) { return SelectFrom(src, index, 1, len); }
Vector Select(const Vector& src, int32_t index, int32_t step, int32_t len) {
    return SelectFrom(src, index, step, len);
}
Matrix Select(const Matrix& src, int32_t index, int32_t len) { return SelectFrom(src, index, 1, len); }
Matrix Select(const Matrix& src, int32_t index, int32_t step, int32_t len) {
    return SelectFrom(src, index, step, len);
}

Vector SumCols(const Matrix& src) {
    Vector r;
    src.Data().SumCols(r.Data());
    return r;
}
Vector SumRows(const Matrix& src) {
    Vector r;
    src.Data().SumRows(r.Data());
    return r;
}
Vector MeanCols(const Matrix& src) {
    Vector r;
    src.Data().MeanCols(r.Data());
    return r;
}
Vector MeanRows(const Matrix& src) {
    Vector r;
    src.Data().MeanRows(r.Data());
    return r;
}
Vector StringsToValues(const TStringList& src) {
    Vector r;
    r.Data().StringsToValues(src);
    return r;
}
namespace {
template <class R>
R Sorted(const R& src, bool descend) {
    R r;
    r.Data().Copy(src.Data());
    if (descend)
        r.Data().SortDescend();
    else
        r.Data().SortAscend();
    return r;
}
}  // namespace
Vector SortAscend(const Vector& src) { return Sorted(src, false); }
Vector SortDescend(const Vector& src) { return Sorted(src, true); }
Matrix SortAscend(const Matrix& src) { return Sorted(src, false); }
Matrix SortDescend(const Matrix& src) { return Sorted(src, true); }
Matrix StringsToValues(const TStringList& src, std::string_view delimiter) {
    Matrix r;
    r.Data().StringsToValues(src, delimiter);
    return r;
}

// ---------------------------------------------------------------------------
// Comparisons.
// ---------------------------------------------------------------------------
namespace {

enum class Rel { Lt, Le, Gt, Ge, Eq };

TCplx ElementC(const TRovane& x, int32_t i) {
    if (x.Complex()) {
        if (x.IsDouble()) return x.CValues[i];
        return TCplx(x.SCValues[i].Re, x.SCValues[i].Im);
    }
    return TCplx(x.GetElement(i), 0);
}

// An unordered real pair counts as true in the four order relations.
bool Holds(Rel rel, double a, double b) {
    if (rel == Rel::Eq) return Equal(a, b, 0.0);
    if (std::isnan(a) || std::isnan(b)) return true;
    switch (rel) {
        case Rel::Lt: return a < b;
        case Rel::Le: return a <= b;
        case Rel::Gt: return a > b;
        default: return a >= b;
    }
}
bool Holds(Rel rel, const TCplx& a, const TCplx& b) {
    switch (rel) {
        case Rel::Lt: return Smaller(a, b);
        case Rel::Le: return SmallerOrEqual(a, b);
        case Rel::Gt: return Bigger(a, b);
        case Rel::Ge: return BiggerOrEqual(a, b);
        default: return Equal(a, b, 0.0);
    }
}

bool AllWithValue(Rel rel, const TRovane& x, double v) {
    const int32_t n = x.Length();
    if (x.Complex()) {
        for (int32_t i = 0; i < n; ++i)
            if (!Holds(rel, ElementC(x, i), TCplx(v, 0))) return false;
        return true;
    }
    for (int32_t i = 0; i < n; ++i)
        if (!Holds(rel, x.GetElement(i), v)) return false;
    return true;
}
bool AllWithValue(Rel rel, const TRovane& x, const TCplx& v) {
    const int32_t n = x.Length();
    for (int32_t i = 0; i < n; ++i)
        if (!Holds(rel, ElementC(x, i), v)) return false;
    return true;
}
// value rel x, as x rel' value.
Rel Mirror(Rel rel) {
    switch (rel) {
        case Rel::Lt: return Rel::Gt;
        case Rel::Le: return Rel::Ge;
        case Rel::Gt: return Rel::Lt;
        case Rel::Ge: return Rel::Le;
        default: return rel;
    }
}
// Element by element; unequal lengths never hold (equality tests the size
// first, as Equal does: length and complexity).
bool AllWith(Rel rel, const TRovane& a, const TRovane& b) {
    const int32_t n = a.Length();
    if (b.Length() != n) {
        if (rel == Rel::Eq) return false;
        EInvalidArgumentRaise("Compare: Length <> Vec.Length");
    }
    if (rel == Rel::Eq && a.Complex() != b.Complex()) return false;
    if (a.Complex() || b.Complex()) {
        for (int32_t i = 0; i < n; ++i)
            if (!Holds(rel, ElementC(a, i), ElementC(b, i))) return false;
        return true;
    }
    for (int32_t i = 0; i < n; ++i)
        if (!Holds(rel, a.GetElement(i), b.GetElement(i))) return false;
    return true;
}

}  // namespace

bool operator==(const Vector& l, const Vector& r) { return AllWith(Rel::Eq, l.Data(), r.Data()); }
bool operator==(const Vector& l, const TRovane& r) { return AllWith(Rel::Eq, l.Data(), r); }
bool operator==(const Vector& l, double r) { return AllWithValue(Rel::Eq, l.Data(), r); }
bool operator==(const Vector& l, const TCplx& r) { return AllWithValue(Rel::Eq, l.Data(), r); }
bool operator==(const Matrix& l, const Matrix& r) {
    return l.Rows() == r.Rows() && l.Cols() == r.Cols() && AllWith(Rel::Eq, l.Data(), r.Data());
}
bool operator==(const Matrix& l, const TRovane& r) { return AllWith(Rel::Eq, l.Data(), r); }
bool operator==(const Matrix& l, const Vector& r) { return AllWith(Rel::Eq, l.Data(), r.Data()); }
bool operator==(const Matrix& l, double r) { return AllWithValue(Rel::Eq, l.Data(), r); }
bool operator==(const Matrix& l, const TCplx& r) { return AllWithValue(Rel::Eq, l.Data(), r); }

#define ROVANE_RECORD_ORDER(OP, REL)                                                                               \
    bool operator OP(const Vector& l, const Vector& r) { return AllWith(REL, l.Data(), r.Data()); }                \
    bool operator OP(const Vector& l, double r) { return AllWithValue(REL, l.Data(), r); }                         \
    bool operator OP(double l, const Vector& r) { return AllWithValue(Mirror(REL), r.Data(), l); }                 \
    bool operator OP(const Vector& l, const TCplx& r) { return AllWithValue(REL, l.Data(), r); }                   \
    bool operator OP(const TCplx& l, const Vector& r) { return AllWithValue(Mirror(REL), r.Data(), l); }           \
    bool operator OP(const Matrix& l, const Matrix& r) { return AllWith(REL, l.Data(), r.Data()); }                \
    bool operator OP(const Matrix& l, const Vector& r) { return AllWith(REL, l.Data(), r.Data()); }                \
    bool operator OP(const Vector& l, const Matrix& r) { return AllWith(REL, l.Data(), r.Data()); }                \
    bool operator OP(const Matrix& l, double r) { return AllWithValue(REL, l.Data(), r); }                         \
    bool operator OP(double l, const Matrix& r) { return AllWithValue(Mirror(REL), r.Data(), l); }                 \
    bool operator OP(const Matrix& l, const TCplx& r) { return AllWithValue(REL, l.Data(), r); }                   \
    bool operator OP(const TCplx& l, const Matrix& r) { return AllWithValue(Mirror(REL), r.Data(), l); }
ROVANE_RECORD_ORDER(<, Rel::Lt)
ROVANE_RECORD_ORDER(<=, Rel::Le)
ROVANE_RECORD_ORDER(>, Rel::Gt)
ROVANE_RECORD_ORDER(>=, Rel::Ge)
#undef ROVANE_RECORD_ORDER

// ---------------------------------------------------------------------------
// The forwarders and free functions, generated from the member tables.
// ---------------------------------------------------------------------------
#include "rovane/records/generated/Vector.members.inc"
#include "rovane/records/generated/Matrix.members.inc"
#include "rovane/records/generated/Free.inc"

}  // namespace rovane
