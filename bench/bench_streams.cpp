// Saving and loading 1e7 values (a 1000 x 10000 matrix, whose header keeps
// its full size) as prDouble and as prSmallInt with rounding, to and from
// memory and a file, against a raw write or read of the same bytes in the
// same run. Memory streams run over a preallocated buffer, so that neither
// side pays for growing it.
#include <benchmark/benchmark.h>
#include <rovane/Rovane.h>

#include <cstdio>
#include <fstream>
#include <istream>
#include <map>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

using namespace rovane;

namespace {

constexpr int32_t kRows = 1000, kCols = 10000;
constexpr int64_t kCount = int64_t(kRows) * kCols;

enum Case : int64_t { kSaveMem, kLoadMem, kSaveFile, kLoadFile };
enum Impl : int64_t { kRovane, kRaw };
const char* const kCaseName[] = {"save to memory", "load from memory", "save to file", "load from file"};

// Output and input buffers over a fixed block of memory.
class FixedOutBuf : public std::streambuf {
public:
    explicit FixedOutBuf(std::vector<char>& b) : fB(b) { Reset(); }
    void Reset() { setp(fB.data(), fB.data() + fB.size()); }
    int64_t Written() const { return pptr() - pbase(); }

private:
    std::vector<char>& fB;
};
class FixedInBuf : public std::streambuf {
public:
    FixedInBuf(char* p, size_t n) { setg(p, p, p + n); }
    void Rewind() { setg(eback(), eback(), egptr()); }

protected:
    pos_type seekoff(off_type off, std::ios_base::seekdir dir, std::ios_base::openmode) override {
        const off_type base = dir == std::ios_base::beg ? 0 : dir == std::ios_base::cur ? gptr() - eback() : egptr() - eback();
        if (base + off < 0 || base + off > egptr() - eback()) return pos_type(off_type(-1));
        setg(eback(), eback() + base + off, egptr());
        return pos_type(base + off);
    }
    pos_type seekpos(pos_type p, std::ios_base::openmode m) override { return seekoff(off_type(p), std::ios_base::beg, m); }
};

TMtx& Source() {
    static TMtx* m = [] {
        auto* x = new TMtx();
        x->Size(kRows, kCols);
        x->RandGauss(17u, 0.0, 8000.0);
        return x;
    }();
    return *m;
}

std::string FileName() { return "/tmp/rovane_bench_streams.bin"; }

void BM_Stream(benchmark::State& st) {
    const Case c = static_cast<Case>(st.range(0));
    const Impl impl = static_cast<Impl>(st.range(1));
    const TPrecision p = static_cast<TPrecision>(st.range(2));
    TMtx& src = Source();
    src.SetPrecision(p);
    src.SetRounding(rnRound);
    // The saved stream, for the loads and as the bytes of the raw side.
    std::vector<char> saved(static_cast<size_t>(kCount * SizeOfPrecision(p, false) + 1024));
    FixedOutBuf sb(saved);
    {
        std::ostream os(&sb);
        src.SaveToStream(os);
    }
    const int64_t bytes = sb.Written();
    saved.resize(static_cast<size_t>(bytes));
    std::vector<char> scratch(saved.size() + 1024);
    TMtx dst;
    dst.Size(kRows, kCols);
    dst.SetVal(0.0);  // its pages are mapped before the timing, as the raw side's are

    for (auto _ : st) {
        switch (c) {
            case kSaveMem: {
                FixedOutBuf out(scratch);
                std::ostream os(&out);
                if (impl == kRovane) src.SaveToStream(os);
                else os.write(saved.data(), bytes);
                benchmark::DoNotOptimize(scratch.data());
                break;
            }
            case kLoadMem: {
                FixedInBuf in(saved.data(), saved.size());
                std::istream is(&in);
                if (impl == kRovane) dst.LoadFromStream(is);
                else is.read(scratch.data(), bytes);
                benchmark::DoNotOptimize(scratch.data());
                break;
            }
            case kSaveFile: {
                if (impl == kRovane) {
                    src.SaveToFile(FileName());
                } else {
                    std::ofstream f(FileName(), std::ios::binary | std::ios::trunc);
                    f.write(saved.data(), bytes);
                }
                break;
            }
            case kLoadFile: {
                if (impl == kRovane) {
                    dst.LoadFromFile(FileName());
                } else {
                    std::ifstream f(FileName(), std::ios::binary);
                    f.read(scratch.data(), bytes);
                }
                benchmark::DoNotOptimize(scratch.data());
                break;
            }
        }
    }
    st.SetBytesProcessed(st.iterations() * bytes);
    st.counters["stream_MB"] = static_cast<double>(bytes) / 1e6;
}

void Args(benchmark::internal::Benchmark* b) {
    for (int64_t p : {int64_t(prDouble), int64_t(prSmallInt)})
        for (int64_t c : {kSaveMem, kLoadMem, kSaveFile, kLoadFile})
            for (int64_t impl : {kRovane, kRaw}) b->Args({c, impl, p});
}
BENCHMARK(BM_Stream)->Apply(Args)->UseRealTime()->Unit(benchmark::kMillisecond);

// Console output plus a closing table: the library's time over the raw time
// of the same bytes, and the library's stream throughput.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& r : runs) {
            if (r.run_type != Run::RT_Iteration) continue;
            const std::string name = r.run_name.str();  // BM_Stream/<case>/<impl>/<precision>/real_time
            std::vector<int64_t> a;
            for (size_t q = name.find('/'); q != std::string::npos && a.size() < 3; q = name.find('/', q + 1))
                a.push_back(std::stoll(name.substr(q + 1)));
            const std::string key = std::string(kCaseName[a[0]]) + ", " + PrecisionToStr(static_cast<TPrecision>(a[2]));
            fTime[key][a[1]] = r.GetAdjustedRealTime();
            fCpu[key][a[1]] = r.GetAdjustedCPUTime();
            const auto it = r.counters.find("stream_MB");
            if (it != r.counters.end()) fMB[key] = it->second;
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        // Wall and CPU time of the calling thread: on a busy machine the wall
        // time includes waiting for a core, and the CPU time is the fairer one.
        std::printf("\nLibrary time over raw time of the same bytes (1e7 values)\n");
        std::printf("%-40s %9s %9s %7s %9s %9s %7s %12s\n", "case", "wall ms", "raw", "ratio", "cpu ms", "raw",
                    "ratio", "MB/s by cpu");
        for (const auto& [key, t] : fTime) {
            if (!t.count(kRovane) || !t.count(kRaw)) continue;
            const double ms = t.at(kRovane), raw = t.at(kRaw);
            const double cms = fCpu[key][kRovane], craw = fCpu[key][kRaw];
            std::printf("%-40s %9.2f %9.2f %7.2f %9.2f %9.2f %7.2f %12.0f\n", key.c_str(), ms, raw, ms / raw, cms,
                        craw, cms / craw, fMB[key] / (cms / 1e3));
        }
        std::remove(FileName().c_str());
    }

private:
    std::map<std::string, std::map<int64_t, double>> fTime, fCpu;
    std::map<std::string, double> fMB;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
