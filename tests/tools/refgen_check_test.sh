#!/usr/bin/env bash
# The committed numbers are what the generator makes from the reference data, byte for byte: the
# blocks of data/Vesk.stp.in, the importable standard tables and the generated notes. A copy of the
# data folder with its blocks cut off (or altered) fails the check and is restored by a regeneration.
set -euo pipefail
gen="$VESK_BIN_DIR/vesk-refgen"
fail() { echo "FAIL: $*" >&2; exit 1; }

"$gen" --check --source "$VESK_SOURCE_DIR" || fail "the committed data differ from the generated ones"

tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
cp -r "$VESK_SOURCE_DIR/data" "$tmp/data"
"$gen" --check --source "$tmp" || fail "the copy does not check"

# Cut everything after the [LIFE TABLE TYPE]= line, as in a settings file holding only its header.
line=$(grep -n -a '^\[LIFE TABLE TYPE\]=' "$tmp/data/Vesk.stp.in" | cut -d: -f1)
head -n "$line" "$VESK_SOURCE_DIR/data/Vesk.stp.in" > "$tmp/data/Vesk.stp.in"
if "$gen" --check --source "$tmp" 2>/dev/null; then fail "--check passed a file without blocks"; fi
"$gen" --source "$tmp" 2>/dev/null || fail "regeneration failed"
cmp "$tmp/data/Vesk.stp.in" "$VESK_SOURCE_DIR/data/Vesk.stp.in" || fail "regenerated file differs"

# One changed digit in a standard table is caught.
sed -i 's/|1.4611/|1.4612/' "$tmp/data/Vesk.stp.in"
if "$gen" --check --source "$tmp" 2>/dev/null; then fail "--check passed an altered value"; fi

# The header lines are the settings' own: the generator leaves them as they are.
sed -i 's/^\[LIFE TABLE TYPE\]=1/[LIFE TABLE TYPE]=3/' "$tmp/data/Vesk.stp.in"
"$gen" --source "$tmp" 2>/dev/null || fail "regeneration failed"
grep -a -q $'^\\[LIFE TABLE TYPE\\]=3\r$' "$tmp/data/Vesk.stp.in" || fail "header line changed"
echo "refgen: all checks passed"
