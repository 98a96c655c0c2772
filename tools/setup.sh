#!/usr/bin/env bash
# One entry for every set-up task on a Debian 12 machine:
#   tools/setup.sh demo       install missing packages, build the library and the demo, run it
#   tools/setup.sh test       install missing packages, build, run all tests
#   tools/setup.sh sanitize   the tests under AddressSanitizer + UBSan
#   tools/setup.sh tsan       the tests under ThreadSanitizer
#   tools/setup.sh bench      build and run the benchmarks
# Build folders: build/ (release), build-demo/, build-asan/, build-tsan/, build-bench/.
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
  *)
    echo "usage: $0 demo|test|sanitize|tsan|bench" >&2; exit 2 ;;
esac
