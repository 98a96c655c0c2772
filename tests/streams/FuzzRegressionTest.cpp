// The fuzz targets' checks, replayed deterministically on their seeds: every
// truncation of each seed and every header byte set to 0x00 and 0xFF. A
// broken invariant aborts, as it does under the fuzzer. Crash inputs that a
// fuzzing run finds are added to tests/fuzz/seeds and replayed here.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#define LLVMFuzzerTestOneInput FuzzLoadOne
#include "../fuzz/fuzz_load.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput FuzzTextOne
#include "../fuzz/fuzz_text.cpp"
#undef LLVMFuzzerTestOneInput

namespace {

std::vector<std::string> Seeds(const std::string& prefix) {
    std::vector<std::string> out;
    const std::filesystem::path dir = std::filesystem::path(ROVANE_TEST_DATA_DIR).parent_path() / "fuzz" / "seeds";
    for (const auto& e : std::filesystem::directory_iterator(dir)) {
        if (e.path().filename().string().rfind(prefix, 0) != 0) continue;
        std::ifstream f(e.path(), std::ios::binary);
        out.emplace_back(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
    }
    return out;
}

template <class Fn>
void Mutations(const std::string& seed, size_t headerBytes, Fn&& run) {
    auto go = [&](const std::string& s) { run(reinterpret_cast<const uint8_t*>(s.data()), s.size()); };
    go(seed);
    for (size_t cut = 0; cut < seed.size(); ++cut) go(seed.substr(0, cut));
    for (size_t i = 1; i < std::min(seed.size(), headerBytes); ++i)
        for (char b : {'\x00', '\xFF', '\x7F'}) {
            std::string s = seed;
            s[i] = b;
            go(s);
        }
}

TEST(FuzzReplay, LoaderSeedsAndMutations) {
    const std::vector<std::string> seeds = Seeds("load-");
    ASSERT_FALSE(seeds.empty());
    for (const std::string& s : seeds)
        for (uint8_t mode = 0; mode < 8; ++mode) {
            std::string t = s;
            t[0] = static_cast<char>(mode);
            Mutations(t, 1 + 104 + 4, [](const uint8_t* p, size_t n) { FuzzLoadOne(p, n); });
        }
}

TEST(FuzzReplay, TextSeedsAndMutations) {
    const std::vector<std::string> seeds = Seeds("text-");
    ASSERT_FALSE(seeds.empty());
    for (const std::string& s : seeds)
        for (uint8_t mode = 0; mode < 8; ++mode) {
            std::string t = s;
            t[0] = static_cast<char>(mode);
            Mutations(t, t.size(), [](const uint8_t* p, size_t n) { FuzzTextOne(p, n); });
        }
}

}  // namespace
