#!/usr/bin/env bash
# An installed tree: the companion finds the shipped files, fills the folder of its user from them, and never changes them.
#   install.sh PATH_OF_ELEVENFIVE_CLI     in the bin folder of a build tree
set -u
build=$(cd "$(dirname "$1")/.." && pwd)
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
export HOME=$place/home XDG_DATA_HOME=$place/home/data TMPDIR=$place/tmp
mkdir -p "$HOME" "$TMPDIR"
failed=0
fail() {
  echo "$*"
  failed=1
}
sums() { (cd "$place/usr" && find . -type f -exec sha256sum {} + | sort -k 2); }

cmake --install "$build" --prefix "$place/usr" >"$place/log" 2>&1 || { cat "$place/log" && exit 1; }
for file in bin/elevenfive-cli share/elevenfive/elevenfive.dat share/elevenfive/TJmode.tjmod; do
  [ -s "$place/usr/$file" ] || fail "not installed: $file"
done
[ "$(find "$place/usr/share/elevenfive" -type f | wc -l)" -eq 2 ] || fail "more than two shipped files"
before=$(sums)

cli=$place/usr/bin/elevenfive-cli
"$cli" value 3900 7 2>>"$place/log" || fail "the first start failed"
own=$place/home/data/elevenfive
[ -s "$own/elevenfive.dat" ] || fail "no packed data file in the user's folder"
cmp -s "$own/TJmode.tjmod" "$place/usr/share/elevenfive/TJmode.tjmod" || fail "the template is not the shipped one"
[ "$("$cli" sql "SELECT VALUE FROM 过滤条件 WHERE ID = 3900")" = $'VALUE\n7' ] || fail "the change is not there"
"$cli" user logon 张三 pw --create 2>>"$place/log" || fail "logon failed"
"$cli" conditions export "$place/set.Vorex" 2>>"$place/log" || fail "export failed"
cmp -s "$own/TJmode.tjmod" "$place/set.Vorex" || fail "the exported file is no copy of the filled template"
[ -s "$own/张三.uVorex" ] || fail "no user's file"
if [ -x "$build/bin/elevenfive-page" ]; then # which is not built where the web engine is missing
  [ -x "$place/usr/libexec/elevenfive/elevenfive-page" ] || fail "not installed: libexec/elevenfive/elevenfive-page"
  "$cli" source set 开奖网站 http://127.0.0.1:47111 2>>"$place/log" || fail "source set failed"
  "$cli" game use 1 2>>"$place/log" || fail "game use failed"
  "$cli" history update >"$place/update" 2>&1 && fail "an update without a server passed"
  grep -q 防火墙 "$place/update" || { cat "$place/update" && fail "the installed program does not reach its page process"; }
fi
[ "$(sums)" = "$before" ] || fail "the installed files have changed"
[ "$failed" -eq 0 ] || cat "$place/log"
exit $failed
