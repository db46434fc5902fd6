#!/bin/sh
# Processor time and memory of "quomc sweep": mode 3 with functions, propane, Peng/Robinson, states over 250 to 550 K
# and 100 to 7900 kPa, as text and as doubles, the same bytes for 1 and 2 jobs. Minima of several runs.
# Usage: benchmarks/sweep.sh [LINES [RUNS]], from the top folder, after a release build.
set -eu
lines=${1:-1000000}
runs=${2:-5}
quomc="build/release/src/console/quomc --program-folder build/release/data"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
awk -v n="$lines" 'BEGIN { srand(1); print "T;p"
  for (i = 0; i < n; i++) printf "%.3f;%.2f\n", 250 + 300 * rand(), 100 + 7800 * rand() }' > "$work/states.csv"

# measure NAME OPTION...: user and system time of the fastest of the runs.
measure() {
  name=$1
  shift
  for run in $(seq "$runs"); do
    /usr/bin/env bash -c 'TIMEFORMAT="%U %S %R"; time "$@" > /dev/null' time \
      $quomc sweep propane --eos 6 --mode 3 --functions --in "$work/states.csv" "$@" 2>> "$work/times"
  done
  sort -n "$work/times" | awk -v n="$lines" -v name="$name" 'NR == 1 {
    printf "%-28s %.2f s user, %.2f s system, %.2f s elapsed: %.0f lines/s of user time\n", name, $1, $2, $3, n / $1 }'
  rm "$work/times"
}
measure "text, 1 job" --jobs 1 --out "$work/1.csv"
measure "text, 2 jobs" --jobs 2 --out "$work/2.csv"
measure "doubles, 1 job" --jobs 1 --format bin --out "$work/1.bin"
measure "doubles, 2 jobs" --jobs 2 --format bin --out "$work/2.bin"
cmp "$work/1.csv" "$work/2.csv"
cmp "$work/1.bin" "$work/2.bin"
