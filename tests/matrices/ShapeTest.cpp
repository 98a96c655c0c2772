// Shape, rearrangements, lines, triangles, band forms, concatenation and the
// generators, against their definitions.
#include "MatrixTestUtil.h"

#include "../containers/ContainerTestUtil.h"

using namespace mtxtest;
using rovane::test::ExpectMessage;

namespace {

const TMtxFloatPrecision kPrecisions[] = {rvSingle, rvDouble, rvSingleComplex, rvDoubleComplex};

Ref Reference(int r, int c, const std::function<Z(int, int)>& f) {
    Ref out(r, c);
    for (int i = 0; i < r; ++i)
        for (int j = 0; j < c; ++j) out.at(i, j) = f(i, j);
    return out;
}

}  // namespace

// Transp, Adjung, Rotate90, FlipHor, FlipVer, in place and out of place, on
// every precision and on square, wide, tall and single-line shapes (sizes
// beyond one transposition tile included).
TEST(MatrixRearrange, AgainstDefinitions) {
    Dyadic g(23);
    struct Shape {
        int r, c;
    };
    for (TMtxFloatPrecision p : kPrecisions)
        for (Shape s : {Shape{1, 5}, Shape{5, 1}, Shape{4, 4}, Shape{3, 7}, Shape{37, 37}, Shape{19, 41}}) {
            SCOPED_TRACE(std::string(PrecName(p)) + " " + std::to_string(s.r) + "x" + std::to_string(s.c));
            TMtx a, b;
            Random(a, s.r, s.c, p, g);
            const Ref x = Of(a);
            auto t = Reference(s.c, s.r, [&](int i, int j) { return x.at(j, i); });
            auto h = Reference(s.c, s.r, [&](int i, int j) { return std::conj(x.at(j, i)); });
            auto rot = Reference(s.c, s.r, [&](int i, int j) { return x.at(j, s.c - 1 - i); });
            auto fh = Reference(s.r, s.c, [&](int i, int j) { return x.at(i, s.c - 1 - j); });
            auto fv = Reference(s.r, s.c, [&](int i, int j) { return x.at(s.r - 1 - i, j); });
            ExpectEqualRef(b.Transp(a), t, "Transp(Mtx)");
            ExpectEqualRef(b.Adjung(a), h, "Adjung(Mtx)");
            ExpectEqualRef(b.Rotate90(a), rot, "Rotate90(Mtx)");
            ExpectEqualRef(b.FlipHor(a), fh, "FlipHor(Src)");
            ExpectEqualRef(b.FlipVer(a), fv, "FlipVer(Src)");
            b.Copy(a);
            ExpectEqualRef(b.Transp(), t, "Transp()");
            EXPECT_EQ(b.LeadingCols(), b.Cols());
            b.Copy(a);
            ExpectEqualRef(b.Adjung(), h, "Adjung()");
            b.Copy(a);
            ExpectEqualRef(b.Rotate90(), rot, "Rotate90()");
            b.Copy(a);
            ExpectEqualRef(b.FlipHor(), fh, "FlipHor()");
            b.Copy(a);
            ExpectEqualRef(b.FlipVer(), fv, "FlipVer()");
        }
}

TEST(MatrixRearrange, TranspOfALineMovesNothing) {
    TMtx a;
    SetM(a, 1, 4, false, {1, 2, 3, 4});
    const double* before = a.Values;
    a.Transp();
    EXPECT_EQ(a.Rows(), 4);
    EXPECT_EQ(a.Cols(), 1);
    EXPECT_EQ(a.LeadingCols(), 1);
    EXPECT_EQ(a.Values, before);
    a.Transp();
    EXPECT_EQ(a.LeadingCols(), 4);
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Transp(a); }, "Mtx = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Adjung(a); }, "X = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.FlipHor(a); }, "Self = SrcMtx");
}

// The primitive transpositions on every kernel table, with strides.
TEST(MatrixRearrange, TransposePrimitivesWithStrides) {
    for (TPrimitiveIsa isa : {piReference, piBaseline, piAvx2, piAvx512}) {
        if (!SetPrimitiveIsa(isa)) continue;
        std::vector<double> src(40 * 50), dst(50 * 45, -1);
        for (size_t i = 0; i < src.size(); ++i) src[i] = double(i);
        TransposeMatrix(src.data(), 50 + 2, dst.data(), 45 + 1, 38, 33, 50, 45);
        bool ok = true;
        for (int i = 0; i < 38 && ok; ++i)
            for (int j = 0; j < 33 && ok; ++j) ok = dst[45 + 1 + j * 45 + i] == src[52 + i * 50 + j];
        EXPECT_TRUE(ok) << PrimitiveIsaName(isa);
        std::vector<TCplx> sq(20 * 22);
        for (size_t i = 0; i < sq.size(); ++i) sq[i] = TCplx(double(i), -double(i) / 2);
        std::vector<TCplx> orig = sq;
        AdjungateSquareMatrixc(sq.data(), 1, 19, 22);
        ok = true;
        for (int i = 0; i < 19 && ok; ++i)
            for (int j = 0; j < 19 && ok; ++j) {
                const TCplx w = orig[1 + j * 22 + i];
                ok = sq[1 + i * 22 + j].Re == w.Re && sq[1 + i * 22 + j].Im == -w.Im;
            }
        EXPECT_TRUE(ok) << PrimitiveIsaName(isa);
        EXPECT_EQ(sq[0].Re, orig[0].Re);  // outside the block
    }
    SetPrimitiveIsa(DefaultPrimitiveIsa());
}

// In-place square transposition on every kernel table, at sizes around the
// register blocks (4) and the tiles (32), as a block inside a wider run: the
// rest of each row and the rows around the block keep their values.
TEST(MatrixRearrange, InPlaceSquareOnEveryTable) {
    for (TPrimitiveIsa isa : {piReference, piBaseline, piAvx2, piAvx512}) {
        if (!SetPrimitiveIsa(isa)) continue;
        for (int n : {2, 3, 4, 5, 7, 8, 9, 31, 32, 33, 36, 63, 65, 70}) {
            SCOPED_TRACE(std::string(PrimitiveIsaName(isa)) + " n=" + std::to_string(n));
            const int ld = n + 3, off = ld + 1;
            std::vector<double> d(size_t(ld) * (n + 2));
            std::vector<float> f(d.size());
            for (size_t i = 0; i < d.size(); ++i) d[i] = f[i] = float(i) + 0.5f;
            const std::vector<double> d0 = d;
            TransposeSquareMatrix(d.data(), off, n, ld);
            TransposeSquareMatrix(f.data(), off, n, ld);
            int bad = 0;
            for (int p = 0; p < int(d.size()); ++p) {
                const int r = (p - off) / ld, c = (p - off) % ld;
                const bool inside = p >= off && r < n && c < n;
                const double want = inside ? d0[size_t(off + c * ld + r)] : d0[size_t(p)];
                bad += d[size_t(p)] != want;
                bad += double(f[size_t(p)]) != want;
            }
            EXPECT_EQ(bad, 0);
        }
    }
    SetPrimitiveIsa(DefaultPrimitiveIsa());
}

// Transp() of a view: a square one transposes inside its rows, a wide one
// becomes tall over the same run; the owner's other rows stay.
TEST(MatrixRearrange, InPlaceOnViews) {
    Dyadic g(5);
    for (TMtxFloatPrecision p : kPrecisions) {
        SCOPED_TRACE(PrecName(p));
        TMtx big, v;
        Random(big, 9, 6, p, g);
        const Ref x = Of(big);
        v.SetSubRange(big, 6, 6, 6);  // rows 1 to 6
        v.Transp();
        v.SetFullRange();
        ExpectEqualRef(big, Reference(9, 6, [&](int i, int j) {
                           return i >= 1 && i <= 6 ? x.at(j + 1, i - 1) : x.at(i, j);
                       }),
                       "square view");
        const Ref y = Of(big);
        v.SetSubRange(big, 12, 2, 9);  // a 2 x 9 view over rows 2 to 4
        v.Transp();
        EXPECT_EQ(v.Rows(), 9);
        EXPECT_EQ(v.Cols(), 2);
        ExpectEqualRef(v, Reference(9, 2, [&](int i, int j) {
                           const int e = j * 9 + i;  // element (j, i) of the 2 x 9 run
                           return y.at(2 + e / 6, e % 6);
                       }),
                       "wide view");
        v.SetFullRange();
        for (int i : {0, 1, 5, 6, 7, 8})
            for (int j = 0; j < 6; ++j) EXPECT_EQ(Get(big, i, j), y.at(i, j)) << i << "," << j;
    }
}

// SortAscend() / SortDescend() order the whole run in row order exactly as
// the vector sorts order the same run; the shape stays.
TEST(MatrixRearrange, SortWholeRun) {
    Dyadic g(11);
    for (TMtxFloatPrecision p : kPrecisions)
        for (bool desc : {false, true}) {
            SCOPED_TRACE(std::string(PrecName(p)) + (desc ? " descend" : " ascend"));
            TMtx a;
            Random(a, 7, 5, p, g);
            TVec v;
            v.Size(35, p);
            for (int i = 0; i < 35; ++i) SetV(v, i, Get(a, i / 5, i % 5));
            if (desc) {
                a.SortDescend();
                v.SortDescend();
            } else {
                a.SortAscend();
                v.SortAscend();
            }
            EXPECT_EQ(a.Rows(), 7);
            EXPECT_EQ(a.Cols(), 5);
            ExpectEqualRef(a, Reference(7, 5, [&](int i, int j) { return GetV(v, i * 5 + j); }), "sort");
            const auto key = [&](int e) { return std::norm(Get(a, e / 5, e % 5)); };
            const auto val = [&](int e) { return Get(a, e / 5, e % 5).real(); };
            for (int e = 1; e < 35; ++e) {
                const long double k0 = IsCplx(p) ? key(e - 1) : val(e - 1), k1 = IsCplx(p) ? key(e) : val(e);
                EXPECT_TRUE(desc ? k0 >= k1 : k0 <= k1) << e;
            }
        }
    // A view sorts its own rows only.
    TMtx big, v;
    SetM(big, 3, 2, false, {9, 8, 3, 1, 7, 6});
    v.SetSubRange(big, 2, 1, 2);
    v.SortAscend();
    v.SetFullRange();
    ExpectEqualRef(big, Reference(3, 2, [](int i, int j) {
                       const double w[] = {9, 8, 1, 3, 7, 6};
                       return Z(w[i * 2 + j]);
                   }),
                   "view");
}

TEST(MatrixRearrange, ExchangePermuteAndSort) {
    TMtx a, b;
    SetM(a, 3, 3, false, {3, 1, 9, 1, 5, 8, 2, 7, 7});
    b.Copy(a);
    b.RowExchange(0, 2);
    ExpectEqualRef(b, Reference(3, 3, [&](int i, int j) { return Get(a, 2 - i == 1 ? 1 : 2 - i, j); }), "RowExchange");
    b.Copy(a);
    b.ColExchange(0, 1);
    ExpectEqualRef(b, Reference(3, 3, [&](int i, int j) { return Get(a, i, j == 0 ? 1 : j == 1 ? 0 : 2); }),
                   "ColExchange");
    ExpectMessage<ERovaneInvalidArgument>([&] { b.RowExchange(3, 0); }, "i >= FRows");
    ExpectMessage<ERovaneInvalidArgument>([&] { b.ColExchange(0, 3); }, "j >= fCols");
    TVecInt idx;
    idx.Size(3);
    idx.IValues[0] = 2;
    idx.IValues[1] = 0;
    idx.IValues[2] = 1;
    b.RowPermute(a, idx);
    ExpectEqualRef(b, Reference(3, 3, [&](int i, int j) { return Get(a, idx.IValues[i], j); }), "RowPermute");
    b.ColPermute(a, idx);
    ExpectEqualRef(b, Reference(3, 3, [&](int i, int j) { return Get(a, i, idx.IValues[j]); }), "ColPermute");
    idx.IValues[1] = 3;
    ExpectMessage<ERovaneInvalidArgument>([&] { b.RowPermute(a, idx); }, "rowIdx >= Src.Rows");
    b.Copy(a);
    b.SortAscend(0);
    ExpectEqualRef(b, Of(b), "");
    EXPECT_EQ(Get(b, 0, 0), Z(1));
    EXPECT_EQ(Get(b, 0, 1), Z(5));  // rows move whole
    EXPECT_EQ(Get(b, 2, 0), Z(3));
    b.SortDescend(2);
    EXPECT_EQ(Get(b, 0, 2), Z(9));
    EXPECT_EQ(Get(b, 1, 2), Z(8));  // 8 before the 7 of row (2, 7, 7)
}

TEST(MatrixTriangles, LowerAndUpper) {
    Dyadic g(29);
    for (TMtxFloatPrecision p : kPrecisions)
        for (int zero = 0; zero < 2; ++zero)
            for (int diag = 0; diag < 2; ++diag) {
                TMtx a, l, u;
                Random(a, 4, 6, p, g);
                Random(l, 4, 6, p, g);
                Random(u, 4, 6, p, g);
                const Ref oldL = Of(l), oldU = Of(u);
                l.LowerTriangle(a, zero, diag);
                u.UpperTriangle(a, zero, diag);
                ExpectEqualRef(l, Reference(4, 6, [&](int i, int j) {
                                   if (j < i || (diag && j == i)) return Get(a, i, j);
                                   return zero ? Z(0) : oldL.at(i, j);
                               }),
                               "LowerTriangle");
                ExpectEqualRef(u, Reference(4, 6, [&](int i, int j) {
                                   if (j > i || (diag && j == i)) return Get(a, i, j);
                                   return zero ? Z(0) : oldU.at(i, j);
                               }),
                               "UpperTriangle");
            }
}

TEST(MatrixBand, RoundTripAndCounts) {
    TMtx d, b, back;
    d.Eye(4, 4);
    int32_t u = -1, l = -1;
    d.DiagonalsCount(u, l);
    EXPECT_EQ(u, 0);
    EXPECT_EQ(l, 0);
    b.DenseToBanded(d);
    EXPECT_EQ(b.Rows(), 1);
    Dyadic g(31);
    for (TMtxFloatPrecision p : kPrecisions) {
        TMtx a;
        Random(a, 6, 6, p, g);
        for (int i = 0; i < 6; ++i)
            for (int j = 0; j < 6; ++j)
                if (j - i > 2 || i - j > 1) Set(a, i, j, 0);
        Set(a, 0, 2, 5);  // the outermost diagonals are not empty
        Set(a, 4, 3, 6);
        a.DiagonalsCount(u, l);
        EXPECT_EQ(u, 2);
        EXPECT_EQ(l, 1);
        b.DenseToBanded(a);
        EXPECT_EQ(b.Rows(), 4);
        EXPECT_EQ(b.SuperDiag(), 2);
        EXPECT_EQ(b.SubDiag(), 1);
        // Dense (i, j) at band row u + i - j, column j.
        for (int i = 0; i < 6; ++i)
            for (int j = std::max(0, i - 1); j <= std::min(5, i + 2); ++j)
                EXPECT_EQ(Get(b, 2 + i - j, j), Get(a, i, j));
        back.BandedToDense(b);
        ExpectEqualRef(back, Of(a), "BandedToDense");
    }
    ExpectMessage<ERovaneInvalidArgument>([&] { b.DenseToBanded(back, 10); }, "(SuperDiag+SubDiag)*Cols > MaxElemCount");
}

TEST(MatrixLines, RowsColumnsDiagonals) {
    TMtx a;
    SetM(a, 3, 4, false, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    TVec v;
    v.GetRow(a, 1);
    rovane::test::ExpectRun(rovane::test::Reals(v), {5, 6, 7, 8});
    v.GetRow(a, 2, 1, 2);
    rovane::test::ExpectRun(rovane::test::Reals(v), {10, 11});
    v.GetCol(a, 3);
    rovane::test::ExpectRun(rovane::test::Reals(v), {4, 8, 12});
    v.GetCol(a, 1, 0, 2);
    rovane::test::ExpectRun(rovane::test::Reals(v), {5, 9});
    v.Diag(a, 1);
    rovane::test::ExpectRun(rovane::test::Reals(v), {2, 7, 12});
    v.Diag(a, -1);
    rovane::test::ExpectRun(rovane::test::Reals(v), {5, 10});
    v.CopyMtx(a, 0, 1, 2, 2);
    rovane::test::ExpectRun(rovane::test::Reals(v), {7, 8});
    ExpectMessage<ERovaneException>([&] { v.GetRow(a, 3); }, "TVec.GetRow: Row out of range. (Row: 3, Rows: 3)");
    ExpectMessage<ERovaneException>([&] { v.GetRow(a, 0, 3, 2); },
                                    "TVec.GetRow: Col/Len out of range (Col: 3, Len: 2, Cols: 4)");
    ExpectMessage<ERovaneException>([&] { v.GetCol(a, 4); }, "TVec.GetCol: Col out of range. (Col: 4, Cols: 4)");
    ExpectMessage<ERovaneException>([&] { v.GetCol(a, 2, 0, 2); },
                                    "TVec.GetCol: Row/Len out of range (Row: 2, Len: 2, Rows: 3)");
    ExpectMessage<ERovaneException>([&] { v.Diag(a, 4); }, "TVec.Diag: k out of range");
    TVec w;
    w.SetIt({-1, -2, -3, -4});
    a.SetRow(w, 0);
    w.SetIt({-5, -6, -7});
    a.SetCol(w, 3);
    w.SetIt({20, 30});
    a.Diag(w, -1);
    ExpectEqualRef(a, Reference(3, 4, [](int i, int j) {
                       const double v[3][4] = {{-1, -2, -3, -5}, {20, 6, 7, -6}, {9, 30, 11, -7}};
                       return Z(v[i][j]);
                   }),
                   "SetRow, SetCol, Diag");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.SetRow(w, 0); }, "Vec.Length <> Cols");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.SetRow(w, 0, 3, 0, 2); }, "Row param is not within range: 0 <= Row < Rows");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.SetCol(w, 0, 2, 0, 2); },
                                          "Row param is not within range: 0 <= (Row+Len) <= Rows");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Diag(w, 3); }, "(((n + k) > fCols) or (n > fRows))");
    TVec flat;
    flat.SetIt({1, 2, 3, 4, 5, 6});
    TMtx c;
    c.CopyVec(flat, 2);
    EXPECT_EQ(c.Rows(), 2);
    EXPECT_EQ(c.Cols(), 3);
    EXPECT_EQ(Get(c, 1, 0), Z(4));
    ExpectMessage<ERovaneInvalidArgument>([&] { c.CopyVec(flat, 4); }, "Vec.Length mod NrRows <> 0");
    // Copy of a block, plain and conjugate-transposed.
    TMtx src, dst;
    SetM(src, 2, 3, true, {1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6});
    dst.Size(4, 4, true);
    dst.SetZero();
    dst.Copy(src, 0, 1, 1, 1, 2, 2, true);
    EXPECT_EQ(Get(dst, 1, 1), Z(2, -2));
    EXPECT_EQ(Get(dst, 1, 2), Z(5, -5));
    EXPECT_EQ(Get(dst, 2, 1), Z(3, -3));
    ExpectMessage<ERovaneInvalidArgument>([&] { dst.Copy(src, 0, 2, 0, 0, 1, 2); }, "MtxCol + NrCols > Mtx.Cols");
}

TEST(MatrixSizing, ResizeForms) {
    TMtx a, b;
    SetM(a, 2, 3, false, {1, 2, 3, 4, 5, 6});
    a.Resize(3, 2);  // same element count: the shape stays
    EXPECT_EQ(a.Rows(), 2);
    EXPECT_EQ(a.Cols(), 3);
    a.Resize(3, 4);
    ExpectEqualRef(a, Reference(3, 4, [](int i, int j) { return i < 2 && j < 3 ? Z(i * 3 + j + 1) : Z(0); }), "Resize");
    b.Resize(a, 2, 2);
    ExpectEqualRef(b, Reference(2, 2, [](int i, int j) { return Z(i * 3 + j + 1); }), "Resize(Src)");
    b.ResizeAndTranspose(a, 4, 1);
    ExpectEqualRef(b, Reference(4, 1, [](int i, int) { return i < 3 ? Z(i + 1) : Z(0); }), "ResizeAndTranspose");
    b.Resize(a, 0, 0);
    EXPECT_EQ(b.Length(), 0);
    ExpectMessage<ERovaneRangeError>([&] { a.Resize(0, 2); }, "TMtx.Resize: Row <= 0");
    ExpectMessage<ERovaneInvalidArgument>([&] { a.Resize(a, 2, 2); }, "TMtx.Resize: Src = Self");
    ExpectMessage<ERovaneInvalidArgument>([&] { b.ResizeAndTranspose(a, 2, -1); },
                                          "TMtx.ResizeAndTranspose: NewCols <= 0");
    TVec v;
    v.Size(12);
    a.Size(v);  // a TVec of the same length keeps the shape
    EXPECT_EQ(a.Rows(), 3);
    EXPECT_EQ(a.IndexOf(2, 1), 9);
    TVec like;
    like.Size(1, rvSingleComplex);
    b.Size(2, 5, like);
    EXPECT_EQ(b.FloatPrecision(), rvSingleComplex);
    EXPECT_EQ(b.Cols(), 5);
}

TEST(MatrixConcat, BlocksAndSplit) {
    Dyadic g(37);
    TMtx a, b, c, d, m;
    Random(a, 2, 3, rvDouble, g);
    Random(b, 2, 1, rvDouble, g);
    Random(c, 3, 3, rvDouble, g);
    Random(d, 3, 1, rvDouble, g);
    const TMtx* grid[] = {&a, &b, &c, &d};
    m.Concat(2, 2, grid);
    ExpectEqualRef(m, Reference(5, 4, [&](int i, int j) {
                       if (i < 2) return j < 3 ? Get(a, i, j) : Get(b, i, 0);
                       return j < 3 ? Get(c, i - 2, j) : Get(d, i - 2, 0);
                   }),
                   "Concat");
    TMtx a2, b2, c2, d2;
    a2.Size(2, 3);
    b2.Size(2, 1);
    c2.Size(3, 3);
    d2.Size(3, 1);
    TMtx* parts[] = {&a2, &b2, &c2, &d2};
    m.Split(2, 2, parts);
    ExpectEqualRef(a2, Of(a), "Split a");
    ExpectEqualRef(d2, Of(d), "Split d");
    const TMtx* row[] = {&a, &b};
    m.ConcatHorz(row);
    EXPECT_EQ(m.Cols(), 4);
    EXPECT_EQ(Get(m, 1, 3), Get(b, 1, 0));
    const TMtx* col[] = {&a, &c};
    m.ConcatVert(col);
    EXPECT_EQ(m.Rows(), 5);
    EXPECT_EQ(Get(m, 4, 2), Get(c, 2, 2));
    const TMtx* bad[] = {&a, &c};
    ExpectMessage<ERovaneInvalidArgument>([&] { m.ConcatHorz(bad); }, "Src[0].Rows <> Src[i].Rows");
    const TMtx* bad2[] = {&a, &b};
    ExpectMessage<ERovaneInvalidArgument>([&] { m.ConcatVert(bad2); }, "Src[0].Cols <> Src[i].Cols");
    const TMtx* three[] = {&a, &b, &c};
    ExpectMessage<ERovaneInvalidArgument>([&] { m.Concat(2, 2, three); },
                                          "TMtx.Concat: (ARows*ACols) <> Length(Src): (2*2) <> 3");
    const TMtx* wrong[] = {&a, &d, &c, &d};
    ExpectMessage<ERovaneInvalidArgument>([&] { m.Concat(2, 2, wrong); },
                                          "TMtx.Concat: Invalid source matrix dimension: 1 (3,1)");
    m.Size(5, 5);
    m.SetZero();
    m.ConcatHorz(1, 0, row);
    EXPECT_EQ(Get(m, 2, 3), Get(b, 1, 0));
    ExpectMessage<ERovaneInvalidArgument>([&] { m.ConcatHorz(0, 2, row); }, "Too many columns!");
}

TEST(MatrixGenerators, Definitions) {
    TMtx m;
    m.Eye(2, 3);
    ExpectEqualRef(m, Reference(2, 3, [](int i, int j) { return Z(i == j ? 1 : 0); }), "Eye");
    TVec row, col;
    row.SetIt({1, 2, 3});
    col.SetIt({4, 5});
    m.Toeplitz(row, col);
    ExpectEqualRef(m, Reference(3, 3, [](int i, int j) {
                       const double v[3][3] = {{1, 2, 3}, {4, 1, 2}, {5, 4, 1}};
                       return Z(v[i][j]);
                   }),
                   "Toeplitz");
    m.Toeplitz(row);
    ExpectEqualRef(m, Reference(3, 3, [](int i, int j) { return Z(1 + std::abs(i - j)); }), "symmetric Toeplitz");
    m.Hankel(row);
    ExpectEqualRef(m, Reference(3, 3, [](int i, int j) { return i + j < 3 ? Z(i + j + 1) : Z(0); }), "Hankel");
    TVec two;
    two.SetIt({2});
    m.VanderMonde(3, two);
    ExpectEqualRef(m, Reference(1, 3, [](int, int j) { return Z(j == 0 ? 4 : j == 1 ? 2 : 1); }), "VanderMonde");
    m.VanderMonde(4, row);
    ExpectEqualRef(m, Reference(3, 4, [](int i, int j) { return Z(std::pow(i + 1, 3 - j)); }), "VanderMonde 3x4");
    m.Pascl(4);
    ExpectEqualRef(m, Reference(4, 4, [](int i, int j) {
                       const double v[4][4] = {{1, 1, 1, 1}, {1, 2, 3, 4}, {1, 3, 6, 10}, {1, 4, 10, 20}};
                       return Z(v[i][j]);
                   }),
                   "Pascl");
    m.Kac(3);
    ExpectEqualRef(m, Reference(4, 4, [](int i, int j) {
                       if (i == j + 1) return Z(i);
                       if (j == i + 1) return Z(3 - i);
                       return Z(0);
                   }),
                   "Kac");
    TVec cr;
    cr.Size(2, true);
    ExpectMessage<ERovaneInvalidArgument>([&] { m.Toeplitz(row, cr); }, "FirstRow.Complex <> FirstCol.Complex");
}

// A row, column or diagonal written from a view of the same matrix reads
// the view whole first.
TEST(MatrixLines, SourcesThatAreViewsOfSelf) {
    TMtx a;
    SetM(a, 3, 3, false, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    TVec row;
    row.SetSubRange(a, 1, 3);  // (2, 3, 4): overlaps rows 0 and 1
    a.SetRow(row, 0, 1, 0, 3);
    EXPECT_EQ(Get(a, 1, 0), Z(2));
    EXPECT_EQ(Get(a, 1, 2), Z(4));
    row.SetFullRange();
    TVec col;
    col.SetSubRange(a, 0, 3);  // (1, 2, 3), the first row
    a.SetCol(col, 0, 0, 2, 3);
    EXPECT_EQ(Get(a, 0, 2), Z(1));
    EXPECT_EQ(Get(a, 1, 2), Z(2));
    EXPECT_EQ(Get(a, 2, 2), Z(3));  // read before (0, 2), the view's last element, was written
    col.SetFullRange();
    TMtx b;
    SetM(b, 4, 4, false, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    TVec d;
    d.SetSubRange(b, 1, 3);  // (2, 3, 4)
    b.Diag(d, -1);  // (1, 0), (2, 1), (3, 2)
    EXPECT_EQ(Get(b, 1, 0), Z(2));
    EXPECT_EQ(Get(b, 2, 1), Z(3));
    EXPECT_EQ(Get(b, 3, 2), Z(4));
    d.SetFullRange();
    TVec flat;
    flat.SetSubRange(b, 0, 4);
    b.CopyVec(flat, 1, 3, 0, 1);  // (2, 3, 4) -> (0, 1), (0, 2), (0, 3)
    EXPECT_EQ(Get(b, 0, 3), Z(4));
    flat.SetFullRange();
}
