#!/usr/bin/env bash
# The companion as its users meet it: a process with a folder, streams and an exit status.
#   blackbox.sh PATH_OF_ELEVENFIVE_CLI
set -u
cli=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=0

# expect STATUS WORDS...: runs a call and compares its exit status; streams stay in $folder/out and $folder/err.
expect() {
  local wanted=$1
  shift
  "$cli" --folder "$folder" --temp "$folder" "$@" >"$folder/out" 2>"$folder/err" </dev/null
  local status=$?
  if [ "$status" -ne "$wanted" ]; then
    echo "status $status instead of $wanted: $*"
    cat "$folder/err"
    failed=1
  fi
}

# prints TEXT: compares what the last call wrote on standard output.
prints() {
  if [ "$(cat "$folder/out")" != "$1" ]; then
    echo "printed:" && cat "$folder/out" && echo "instead of: $1"
    failed=1
  fi
}

expect 1 rows
expect 2 init --forced
[ ! -e "$folder/elevenfive.dat" ] || { echo "wrong words made a data file" && failed=1; }
expect 0 init
prints ""
expect 1 init
expect 0 init --force
expect 0 sql "SELECT VALUE FROM 过滤条件 WHERE ID = 3900"
prints $'VALUE\n5'
expect 1 sql "DELETE FROM 过滤条件"
expect 2 rows abc
expect 2
expect 0 rows --help
expect 0 --help

# No locale: file names and output are UTF-8 all the same, and nothing else is said.
mkdir "$folder/彩票"
env -i LC_ALL=C "$cli" --folder "$folder/彩票" init >"$folder/out" 2>"$folder/err" || failed=1
[ -s "$folder/彩票/elevenfive.dat" ] || { echo "no data file in 彩票" && failed=1; }
[ ! -s "$folder/err" ] || { cat "$folder/err" && failed=1; }

# A reader that goes away does no harm to the data.
"$cli" --folder "$folder" batch - <<<$'sql "SELECT * FROM 默认过滤条件"\nsource set 版本公告 kept' 2>/dev/null | head -1 >/dev/null
expect 0 sql "SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"
prints $'地址\nkept'

# A standard output that takes nothing is a failure.
if [ -w /dev/full ]; then
  "$cli" --folder "$folder" game list >/dev/full 2>/dev/null
  [ $? -eq 1 ] || { echo "a full output went unnoticed" && failed=1; }
fi

exit $failed
