#pragma once
// Legacy Excel workbooks (.xls, BIFF5 and BIFF8), read only: freexl gives the sheets and their cells,
// and the program's own small reader of the compound file gives the defined names (NAME records
// with a three-dimensional area or cell reference), since freexl does not. A defined name serves
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

class XlsDriver : public ForeignDriver {
public:
    ~XlsDriver() override;
    bool open(const QString& path, bool forWriting) override;
    bool hasTable(const QString& name) override;
    bool createTable(const TableDef& def) override;
    bool appendRows(const QString& table, const CellArray& rows) override;
    std::optional<ForeignTable> readTable(const QString& name) override;
    bool close() override;

private:
    std::optional<SheetArea> findTable(const QString& name);
    Cell cellAt(unsigned row, unsigned short col) const;
    const void* handle_ = nullptr;
    QStringList sheets_;
    QList<XlsName> names_;
};

} // namespace vesk
