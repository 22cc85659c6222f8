#!/usr/bin/env bash
# Installs what is missing, builds, and opens the window. Without a display it does a first run with the companion
# elevenfive-cli on samples/ and prints the account of the run and the survivors.
set -eu
cd "$(dirname "$0")"

packaging/install-packages.sh run
build=build/run
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DELEVENFIVE_TESTS=OFF >/dev/null
echo "Building ..."
cmake --build "$build"

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    exec "$build/bin/elevenfive" "$@"
fi

echo "No display (DISPLAY and WAYLAND_DISPLAY are unset): a first run with elevenfive-cli on samples/ instead of the window."
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cli="$build/bin/elevenfive-cli"
mkdir "$folder/temp" # a working folder of its own: a window that is open elsewhere is not disturbed
"$cli" --folder "$folder" --temp "$folder/temp" init
"$cli" --folder "$folder" --temp "$folder/temp" batch samples/first-run.txt
