#!/usr/bin/env bash
# Installs the Debian packages of the given groups that this machine lacks.
#   packaging/install-packages.sh run|test|check...
#     run    what building and starting the program needs
#     test   what the tests need on top
#     check  what .ci/run needs on top: sanitizers, fuzzing, clang-tidy
# Uses apt-get, with sudo where the user is not root. Prints nothing where nothing is missing.
set -eu

packages_run="g++ cmake ninja-build ccache mold pkgconf
  qt6-base-dev qt6-webengine-dev qt6-qpa-plugins qt6-translations-l10n libsqlitecpp-dev libsqlite3-dev fonts-noto-cjk ca-certificates"
packages_test="libgtest-dev librapidcheck-dev libcpp-httplib-dev"
packages_check="clang-14 libclang-rt-14-dev clang-tidy-14 clang-format-14 git"

wanted=""
for group in "$@"; do
    case "$group" in
        run) wanted="$wanted $packages_run" ;;
        test) wanted="$wanted $packages_test" ;;
        check) wanted="$wanted $packages_check" ;;
        *) echo "install-packages.sh: no group '$group'" >&2; exit 2 ;;
    esac
done

missing=""
for package in $wanted; do
    state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

if ! command -v apt-get >/dev/null 2>&1; then
    echo "Missing packages, and no apt-get to install them:$missing" >&2
    exit 1
fi
as_root=""
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null 2>&1 || { echo "Missing packages, and no sudo to install them:$missing" >&2; exit 1; }
    as_root="sudo"
fi

echo "Installing:$missing"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
install() {
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing >"$log" 2>&1
}
# The package lists of a fresh machine may be missing or old.
if ! install; then
    $as_root apt-get update >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
    install || { cat "$log" >&2; exit 1; }
fi
