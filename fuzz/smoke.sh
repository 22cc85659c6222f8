#!/bin/sh
# Builds preset `fuzz` and runs every target for some seconds over its kept corpus. New inputs stay in the build folder.
#
#   fuzz/smoke.sh [SECONDS]      default 10 a target
#
# FUZZ_SEED, where it is set, makes a run repeat the search of the one before; otherwise each searches elsewhere.
# Prints one line a target; exit status 1 where a target crashed (its input is named and kept in the build folder).
set -eu

seconds=${1:-10}
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build/fuzz
log=$build/fuzz-build.log

cd "$root"
mkdir -p "$build"
if ! { cmake --preset fuzz && cmake --build --preset fuzz; } >"$log" 2>&1; then
  tail -n 40 "$log" >&2
  echo "fuzz: the build failed" >&2
  exit 1
fi

failed=0
for program in "$build"/bin/fuzz_*; do
  [ -x "$program" ] || continue
  name=$(basename "$program")
  name=${name#fuzz_}
  found=$build/found/$name
  mkdir -p "$found"
  run=$found.log
  if "$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 -seed="${FUZZ_SEED:-0}" \
    -artifact_prefix="$found." "$found" "$root/fuzz/corpus/$name" >"$run" 2>&1; then
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$run")
    echo "fuzz $name: ok, $runs inputs in $seconds s"
  else
    failed=1
    echo "fuzz $name: FAILED, $(sed -n 's/.*Test unit written to //p' "$run" | tail -n 1), log $run"
  fi
done
exit $failed
