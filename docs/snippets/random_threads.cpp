// A generator split into four streams by blocks, one thread per stream; its
// state saved to a file and loaded into a second generator that goes on
// where the first stopped.
#include <rovane/Rovane.h>

#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

using namespace rovane;

int main() {
    TRandomGenerator gen;
    gen.SetStreamIndependence(rsiBlockSplitting);  // or rsiLeapfrog, rsiNone
    gen.SetBlockStep(1000000);                      // elements per stream
    gen.SetStreamCount(4);                          // makes four streams and calls Init
    gen.Init(rgPHILOX4X32X10, 2024);                // generator and seed
    std::vector<TVec> parts(4);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&gen, &parts, i] {  // thread i fills parts[i] from stream i
            parts[size_t(i)].Size(1000);
            gen.Stream(i).RandomUniform(parts[size_t(i)], 0.0, 1.0);
        });
    for (std::thread& t : threads) t.join();

    // Stream i starts i * BlockStep elements into the sequence of one stream
    // with the same generator and seed.
    for (int i = 0; i < 4; ++i) {
        TRngStream one;
        one.NewStream(RngCode(rgPHILOX4X32X10), 2024);
        one.SkipAhead(int64_t(i) * 1000000);
        TVec expect;
        expect.Size(1000);
        one.RandomUniform(expect, 0.0, 1.0);
        for (int32_t k = 0; k < 1000; ++k)
            if (parts[size_t(i)][k] != expect[k]) return 1;
    }

    // Saved and loaded: the streams of gen2 go on where those of gen stopped.
    const std::string path =
        (std::filesystem::temp_directory_path() / ("rovane_random_" + std::to_string(getpid()) + ".rng")).string();
    gen.SaveToFile(path);
    // ... later, perhaps in another process:
    TRandomGenerator gen2;
    gen2.LoadFromFile(path);
    std::filesystem::remove(path);

    if (gen2.StreamCount() != 4) return 2;
    for (int i = 0; i < 4; ++i) {
        TVec a, b;
        a.Size(100);
        b.Size(100);
        gen.Stream(i).RandomUniform(a, 0.0, 1.0);
        gen2.Stream(i).RandomUniform(b, 0.0, 1.0);
        for (int32_t k = 0; k < 100; ++k)
            if (a[k] != b[k]) return 3;
    }
    return 0;
}
