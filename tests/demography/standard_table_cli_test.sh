#!/usr/bin/env bash
# vesk-cli standard-table: the tables of the settings file as CSV, a user table file checked as the
# import checks it, and clear refusals.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
stp="$VESK_BIN_DIR/Vesk.stp"
fail() { echo "FAIL: $*" >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The KRO table of the delivered settings: 101 single years, e(0) of West level 26 female 82.5 and
# level 25 female 80.0 for the males.
out=$("$cli" standard-table --table KRO --settings "$stp")
[ "$(echo "$out" | head -1)" = "age,female,male" ] || fail "header: $(echo "$out" | head -1)"
[ "$(echo "$out" | wc -l)" -eq 102 ] || fail "expected 102 lines"
[ "$(echo "$out" | sed -n 2p)" = "0,82.5,80" ] || fail "age 0: $(echo "$out" | sed -n 2p)"
[ "$(echo "$out" | tail -1 | cut -d, -f1)" = "100" ] || fail "last age: $(echo "$out" | tail -1)"
# Every number as the settings file writes it, its trailing zeros aside.
kro_f=$(grep -A3 '^\[Standard Life Table-KRO\]' "$stp" | grep '^\[EXF\]:' | tr -d '\r' | cut -c7- | tr '|' '\n' \
    | awk '{ printf "%s\n", $1 + 0 }')
[ "$(echo "$out" | tail -n +2 | cut -d, -f2 | awk '{ printf "%s\n", $1 + 0 }')" = "$kro_f" ] || fail "KRO females"

# WHO, one sex; case-blind names.
out=$("$cli" standard-table --table who --sex m --settings "$stp")
[ "$(echo "$out" | head -1)" = "age,male" ] || fail "WHO header: $(echo "$out" | head -1)"
[ "$(echo "$out" | sed -n 2p)" = "0,80" ] || fail "WHO age 0: $(echo "$out" | sed -n 2p)"

# Vesk.stp beside vesk-cli when no --settings is given.
[ "$("$cli" standard-table --table KRO --sex F | sed -n 2p)" = "0,82.5" ] || fail "default settings"

expect_error() {
    local code=$1 pattern=$2; shift 2
    local msg rc=0
    msg=$("$cli" standard-table "$@" 2>&1 >/dev/null) || rc=$?
    [ "$rc" -eq "$code" ] || fail "exit $rc instead of $code for: $*"
    echo "$msg" | grep -qF -- "$pattern" || fail "message for $*: $msg"
}

# No user table in the delivered settings.
expect_error 1 "holds no user defined life table ([User Defined Life Table])" --table USER --settings "$stp"
# One added to a copy of it.
cp "$stp" "$work/user.stp"
printf '[User Defined Life Table]\r\n[BAI]:0|1|2\r\n[EXM]:70.25|69.5|1e-300\r\n[EXF]:75|0.30000000000000004|0\r\n' \
    >> "$work/user.stp"
out=$("$cli" standard-table --table USER --settings "$work/user.stp")
[ "$out" = "$(printf 'age,female,male\n0,75,70.25\n1,0.30000000000000004,69.5\n2,0,1e-300')" ] \
    || fail "user table: $out"

# A shipped table checked as the import checks it.
out=$("$cli" standard-table --import "$VESK_SOURCE_DIR/data/standard_tables/who_ghe_frontier.txt" --sex F)
[ "$(echo "$out" | wc -l)" -eq 102 ] || fail "shipped table lines"
[ "$(echo "$out" | sed -n 2p)" = "0,91.94" ] || fail "shipped age 0: $(echo "$out" | sed -n 2p)"
# Ages 0 to 99 fail the check, with the import's three lines.
head -c 1000000 "$VESK_SOURCE_DIR/data/standard_tables/who_ghe_frontier.txt" \
    | sed -e 's/|100\r\?$//' -e '/^\[EX[FM]\]:/s/|[^|]*$//' > "$work/short.txt"
expect_error 1 "The User defined Life table failed to satisfy the following Consistency Checks " --import "$work/short.txt"
msg=$("$cli" standard-table --import "$work/short.txt" 2>&1 >/dev/null || true)
echo "$msg" | grep -qxF " The last age is 100 ? " || fail "the checks: $msg"
expect_error 1 "The data could not be imported sucessfully because the file $work/none.txt does not exist." \
    --import "$work/none.txt"

expect_error 2 "unknown table 'XYZ'" --table XYZ --settings "$stp"
expect_error 2 "--sex takes F or M, not 'X'" --table KRO --sex X --settings "$stp"
expect_error 2 "one of them" --table KRO --import "$work/short.txt"
expect_error 2 "one of them"
expect_error 1 "cannot read the settings file $work/absent.stp" --table KRO --settings "$work/absent.stp"
"$cli" standard-table --help | grep -q "KRO|WHO|USER" || fail "help"
echo "standard-table: all checks passed"
