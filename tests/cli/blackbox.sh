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
env -i LC_ALL=C "$cli" --folder "$folder/彩票" --temp "$folder/彩票" init >"$folder/out" 2>"$folder/err" || failed=1
[ -s "$folder/彩票/elevenfive.dat" ] || { echo "no data file in 彩票" && failed=1; }
[ ! -s "$folder/err" ] || { cat "$folder/err" && failed=1; }

# A reader that goes away does no harm to the data.
"$cli" --folder "$folder" --temp "$folder" batch - <<<$'sql "SELECT * FROM 默认过滤条件"\nsource set 版本公告 kept' 2>/dev/null | head -1 >/dev/null
expect 0 sql "SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"
prints $'地址\nkept'

# A standard output that takes nothing is a failure.
if [ -w /dev/full ]; then
  "$cli" --folder "$folder" --temp "$folder" game list >/dev/full 2>/dev/null
  [ $? -eq 1 ] || { echo "a full output went unnoticed" && failed=1; }
fi

# Killed in the middle of a batch: the next start says so, and the data are those from before it.
expect 0 init --force
expect 0 source set 版本公告 before
mkfifo "$folder/lines"
"$cli" --folder "$folder" --temp "$folder" batch - <"$folder/lines" >"$folder/out" 2>"$folder/err" &
killed=$!
exec 3>"$folder/lines"
printf 'source set 版本公告 half\nsql "SELECT 地址 FROM 数据源 WHERE 地址 = \047half\047"\n' >&3
for _ in $(seq 200); do
  grep -qx half "$folder/out" && break
  sleep 0.1
done
grep -qx half "$folder/out" || { echo "the batch did not get to its second line" && failed=1; }
kill -KILL "$killed"
wait "$killed" 2>/dev/null
[ $? -eq 137 ] || { echo "the batch had ended before it was killed" && failed=1; }
exec 3>&-
expect 0 sql "SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"
prints $'地址\nbefore'
grep -q '^\[info\] .*上次没有正常退出，当时没有保存的数据留在 .*/Bak/' "$folder/err" || { cat "$folder/err" && failed=1; }
ls "$folder"/Bak/* >/dev/null || failed=1
expect 0 sql "SELECT COUNT(*) AS n FROM 过滤条件"
prints $'n\n1280'
[ ! -s "$folder/err" ] || { echo "the notice came twice" && cat "$folder/err" && failed=1; }

# The page for the users tells what the help tells.
manual=$(dirname "$0")/../../docs/cli.md
expect 0 --help
if ! sed -n '/^## Every command/,$p' "$manual" | sed -n '/^```text$/,/^```$/p' | sed '1d;$d' | diff - <(sed 1,3d "$folder/out"); then
  echo "docs/cli.md and --help differ" && failed=1
fi

# The road of a run, in one session.
expect 0 init --force
"$cli" --folder "$folder" --temp "$folder" batch - >"$folder/out" 2>"$folder/err" <<'EOF' || { cat "$folder/err" && failed=1; }
history add 11031510 9 8 7 6 5 --date 2011-03-15
# six numbers, two of them bankers: C(4, 3) combinations
pick clear
pick 1 2
pick 2 2
pick 3 1
pick 4 1
pick 10 1
pick 11 1
expand 11031511
use 70 0
use 46 0
use 47 0
use 7 0
use 8 0
match 0 1 1
run 11031511
EOF
tail -1 "$folder/out" | grep -q '^全部过滤缩水完成,余：４ 注$' || { cat "$folder/out" && failed=1; }
expect 0 sql "SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表 ORDER BY 序号"
prints $'号码1\t号码2\t号码3\t号码4\t号码5\n1\t2\t3\t4\t10\n1\t2\t3\t4\t11\n1\t2\t3\t10\t11\n1\t2\t4\t10\t11'
expect 1 history import "$folder/none.txt"
expect 1 check 11031599

exit $failed
