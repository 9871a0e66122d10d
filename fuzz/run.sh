#!/usr/bin/env bash
# Runs every fuzz target of a fuzzing build for a time budget each, on a working corpus that
# starts from the seeds of fuzz/corpus/<name>/ and keeps what each run adds:
#   fuzz/run.sh BUILD SECONDS WORK [TARGET...]
# BUILD is the fuzzing build folder, WORK holds the corpora (WORK/corpus/<name>/) and anything a
# target finds (WORK/found/<name>-crash-..., leak-, timeout-, oom-). One line a target: runs,
# runs a second, coverage, and the runs of every budget spent on WORK so far (WORK/history
# keeps one line a run: target, runs, seconds, coverage). Fails when a target found something
# (its input is kept in found/); each finding is then run again alone in a fresh process, which
# tells whether it fails by itself (the input targets share one GUI manager between inputs).
set -euo pipefail
build=$1 seconds=$2 work=$3
shift 3
here=$(cd "$(dirname "$0")" && pwd)
targets=("$@")
[ ${#targets[@]} -gt 0 ] || mapfile -t targets < <(basename -s .cpp "$here"/*.cpp | sort)
mkdir -p "$work/found"
# Short allocation stacks and a small quarantine: a third faster under AddressSanitizer, and a
# finding is reproduced with the default options anyway.
export ASAN_OPTIONS=${ASAN_OPTIONS:-malloc_context_size=2:quarantine_size_mb=64}
status=0
for name in "${targets[@]}"; do
  corpus=$work/corpus/$name
  mkdir -p "$corpus"
  log=$work/$name.log
  if ! "$build/fuzz/qzgui-fuzz-$name" -max_total_time="$seconds" -entropic=0 -rss_limit_mb=2048 \
      -timeout=30 -print_final_stats=1 -artifact_prefix="$work/found/$name-" "$corpus" \
      "$here/corpus/$name" >"$log" 2>&1; then
    echo "$name: FOUND something, see $log and $work/found/"
    for finding in "$work/found/$name"-*; do
      [ -f "$finding" ] || continue
      case "$finding" in *.log) continue ;; esac
      if "$build/fuzz/qzgui-fuzz-$name" "$finding" >"$finding.alone.log" 2>&1; then
        echo "  $finding does not fail alone (see $finding.alone.log)"
      else
        echo "  $finding fails alone too"
      fi
    done
    status=1
    continue
  fi
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
  cov=$(grep -o 'cov: [0-9]*' "$log" | tail -1)
  echo "$name $runs $seconds ${cov#cov: }" >>"$work/history"
  total=$(awk -v n="$name" '$1 == n { s += $2 } END { print s }' "$work/history")
  printf '%-18s %10s runs %7s/s  %s  (%s runs in all)\n' "$name" "$runs" "$speed" "$cov" "$total"
done
exit $status
