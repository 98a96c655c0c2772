#!/usr/bin/env bash
# Start-up cost of the library: an empty main() linked to librovane against
# the same program without it, 5 alternating rounds of 50 runs each.
#   tools/startup_time.sh [library folder, default build/rovane]
set -euo pipefail
cd "$(dirname "$0")/.."
lib=$(realpath "${1:-build/rovane}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
echo 'int main() { return 0; }' > "$work/empty.cpp"
c++ -O2 "$work/empty.cpp" -o "$work/plain"
# --no-as-needed: the library is loaded and started although main calls nothing.
c++ -O2 "$work/empty.cpp" -o "$work/rovane" -Wl,--no-as-needed -L"$lib" -lrovane -Wl,-rpath,"$lib"
for round in 1 2 3 4 5; do
  for p in plain rovane; do
    start=$(date +%s%N)
    for i in $(seq 50); do "$work/$p"; done
    echo "$p $(( ($(date +%s%N) - start) / 50000 ))"
  done
done | sort -k1,1 -k2n | awk '{t[$1] = t[$1] " " $2} END {for (p in t) print p ":" t[p] " us per run (5 rounds, sorted)"}'
