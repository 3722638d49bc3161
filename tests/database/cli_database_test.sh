#!/usr/bin/env bash
# vesk-cli create-db and check-db: a new file passes, a file changed by hand fails with the log lines.
set -u
cli="$VESK_BIN_DIR/vesk-cli"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

"$cli" create-db "$work/a.vdb" || fail "create-db"
[ -s "$work/a.vdb" ] || fail "no file made"
out=$("$cli" check-db "$work/a.vdb") || fail "a new file does not pass: $out"
[ -z "$out" ] || fail "a new file printed: $out"

"$cli" create-db "$work/a.vdb" 2>/dev/null && fail "an existing file was overwritten"
"$cli" create-db --replace "$work/a.vdb" || fail "create-db --replace"

"$cli" check-db "$work/none.vdb" 2>/dev/null; [ $? -eq 1 ] || fail "a missing file is not exit 1"
"$cli" check-db 2>/dev/null; [ $? -eq 2 ] || fail "a missing argument is not exit 2"

if command -v sqlite3 >/dev/null; then
    sqlite3 "$work/a.vdb" "PRAGMA foreign_keys=OFF; DROP TABLE _DctBDS;
        CREATE TABLE _DctBDS (BDSId SMALLINT, Year SMALLINT DEFAULT 0, BDSTi VARCHAR(75), PAGSch VARCHAR(5), Slct BOOLEAN);"
    out=$("$cli" check-db "$work/a.vdb"); rc=$?
    [ $rc -eq 1 ] || fail "a changed file gives $rc"
    expected=$(printf '%s\n' \
        "Array Properties:   BDSId|_DctBDS|10     Table Properties   :BDSId|_DctBDS|3" \
        "Array Properties:   BDSId|_DctBDS|5     Table Properties   :BDSId|_DctBDS|2" \
        "Array Properties:   Year|_DctBDS|3     Table Properties   :Year|_DctBDS|3 without its rules of kind and range" \
        "Array Properties:   BDSTi|_DctBDS|False     Table Properties   :BDSTi|_DctBDS|True" \
        "Array Properties:   BDSTi|_DctBDS|10     Table Properties   :BDSTi|_DctBDS|10 without its rules of kind and range" \
        "Array Properties:   PAGSch|_DctBDS|False     Table Properties   :PAGSch|_DctBDS|True" \
        "Array Properties:   PAGSch|_DctBDS|10     Table Properties   :PAGSch|_DctBDS|10 without its rules of kind and range" \
        "Array Properties:   Slct|_DctBDS|1     Table Properties   :Slct|_DctBDS|1 without its rules of kind and range")
    [ "$out" = "$expected" ] || fail "differences printed:
$out"
    sqlite3 "$work/a.vdb" "DROP TABLE UserComments;"
    out=$("$cli" check-db "$work/a.vdb")
    last=$(printf '%s\n' "$out" | tail -n 1)
    [ "$last" = "The table UserComments is not present in the VESK Database. Please update the VESK Database and run the application." ] \
        || fail "missing table: $last"
fi
echo "cli database: ok"
