#!/usr/bin/env bash
# vesk-cli export and import --what on the demonstration study: the dictionaries, units and data go
# out in each kind of file and come back row for row; a file cut short changes nothing and exits 1.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
cp "$VESK_BIN_DIR/demo.vdb" demo.vdb
chmod u+w demo.vdb
tables="_DctBDMGrps _DctBDMSGrps _DctBDMClstr _DctBDM _DctBDMSqla _MapBDMSqla _DctBPU _DctPAG1 _DctPAG2
        DatPOP DatASDR DatCSM DatADW DatDwt DatADWSqla DatDmgphyPrmtrs"
dump() { for t in $tables; do echo "== $t"; "$cli" convert demo.vdb - --table "$t" | sort; done; }
dump > before.txt

for kind in txt WK1 xlsx dbf vdb; do
    mkdir "$kind"
    "$cli" export demo.vdb --what dictionaries --out "$kind/dictionaries.$kind" 2>>log.txt
    "$cli" export demo.vdb --what units --out "$kind/units.$kind" 2>>log.txt
    "$cli" export demo.vdb --what data --out "$kind/data.$kind" 2>>log.txt
    # Each import answers its questions Yes: the rows there are replaced by the file's.
    "$cli" import demo.vdb --what dictionaries "$kind/dictionaries.$kind" 2>>log.txt
    "$cli" import demo.vdb --what units "$kind/units.$kind" 2>>log.txt
    "$cli" import demo.vdb --what data "$kind/data.$kind" 2>>log.txt
    dump > after.txt
    diff -q before.txt after.txt > /dev/null || { echo "$kind: the tables differ after the round trip"; diff before.txt after.txt | head; exit 1; }
done
grep -q 'Study data imported successfully: 18571 rows from 49 tables' log.txt

# One unit's data alone.
"$cli" export demo.vdb --what data --bpu SLO --year 2020 --out slo.xlsx 2>log.txt
grep -q '(All Study Data) exported successfully: 7 tables written' log.txt

# A dictionaries file cut short in a row of the causes: nothing changes, exit 1, the message of the
# table. A units file cut short in the rows of the units: the recover routine's message.
off=$(grep -b -o 'Malaria' txt/dictionaries.txt | head -1 | cut -d: -f1)
head -c $((off + 3)) txt/dictionaries.txt > cut.txt
if "$cli" import demo.vdb --what dictionaries cut.txt 2>err.txt; then echo "a file cut short was imported"; exit 1; fi
grep -q 'Unable to update the table _DctBDM' err.txt
{ grep -v '^LAK;' txt/units.txt; } | sed 's/^MER;Merino;2;CEN/MER;Mer/' > cut.txt
if "$cli" import demo.vdb --what units cut.txt 2>err.txt; then echo "a units file cut short was imported"; exit 1; fi
grep -q 'An error occured while importing the population schema' err.txt
dump > after.txt
diff -q before.txt after.txt > /dev/null || { echo "a failed import changed the tables"; exit 1; }

# Wrong arguments.
if "$cli" export demo.vdb --what everything --out x.txt 2>err.txt; then echo "an unknown --what was accepted"; exit 1; fi
grep -q -- '--what' err.txt
if "$cli" import nothing.vdb --what units units.txt 2>err.txt; then echo "a missing study was accepted"; exit 1; fi
grep -q 'no study file at nothing.vdb' err.txt
"$cli" export --help | grep -q 'Usage: vesk-cli export STUDY.vdb --what WHAT'
"$cli" import --help | grep -q 'vesk-cli import STUDY.vdb --what WHAT'
"$cli" import --help | grep -q 'lifetable     the user defined standard life table'

# The user defined standard life table: into a settings file, out of it in each kind, and back.
cp "$VESK_BIN_DIR/Vesk.stp" Vesk.stp
"$cli" import demo.vdb --what lifetable "$VESK_SOURCE_DIR/data/standard_tables/who_ghe_frontier.txt" --settings Vesk.stp 2>log.txt
"$cli" standard-table --table USER --settings Vesk.stp > user.csv
for kind in txt WK1 xlsx vdb; do
    "$cli" export demo.vdb --what lifetable --out "user.$kind" --settings Vesk.stp 2>log.txt
    grep -q 'User Defined Standard Life Table exported successfully' log.txt
    [ "$("$cli" standard-table --import "user.$kind" --settings Vesk.stp)" = "$(cat user.csv)" ] ||
        { echo "the user table through $kind differs"; exit 1; }
done
if "$cli" export demo.vdb --what lifetable --out none.txt 2>err.txt; then echo "no user table was exported"; exit 1; fi
grep -q 'holds no user defined standard life table' err.txt
