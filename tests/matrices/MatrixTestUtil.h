// Helpers of the matrix tests: element access over the four precisions, a
// plain reference matrix in long double, and the products by triple loop.
#pragma once

#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <complex>
#include <cstdint>
#include <string>
#include <vector>

namespace mtxtest {

using namespace rovane;
using Z = std::complex<long double>;

inline Z Get(const TMtx& m, int i, int j) {
    const int64_t p = int64_t(i) * m.LeadingCols() + j;
    switch (m.FloatPrecision()) {
        case rvDouble: return Z(m.Values[p], 0);
        case rvSingle: return Z(m.SValues[p], 0);
        case rvDoubleComplex: return Z(m.CValues[p].Re, m.CValues[p].Im);
        default: return Z(m.SCValues[p].Re, m.SCValues[p].Im);
    }
}
inline void Set(TMtx& m, int i, int j, Z z) {
    const int64_t p = int64_t(i) * m.LeadingCols() + j;
    switch (m.FloatPrecision()) {
        case rvDouble: m.Values[p] = double(z.real()); break;
        case rvSingle: m.SValues[p] = float(z.real()); break;
        case rvDoubleComplex: m.CValues[p] = TCplx(double(z.real()), double(z.imag())); break;
        default: m.SCValues[p] = TSCplx(float(z.real()), float(z.imag()));
    }
}
inline Z GetV(const TVec& v, int i) {
    switch (v.FloatPrecision()) {
        case rvDouble: return Z(v.Values[i], 0);
        case rvSingle: return Z(v.SValues[i], 0);
        case rvDoubleComplex: return Z(v.CValues[i].Re, v.CValues[i].Im);
        default: return Z(v.SCValues[i].Re, v.SCValues[i].Im);
    }
}
inline void SetV(TVec& v, int i, Z z) {
    switch (v.FloatPrecision()) {
        case rvDouble: v.Values[i] = double(z.real()); break;
        case rvSingle: v.SValues[i] = float(z.real()); break;
        case rvDoubleComplex: v.CValues[i] = TCplx(double(z.real()), double(z.imag())); break;
        default: v.SCValues[i] = TSCplx(float(z.real()), float(z.imag()));
    }
}

// Values k / 8 with |k| <= 8: every product and sum the tests form is exact
// in single precision too, so results compare exactly whatever the order of
// summation of the routine.
struct Dyadic {
    uint32_t s;
    explicit Dyadic(uint32_t seed) : s(seed) {}
    long double Next() {
        s = s * 1664525u + 1013904223u;
        return (long double)(int((s >> 16) % 17) - 8) / 8;
    }
};

inline bool IsCplx(TMtxFloatPrecision p) { return p == rvSingleComplex || p == rvDoubleComplex; }

inline void Random(TMtx& m, int rows, int cols, TMtxFloatPrecision p, Dyadic& g) {
    m.Size(rows, cols, p);
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < cols; ++j) {
            const long double re = g.Next();
            Set(m, i, j, Z(re, IsCplx(p) ? g.Next() : 0));
        }
}
inline void RandomV(TVec& v, int n, TMtxFloatPrecision p, Dyadic& g) {
    v.Size(n, p);
    for (int i = 0; i < n; ++i) {
        const long double re = g.Next();
        SetV(v, i, Z(re, IsCplx(p) ? g.Next() : 0));
    }
}

// A plain row-major matrix.
struct Ref {
    int r = 0, c = 0;
    std::vector<Z> v;
    Ref(int rows, int cols) : r(rows), c(cols), v(size_t(rows) * cols) {}
    Z& at(int i, int j) { return v[size_t(i) * c + j]; }
    const Z& at(int i, int j) const { return v[size_t(i) * c + j]; }
};

inline Ref Of(const TMtx& m) {
    Ref out(m.Rows(), m.Cols());
    for (int i = 0; i < m.Rows(); ++i)
        for (int j = 0; j < m.Cols(); ++j) out.at(i, j) = Get(m, i, j);
    return out;
}

// The matrix a product reads: a symmetric (real data) or Hermitian (complex
// data) operand from its stored triangle (the Hermitian diagonal real), a
// triangular one from its triangle (unit diagonal when asked), others whole.
inline Ref Effective(const TMtx& m, TMtxType type, bool complexProduct) {
    Ref a = Of(m);
    const bool upper = m.TriangleForm() == tfUpper;
    auto stored = [&](int i, int j) { return upper ? j >= i : j <= i; };
    const bool sym = complexProduct ? (type == mtHermitian || type == mtHermPosDef)
                                    : (type == mtSymmetric || type == mtSymmPosDef);
    if (sym) {
        Ref s(a.r, a.c);
        for (int i = 0; i < a.r; ++i)
            for (int j = 0; j < a.c; ++j) {
                Z z = stored(i, j) ? a.at(i, j) : std::conj(a.at(j, i));
                if (!complexProduct && !stored(i, j)) z = a.at(j, i);
                if (i == j && complexProduct) z = Z(z.real(), 0);
                s.at(i, j) = z;
            }
        return s;
    }
    if (type == mtTriangle) {
        for (int i = 0; i < a.r; ++i)
            for (int j = 0; j < a.c; ++j) {
                if (!stored(i, j)) a.at(i, j) = 0;
                if (i == j && m.TriangleUnit()) a.at(i, j) = 1;
            }
    }
    return a;
}

inline Ref Apply(const Ref& a, TMtxOperation op) {
    if (op == opNone) return a;
    Ref t(a.c, a.r);
    for (int i = 0; i < a.r; ++i)
        for (int j = 0; j < a.c; ++j) t.at(j, i) = op == opHerm ? std::conj(a.at(i, j)) : a.at(i, j);
    return t;
}

inline Ref Product(const Ref& a, const Ref& b) {
    Ref c(a.r, b.c);
    for (int i = 0; i < a.r; ++i)
        for (int j = 0; j < b.c; ++j) {
            Z s = 0;
            for (int p = 0; p < a.c; ++p) s += a.at(i, p) * b.at(p, j);
            c.at(i, j) = s;
        }
    return c;
}

// Exact comparison (the data are dyadic); returns the failure count so that
// a sweep can stop at the first failing case.
inline int ExpectEqualRef(const TMtx& got, const Ref& want, const std::string& what) {
    if (got.Rows() != want.r || got.Cols() != want.c) {
        ADD_FAILURE() << what << ": shape " << got.Rows() << "x" << got.Cols() << ", want " << want.r << "x" << want.c;
        return 1;
    }
    for (int i = 0; i < want.r; ++i)
        for (int j = 0; j < want.c; ++j)
            if (Get(got, i, j) != want.at(i, j)) {
                ADD_FAILURE() << what << ": at (" << i << "," << j << ") got " << double(Get(got, i, j).real()) << ","
                              << double(Get(got, i, j).imag()) << " want " << double(want.at(i, j).real()) << ","
                              << double(want.at(i, j).imag());
                return 1;
            }
    return 0;
}

// Sizes m and fills it row by row (re, im pairs when complex).
inline void SetM(TMtx& m, int rows, int cols, bool complex, std::initializer_list<double> vals, bool isDouble = true) {
    m.Size(rows, cols, complex, isDouble);
    auto it = vals.begin();
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < cols; ++j) {
            const double re = *it++;
            const double im = complex ? *it++ : 0;
            Set(m, i, j, Z(re, im));
        }
}

inline const char* PrecName(TMtxFloatPrecision p) {
    static const char* n[] = {"single", "double", "single complex", "double complex"};
    return n[int(p)];
}

}  // namespace mtxtest
