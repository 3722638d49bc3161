#!/usr/bin/env bash
# vesk-cli convert and the kernel commands: numbers come out as the shortest text of the same
# double, codes with a leading zero stay text, --text keeps a named column as text, and a CSV whose
# one wide header would widen every row beyond the file is refused with the file's name.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
fail() { echo "$1"; shift; for f in "$@"; do echo "--- $f"; cat "$f"; done; exit 1; }

# Numbers of every scale come back as the same double, printed shortest.
printf 'Code,Value\nA,123456789012\nB,12345.678901234567\nC,1e-300\nD,1e+300\nE,0.1\nF,-2.5\n' > n.csv
"$cli" convert n.csv t.vdb --out-table N
"$cli" convert t.vdb out.csv --table N
cmp -s n.csv out.csv || fail "numbers differ after a database file" n.csv out.csv

# Codes with a leading zero stay codes.
printf 'Code,Zip,Count\n007,01001,3\n010,00000,0\n-07,0.5,3\n' > z.csv
"$cli" convert z.csv z.vdb --out-table Z
"$cli" convert z.vdb zout.csv --table Z
cmp -s z.csv zout.csv || fail "codes with a leading zero changed" z.csv zout.csv

# --text names a column whose values stay text, even where they read as numbers.
printf 'Id,Amount\n1,1.50\n2,2.0\n' > t.csv
"$cli" convert t.csv t1.vdb --out-table T --text Amount
"$cli" convert t1.vdb tout.csv --table T
cmp -s t.csv tout.csv || fail "--text Amount lost the text" t.csv tout.csv
"$cli" convert t.csv t2.vdb --out-table T
"$cli" convert t2.vdb t2out.csv --table T
printf 'Id,Amount\n1,1.5\n2,2\n' > t2want.csv
cmp -s t2want.csv t2out.csv || fail "without --text the amounts are numbers" t2out.csv
if "$cli" convert t.csv t3.vdb --text Nothing 2>err.txt; then fail "--text of a missing column was accepted"; fi
grep -q "Nothing" err.txt || fail "the message does not name the column" err.txt
"$cli" convert --help | grep -q -- '--text COL' || fail "the help does not tell of --text"

# The kernel commands print the shortest text of the result.
printf 'a,D,K,Beta,C,N\n45,1,0,,,123456789012\n' > p.csv
"$cli" pyld p.csv > pout.csv
got=$(tail -1 pout.csv | awk -F, '{ print $NF }')
[[ "$got" =~ ^[0-9]{12}$ ]] || fail "pyld printed $got, not the whole number" pout.csv
for c in yll iyld pyld; do
  "$cli" $c --help | grep -q 'shortest text' || fail "$c --help does not tell how numbers are printed"
  if "$cli" $c --help | grep -q 'full precision'; then fail "$c --help promises full precision"; fi
done

# One wide header over many short lines is refused, naming the file.
awk 'BEGIN { for (j = 1; j <= 20000; ++j) printf "c%d,", j; print ""; for (i = 0; i < 100000; ++i) print 1 }' > wide.csv
if "$cli" convert wide.csv wide.vdb 2>err.txt; then fail "a wide CSV that would widen every row was accepted"; fi
grep -q "wide.csv" err.txt || fail "the refusal does not name the file" err.txt
if "$cli" pyld wide.csv > /dev/null 2>err.txt; then fail "pyld accepted the wide CSV"; fi
grep -q "wide.csv" err.txt || fail "pyld's refusal does not name the file" err.txt
echo "convert values: ok"
