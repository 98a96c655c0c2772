// Saving and loading containers: a file with two objects, a memory stream in
// a compact sample format, the text form of a matrix, and a damaged stream.
#include <rovane/Rovane.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>

using namespace rovane;

int main() {
    const std::string file = "streams_save_load_sample.bin";
    std::remove(file.c_str());

    // Two objects appended to one file, read back in turn.
    TVec signal;
    signal.SetIt({0.25, -1.5, 3.0, 100.0});
    signal.SetCaption("signal");
    TMtx weights;
    weights.Size(2, 3);
    for (int i = 0; i < 6; ++i) weights[i] = i * 0.5;
    signal.SaveToFile(file, true);
    weights.SaveToFile(file, true);

    TVec signal2;
    TMtx weights2;
    {
        std::ifstream in(file, std::ios::binary);
        signal2.LoadFromStream(in);
        weights2.LoadFromStream(in);
    }
    std::remove(file.c_str());
    if (signal2.Length() != 4 || signal2.Caption() != "signal" || signal2[3] != 100.0) return 1;
    if (weights2.Rows() != 2 || weights2.Cols() != 3 || weights2[5] != 2.5) return 2;

    // 16-bit samples with rounding and saturation: a quarter of the bytes.
    TVec audio;
    audio.SetIt({0.4, 0.6, -1.5, 40000.0});
    audio.SetPrecision(prSmallInt);
    audio.SetRounding(rnRound);
    std::stringstream mem;
    audio.SaveToStream(mem);
    TVec back;
    back.LoadFromStream(mem);
    // 0.4 -> 0, 0.6 -> 1, -1.5 -> -2 (ties to even), 40000 -> 32767.
    if (back[0] != 0 || back[1] != 1 || back[2] != -2 || back[3] != 32767) return 3;

    // Text form of a matrix and back.
    const std::string text = weights.ValuesToText("\t");
    TMtx parsed;
    parsed.TextToValues(text, "\t");
    if (parsed.Rows() != 2 || parsed.Cols() != 3 || parsed[4] != 2.0) return 4;

    // A damaged stream raises and leaves the object as it was.
    std::string bytes = mem.str();
    bytes.resize(bytes.size() - 1);
    std::stringstream cut(bytes);
    try {
        back.LoadFromStream(cut);
        return 5;
    } catch (const ERovaneException& e) {
        std::printf("refused: %s\n", e.what());
    }
    if (back.Length() != 4 || back[3] != 32767) return 6;
    return 0;
}
