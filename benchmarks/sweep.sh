#!/bin/sh
# Time and memory of "quomc sweep": mode 3 with functions, propane, Peng/Robinson, states over 250 to 550 K and 100
# to 7900 kPa. Usage: benchmarks/sweep.sh [LINES], from the top folder, after a release build.
set -eu
lines=${1:-1500000}
quomc="build/release/src/console/quomc --program-folder build/release/data"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
awk -v n="$lines" 'BEGIN { srand(1); print "T;p"
  for (i = 0; i < n; i++) printf "%.3f;%.2f\n", 250 + 300 * rand(), 100 + 7800 * rand() }' > "$work/states.csv"
for jobs in 1 2; do
  begin=$(date +%s.%N)
  $quomc sweep propane --eos 6 --mode 3 --functions --jobs $jobs --in "$work/states.csv" --out "$work/results$jobs.csv" \
    > /dev/null
  end=$(date +%s.%N)
  awk -v n="$lines" -v t0="$begin" -v t1="$end" -v j=$jobs 'BEGIN {
    printf "%d job(s): %.2f s, %.0f lines/s\n", j, t1 - t0, n / (t1 - t0) }'
done
cmp "$work/results1.csv" "$work/results2.csv"
