// Getting data into a container from standard containers: CopyFromArray into
// an empty vector sizes it, SetIt takes any contiguous range of doubles.
#include <array>
#include <vector>

#include "StorageTestUtil.h"

namespace {

using namespace rovane;
using storage_test::Cplxs;
using storage_test::Ramp;
using storage_test::Reals;

TEST(DataIn, CopyFromArrayIntoAnEmptyVectorTakesTheArraysSize) {
    const std::vector<double> d = {1.5, -2, 3, 4};
    TVec x;
    x.CopyFromArray(std::span<const double>(d));
    EXPECT_EQ(Reals(x), d);

    TVec tail;  // from a source index: the rest of the array
    tail.CopyFromArray(std::span<const double>(d), 1);
    EXPECT_EQ(Reals(tail), (std::vector<double>{-2, 3, 4}));

    TVec s;  // the precision of Self is kept
    s.Size(0, false, false);
    const std::vector<int32_t> ints = {7, -8, 70000};
    s.CopyFromArray(std::span<const int32_t>(ints));
    ASSERT_EQ(s.Length(), 3);
    EXPECT_FALSE(s.IsDouble());
    EXPECT_EQ(std::vector<float>(s.SValues, s.SValues + 3), (std::vector<float>{7, -8, 70000}));

    TVec c;  // a complex Self takes a real array pairwise
    c.Size(0, true);
    c.CopyFromArray(std::span<const double>(d));
    EXPECT_EQ(Cplxs(c), (std::vector<TCplx>{{1.5, -2}, {3, 4}}));

    TVec z;  // complex elements make Self complex
    const std::vector<TCplx> pairs = {{1, 2}, {3, 4}, {5, 6}};
    z.CopyFromArray(std::span<const TCplx>(pairs));
    EXPECT_TRUE(z.Complex());
    EXPECT_EQ(Cplxs(z), pairs);
}

TEST(DataIn, CopyFromArrayKeepsItsMeaningElsewhere) {
    const std::vector<double> d = {10, 11, 12, 13, 14, 15};
    // A vector with a length copies that many, from the start of the array.
    TVec r;
    Ramp(r, 3);
    r.CopyFromArray(std::span<const double>(d));
    EXPECT_EQ(Reals(r), (std::vector<double>{10, 11, 12}));

    // An explicit range on an empty vector is still out of range.
    TVec e;
    EXPECT_RAISES(ERovaneRangeError, e.CopyFromArray(std::span<const double>(d), 0, 0, 2),
                  "Self params out of range: Index: 0, Len: 2, Length: 0");
    EXPECT_EQ(e.Length(), 0);

    // An odd count cannot fill complex elements: refused, Self stays empty and usable.
    TVec c;
    c.Size(0, true);
    const std::vector<double> odd = {1, 2, 3};
    EXPECT_RAISES(ERovaneInvalidArgument, c.CopyFromArray(std::span<const double>(odd)),
                  "CopyFromArray: odd number of values for complex data: 3");
    EXPECT_EQ(c.Length(), 0);
    c.CopyFromArray(std::span<const double>(odd), 1);
    EXPECT_EQ(Cplxs(c), (std::vector<TCplx>{{2, 3}}));

    // An empty array leaves an empty vector empty.
    TVec n;
    n.CopyFromArray(std::span<const double>());
    EXPECT_EQ(n.Length(), 0);

    // A matrix needs a shape: the length alone is refused.
    TMtx m;
    EXPECT_RAISES(ERovaneInvalidArgument, m.CopyFromArray(std::span<const double>(d)),
                  "TMtx: Length can not be set. Use Size!");
    EXPECT_EQ(m.Length(), 0);
}

TEST(DataIn, SetItTakesStandardContainers) {
    const std::vector<double> v = {3, 1, 2};
    TVec x;
    x.SetIt(v);
    EXPECT_EQ(Reals(x), v);
    const std::array<double, 2> a = {-1, 0.5};
    x.SetIt(a);
    EXPECT_EQ(Reals(x), (std::vector<double>{-1, 0.5}));
    x.SetIt({});  // the list form still wins for braces
    EXPECT_EQ(x.Length(), 0);
    x.SetIt({4, 5});
    EXPECT_EQ(Reals(x), (std::vector<double>{4, 5}));
    const std::vector<double> parts = {1, 2, 3, 4};
    x.SetIt(true, parts);  // complex pairs
    EXPECT_EQ(Cplxs(x), (std::vector<TCplx>{{1, 2}, {3, 4}}));
}

}  // namespace
