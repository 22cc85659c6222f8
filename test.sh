#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests without a screen. The last line is "N passed, N failed"; what was
# skipped counts as neither and is told in a line before it.
#   ./test.sh [PRESET]     a preset of CMakePresets.json, default release
# Set WERROR=1 to have warnings fail the build.
set -eu
cd "$(dirname "$0")"
preset=${1:-release}

packaging/install-packages.sh run test
cmake --preset "$preset" -DELEVENFIVE_WERROR="${WERROR:-OFF}" >/dev/null
cmake --build --preset "$preset"

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=0}" # what the platform's libraries keep until the end is no leak of ours
passed=0
failed=0
skipped=0
for program in build/"$preset"/bin/test_*; do
    [ -x "$program" ] || continue
    name=$(basename "$program")
    report=$(mktemp)
    code=0
    "$program" --gtest_brief=1 --gtest_output="xml:$report" || code=$?
    # The first line of the report that names the counts: <testsuites tests="N" failures="N" disabled="N" errors="N" ...>
    counts=$(grep -o '<testsuites [^>]*' "$report" 2>/dev/null | head -n 1 || true)
    all=$(sed -n 's/.* tests="\([0-9]*\)".*/\1/p' <<<"$counts")
    bad=$(sed -n 's/.* failures="\([0-9]*\)".*/\1/p' <<<"$counts")
    left=$(grep -c 'result="skipped"\|status="notrun"' "$report" 2>/dev/null || true) # counted among the tests, though not run
    rm -f "$report"
    if [ -z "$all" ]; then # it crashed or hung up before its report
        echo "$name: ended with $code and no report"
        failed=$((failed + 1))
        continue
    fi
    if [ "$code" -ne 0 ] && [ "$bad" -eq 0 ]; then
        echo "$name: ended with $code"
        bad=1
    fi
    echo "$name: $((all - bad - left)) passed, $bad failed, $left skipped"
    passed=$((passed + all - bad - left))
    failed=$((failed + bad))
    skipped=$((skipped + left))
done
count() { # count LABEL COMMAND...: one more passed or failed
    local label=$1
    shift
    if "$@"; then passed=$((passed + 1)); else echo "$label: failed" && failed=$((failed + 1)); fi
}
for script in tests/*/*.sh; do # black-box scripts are given the companion
    [ -x "$script" ] && count "$script" "$script" "$PWD/build/$preset/bin/elevenfive-cli"
done
for program in build/"$preset"/bin/fuzz_replay_*; do # every input that the fuzz targets keep
    name=${program##*/fuzz_replay_}
    [ -x "$program" ] && count "fuzz replay $name" "$program" "fuzz/corpus/$name"
done
if [ $((passed + failed)) -eq 0 ]; then
    echo "no test was found"
    failed=1
fi
[ "$skipped" -eq 0 ] || echo "$skipped skipped: this system or this user lacks what they need"
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
