#!/bin/sh
# Replays the kept corpus of every fuzz target with the programs in $BIN.
set -eu
corpus=$(cd "$(dirname "$0")/../../fuzz/corpus" && pwd)
for program in "$BIN"/fuzz_replay_*; do
  name=${program##*/fuzz_replay_}
  "$program" "$corpus/$name" >/dev/null || {
    echo "the corpus of $name fails" >&2
    exit 1
  }
done
