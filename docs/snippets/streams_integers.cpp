// Saving and loading integer vectors: the exact format of the width, an
// explicit narrower format that saturates, and the text form.
#include <rovane/Rovane.h>

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>

using namespace rovane;

int main() {
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / "rovane_streams_integers";
    std::filesystem::create_directories(dir);
    const std::string path = (dir / "ids.bin").string();
    bool ok = true;
    {
        TVecInt v;
        v.SetIt({-5, 300, 70000});
        v.SaveToFile(path);                            // prInteger, exact

        std::stringstream s;
        v.WriteHeader(s, prSmallInt, rnRound, boBigEndian);
        v.WriteValues(s, prSmallInt, rnRound, boBigEndian);
        TVecInt w;
        w.ReadValues(s, w.ReadHeader(s, boBigEndian), boBigEndian);   // -5, 300, 32767
        ok = ok && w.Length() == 3 && w[0] == -5 && w[1] == 300 && w[2] == 32767;

        TVecInt back;
        back.LoadFromFile(path);
        ok = ok && back.Length() == 3 && back[2] == 70000;
        ok = ok && v.ValuesToText() == "-5\r\n300\r\n70000";
    }
    std::filesystem::remove_all(dir);
    if (!ok) std::puts("integer streams: unexpected result");
    return ok ? 0 : 1;
}
