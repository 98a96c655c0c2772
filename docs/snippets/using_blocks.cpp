// The block loop: one pass over a long vector in short blocks, so that the
// steps of a composition run on data that stay in the processor's cache.
#include <rovane/Rovane.h>

#include <cmath>

using namespace rovane;

int main() {
    TVec x;
    x.Size(2500);
    for (int32_t i = 0; i < x.Length(); ++i) x.Values[i] = 0.001 * i;

    int32_t blocks = 0;
    x.BlockInit(1000);           // x becomes a view of its first 1000 elements
    while (!x.BlockEnd()) {
        x.Sqr();                 // each step works on the current block
        x.Add(1.0);
        x.Sqrt();
        ++blocks;
        x.BlockNext();           // next block; after the last, the full range is back
    }

    const bool ok = blocks == 3 && x.Length() == 2500 && x.Values[2499] == std::sqrt(2.499 * 2.499 + 1.0);
    return ok ? 0 : 1;
}
