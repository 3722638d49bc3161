#pragma once
// A legacy Excel workbook (.xls, BIFF5 and BIFF8) opened in this process through freexl: its sheets
// and cells, and the defined names from the program's own reader of the compound file. freexl can
// fault on a damaged file, so only the child reader (`vesk-cli xls-table`) opens a workbook this
// way; the program reads .xls files through XlsDriver, which runs that child.

#include "inputs/xls_file.h"

namespace vesk {

class XlsWorkbook {
public:
    ~XlsWorkbook();
    // False with lastForeignError() telling why.
    bool open(const QString& path);
    // The table `name`: a defined name, else a sheet's name standing for its used area.
    std::optional<ForeignTable> readTable(const QString& name);
    bool close();

private:
    std::optional<SheetArea> findTable(const QString& name);
    Cell cellAt(unsigned row, unsigned short col) const;
    const void* handle_ = nullptr;
    QStringList sheets_;
    QList<XlsName> names_;
};

} // namespace vesk
