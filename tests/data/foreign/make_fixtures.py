#!/usr/bin/env python3
"""Makes the foreign-file fixtures that other programs wrote. Run from this folder:

    /usr/bin/python3 make_fixtures.py     # needs python3-openpyxl
    ./make_fixtures.sh                     # the rest, with gnumeric's ssconvert

openpyxl_book.xlsx  written by openpyxl: shared strings, a custom date format, a date-time,
                    Booleans, a workbook-level defined name DCTTBL over Causes!$A$1:$G$4 and a
                    sheet "Life" without a name.
dbase3_hand.dbf     a dBase III table written byte by byte: C, N, D and L fields, Windows-1252
                    text (language driver 0x57), a blank number, a deleted record.
"""
import datetime
import struct

import openpyxl
from openpyxl.workbook.defined_name import DefinedName

wb = openpyxl.Workbook()
ws = wb.active
ws.title = "Causes"
ws.append(["Code", "Description", "Cluster", "Sequela", "Count", "Rate", "Started"])
ws.append(["A01", "Tuberculosis", "C1", True, 12, 0.125, datetime.date(2020, 1, 5)])
ws.append(["A02", "Zoë's fever — ünïcode 中文", "C1", False, -3, 1e-7,
           datetime.datetime(2021, 6, 30, 12, 30)])
ws.append(["A03", None, "C2", None, 40000, 3.14159265358979, None])
ws["G2"].number_format = "yyyy-mm-dd"
ws["G3"].number_format = "dd/mm/yyyy hh:mm"
wb.defined_names.append(DefinedName("DCTTBL", attr_text="Causes!$A$1:$G$4"))
life = wb.create_sheet("Life")
life.append(["Age", "EXF", "EXM"])
life.append([0, 82.5, 80.0])
life.append([1, 81.75, 79.25])
wb.save("openpyxl_book.xlsx")


def dbf_field(name, kind, width, decimals=0):
    return struct.pack("<11sc4xBB14x", name.encode("ascii"), kind.encode("ascii"), width, decimals)


fields = [("CODE", "C", 5, 0), ("NAME", "C", 30, 0), ("CNT", "N", 6, 0), ("RATE", "N", 12, 4),
          ("DAY", "D", 8, 0), ("FLAG", "L", 1, 0)]
records = [
    (b" ", ["A01", "Tuberculosis", "12", "0.1250", "20200105", "T"]),
    (b"*", ["X99", "deleted record", "1", "1.0000", "19991231", "F"]),
    (b" ", ["A02", "Zoë's fever", "-3", "-2.5000", "20210630", "F"]),
    (b" ", ["A03", "", "", "1234.5678", "        ", "?"]),
]
record_length = 1 + sum(f[2] for f in fields)
header_length = 32 + 32 * len(fields) + 1
out = struct.pack("<BBBBIHH20x", 0x03, 126, 1, 5, len(records), header_length, record_length)
out = out[:29] + bytes([0x57]) + out[30:]  # language driver: Windows ANSI 1252
for name, kind, width, decimals in fields:
    out += dbf_field(name, kind, width, decimals)
out += b"\r"
for flag, values in records:
    out += flag
    for (name, kind, width, decimals), value in zip(fields, values):
        raw = value.encode("cp1252")
        out += raw.rjust(width) if kind == "N" else raw.ljust(width)
out += b"\x1a"
with open("dbase3_hand.dbf", "wb") as f:
    f.write(out)
