// The contract every chaining member keeps, swept over the member table:
// in every precision and complexity, for the whole, range and source forms,
// empty data, X = Self, overlapping views of one block, a sub-range source,
// ranges at the 32-bit limit and ConditionCheck off. The member list is
// generated from the table (ContractTable.gen.inc), so a new row is swept
// without a new test.
#include <gtest/gtest.h>
#include <rovane/Rovane.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

using namespace rovane;

namespace {

using Whole = std::function<void(TVec&)>;
using Range = std::function<void(TVec&, int32_t, int32_t)>;
using From = std::function<void(TVec&, const TVec&)>;
using FromRange = std::function<void(TVec&, const TVec&, int32_t, int32_t, int32_t)>;

struct UnaryRow {
    const char* name;
    Whole whole;
    Range range;
    From from;
    FromRange fromRange;
};

using From2 = std::function<void(TVec&, const TVec&, const TVec&)>;
struct VecRow {
    const char* name;
    From from;
    From2 from2;
    FromRange fromRange;
};

#define ROVANE_CONTRACT_UNARY(N)                                                                          \
    UnaryRow{#N, [](TVec& s) { s.N(); }, [](TVec& s, int32_t i, int32_t l) { s.N(i, l); },                 \
             [](TVec& s, const TVec& x) { s.N(x); },                                                       \
             [](TVec& s, const TVec& x, int32_t xi, int32_t i, int32_t l) { s.N(x, xi, i, l); }},
#define ROVANE_CONTRACT_VEC(N)
const std::vector<UnaryRow> kUnary = {
#include "ContractTable.gen.inc"
};
#undef ROVANE_CONTRACT_UNARY
#undef ROVANE_CONTRACT_VEC
#define ROVANE_CONTRACT_UNARY(N)
#define ROVANE_CONTRACT_VEC(N)                                                                            \
    VecRow{#N, [](TVec& s, const TVec& x) { s.N(x); }, [](TVec& s, const TVec& a, const TVec& b) { s.N(a, b); }, \
           [](TVec& s, const TVec& x, int32_t xi, int32_t i, int32_t l) { s.N(x, xi, i, l); }},
const std::vector<VecRow> kVec = {
#include "ContractTable.gen.inc"
};
#undef ROVANE_CONTRACT_UNARY
#undef ROVANE_CONTRACT_VEC

const TMtxFloatPrecision kPrecisions[] = {rvDouble, rvSingle, rvDoubleComplex, rvSingleComplex};

// Values in (0.1, 0.9): inside the domain of every member.
void Fill(TVec& v, int32_t n, TMtxFloatPrecision p, uint32_t seed = 7) {
    v.Size(n, p);
    const int32_t reals = v.Complex() ? 2 * n : n;
    for (int32_t i = 0; i < reals; ++i) {
        seed = seed * 1664525u + 1013904223u;
        v[i] = 0.1 + 0.8 * ((seed >> 8) / 16777216.0);
    }
}

std::vector<unsigned char> Bytes(const TVec& v) {
    const size_t n = size_t(v.Length()) * (v.Complex() ? 2 : 1) * (v.IsDouble() ? 8 : 4);
    const auto* p = static_cast<const unsigned char*>(v.ValuesPointer);
    return p ? std::vector<unsigned char>(p, p + n) : std::vector<unsigned char>{};
}

// Bytewise equality, reporting the first differing element.
::testing::AssertionResult SameBytes(const TVec& a, const TVec& b) {
    const auto x = Bytes(a), y = Bytes(b);
    if (x == y) return ::testing::AssertionSuccess();
    if (x.size() != y.size()) return ::testing::AssertionFailure() << "sizes " << x.size() << " and " << y.size();
    size_t i = 0;
    while (x[i] == y[i]) ++i;
    return ::testing::AssertionFailure() << "first difference at byte " << i << " of " << x.size();
}

// Runs f; true when it raised an ERovaneException (any class of the family).
bool RaisesRovane(const std::function<void()>& f) {
    try {
        f();
    } catch (const ERovaneException&) {
        return true;
    }
    return false;
}

std::string Tag(const char* name, TMtxFloatPrecision p) { return std::string(name) + " precision " + std::to_string(p); }

}  // namespace

TEST(Contract, TableIsNotEmpty) {
    EXPECT_GT(kUnary.size(), 50u);
    EXPECT_GE(kVec.size(), 5u);
}

TEST(Contract, UnaryMembersOnEmptyDataAndSelf) {
    for (const auto& row : kUnary)
        for (auto p : kPrecisions) {
            SCOPED_TRACE(Tag(row.name, p));
            TVec e, x;
            e.Size(0, p);
            x.Size(0, p);
            // Empty data: nothing is written; a member may refuse the kind of
            // data, but only with the library's own exception, never a range
            // error for a range that is empty.
            for (const auto& call : std::vector<std::function<void()>>{
                     [&] { row.whole(e); }, [&] { row.range(e, 0, 0); }, [&] { row.fromRange(e, x, 0, 0, 0); },
                     [&] { row.range(e, 0, -1); }}) {
                try {
                    call();
                } catch (const ERovaneRangeError& err) {
                    ADD_FAILURE() << "range error on empty data: " << err.what();
                } catch (const ERovaneException&) {
                }
                EXPECT_EQ(e.Length(), 0);
            }
            // X = Self is refused and leaves Self as it was.
            TVec s;
            Fill(s, 9, p);
            const auto before = Bytes(s);
            EXPECT_TRUE(RaisesRovane([&] { row.from(s, s); }));
            EXPECT_EQ(Bytes(s), before);
            EXPECT_EQ(s.Length(), 9);
        }
}

TEST(Contract, UnaryRangesAtTheIntegerLimitRaiseRangeErrors) {
    for (const auto& row : kUnary) {
        SCOPED_TRACE(row.name);
        TVec s, x;
        Fill(s, 16, rvDouble);
        Fill(x, 16, rvDouble, 3);
        EXPECT_THROW(row.range(s, INT32_MAX - 2, 10), ERovaneRangeError);
        EXPECT_THROW(row.range(s, 2, INT32_MAX - 1), ERovaneRangeError);
        EXPECT_THROW(row.fromRange(s, x, INT32_MAX - 2, 0, 10), ERovaneRangeError);
        EXPECT_THROW(row.fromRange(s, x, 0, INT32_MAX - 2, 10), ERovaneRangeError);
        EXPECT_THROW(row.fromRange(s, x, 0, 0, INT32_MAX), ERovaneRangeError);
        EXPECT_EQ(s.Length(), 16);
    }
}

// A member computed into a view that overlaps its source view in the same
// block gives what it gives on separate copies, in both directions.
TEST(Contract, UnaryMembersOnOverlappingViews) {
    size_t compared = 0;
    for (const auto& row : kUnary)
        for (auto p : kPrecisions)
            for (int shift : {1, -1, 3}) {
                SCOPED_TRACE(Tag(row.name, p) + " shift " + std::to_string(shift));
                const int32_t n = 64;
                TVec block, src, dst, copy, ref, refRange;
                Fill(block, n + 8, p);
                src.SetSubRange(block, 4, n);
                dst.SetSubRange(block, 4 + shift, n);
                copy.Copy(src);
                // The reference: the same form on separate objects.
                if (RaisesRovane([&] { row.from(ref, copy); })) continue;
                if (ref.FloatPrecision() != p) continue;  // a view cannot change its precision
                refRange.Size(n, p);
                if (RaisesRovane([&] { row.fromRange(refRange, copy, 0, 0, n); })) continue;
                row.from(dst, src);
                ++compared;
                EXPECT_TRUE(SameBytes(dst, ref)) << "out of place, whole";
                // The range form on a fresh block.
                Fill(block, n + 8, p);
                copy.Copy(src);
                row.fromRange(dst, src, 0, 0, n);
                EXPECT_TRUE(SameBytes(dst, refRange)) << "out of place, range";
                dst.SetFullRange();
                src.SetFullRange();
            }
    // Most members keep the precision of their source and are compared.
    EXPECT_GT(compared, kUnary.size() * 6);
}

// A range of a source gives what the whole form gives on that range alone,
// with ConditionCheck on and off.
TEST(Contract, UnaryRangeOfASource) {
    for (const auto& row : kUnary)
        for (auto p : kPrecisions)
            for (bool checks : {true, false}) {
                SCOPED_TRACE(Tag(row.name, p));
                TVec x, part, ref, dst;
                Fill(x, 40, p);
                part.Size(20, p);
                part.Copy(x, 5, 0, 20);
                if (RaisesRovane([&] { row.from(ref, part); }) || ref.FloatPrecision() != p) continue;
                dst.Size(30, p);
                dst.SetZero();
                dst.SetConditionCheck(checks);
                row.fromRange(dst, x, 5, 7, 20);
                TVec window;
                window.SetSubRange(dst, 7, 20);
                EXPECT_TRUE(SameBytes(window, ref));
                window.SetFullRange();
            }
}

TEST(Contract, VecMembersOnOverlappingViewsAndSelf) {
    for (const auto& row : kVec)
        for (auto p : kPrecisions)
            for (int shift : {1, -2}) {
                SCOPED_TRACE(Tag(row.name, p) + " shift " + std::to_string(shift));
                const int32_t n = 48;
                TVec block, a, d, ca, cd, other, ref;
                Fill(block, n + 8, p);
                Fill(other, n, p, 11);
                a.SetSubRange(block, 4, n);
                d.SetSubRange(block, 4 + shift, n);
                ca.Copy(a);
                cd.Copy(d);
                // Self op= overlapping view.
                ref.Copy(cd);
                if (!RaisesRovane([&] { row.from(ref, ca); })) {
                    row.from(d, a);
                    EXPECT_TRUE(SameBytes(d, ref)) << "in place with an overlapping operand";
                }
                // Self = overlapping view op other.
                Fill(block, n + 8, p);
                ca.Copy(a);
                TVec ref2;
                if (!RaisesRovane([&] { row.from2(ref2, ca, other); }) && ref2.FloatPrecision() == p) {
                    row.from2(d, a, other);
                    EXPECT_TRUE(SameBytes(d, ref2)) << "two operands, one overlapping Self";
                }
                // X = Self is refused and leaves Self whole.
                TVec s;
                Fill(s, 5, p);
                const auto before = Bytes(s);
                EXPECT_TRUE(RaisesRovane([&] { row.from(s, s); }));
                EXPECT_EQ(Bytes(s), before);
                EXPECT_THROW(row.fromRange(s, other, INT32_MAX - 1, 0, 4), ERovaneRangeError);
                a.SetFullRange();
                d.SetFullRange();
            }
}

// Members chain on the class they are called on.
TEST(Contract, ChainingReturnsTheDerivedClass) {
    TVec v, w;
    v.SetIt({0.1, 0.2, 0.3});
    w.SetIt({1, 1, 1});
    static_assert(std::is_same_v<decltype(v.Sin().Add(w).Scale(2.0)), TVec&>);
    auto& y = v.Sin().Add(w).Scale(2.0);
    EXPECT_EQ(&y, &v);
    EXPECT_DOUBLE_EQ(y[1], 2 * (std::sin(0.2) + 1));
    TMtx m, n;
    m.Size(2, 2);
    m.SetVal(0.5);
    n.Size(2, 2);
    n.SetVal(1.0);
    static_assert(std::is_same_v<decltype(m.Sqrt().Mul(n).Offset(1.0)), TMtx&>);
    auto& z = m.Sqrt().Mul(n).Offset(1.0);
    EXPECT_EQ(&z, &m);
    EXPECT_DOUBLE_EQ(z[3], std::sqrt(0.5) + 1);
}

// The generated files match the table.
TEST(Contract, GeneratedMembersAreFresh) {
    const std::string cmd = std::string("python3 ") + ROVANE_SOURCE_DIR + "/tools/gen_members.py --check";
    EXPECT_EQ(std::system(cmd.c_str()), 0) << "run tools/gen_members.py";
}
