#!/usr/bin/env bash
# vesk-cli convert: a table goes from CSV through every kind of foreign file and back unchanged.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
printf 'Code,Name,Count,Rate\nA01,Tuberculosis,12,0.125\nA02,Zoë,-3,2.5\n' > in.csv
expected=$(cat in.csv)

"$cli" convert in.csv t.wk1 --out-table DCT
"$cli" convert t.wk1 t.xlsx --table dct --out-table Causes
"$cli" convert t.xlsx t.vdb --table CAUSES
"$cli" convert t.vdb t.dbf --table Causes
"$cli" convert t.dbf out.csv
got=$(cat out.csv)
[ "$got" = "$expected" ] || { echo "round trip differs:"; echo "$got"; exit 1; }

# Standard output, and a text file without a header row.
"$cli" convert t.dbf - | head -1 | grep -qx 'Code,Name,Count,Rate'
"$cli" convert in.csv t.txt
[ "$(head -1 t.txt | tr -d '\r')" = "A01;Tuberculosis;12;0.125" ] || { echo "text file: $(head -1 t.txt)"; exit 1; }
"$cli" convert t.txt - | head -1 | grep -qx 'Field0,Field1,Field2,Field3'

# Failures say what is wrong and exit non-zero.
if "$cli" convert t.xlsx x.csv 2>err.txt; then echo "a workbook without --table was accepted"; exit 1; fi
grep -q -- '--table' err.txt
if "$cli" convert t.xlsx x.csv --table Nothing 2>err.txt; then echo "a missing table was accepted"; exit 1; fi
grep -q 'holds no table Nothing' err.txt
if "$cli" convert in.csv t.wk1 --out-table DCT 2>err.txt; then echo "a second table DCT was accepted"; exit 1; fi
grep -q "already exists" err.txt
if "$cli" convert in.csv out.xls 2>err.txt; then echo "writing .xls was accepted"; exit 1; fi
grep -q "xlsx" err.txt
"$cli" convert --help | grep -q 'Usage: vesk-cli convert IN OUT'

# Text beyond code page 850 in a Lotus worksheet, and the one loss of a worksheet that the help states.
printf 'k,t\n1,一二三\n2,ĀBC\n' > u.csv
"$cli" convert u.csv u.wk1 --out-table U
[ "$("$cli" convert u.wk1 - --table U)" = "$(cat u.csv)" ] || { echo "wk1: $("$cli" convert u.wk1 - --table U)"; exit 1; }
"$cli" convert --help | grep -q 'worksheet (.wk1, .xlsx) keeps the first 255 characters of a text'
echo "convert: ok"
