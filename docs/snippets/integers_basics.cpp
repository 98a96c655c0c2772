// Integer containers: widths on one block, saturating arithmetic with a
// scale, bit sets, and copies to and from the float containers.
#include <rovane/Rovane.h>

#include <cstdio>

using namespace rovane;

int main() {
    TVecInt a, b, c;
    a.Size(0, prInt16);
    a.SetIt({30000, -30000, 7});
    b.Size(0, prInt16);
    b.SetIt({10000, -10000, 2});
    c.Add(a, b);  // 32767, -32768, 9: sums saturate at the width
    if (c[0] != 32767 || c[1] != -32768 || c[2] != 9) return 1;

    // A scale factor of 1 halves every result, rounding to nearest (ties to even).
    c.SetScaleFactor(1);
    c.Add(a, b);  // 20000, -20000, 4 (9 / 2 = 4.5 rounds to 4)
    if (c[0] != 20000 || c[2] != 4) return 2;

    // Bytes are unsigned: 200 stays 200, and a right shift is logical.
    TVecInt bytes;
    bytes.Size(0, prInt8);
    bytes.SetIt({200, 16});
    bytes.BitShift(-3);  // 25, 2
    if (bytes[0] != 25 || bytes[1] != 2) return 3;

    // A bit set of 33 bits takes two 32-bit words.
    TVecInt bits;
    bits.SetBitCount(33);
    bits.SetZero();
    bits.SetBits(32, true);
    if (bits.Length() != 2 || bits[1] != 1) return 4;

    // Floats to integers with a rounding, and back.
    TVec x;
    x.SetIt({2.5, -1.7, 1e9});
    TVecInt n;
    n.Size(0, prInt16);
    x.CopyTo(n, rnRound);  // 2, -2, 32767
    TVec y;
    y.Copy(n);
    std::printf("%g %g %g\n", double(y[0]), double(y[1]), double(y[2]));
    return y[2] == 32767.0 ? 0 : 5;
}
