#pragma once
// A user defined standard life table read from a file of one of the five kinds, as a matrix of rows
// (0..n-1, 0..2): column 0 the age, 1 the expectancy of females, 2 of males, each a number.
//
// The kind comes from the file's extension (foreignKind):
// - a text file holds the block title "[User Defined Tables]" and the three lines "[BAI]:", "[EXF]:"
//   and "[EXM]:", each a list of values separated by "|", read by their tags in any order, as the
//   settings file's tables are (FnReadLTS);
// - a worksheet (.WK1, .xlsx, .xls) holds a range of three columns whose first row names them;
// - a database file holds a table of three fields, [Age] [EXF] [EXM] in that order;
// - a dBase table is a .dbf file of the same three fields.
// A database file and a worksheet are read from the table (range) of the configured name, and when
// they hold none of that name from "LTS". A dBase folder is the database: the table of the
// configured name in the folder of the file chosen is read, and the file chosen itself when the
// folder holds no such table.
//
// Every value of the first three fields must be a finite number: a number cell, or a text that is
// one whole (blanks around it aside). Further fields are not read. Whether the table is a usable
// standard (single years up to 100, falling expectancies) is DoChk's question, not this reader's.

#include "platform/cell_array.h"

#include <QString>
#include <optional>

namespace vesk {

// The table of `path`, or std::nullopt with `reason` saying why, in words that follow "The data
// could not be imported sucessfully because ". `tableName` is the configured name (UsrLTSTblNm).
std::optional<CellArray> readUserLifeTable(const QString& path, const QString& tableName, QString* reason);

} // namespace vesk
