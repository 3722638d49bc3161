#pragma once
// Legacy Excel workbooks (.xls, BIFF5 and BIFF8), read only: freexl gives the sheets and their cells
// (in a child process: inputs/xls_workbook.h), and the program's own small reader of the compound
// file gives the defined names (NAME records with a three-dimensional area or cell reference), since
// freexl does not. A defined name serves
// as the table; where the workbook has no name of that name, a sheet's name stands for its used
// area. Writing goes to .xlsx: an .xls path to write to is refused with a message that says so.

#include "inputs/foreign_driver.h"
#include "inputs/xlsx_file.h"

namespace vesk {

struct XlsName {
    QString name;
    SheetArea area; // area.sheet: index in the workbook's sheet order
};

// The defined names of a BIFF8 workbook; empty for other files or on any damage.
QList<XlsName> readXlsNames(const QString& path);

// The driver of .xls files. Opening checks the compound file in this process; a table is read by
// the child reader (`vesk-cli xls-table FILE NAME`, through freexl) and handed back as a table
// stream, so that a damaged workbook ends the child, never the program. Any failure is refused
// with a message that names the file.
class XlsDriver : public ForeignDriver {
public:
    bool open(const QString& path, bool forWriting) override;
    bool hasTable(const QString& name) override;
    bool createTable(const TableDef& def) override;
    bool appendRows(const QString& table, const CellArray& rows) override;
    std::optional<ForeignTable> readTable(const QString& name) override;
    bool close() override;

private:
    // The table `name` as the child read it; std::nullopt when the workbook has none of that name.
    // A failure of the child is set as the foreign error, and stays the answer for this file.
    const std::optional<ForeignTable>& childTable(const QString& name);

    QString path_;
    QString lastName_;
    std::optional<ForeignTable> lastTable_;
    bool failed_ = false;
};

} // namespace vesk
