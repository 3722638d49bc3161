#!/usr/bin/env bash
# vesk-cli convert brings a table of ugly values back whole through every kind of file that keeps
# field names and types (database file, WK1, XLSX, dBase): numbers of every scale, integers beyond
# 2^53 (kept as text), codes with leading zeros, ";" and quotes, line breaks, leading blanks, CJK,
# Cyrillic, Arabic and emoji, and dates from the year 100 to 9999. A number in a column of texts
# keeps its every digit. A text ending in blanks, which a dBase table cannot keep, is refused.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
fail() { echo "$1"; shift; for f in "$@"; do echo "--- $f"; cat "$f"; done; exit 1; }
cp "$VESK_TEST_DATA/foreign/every_value.csv" all.csv
printf 'k,v\na,9007199254740993\nb,x\nc,12345.678901234567\n' > mix.csv
for kind in vdb wk1 xlsx dbf; do
  for table in all mix; do
    if [ "$kind" = dbf ]; then out=$table.dbf; write=(); read=(); else
      out=$table.$kind; write=(--out-table T); read=(--table T); fi
    "$cli" convert $table.csv "$out" "${write[@]}"
    "$cli" convert "$out" back.csv "${read[@]}"
    cmp -s $table.csv back.csv || fail "$table.csv changed through .$kind" $table.csv back.csv
  done
done
# What a dBase table cannot bring back is refused, naming the value, and no table is left.
printf 'k\nends in a blank \n' > blank.csv
if "$cli" convert blank.csv blank.dbf 2>err.txt; then fail "a trailing blank went into a dBase table" err.txt; fi
grep -q "'ends in a blank '" err.txt || fail "the refusal does not name the text" err.txt
[ ! -e blank.dbf ] || fail "a refused dBase table was left behind"
echo ok
