#!/usr/bin/env bash
# vesk-cli sprague: the published example through the command line, and its refusals.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
fail() { echo "FAIL: $*" >&2; exit 1; }
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
ref="$VESK_SOURCE_DIR/data/refdata"

awk -F, 'NR==1 { print "value"; next } { print $4 }' "$ref/sprague_test_demotools_input.csv" > "$tmp/in.csv"
"$cli" sprague "$tmp/in.csv" --keep-open > "$tmp/out.csv"
[ "$(head -1 "$tmp/out.csv")" = "age,value" ] || fail "head"
[ "$(wc -l < "$tmp/out.csv")" -eq 102 ] || fail "rows: $(wc -l < "$tmp/out.csv")"
# Every single year within 1e-6 of the published value.
paste -d, <(tail -n +2 "$tmp/out.csv") <(tail -n +2 "$ref/sprague_test_demotools_expected.csv") |
    awk -F, '{ d = $2 - $4; if (d < 0) d = -d; if ($1 != $3 || d > 1e-6) { print "age " $1 ": " $2 " vs " $4; bad = 1 } }
             END { exit bad }' || fail "published example"
# Without --keep-open the open group is dropped.
[ "$("$cli" sprague "$tmp/in.csv" | wc -l)" -eq 101 ] || fail "keep-open off"

expect_error() {
    local code=$1 pattern=$2; shift 2
    local msg rc=0
    msg=$("$cli" sprague "$@" 2>&1 >/dev/null) || rc=$?
    [ "$rc" -eq "$code" ] || fail "exit $rc (wanted $code) for $*: $msg"
    echo "$msg" | grep -qF -- "$pattern" || fail "message for $*: $msg"
}
printf 'value\n10000\n0\n0\n0\n0\n0\n5\n' > "$tmp/jump.csv"
expect_error 3 "came out negative" "$tmp/jump.csv"
printf 'value\n1\n2\n3\n4\n5\n' > "$tmp/short.csv"
expect_error 2 "at least six are needed" "$tmp/short.csv"
printf 'value\n1\n2\nthree\n4\n5\n6\n' > "$tmp/text.csv"
expect_error 2 "'three' is no number" "$tmp/text.csv"
printf '[PANELS]\n' > "$tmp/Vesk.stp"
expect_error 2 "has no five panels" "$tmp/in.csv" --settings "$tmp/Vesk.stp"
"$cli" sprague --help | grep -q "Table C-5" || fail "help"
echo "sprague: all checks passed"
