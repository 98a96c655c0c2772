// Sample formats: 16-bit samples with rounding and saturation, the texts and
// sizes of a format, and a big-endian header and values written and read by
// hand.
#include <rovane/Rovane.h>

#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>

using namespace rovane;

int main() {
    {
        std::stringstream s;
        TVec audio;
        audio.SetIt({0.4, 0.6, -1.5, 40000.0});
        audio.SetPrecision(prSmallInt);
        audio.SetRounding(rnRound);
        audio.SaveToStream(s);   // stores 0, 1, -2, 32767

        // The values are the last 8 bytes: four 16-bit integers, low byte first.
        const std::string bytes = s.str();
        const unsigned char expect[8] = {0x00, 0x00, 0x01, 0x00, 0xfe, 0xff, 0xff, 0x7f};
        if (bytes.size() < 8 || std::memcmp(bytes.data() + bytes.size() - 8, expect, 8) != 0) return 1;
        TVec back;
        back.LoadFromStream(s);
        if (back.Length() != 4 || back[0] != 0 || back[1] != 1 || back[2] != -2 || back[3] != 32767) return 2;
    }
    if (PrecisionToStr(prSmallInt) != "integer, 2 bytes" || SizeOfPrecision(prSmallInt, true) != 4) return 3;

    {
        std::stringstream s;
        TVec v, w;
        v.SetIt({1.4, -2.5, 70000.0});
        v.WriteHeader(s, prInt24, rnRound, boBigEndian);
        v.WriteValues(s, prInt24, rnRound, boBigEndian);
        // ... later
        TPrecision p = w.ReadHeader(s, boBigEndian);
        w.ReadValues(s, p, boBigEndian);

        if (p != prInt24) return 4;
        if (w.Length() != 3 || w[0] != 1 || w[1] != -2 || w[2] != 70000) return 5;
        // The last value, 70000 = 0x011170, high byte first.
        const std::string bytes = s.str();
        const unsigned char last[3] = {0x01, 0x11, 0x70};
        if (std::memcmp(bytes.data() + bytes.size() - 3, last, 3) != 0) return 6;
    }
    return 0;
}
