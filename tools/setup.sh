#!/usr/bin/env bash
# One entry for every set-up task on a Debian 12 machine:
#   tools/setup.sh demo       install missing packages, build the library and the demo, run it
#   tools/setup.sh test       install missing packages, build, run all tests
#   tools/setup.sh sanitize   the tests under AddressSanitizer + UBSan
#   tools/setup.sh tsan       the tests under ThreadSanitizer
#   tools/setup.sh bench      build and run the benchmarks
#   tools/setup.sh fuzz [SECONDS]
#                             build the fuzz targets of the stream loader and the
#                             text parsers (clang, libFuzzer, ASan + UBSan) into
#                             build-fuzz/ and run each for SECONDS (default 600)
# Build folders: build/ (release), build-demo/, build-asan/, build-tsan/, build-bench/, build-fuzz/.
set -euo pipefail
cd "$(dirname "$0")/.."

mode=${1:-test}
jobs=$(nproc 2>/dev/null || echo 2)

# Debian packages the build, the tests and the benchmarks need.
packages=(
  build-essential cmake ninja-build ccache pkg-config
  libopenblas-dev liblapacke-dev libsuitesparse-dev zlib1g-dev
  ocl-icd-opencl-dev opencl-headers pocl-opencl-icd
  libgtest-dev libbenchmark-dev libsleef-dev libeigen3-dev python3-mpmath librandom123-dev libfftw3-dev
)

install_missing() {
  local missing=()
  for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing: ${missing[*]}"
  local sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $sudo apt-get update -qq
  $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

configure_build() {  # dir, extra cmake args...
  local dir=$1; shift
  cmake -S . -B "$dir" -G Ninja "$@"
  cmake --build "$dir" -j "$jobs"
}

run_tests() {  # dir
  # ctest's own --parallel keeps both cores busy; each test is short.
  ctest --test-dir "$1" --output-on-failure -j "$jobs"
}

# Only the fuzz mode needs these (Debian's clang and its libFuzzer runtime).
fuzz_packages=(clang libclang-rt-14-dev)

[ "$mode" = fuzz ] && packages+=("${fuzz_packages[@]}")
install_missing
case "$mode" in
  demo)
    # The library and the demo alone: no test executables, an own folder.
    cmake -S . -B build-demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DROVANE_BUILD_TESTS=OFF
    cmake --build build-demo -j "$jobs" --target demo
    ./build-demo/examples/demo ;;
  test)
    # The release suite (once per kernel table the processor offers), then
    # the same suite under AddressSanitizer and UndefinedBehaviorSanitizer.
    configure_build build -DCMAKE_BUILD_TYPE=Release
    run_tests build
    configure_build build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DROVANE_SANITIZE=address,undefined \
      -DROVANE_BUILD_EXAMPLES=OFF
    ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 run_tests build-asan ;;
  sanitize)
    configure_build build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DROVANE_SANITIZE=address,undefined
    ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 run_tests build-asan ;;
  tsan)
    configure_build build-tsan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DROVANE_SANITIZE=thread
    TSAN_OPTIONS=halt_on_error=1 run_tests build-tsan ;;
  bench)
    configure_build build-bench -DCMAKE_BUILD_TYPE=Release -DROVANE_BUILD_BENCH=ON -DROVANE_BUILD_TESTS=OFF
    for b in build-bench/bench/bench_*; do "$b" --benchmark_min_time=0.2; done ;;
  fuzz)
    # The library itself is built by g++ (its kernels use GCC vector
    # builtins); the stream and string sources are compiled again by clang
    # with coverage and sanitizers into each target, whose definitions take
    # precedence over the library's.
    secs=${2:-600}
    configure_build build-fuzz/lib -DCMAKE_BUILD_TYPE=Release -DROVANE_BUILD_TESTS=OFF -DROVANE_BUILD_EXAMPLES=OFF
    srcs=(rovane/storage/Streams.cpp rovane/containers/RovaneStreams.cpp rovane/strings/StringVar.cpp)
    for t in load text; do
      clang++ -std=c++20 -O1 -g -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all -ffp-contract=off \
        -I. "${srcs[@]}" "tests/fuzz/fuzz_$t.cpp" -Lbuild-fuzz/lib/rovane -lrovane -Wl,-rpath,"$PWD/build-fuzz/lib/rovane" \
        -o "build-fuzz/fuzz_$t"
      mkdir -p "build-fuzz/corpus_$t" "build-fuzz/run-$t"
      # Seeds and any kept crash inputs start the corpus.
      cp -n tests/fuzz/seeds/"$t"-* "build-fuzz/corpus_$t/" 2>/dev/null || true
      ( cd "build-fuzz/run-$t" &&
        "../fuzz_$t" -max_total_time="$secs" -jobs=1 -rss_limit_mb=4096 -artifact_prefix="$PWD/crash-" "../corpus_$t" &&
        tail -n 3 fuzz-0.log )
    done ;;
  *)
    echo "usage: $0 demo|test|sanitize|tsan|bench|fuzz [seconds]" >&2; exit 2 ;;
esac
