// Saving to files: one object per file, and several objects appended to one
// file and read back in turn from one stream. The files live in a folder of
// their own in the temporary folder, removed at the end.
#include <rovane/Rovane.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

using namespace rovane;

namespace fs = std::filesystem;

int Run(const fs::path& folder) {
    const std::string path = (folder / "v.bin").string();
    const std::string dataPath = (folder / "data.bin").string();

    TVec v;
    v.SetIt({1.0, 2.5, -3.0});
    v.SaveToFile(path);               // creates or replaces the file
    TVec w;
    w.LoadFromFile(path);             // reads the first object of the file
    if (w.Length() != 3 || w[0] != 1.0 || w[1] != 2.5 || w[2] != -3.0) return 1;
    const auto once = fs::file_size(path);
    v.SaveToFile(path);               // replaced, not appended
    if (fs::file_size(path) != once) return 2;

    TVec a, a2;
    a.SetIt({4.0, 5.0});
    a.SetCaption("a");
    TMtx m, m2;
    m.Size(2, 3);
    for (int i = 0; i < 6; ++i) m[i] = i * 0.5;
    m.SetTag(7);

    a.SaveToFile(dataPath, true);
    m.SaveToFile(dataPath, true);
    std::ifstream in(dataPath, std::ios::binary);
    a2.LoadFromStream(in);
    m2.LoadFromStream(in);

    if (a2.Length() != 2 || a2[1] != 5.0 || a2.Caption() != "a") return 3;
    if (m2.Rows() != 2 || m2.Cols() != 3 || m2[5] != 2.5 || m2.Tag() != 7) return 4;
    return 0;
}

int main() {
    const fs::path folder = fs::temp_directory_path() / ("rovane_streams_" + std::to_string(getpid()));
    fs::create_directories(folder);
    int result;
    try {
        result = Run(folder);
    } catch (...) {
        result = 10;
    }
    fs::remove_all(folder);
    return result;
}
