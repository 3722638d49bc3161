#!/usr/bin/env bash
# vesk-cli lifetable: the tool's Generate from a CSV, numbers at full precision, and its refusals.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
fail() { echo "FAIL: $*" >&2; exit 1; }
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
printf 'age,rate\n0,0.05\n1,0.01\n5,0.002\n10,0.05\n' > "$tmp/r.csv"

# The Standard table worked by hand in life_table_test.cpp: e0 27.29032462686567, e10 20.
out=$(cd "$tmp" && "$cli" lifetable r.csv --method 0 --imr 50 --radix 1000)
[ "$(echo "$out" | head -1)" = "X,Mx,n,ax,qx,px,lx,dx,Lx,mx,Tx,Ex" ] || fail "heads: $(echo "$out" | head -1)"
[ "$(echo "$out" | wc -l)" -eq 5 ] || fail "rows: $out"
echo "$out" | awk -F, 'NR==2 { if ($5 != 0.05 || $7 != 1000 || $9 != 961.5 || $12 < 27.2903246268656 || $12 > 27.2903246268657) exit 1 }' \
    || fail "age 0: $(echo "$out" | sed -n 2p)"
echo "$out" | awk -F, 'NR==5 { if ($3 != "W" || $5 != 1 || $6 != 0) exit 1 }' || fail "open row: $(echo "$out" | sed -n 5p)"
# Full precision: the shortest text of each double, not the tool's two decimals.
echo "$out" | sed -n 4p | grep -q ',0.009950248756218907,' || fail "q5 at full precision: $(echo "$out" | sed -n 4p)"

# Rates per 1000 through --asdr-denominator give the same table.
printf 'age,rate\n0,50\n1,10\n5,2\n10,50\n' > "$tmp/per1000.csv"
[ "$("$cli" lifetable "$tmp/per1000.csv" --method 0 --imr 50 --radix 1000 --asdr-denominator 1000)" = "$out" ] \
    || fail "asdr denominator"

# Keyfitz and Reed-Merrell have a thirteenth column.
printf 'age,rate,pop\n0,0.05,100\n1,0.01,400\n5,0.002,500\n10,0.001,480\n15,0.05,2000\n' > "$tmp/k.csv"
"$cli" lifetable "$tmp/k.csv" --method 1 --imr 50 --pgr 1 --kf-lower 5 --kf-upper 5 | head -1 | grep -q ',Ex,POP$' \
    || fail "Keyfitz heads"
"$cli" lifetable "$tmp/k.csv" --method 2 --imr 50 | head -1 | grep -q ',Ex,RSlx$' || fail "Reed-Merrell heads"

# A Coale-Demeny model's rates give back its e0 within a quarter of a year (Standard).
"$cli" cdmlt --family West --sex F --level 15 > "$tmp/cd.csv"
awk -F, 'NR==1 { print "age,rate"; next } { print $1 "," $7 }' "$tmp/cd.csv" > "$tmp/cdrates.csv"
# The model's open row has no nmx of its own: l95 / T95.
awk -F, 'NR==22 { printf "95,%.17g\n", $4 / $9 }' "$tmp/cd.csv" > "$tmp/open.txt"
sed -i '$d' "$tmp/cdrates.csv"; cat "$tmp/open.txt" >> "$tmp/cdrates.csv"
q0=$(awk -F, 'NR==2 { printf "%d", $3 * 1000 + 0.5 }' "$tmp/cd.csv")
e0=$("$cli" lifetable "$tmp/cdrates.csv" --method 0 --imr "$q0" --radix 100000 | awk -F, 'NR==2 { print $12 }')
awk -v e="$e0" 'BEGIN { if (e < 54.75 || e > 55.25) exit 1 }' || fail "model e0 $e0"

expect_error() {
    local pattern=$1; shift
    local msg
    if msg=$("$cli" lifetable "$@" 2>&1 >/dev/null); then fail "accepted: $*"; fi
    echo "$msg" | grep -qF -- "$pattern" || fail "message for $*: $msg"
}
expect_error "--method is 0, 1, 2 or 3" "$tmp/r.csv" --method 7
expect_error "Unable to compute life table: Please check the source data:" "$tmp/r.csv" --method 1
expect_error "Enter proper values for IMR and IMR Dinominator" "$tmp/r.csv" --imr 50 --imr-denominator 0
printf 'age,rate\n0,0.05\n1,0.01\n5,0.002\n10,0\n' > "$tmp/open0.csv"
expect_error "Division by zero; Unable to compute life table:" "$tmp/open0.csv"
printf 'age,rate\n0,0.05\n1,\n5,0.002\n10,0.05\n' > "$tmp/gap.csv"
expect_error "Make sure that you have entered data on the grid:" "$tmp/gap.csv"
expect_error "Enter proper values for IMR and IMR Dinominator" "$tmp/r.csv" --imr 2000
expect_error "The ASDR (50) for the BAI 0 divided by" "$tmp/per1000.csv" --asdr-denominator 10
expect_error "Enter valid Lower limit for Keyfitz method:" "$tmp/r.csv" --kf-lower 12
expect_error "cannot read the settings file" "$tmp/r.csv" --settings "$tmp/missing.stp"
expect_error "--radix" "$tmp/r.csv" --radix -1
"$cli" lifetable --help | grep -q "Reed-Merrell" || fail "help"
echo "lifetable: all checks passed"
