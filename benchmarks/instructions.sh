#!/bin/sh
# Instructions for each item of the jobs of count_engine: instructions.sh [build/release]
set -eu
program="${1:-build/release}/benchmarks/count_engine"
few=2
many=52
total() {
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$program" "$1" "$2" 2>&1 >/dev/null |
        sed -n 's/.*Collected : //p'
}
for job in $("$program"); do
    items=$(($("$program" "$job" $many) - $("$program" "$job" $few)))
    printf '%-20s %6d\n' "$job" $((($(total "$job" $many) - $(total "$job" $few)) / items))
done
