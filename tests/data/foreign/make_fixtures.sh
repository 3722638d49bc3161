#!/usr/bin/env bash
# Second half of the fixture recipe (see make_fixtures.py): gnumeric writes the same workbook as a
# legacy BIFF8 .xls and as its own .xlsx, defined names included.
set -euo pipefail
cd "$(dirname "$0")"
/usr/bin/python3 make_fixtures.py
ssconvert --export-type=Gnumeric_Excel:excel_biff8 openpyxl_book.xlsx gnumeric_book.xls 2>/dev/null
ssconvert --export-type=Gnumeric_Excel:xlsx2 openpyxl_book.xlsx gnumeric_book.xlsx 2>/dev/null
