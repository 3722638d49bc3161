#!/usr/bin/env bash
# vesk-cli cdmlt: the built program prints a model life table and refuses bad arguments.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
fail() { echo "FAIL: $*" >&2; exit 1; }

out=$("$cli" cdmlt --family West --sex F --level 25)
[ "$(echo "$out" | head -1)" = "age,n,nqx,lx,ndx,nLx,nmx,nax,Tx,ex" ] || fail "header: $(echo "$out" | head -1)"
[ "$(echo "$out" | wc -l)" -eq 22 ] || fail "expected 22 lines"
# e0 of West female level 25 is 79.9991, e95 2.3116; the open group has no width.
echo "$out" | awk -F, 'NR==2 { if ($1 != 0 || $2 != 1 || $10 < 79.9990 || $10 > 79.9992) exit 1 }' \
    || fail "age 0 row: $(echo "$out" | sed -n 2p)"
echo "$out" | awk -F, 'NR==22 { if ($1 != 95 || $2 != "" || $3 != 1 || $10 < 2.3115 || $10 > 2.3117) exit 1 }' \
    || fail "open row: $(echo "$out" | sed -n 22p)"

# Case-blind family and sex; North male level 1 has e0 17.5514.
"$cli" cdmlt --family north --sex m --level 1 | awk -F, 'NR==2 { if ($10 < 17.551 || $10 > 17.552) exit 1 }' \
    || fail "North M 1"

expect_error() {
    local pattern=$1; shift
    local msg
    if msg=$("$cli" cdmlt "$@" 2>&1 >/dev/null); then fail "accepted: $*"; fi
    echo "$msg" | grep -q "$pattern" || fail "message for $*: $msg"
}
expect_error "unknown family 'Western'" --family Western --sex F --level 3
expect_error "unknown sex 'X'" --family West --sex X --level 3
expect_error "level '26' is not a whole number from 1 to 25" --family West --sex F --level 26
expect_error "level '2.5'" --family West --sex F --level 2.5
expect_error "level '0'" --family West --sex F --level 0
expect_error "are all required" --family West --sex F
expect_error "could not be read" --family West --sex F --level 3 --data /nonexistent
"$cli" cdmlt --help | grep -q "West, North, East or South" || fail "help"
echo "cdmlt: all checks passed"
