// Matrix shape and storage forms: sizing with kept data, rows, columns and
// diagonals, transposition and the other rearrangements, triangles, band
// storage, concatenation. Every loop takes LeadingCols as the row stride.
#include <memory>
#include <numeric>
#include <span>
#include <vector>

#include "rovane/containers/MatrixCommon.h"
#include "rovane/containers/RovaneInt.h"
#include "rovane/primitives/MatrixPrims.h"

namespace rovane {

using namespace mtx;
using frame::CachedVec;

namespace {

// Element (i, j) of a typed view.
template <class T>
T& El(const TMtx& m, int64_t i, int64_t j) {
    return At<T>(m)[i * m.fLeadingCols + j];
}

// dst block (rows x cols at dst(dr, dc)) := src block at src(sr, sc).
template <class T>
void CopyRect(const TMtx& src, int32_t sr, int32_t sc, TMtx& dst, int32_t dr, int32_t dc, int32_t rows,
              int32_t cols) {
    if (rows <= 0 || cols <= 0) return;
    CopyBlock(At<T>(src) + int64_t(sr) * src.fLeadingCols + sc, Ld(src),
              At<T>(dst) + int64_t(dr) * dst.fLeadingCols + dc, Ld(dst), rows, cols);
}

void CopyRectAny(const TMtx& src, int32_t sr, int32_t sc, TMtx& dst, int32_t dr, int32_t dc, int32_t rows,
                 int32_t cols) {
    ByPrecision(src.fFloatPrecision, [&](auto t) { CopyRect<decltype(t)>(src, sr, sc, dst, dr, dc, rows, cols); });
}

// Out-of-place transposition (conjugated when conj and complex) of src into
// dst, which is already sized cols x rows.
void TransposeInto(const TMtx& src, TMtx& dst, bool conj) {
    if (src.fLength == 0) return;
    switch (src.fFloatPrecision) {
        case rvDouble:
            TransposeMatrix(At<double>(src), 0, At<double>(dst), 0, src.fRows, src.fCols, Ld(src), Ld(dst));
            break;
        case rvSingle:
            TransposeMatrix(At<float>(src), 0, At<float>(dst), 0, src.fRows, src.fCols, Ld(src), Ld(dst));
            break;
        case rvDoubleComplex:
            if (conj)
                AdjungateMatrixc(At<TCplx>(src), 0, At<TCplx>(dst), 0, src.fRows, src.fCols, Ld(src), Ld(dst));
            else
                TransposeMatrixc(At<TCplx>(src), 0, At<TCplx>(dst), 0, src.fRows, src.fCols, Ld(src), Ld(dst));
            break;
        default:
            if (conj)
                AdjungateMatrixc(At<TSCplx>(src), 0, At<TSCplx>(dst), 0, src.fRows, src.fCols, Ld(src), Ld(dst));
            else
                TransposeMatrixc(At<TSCplx>(src), 0, At<TSCplx>(dst), 0, src.fRows, src.fCols, Ld(src), Ld(dst));
    }
}

int32_t IntAt(const TVecInt& v, int32_t i) {
    if (v.IValues) return v.IValues[i];
    if (v.SIValues) return v.SIValues[i];
    return v.BValues[i];
}

}  // namespace

// ---- sizing ----------------------------------------------------------------
TMtx& TMtx::SetRows(int32_t value) { return Size(value, fCols, fFloatPrecision); }
TMtx& TMtx::SetCols(int32_t value) { return Size(fRows, value, fFloatPrecision); }

TMtx& TMtx::Resize(int32_t aRows, int32_t aCols) {
    if (aRows <= 0) ERangeErrorRaise("TMtx.Resize: Row <= 0");
    if (aCols <= 0) ERangeErrorRaise("TMtx.Resize: Col <= 0");
    if (int64_t(aRows) * aCols == fLength) return *this;
    CachedMtx old;
    old->Copy(*this);
    Size(aRows, aCols, fFloatPrecision);
    SetZero();
    CopyRectAny(*old, 0, 0, *this, 0, 0, std::min(aRows, old->fRows), std::min(aCols, old->fCols));
    return *this;
}

TMtx& TMtx::Resize(const TMtx& src, int32_t aRows, int32_t aCols) {
    if (&src == this) EInvalidArgumentRaise("TMtx.Resize: Src = Self");
    if (aRows == 0 && aCols == 0) return Size(0, 0, src.fFloatPrecision);
    if (aRows <= 0) EInvalidArgumentRaise("TMtx.Resize: NewRows <= 0");
    if (aCols <= 0) EInvalidArgumentRaise("TMtx.Resize: NewCols <= 0");
    Size(aRows, aCols, src.fFloatPrecision);
    SetZero();
    CopyRectAny(src, 0, 0, *this, 0, 0, std::min(aRows, src.fRows), std::min(aCols, src.fCols));
    return *this;
}

TMtx& TMtx::ResizeAndTranspose(const TMtx& src, int32_t aRows, int32_t aCols) {
    if (&src == this) EInvalidArgumentRaise("TMtx.ResizeAndTranspose: Src = Self");
    if (aRows == 0 && aCols == 0) return Size(0, 0, src.fFloatPrecision);
    if (aRows <= 0) EInvalidArgumentRaise("TMtx.ResizeAndTranspose: NewRows <= 0");
    if (aCols <= 0) EInvalidArgumentRaise("TMtx.ResizeAndTranspose: NewCols <= 0");
    CachedMtx t;
    t->Transp(src);
    Size(aRows, aCols, src.fFloatPrecision);
    SetZero();
    CopyRectAny(*t, 0, 0, *this, 0, 0, std::min(aRows, t->fRows), std::min(aCols, t->fCols));
    return *this;
}

int32_t TMtx::IndexOf(int32_t row, int32_t col) const { return row * fLeadingCols + col; }

// ---- rows, columns, diagonals ------------------------------------------------
TMtx& TMtx::SetRow(const TRovane& vec, int32_t row) {
    if (vec.fComplex != fComplex) EInvalidArgumentRaise("Complex <> Vec.Complex");
    if (vec.fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("FloatPrecision <> Vec.FloatPrecision");
    if (vec.fLength != fCols) EInvalidArgumentRaise("Vec.Length <> Cols");
    return SetRow(vec, 0, row, 0, fCols);
}

TMtx& TMtx::SetRow(const TRovane& vec, int32_t vecIndex, int32_t row, int32_t col, int32_t len) {
    if (vec.fComplex != fComplex) EInvalidArgumentRaise("Complex <> Vec.Complex");
    if (vec.fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("FloatPrecision <> Vec.FloatPrecision");
    if (row < 0 || row >= fRows) EInvalidArgumentRaise("Row param is not within range: 0 <= Row < Rows");
    if (col < 0 || len < 0 || int64_t(col) + len > fCols)
        EInvalidArgumentRaise("Not within range: 0 <= (Col + Len) <= Cols");
    if (vecIndex < 0 || int64_t(vecIndex) + len > vec.fLength)
        EInvalidArgumentRaise("Not within range: 0 <= (VecIndex + Len) <= Vec.Length");
    if (len == 0) return *this;
    LazyVec tmp;
    const TRovane* src = &vec;
    if (SharesMemory(vec, *this)) {  // a view of Self: read it whole first
        tmp->Size(len, vec.fFloatPrecision);
        tmp->Copy(vec, vecIndex, 0, len);
        src = &*tmp;
        vecIndex = 0;
    }
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        const T* s = At<T>(*src) + vecIndex;
        std::copy(s, s + len, &El<T>(*this, row, col));
    });
    return *this;
}

TMtx& TMtx::SetCol(const TRovane& vec, int32_t col) {
    if (vec.fComplex != fComplex) EInvalidArgumentRaise("Complex <> Vec.Complex");
    if (vec.fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("FloatPrecision <> Vec.FloatPrecision");
    if (vec.fLength != fRows) EInvalidArgumentRaise("Vec.Length <> Vec.Rows");
    return SetCol(vec, 0, 0, col, fRows);
}

TMtx& TMtx::SetCol(const TRovane& vec, int32_t vecIndex, int32_t row, int32_t col, int32_t len) {
    if (vec.fComplex != fComplex) EInvalidArgumentRaise("Complex <> Vec.Complex");
    if (vec.fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("FloatPrecision <> Vec.FloatPrecision");
    if (col < 0 || col >= fCols) EInvalidArgumentRaise("Col param is not within range: 0 <= Col < Cols");
    if (row < 0 || len < 0 || int64_t(row) + len > fRows)
        EInvalidArgumentRaise("Row param is not within range: 0 <= (Row+Len) <= Rows");
    if (vecIndex < 0 || int64_t(vecIndex) + len > vec.fLength)
        EInvalidArgumentRaise("Not within range: 0 <= (VecIndex + Len) <= Vec.Length");
    if (len == 0) return *this;
    LazyVec tmp;
    const TRovane* src = &vec;
    if (SharesMemory(vec, *this)) {
        tmp->Size(len, vec.fFloatPrecision);
        tmp->Copy(vec, vecIndex, 0, len);
        src = &*tmp;
        vecIndex = 0;
    }
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        const T* s = At<T>(*src) + vecIndex;
        for (int32_t i = 0; i < len; ++i) El<T>(*this, row + i, col) = s[i];
    });
    return *this;
}

TMtx& TMtx::Diag(const TRovane& vec, int32_t k) {
    if (vec.fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("Vec.FloatPrecision <> fFloatPrecision");
    const int32_t n = vec.fLength;
    if (n == 0) EInvalidArgumentRaise("Vec.Length = 0");
    if (k >= 0) {
        if (int64_t(n) + k > fCols || n > fRows) EInvalidArgumentRaise("(((n + k) > fCols) or (n > fRows))");
    } else if (int64_t(n) - k > fRows || n > fCols) {
        EInvalidArgumentRaise("(((n - k) > fRows) or (n > fCols))");
    }
    const int32_t r0 = k >= 0 ? 0 : -k, c0 = k >= 0 ? k : 0;
    LazyVec tmp;
    const TRovane* src = &vec;
    if (SharesMemory(vec, *this)) {
        tmp->Copy(vec);
        src = &*tmp;
    }
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        const T* s = At<T>(*src);
        for (int32_t i = 0; i < n; ++i) El<T>(*this, r0 + i, c0 + i) = s[i];
    });
    return *this;
}

TMtx& TMtx::CopyVec(const TRovane& vec, int32_t nrRows) {
    if (vec.fLength == 0) EInvalidArgumentRaise("Vec.Length = 0");
    if (nrRows <= 0 || vec.fLength % nrRows != 0) EInvalidArgumentRaise("Vec.Length mod NrRows <> 0");
    if (&vec == this) {
        // The same run read as another shape: no data moves.
        if (fLeadingCols == fCols) SetShape(nrRows, vec.fLength / nrRows);
        return *this;
    }
    Size(nrRows, vec.fLength / nrRows, vec.fFloatPrecision);
    return CopyVec(vec, 0, vec.fLength, 0, 0);
}

TMtx& TMtx::CopyVec(const TRovane& vec, int32_t vecIndex, int32_t len, int32_t row, int32_t col) {
    if (vec.fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("Vec.FloatPrecision <> FloatPrecision");
    const int64_t start = int64_t(row) * fCols + col;
    if (row < 0 || col < 0 || len < 0 || start + len > int64_t(fCols) * fRows)
        EInvalidArgumentRaise("TMtx.CopyVec: Not within range: 0 <= (StartPos + Len) <= Mtx.Cols*Mtx.Rows");
    if (vecIndex < 0 || int64_t(vecIndex) + len > vec.fLength)
        EInvalidArgumentRaise("TMtx.CopyVec: Not within range: 0 <= (VecIndex + Len) <= Vec.Length");
    if (len == 0) return *this;
    CachedVec tmp;
    const TRovane* src = &vec;
    if (SharesMemory(vec, *this)) {
        tmp->Size(len, vec.fFloatPrecision);
        tmp->Copy(vec, vecIndex, 0, len);
        src = &*tmp;
        vecIndex = 0;
    }
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        const T* s = At<T>(*src) + vecIndex;
        for (int64_t p = start, q = 0; q < len; ++p, ++q) El<T>(*this, p / fCols, p % fCols) = s[q];
    });
    return *this;
}

TMtx& TMtx::Copy(const TMtx& mtx, int32_t mtxRow, int32_t mtxCol, int32_t row, int32_t col, int32_t nrRows,
                 int32_t nrCols, bool conjTransp) {
    if (&mtx == this) EInvalidArgumentRaise("Mtx = Self");
    if (mtx.fComplex != fComplex) EInvalidArgumentRaise("Mtx.Complex <> Complex");
    if (mtx.fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("Mtx.FloatPrecision <> FloatPrecision");
    if (mtxRow < 0 || nrRows < 0 || int64_t(mtxRow) + nrRows > mtx.fRows)
        EInvalidArgumentRaise("MtxRow + NrRows > Mtx.Rows");
    if (mtxCol < 0 || nrCols < 0 || int64_t(mtxCol) + nrCols > mtx.fCols)
        EInvalidArgumentRaise("MtxCol + NrCols > Mtx.Cols");
    const int32_t dRows = conjTransp ? nrCols : nrRows, dCols = conjTransp ? nrRows : nrCols;
    if (row < 0 || int64_t(row) + dRows > fRows) EInvalidArgumentRaise("Row + NrRows > Rows");
    if (col < 0 || int64_t(col) + dCols > fCols) EInvalidArgumentRaise("Col + NrCols > Cols");
    if (nrRows == 0 || nrCols == 0) return *this;
    CachedMtx tmp;
    const TMtx* src = &mtx;
    if (SharesMemory(mtx, *this)) {
        tmp->Copy(mtx);
        src = &*tmp;
    }
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        if (!conjTransp)
            CopyRect<T>(*src, mtxRow, mtxCol, *this, row, col, nrRows, nrCols);
        else
            for (int32_t i = 0; i < nrRows; ++i)
                for (int32_t j = 0; j < nrCols; ++j)
                    El<T>(*this, row + j, col + i) = Conjugate(El<T>(*src, mtxRow + i, mtxCol + j));
    });
    return *this;
}

// ---- TVec from a matrix ----------------------------------------------------
namespace {
// The run of Len elements from (Row, Col) along a row, or down a column,
// lies inside the matrix.
void RowRunCheck(const TMtx& mtx, int32_t row, int32_t col, int32_t len) {
    if (row < 0 || row >= mtx.fRows) ERaiseFmt("TVec.GetRow: Row out of range. (Row: %d, Rows: %d)", row, mtx.fRows);
    if (len < 0) ERaiseFmt("TVec.GetRow: Invalid Length (Len: %d)", len);
    if (col < 0 || col > mtx.fCols)
        ERaiseFmt("TVec.GetRow: Col out of range (Col: %d, Len: %d, Cols: %d)", col, len, mtx.fCols);
    if (int64_t(col) + len > mtx.fCols)
        ERaiseFmt("TVec.GetRow: Col/Len out of range (Col: %d, Len: %d, Cols: %d)", col, len, mtx.fCols);
}
void ColRunCheck(const TMtx& mtx, int32_t row, int32_t col, int32_t len) {
    if (col < 0 || col >= mtx.fCols) ERaiseFmt("TVec.GetCol: Col out of range. (Col: %d, Cols: %d)", col, mtx.fCols);
    if (len < 0) ERaiseFmt("TVec.GetCol: Invalid Length (Len: %d)", len);
    if (row < 0 || row > mtx.fRows)
        ERaiseFmt("TVec.GetCol: Row out of range (Row: %d, Len: %d, Rows: %d)", row, len, mtx.fRows);
    if (int64_t(row) + len > mtx.fRows)
        ERaiseFmt("TVec.GetCol: Row/Len out of range (Row: %d, Len: %d, Rows: %d)", row, len, mtx.fRows);
}
}  // namespace

TVec& TVec::GetRow(const TMtx& mtx, int32_t row) {
    if (row < 0 || row >= mtx.fRows) ERaiseFmt("TVec.GetRow: Row out of range. (Row: %d, Rows: %d)", row, mtx.fRows);
    Size(mtx.fCols, mtx.fFloatPrecision);
    return GetRow(mtx, row, 0, 0, mtx.fCols);
}

TVec& TVec::GetRow(const TMtx& mtx, int32_t row, int32_t col, int32_t len) {
    RowRunCheck(mtx, row, col, len);
    Size(len, mtx.fFloatPrecision);
    return GetRow(mtx, row, col, 0, len);
}

TVec& TVec::GetRow(const TMtx& mtx, int32_t row, int32_t col, int32_t index, int32_t len) {
    if (mtx.fComplex != fComplex) ERaise("TVec.GetRow: Complex <> Mtx.Complex");
    if (mtx.fFloatPrecision != fFloatPrecision) ERaise("TVec.GetRow: FloatPrecision <> Mtx.FloatPrecision");
    RowRunCheck(mtx, row, col, len);
    ValidateParams(index, len);
    if (len == 0) return *this;
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        const T* s = &El<T>(mtx, row, col);
        std::copy(s, s + len, At<T>(*this) + index);
    });
    return *this;
}

TVec& TVec::GetCol(const TMtx& mtx, int32_t col) {
    if (col < 0 || col >= mtx.fCols) ERaiseFmt("TVec.GetCol: Col out of range. (Col: %d, Cols: %d)", col, mtx.fCols);
    Size(mtx.fRows, mtx.fFloatPrecision);
    return GetCol(mtx, 0, col, 0, mtx.fRows);
}

TVec& TVec::GetCol(const TMtx& mtx, int32_t row, int32_t col, int32_t len) {
    ColRunCheck(mtx, row, col, len);
    Size(len, mtx.fFloatPrecision);
    return GetCol(mtx, row, col, 0, len);
}

TVec& TVec::GetCol(const TMtx& mtx, int32_t row, int32_t col, int32_t index, int32_t len) {
    if (mtx.fComplex != fComplex) ERaise("TVec.GetRow: Complex <> Mtx.Complex");
    if (mtx.fFloatPrecision != fFloatPrecision) ERaise("TVec.GetRow: FloatPrecision <> Mtx.FloatPrecision");
    ColRunCheck(mtx, row, col, len);
    ValidateParams(index, len);
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        T* d = At<T>(*this) + index;
        for (int32_t i = 0; i < len; ++i) d[i] = El<T>(mtx, row + i, col);
    });
    return *this;
}

TVec& TVec::Diag(const TMtx& mtx, int32_t k) {
    if ((k >= 0 && k >= std::max(mtx.fCols, 1)) || (k < 0 && -int64_t(k) >= std::max(mtx.fRows, 1)))
        ERaise("TVec.Diag: k out of range");
    const int32_t r0 = k >= 0 ? 0 : -k, c0 = k >= 0 ? k : 0;
    const int32_t n = std::max(0, std::min(mtx.fRows - r0, mtx.fCols - c0));
    Size(n, mtx.fFloatPrecision);
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        T* d = At<T>(*this);
        for (int32_t i = 0; i < n; ++i) d[i] = El<T>(mtx, r0 + i, c0 + i);
    });
    return *this;
}

TVec& TVec::CopyMtx(const TMtx& mtx) {
    Size(mtx.fLength, mtx.fFloatPrecision);
    return CopyMtx(mtx, 0, 0, 0, mtx.fLength);
}

TVec& TVec::CopyMtx(const TMtx& mtx, int32_t index, int32_t row, int32_t col, int32_t len) {
    if (mtx.fLength == 0 && len == 0) return *this;
    if (col < 0 || row < 0) EInvalidArgumentRaise("(Col < 0) or (Row < 0)");
    if (row >= mtx.fRows || col >= mtx.fCols) EInvalidArgumentRaise("(Row >= Mtx.Rows) or (Col >= Mtx.Cols)");
    const int64_t start = int64_t(row) * mtx.fCols + col;
    if (len < 0 || start + len > int64_t(mtx.fRows) * mtx.fCols)
        EInvalidArgumentRaise("(StartPos+Len) > Mtx.Rows*Mtx.Cols");
    if (index < 0 || int64_t(index) + len > fLength) EInvalidArgumentRaise("Index+Len > Length");
    if (mtx.fFloatPrecision != fFloatPrecision) EInvalidArgumentRaise("IsDouble <> Mtx.IsDouble");
    ByPrecision(fFloatPrecision, [&](auto t) {
        using T = decltype(t);
        T* d = At<T>(*this) + index;
        for (int64_t p = start, q = 0; q < len; ++p, ++q) d[q] = El<T>(mtx, p / mtx.fCols, p % mtx.fCols);
    });
    return *this;
}

// ---- transposition and rearrangements --------------------------------------
TMtx& TMtx::Transp() {
    if (fRows <= 1 || fCols <= 1) {
        // A row or a column: the same run, the other shape.
        SetShape(fCols, fRows);
        return *this;
    }
    if (fRows == fCols) {
        switch (fFloatPrecision) {
            case rvDouble: TransposeSquareMatrix(At<double>(*this), 0, fRows, fLeadingCols); break;
            case rvSingle: TransposeSquareMatrix(At<float>(*this), 0, fRows, fLeadingCols); break;
            case rvDoubleComplex: TransposeSquareMatrixc(At<TCplx>(*this), 0, fRows, fLeadingCols); break;
            default: TransposeSquareMatrixc(At<TSCplx>(*this), 0, fRows, fLeadingCols);
        }
        return *this;
    }
    CachedMtx t;
    t->Copy(*this);
    SetShape(fCols, fRows);  // the same element count, so no resize
    TransposeInto(*t, *this, false);
    return *this;
}

TMtx& TMtx::Transp(const TMtx& mtx) {
    if (&mtx == this) EInvalidArgumentRaise("Mtx = Self");
    CachedMtx tmp;
    const TMtx* src = &mtx;
    if (SharesMemory(mtx, *this)) {
        tmp->Copy(mtx);
        src = &*tmp;
    }
    Size(src->fCols, src->fRows, src->fFloatPrecision);
    TransposeInto(*src, *this, false);
    return *this;
}

TMtx& TMtx::Adjung() {
    if (!fComplex) return Transp();
    if (fRows == fCols) {
        if (fIsDouble)
            AdjungateSquareMatrixc(At<TCplx>(*this), 0, fRows, fLeadingCols);
        else
            AdjungateSquareMatrixc(At<TSCplx>(*this), 0, fRows, fLeadingCols);
        return *this;
    }
    if (fRows <= 1 || fCols <= 1) {
        SetShape(fCols, fRows);
        Conj();
        return *this;
    }
    CachedMtx t;
    t->Copy(*this);
    SetShape(fCols, fRows);
    TransposeInto(*t, *this, true);
    return *this;
}

TMtx& TMtx::Adjung(const TMtx& mtx) {
    if (&mtx == this) EInvalidArgumentRaise("X = Self");
    CachedMtx tmp;
    const TMtx* src = &mtx;
    if (SharesMemory(mtx, *this)) {
        tmp->Copy(mtx);
        src = &*tmp;
    }
    Size(src->fCols, src->fRows, src->fFloatPrecision);
    TransposeInto(*src, *this, true);
    return *this;
}

TMtx& TMtx::Rotate90() {
    CachedMtx t;
    t->Copy(*this);
    SetShape(fCols, fRows);
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t i = 0; i < fRows; ++i)
            for (int32_t j = 0; j < fCols; ++j) El<T>(*this, i, j) = El<T>(*t, j, t->fCols - 1 - i);
    });
    return *this;
}

TMtx& TMtx::Rotate90(const TMtx& mtx) {
    if (&mtx == this) EInvalidArgumentRaise("Mtx = Self");
    CachedMtx tmp;
    const TMtx* src = &mtx;
    if (SharesMemory(mtx, *this)) {
        tmp->Copy(mtx);
        src = &*tmp;
    }
    Size(src->fCols, src->fRows, src->fFloatPrecision);
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t i = 0; i < fRows; ++i)
            for (int32_t j = 0; j < fCols; ++j) El<T>(*this, i, j) = El<T>(*src, j, src->fCols - 1 - i);
    });
    return *this;
}

TMtx& TMtx::FlipHor() {
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t i = 0; i < fRows; ++i) std::reverse(&El<T>(*this, i, 0), &El<T>(*this, i, 0) + fCols);
    });
    return *this;
}

TMtx& TMtx::FlipHor(const TMtx& srcMtx) {
    if (&srcMtx == this) EInvalidArgumentRaise("Self = SrcMtx");
    CachedMtx tmp;
    const TMtx* src = &srcMtx;
    if (SharesMemory(srcMtx, *this)) {
        tmp->Copy(srcMtx);
        src = &*tmp;
    }
    Size(src->fRows, src->fCols, src->fFloatPrecision);
    CopyRectAny(*src, 0, 0, *this, 0, 0, fRows, fCols);
    return FlipHor();
}

TMtx& TMtx::FlipVer() {
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t i = 0, j = fRows - 1; i < j; ++i, --j)
            std::swap_ranges(&El<T>(*this, i, 0), &El<T>(*this, i, 0) + fCols, &El<T>(*this, j, 0));
    });
    return *this;
}

TMtx& TMtx::FlipVer(const TMtx& srcMtx) {
    if (&srcMtx == this) EInvalidArgumentRaise("Self = SrcMtx");
    CachedMtx tmp;
    const TMtx* src = &srcMtx;
    if (SharesMemory(srcMtx, *this)) {
        tmp->Copy(srcMtx);
        src = &*tmp;
    }
    Size(src->fRows, src->fCols, src->fFloatPrecision);
    for (int32_t i = 0; i < fRows; ++i) CopyRectAny(*src, fRows - 1 - i, 0, *this, i, 0, 1, fCols);
    return *this;
}

namespace {

// Row r keeps [from(r), to(r)) of src; with zeroRest the rest of the row is zero.
template <class T, class Range>
void TriangleCopy(const TMtx& src, TMtx& dst, bool zeroRest, Range range) {
    const int32_t rows = std::min(src.fRows, dst.fRows), cols = std::min(src.fCols, dst.fCols);
    for (int32_t r = 0; r < rows; ++r) {
        auto [from, to] = range(r, cols);
        from = std::clamp(from, 0, cols);
        to = std::clamp(to, from, cols);
        T* d = &El<T>(dst, r, 0);
        const T* s = &El<T>(src, r, 0);
        std::copy(s + from, s + to, d + from);
        if (zeroRest) {
            std::fill(d, d + from, FromReal<T>(0));
            std::fill(d + to, d + dst.fCols, FromReal<T>(0));
        }
    }
}

}  // namespace

TMtx& TMtx::LowerTriangle(const TMtx& mtx, bool zeroUpper, bool diagonal) {
    if (&mtx == this) EInvalidArgumentRaise("TMtx.LowerTriangle: Mtx = Self");
    Size(mtx.fRows, mtx.fCols, mtx.fFloatPrecision);
    ByPrecision(fFloatPrecision, [&](auto e) {
        TriangleCopy<decltype(e)>(mtx, *this, zeroUpper,
                                  [&](int32_t r, int32_t) { return std::pair<int32_t, int32_t>(0, r + (diagonal ? 1 : 0)); });
    });
    return *this;
}

TMtx& TMtx::UpperTriangle(const TMtx& mtx, bool zeroLower, bool diagonal) {
    if (&mtx == this) EInvalidArgumentRaise("TMtx.UpperTriangle: Mtx = Self");
    Size(mtx.fRows, mtx.fCols, mtx.fFloatPrecision);
    ByPrecision(fFloatPrecision, [&](auto e) {
        TriangleCopy<decltype(e)>(mtx, *this, zeroLower, [&](int32_t r, int32_t cols) {
            return std::pair<int32_t, int32_t>(r + (diagonal ? 0 : 1), cols);
        });
    });
    return *this;
}

TMtx& TMtx::RowExchange(int32_t i, int32_t j) {
    if (i >= fRows || i < 0) EInvalidArgumentRaise("i >= FRows");
    if (j >= fRows || j < 0) EInvalidArgumentRaise("j >= FRows");
    if (i == j) return *this;
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        std::swap_ranges(&El<T>(*this, i, 0), &El<T>(*this, i, 0) + fCols, &El<T>(*this, j, 0));
    });
    return *this;
}

TMtx& TMtx::ColExchange(int32_t i, int32_t j) {
    if (i >= fCols || i < 0) EInvalidArgumentRaise("i >= fCols");
    if (j >= fCols || j < 0) EInvalidArgumentRaise("j >= fCols");
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t r = 0; r < fRows; ++r) std::swap(El<T>(*this, r, i), El<T>(*this, r, j));
    });
    return *this;
}

TMtx& TMtx::RowPermute(const TMtx& src, const TVecInt& permuteIdx) {
    if (permuteIdx.fLength != src.fRows) EInvalidArgumentRaise("PermuteIdx.Length <> Src.Rows");
    for (int32_t i = 0; i < permuteIdx.fLength; ++i) {
        const int32_t rowIdx = IntAt(permuteIdx, i);
        if (rowIdx < 0) EInvalidArgumentRaise("rowIdx < 0");
        if (rowIdx >= src.fRows) EInvalidArgumentRaise("rowIdx >= Src.Rows");
    }
    CachedMtx tmp;
    const TMtx* s = &src;
    if (&src == this || SharesMemory(src, *this)) {
        tmp->Copy(src);
        s = &*tmp;
    }
    Size(s->fRows, s->fCols, s->fFloatPrecision);
    for (int32_t i = 0; i < fRows; ++i) CopyRectAny(*s, IntAt(permuteIdx, i), 0, *this, i, 0, 1, fCols);
    return *this;
}

TMtx& TMtx::ColPermute(const TMtx& src, const TVecInt& permuteIdx) {
    if (permuteIdx.fLength != src.fCols) EInvalidArgumentRaise("PermuteIdx.Length <> Src.Cols");
    for (int32_t i = 0; i < permuteIdx.fLength; ++i) {
        const int32_t colIdx = IntAt(permuteIdx, i);
        if (colIdx < 0) EInvalidArgumentRaise("colIdx < 0");
        if (colIdx >= src.fCols) EInvalidArgumentRaise("colIdx >= Src.Cols");
    }
    CachedMtx tmp;
    const TMtx* s = &src;
    if (&src == this || SharesMemory(src, *this)) {
        tmp->Copy(src);
        s = &*tmp;
    }
    Size(s->fRows, s->fCols, s->fFloatPrecision);
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t r = 0; r < fRows; ++r)
            for (int32_t j = 0; j < fCols; ++j) El<T>(*this, r, j) = El<T>(*s, r, IntAt(permuteIdx, j));
    });
    return *this;
}

namespace {

// Stable order of the rows by column col; NaN keys go last in both orders.
void SortRows(TMtx& m, int32_t col, bool descend) {
    if (col < 0 || col >= m.fCols) EInvalidArgumentRaise("Col param is not within range: 0 <= Col < Cols");
    std::vector<int32_t> order(m.fRows);
    std::iota(order.begin(), order.end(), 0);
    ByPrecision(m.fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        auto key = [&](int32_t r) -> std::pair<double, double> {
            const T& v = El<T>(m, r, col);
            if constexpr (IsComplex<T>)
                return {double(v.Re), double(v.Im)};
            else
                return {double(v), 0.0};
        };
        std::stable_sort(order.begin(), order.end(), [&](int32_t a, int32_t b) {
            const auto ka = key(a), kb = key(b);
            const bool na = ka.first != ka.first || ka.second != ka.second;
            const bool nb = kb.first != kb.first || kb.second != kb.second;
            if (na || nb) return !na && nb;
            return descend ? kb < ka : ka < kb;
        });
    });
    CachedMtx t;
    t->Copy(m);
    for (int32_t i = 0; i < m.fRows; ++i) CopyRectAny(*t, order[i], 0, m, i, 0, 1, m.fCols);
}

}  // namespace

TMtx& TMtx::SortAscend(int32_t col) {
    SortRows(*this, col, false);
    return *this;
}
TMtx& TMtx::SortDescend(int32_t col) {
    SortRows(*this, col, true);
    return *this;
}

namespace {

// The elements as one run, row after row, through the vector sort: the
// rows go to a cached vector and back, so the matrix orders its elements
// exactly as a vector of the same run does.
void SortFlat(TMtx& m, bool descend) {
    if (int64_t(m.fRows) * m.fCols < 2) return;
    CachedVec v;
    v->Size(m.fRows * m.fCols, m.fFloatPrecision);
    ByPrecision(m.fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        T* run = At<T>(*v);
        for (int32_t r = 0; r < m.fRows; ++r)
            std::copy_n(At<T>(m) + int64_t(r) * Ld(m), m.fCols, run + int64_t(r) * m.fCols);
        if (descend)
            v->SortDescend();
        else
            v->SortAscend();
        for (int32_t r = 0; r < m.fRows; ++r)
            std::copy_n(run + int64_t(r) * m.fCols, m.fCols, At<T>(m) + int64_t(r) * Ld(m));
    });
}

}  // namespace

TMtx& TMtx::SortAscend() {
    SortFlat(*this, false);
    return *this;
}
TMtx& TMtx::SortDescend() {
    SortFlat(*this, true);
    return *this;
}

// ---- band storage -----------------------------------------------------------
void TMtx::DiagonalsCount(int32_t& superDiag, int32_t& subDiag) const {
    superDiag = 0;
    subDiag = 0;
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t i = 0; i < fRows; ++i)
            for (int32_t j = 0; j < fCols; ++j) {
                if (El<T>(*this, i, j) == FromReal<T>(0)) continue;
                if (j - i > superDiag) superDiag = j - i;
                if (i - j > subDiag) subDiag = i - j;
            }
    });
}

TMtx& TMtx::DenseToBanded(const TMtx& mtx, int32_t maxElemCount) {
    CachedMtx tmp;
    const TMtx* src = &mtx;
    if (&mtx == this || SharesMemory(mtx, *this)) {
        tmp->Copy(mtx);
        src = &*tmp;
    }
    int32_t u = 0, l = 0;
    src->DiagonalsCount(u, l);
    if ((int64_t(u) + l) * src->fCols > maxElemCount) EInvalidArgumentRaise("(SuperDiag+SubDiag)*Cols > MaxElemCount");
    Size(u + l + 1, src->fCols, src->fFloatPrecision);
    FSuperDiag = u;
    FSubDiag = l;
    SetZero();
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t i = 0; i < src->fRows; ++i)
            for (int32_t j = std::max(0, i - l); j < std::min(src->fCols, i + u + 1); ++j)
                El<T>(*this, u + i - j, j) = El<T>(*src, i, j);
    });
    return *this;
}

TMtx& TMtx::BandedToDense(const TMtx& mtx) {
    if (&mtx == this) EInvalidArgumentRaise("Mtx = Self");
    const int32_t u = mtx.FSuperDiag, l = mtx.FSubDiag, n = mtx.fCols;
    if (u < 0 || l < 0 || int64_t(u) + l + 1 != mtx.fRows)
        EInvalidArgumentRaiseFmt("TMtx.BandedToDense: Mtx.Rows <> SuperDiag + SubDiag + 1 (%d <> %d + %d + 1)",
                                 mtx.fRows, u, l);
    Size(n, n, mtx.fFloatPrecision);
    FSuperDiag = u;
    FSubDiag = l;
    SetZero();
    ByPrecision(fFloatPrecision, [&](auto e) {
        using T = decltype(e);
        for (int32_t k = 0; k <= u + l; ++k)
            for (int32_t j = std::max(0, u - k); j < n && j + k - u < n; ++j)
                El<T>(*this, j + k - u, j) = El<T>(mtx, k, j);
    });
    return *this;
}

// ---- concatenation ------------------------------------------------------------
namespace {

// Sources that overlap Self are read from copies.
struct SafeSources {
    std::vector<const TMtx*> list;
    std::vector<std::unique_ptr<CachedMtx>> copies;
    SafeSources(std::span<const TMtx* const> src, const TMtx& self) {
        for (const TMtx* s : src) {
            if (!s) EInvalidArgumentRaise("Src[i] = nil");
            if (s == &self || SharesMemory(*s, self)) {
                copies.push_back(std::make_unique<CachedMtx>());
                (**copies.back()).Copy(*s);
                list.push_back(&**copies.back());
            } else {
                list.push_back(s);
            }
        }
    }
};

}  // namespace

TMtx& TMtx::ConcatHorz(std::span<const TMtx* const> src) {
    if (src.empty()) return *this;
    SafeSources s(src, *this);
    int64_t cols = 0;
    for (const TMtx* m : s.list) {
        if (m->fRows != s.list[0]->fRows) EInvalidArgumentRaise("Src[0].Rows <> Src[i].Rows");
        if (m->fIsDouble != s.list[0]->fIsDouble) EInvalidArgumentRaise("Src[0].IsDouble <> Src[i].IsDouble");
        if (m->fComplex != s.list[0]->fComplex) EInvalidArgumentRaise("Src[0].Complex <> Src[i].Complex");
        cols += m->fCols;
    }
    if (cols > INT32_MAX) EInvalidArgumentRaise("Too many columns!");
    Size(s.list[0]->fRows, int32_t(cols), s.list[0]->fFloatPrecision);
    int32_t c = 0;
    for (const TMtx* m : s.list) {
        CopyRectAny(*m, 0, 0, *this, 0, c, m->fRows, m->fCols);
        c += m->fCols;
    }
    return *this;
}

TMtx& TMtx::ConcatHorz(int32_t destRow, int32_t destCol, std::span<const TMtx* const> src) {
    SafeSources s(src, *this);
    int64_t cols = destCol;
    for (const TMtx* m : s.list) {
        if (m->fComplex != fComplex) EInvalidArgumentRaise("Complex <> Src[i].Complex");
        if (m->fIsDouble != fIsDouble) EInvalidArgumentRaise("IsDouble <> Src[i].IsDouble");
        if (destRow < 0 || int64_t(destRow) + m->fRows > fRows) EInvalidArgumentRaise("DestRow + Src[i].Rows > Rows");
        cols += m->fCols;
    }
    if (destCol < 0 || cols > fCols) EInvalidArgumentRaise("Too many columns!");
    int32_t c = destCol;
    for (const TMtx* m : s.list) {
        CopyRectAny(*m, 0, 0, *this, destRow, c, m->fRows, m->fCols);
        c += m->fCols;
    }
    return *this;
}

TMtx& TMtx::ConcatVert(std::span<const TMtx* const> src) {
    if (src.empty()) return *this;
    SafeSources s(src, *this);
    int64_t rows = 0;
    for (const TMtx* m : s.list) {
        if (m->fCols != s.list[0]->fCols) EInvalidArgumentRaise("Src[0].Cols <> Src[i].Cols");
        if (m->fFloatPrecision != s.list[0]->fFloatPrecision)
            EInvalidArgumentRaise("Src[0].FloatPrecision <> Src[i].FloatPrecision");
        rows += m->fRows;
    }
    if (rows > INT32_MAX) EInvalidArgumentRaise("Too many rows!");
    Size(int32_t(rows), s.list[0]->fCols, s.list[0]->fFloatPrecision);
    int32_t r = 0;
    for (const TMtx* m : s.list) {
        CopyRectAny(*m, 0, 0, *this, r, 0, m->fRows, m->fCols);
        r += m->fRows;
    }
    return *this;
}

TMtx& TMtx::ConcatVert(int32_t destRow, int32_t destCol, std::span<const TMtx* const> src) {
    SafeSources s(src, *this);
    int64_t rows = destRow;
    for (const TMtx* m : s.list) {
        if (m->fComplex != fComplex) EInvalidArgumentRaise("Complex <> Src[i].Complex");
        if (m->fIsDouble != fIsDouble) EInvalidArgumentRaise("IsDouble <> Src[i].IsDouble");
        if (destCol < 0 || int64_t(destCol) + m->fCols > fCols) EInvalidArgumentRaise("DestCol + Src[i].Cols > Cols");
        rows += m->fRows;
    }
    if (destRow < 0 || rows > fRows) EInvalidArgumentRaise("Too many rows!");
    int32_t r = destRow;
    for (const TMtx* m : s.list) {
        CopyRectAny(*m, 0, 0, *this, r, destCol, m->fRows, m->fCols);
        r += m->fRows;
    }
    return *this;
}

TMtx& TMtx::Concat(int32_t aRows, int32_t aCols, std::span<const TMtx* const> src) {
    if (aRows <= 0 || aCols <= 0) EInvalidArgumentRaiseFmt("TMtx.Concat: Invalid ARows,ACols values: %d,%d", aRows, aCols);
    if (int64_t(aRows) * aCols != int64_t(src.size()))
        EInvalidArgumentRaiseFmt("TMtx.Concat: (ARows*ACols) <> Length(Src): (%d*%d) <> %d", aRows, aCols,
                                 int32_t(src.size()));
    SafeSources s(src, *this);
    const auto& L = s.list;
    for (const TMtx* m : L)
        if (m->fFloatPrecision != L[0]->fFloatPrecision)
            EInvalidArgumentRaise(
                "TMtx.Concat: Source matrices have mixed double/single precision or mixed real/complex type");
    int64_t sumRows = 0, sumCols = 0;
    for (int32_t bi = 0; bi < aRows; ++bi) sumRows += L[size_t(bi) * aCols]->fRows;
    for (int32_t bj = 0; bj < aCols; ++bj) sumCols += L[bj]->fCols;
    for (int32_t bi = 0; bi < aRows; ++bi)
        for (int32_t bj = 0; bj < aCols; ++bj) {
            const int32_t idx = bi * aCols + bj;
            const TMtx* m = L[idx];
            if (m->fRows != L[size_t(bi) * aCols]->fRows || m->fCols != L[bj]->fCols)
                EInvalidArgumentRaiseFmt("TMtx.Concat: Invalid source matrix dimension: %d (%d,%d)", idx, m->fRows,
                                         m->fCols);
        }
    if (sumRows <= 0 || sumCols <= 0 || sumRows * sumCols > INT32_MAX)
        EInvalidArgumentRaiseFmt("TMtx.Concat: Invalid SumRows,SumCols values: %d,%d", int32_t(sumRows),
                                 int32_t(sumCols));
    Size(int32_t(sumRows), int32_t(sumCols), L[0]->fFloatPrecision);
    int32_t r = 0;
    for (int32_t bi = 0; bi < aRows; ++bi) {
        int32_t c = 0;
        for (int32_t bj = 0; bj < aCols; ++bj) {
            const TMtx* m = L[size_t(bi) * aCols + bj];
            CopyRectAny(*m, 0, 0, *this, r, c, m->fRows, m->fCols);
            c += m->fCols;
        }
        r += L[size_t(bi) * aCols]->fRows;
    }
    return *this;
}

void TMtx::Split(int32_t aRows, int32_t aCols, std::span<TMtx* const> dst) const {
    if (aRows < 0 || aCols < 0 || int64_t(aRows) * aCols != int64_t(dst.size()))
        EInvalidArgumentRaise("(ARows*ACols) <> Length(Dst)");
    // All checks first, so that a refused split writes nothing.
    for (size_t j = 0; j < dst.size(); ++j) {
        if (!dst[j]) EInvalidArgumentRaise("(ARows*ACols) <> Length(Dst)");
        if (dst[j]->fFloatPrecision != fFloatPrecision)
            EInvalidArgumentRaise("Size mismatch: FloatPrecision <> Dst[j].FloatPrecision");
        if (dst[j] == this || SharesMemory(*dst[j], *this)) EInvalidArgumentRaise("Dst[j] = Self");
    }
    int64_t rowOffset = 0;
    for (int32_t bi = 0; bi < aRows; ++bi) {
        int64_t colOffset = 0;
        for (int32_t bj = 0; bj < aCols; ++bj) {
            const TMtx* a = dst[size_t(bi) * aCols + bj];
            if (a->fCols + colOffset > fCols) EInvalidArgumentRaise("Size mismatch: a.Cols+ColOffset > fCols");
            if (a->fRows + rowOffset > fRows) EInvalidArgumentRaise("Size mismatch: a.Rows+RowOffset > fRows");
            colOffset += a->fCols;
        }
        rowOffset += dst[size_t(bi) * aCols]->fRows;
    }
    int32_t r = 0;
    for (int32_t bi = 0; bi < aRows; ++bi) {
        int32_t c = 0;
        for (int32_t bj = 0; bj < aCols; ++bj) {
            TMtx* a = dst[size_t(bi) * aCols + bj];
            CopyRectAny(*this, r, c, *a, 0, 0, a->fRows, a->fCols);
            c += a->fCols;
        }
        r += dst[size_t(bi) * aCols]->fRows;
    }
}

}  // namespace rovane
