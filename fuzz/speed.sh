#!/usr/bin/env bash
# Inputs a second of fuzz targets on fixed inputs, with no search: the inputs of a folder (up to
# 800 a target) each run as often as makes a thousand runs (three times at least), without leak
# checks, on one core. A fuzzing run's own speed
# depends on what it finds along the way; this one compares builds:
#   fuzz/speed.sh BUILD INPUTS [TARGET...]
# INPUTS holds a folder a target (fuzz/corpus for the seeds, WORK/corpus for grown corpora).
# BASE=OTHER_BUILD runs that build's program in turn on the same inputs, three rounds, and
# prints the median of each; CORE picks the core (1 by default). Each build's programs must
# find their own library (a build folder of its own, not a copy of one).
set -euo pipefail
build=$1 inputs=$2
shift 2
here=$(cd "$(dirname "$0")" && pwd)
targets=("$@")
[ ${#targets[@]} -gt 0 ] || mapfile -t targets < <(basename -s .cpp "$here"/*.cpp | sort)
export ASAN_OPTIONS=${ASAN_OPTIONS:-malloc_context_size=2:quarantine_size_mb=64:detect_leaks=0}
core=${CORE:-1}

# Inputs a second of one program on the inputs (file names on stdin).
rate() {
  local program=$1 count runs start end
  mapfile -t files
  count=${#files[@]}
  runs=$(((1000 + count - 1) / count))
  [ "$runs" -ge 3 ] || runs=3
  start=$(date +%s%N)
  taskset -c "$core" "$program" -runs="$runs" "${files[@]}" >/dev/null 2>&1 || true
  end=$(date +%s%N)
  echo $((count * runs * 1000000000 / (end - start + 1)))
}

median() {
  printf '%s\n' "$@" | sort -n | sed -n "$((($# + 1) / 2))p"
}

for name in "${targets[@]}"; do
  list=$(find "$inputs/$name" -type f 2>/dev/null | sort | head -800 || true)
  if [ -z "$list" ]; then
    echo "$name: no inputs in $inputs/$name"
    continue
  fi
  rounds=1
  [ -z "${BASE:-}" ] || rounds=3
  ours=() theirs=()
  for _ in $(seq $rounds); do
    if [ -n "${BASE:-}" ]; then
      theirs+=("$(rate "$BASE/fuzz/qzgui-fuzz-$name" <<<"$list")")
    fi
    ours+=("$(rate "$build/fuzz/qzgui-fuzz-$name" <<<"$list")")
  done
  line=$(printf '%-18s %6d inputs  %6d/s' "$name" "$(wc -l <<<"$list")" "$(median "${ours[@]}")")
  if [ -n "${BASE:-}" ]; then
    line+=$(printf '  base %6d/s' "$(median "${theirs[@]}")")
  fi
  echo "$line"
done
