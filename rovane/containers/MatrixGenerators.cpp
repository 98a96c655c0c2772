// Generators of well-known matrices: identity, Toeplitz, Hankel,
// Vandermonde, Pascal and Kac.
#include "rovane/containers/MatrixCommon.h"

namespace rovane {

using namespace mtx;
using frame::CachedVec;

namespace {
template <class T>
T& El(const TMtx& m, int64_t i, int64_t j) {
    return At<T>(m)[i * m.fLeadingCols + j];
}
}  // namespace

TMtx& TMtx::Eye(int32_t aRows, int32_t aCols) { return Eye(aRows, aCols, fFloatPrecision); }

TMtx& TMtx::Eye(int32_t aRows, int32_t aCols, TMtxFloatPrecision precision) {
    Size(aRows, aCols, precision);
    SetZero();
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t i = 0; i < std::min(aRows, aCols); ++i) El<T>(*this, i, i) = FromReal<T>(1);
    });
    return *this;
}

TMtx& TMtx::Toeplitz(const TVec& firstRow, const TVec& firstCol) {
    if (firstRow.fComplex != firstCol.fComplex) EInvalidArgumentRaise("FirstRow.Complex <> FirstCol.Complex");
    if (firstRow.fIsDouble != firstCol.fIsDouble) EInvalidArgumentRaise("FirstRow.IsDouble <> FirstCol.IsDouble");
    CachedVec r, c;
    r->Copy(firstRow);  // both may be views of Self
    c->Copy(firstCol);
    Size(firstCol.fLength + 1, firstRow.fLength, firstRow.fFloatPrecision);
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        const T* pr = At<T>(*r);
        const T* pc = At<T>(*c);
        for (int32_t i = 0; i < fRows; ++i)
            for (int32_t j = 0; j < fCols; ++j) El<T>(*this, i, j) = j >= i ? pr[j - i] : pc[i - j - 1];
    });
    return *this;
}

TMtx& TMtx::Toeplitz(const TVec& firstRow) {
    CachedVec r;
    r->Copy(firstRow);
    const int32_t n = firstRow.fLength;
    Size(n, n, firstRow.fFloatPrecision);
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        const T* pr = At<T>(*r);
        for (int32_t i = 0; i < n; ++i)
            for (int32_t j = 0; j < n; ++j) El<T>(*this, i, j) = pr[j >= i ? j - i : i - j];
    });
    return *this;
}

TMtx& TMtx::Hankel(const TVec& firstCol) {
    CachedVec c;
    c->Copy(firstCol);
    const int32_t n = firstCol.fLength;
    Size(n, n, firstCol.fFloatPrecision);
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        const T* pc = At<T>(*c);
        for (int32_t i = 0; i < n; ++i)
            for (int32_t j = 0; j < n; ++j) El<T>(*this, i, j) = i + j < n ? pc[i + j] : FromReal<T>(0);
    });
    return *this;
}

TMtx& TMtx::VanderMonde(int32_t aCols, const TVec& vec) {
    if (aCols < 0) EInvalidArgumentRaise("TMtx.VanderMonde: ACols < 0");
    CachedVec v;
    v->Copy(vec);
    Size(vec.fLength, aCols, vec.fFloatPrecision);
    if (fLength == 0) return *this;
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        const T* pv = At<T>(*v);
        for (int32_t i = 0; i < fRows; ++i) {
            El<T>(*this, i, aCols - 1) = FromReal<T>(1);
            for (int32_t j = aCols - 2; j >= 0; --j) El<T>(*this, i, j) = El<T>(*this, i, j + 1) * pv[i];
        }
    });
    return *this;
}

TMtx& TMtx::Pascl(int32_t n) {
    Size(n, n, PrecOf(false, fIsDouble));
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t j = 0; j < n; ++j) El<T>(*this, 0, j) = T(1);
        for (int32_t i = 1; i < n; ++i) {
            El<T>(*this, i, 0) = T(1);
            for (int32_t j = 1; j < n; ++j) El<T>(*this, i, j) = El<T>(*this, i - 1, j) + El<T>(*this, i, j - 1);
        }
    });
    return *this;
}

TMtx& TMtx::Kac(int32_t n) {
    if (n < 0) EInvalidArgumentRaise("TMtx.Kac: n < 0");
    Size(n + 1, n + 1, PrecOf(false, fIsDouble));
    SetZero();
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t i = 0; i < n; ++i) {
            El<T>(*this, i + 1, i) = T(i + 1);
            El<T>(*this, i, i + 1) = T(n - i);
        }
    });
    return *this;
}

}  // namespace rovane
