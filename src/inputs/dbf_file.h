#pragma once
// dBase and FoxPro tables (.dbf), read and written by the program's own code (dbf_format.h,
// dbf_field.h, dbf_number.h). The folder is the database and each file in it a table named by its
// base name. A new table is written when the driver closes, so that the field widths and the code
// page can follow the data: character fields as wide as their longest value (254 characters),
// whole numbers N(6,0) or N(11,0), other numbers N(20,d) with the decimals or the
// exponents their values need, dates D(8)
// (the day only), Booleans L(1). Texts are Windows-1252 when every character has a byte there (the
// language driver byte says so), else UTF-8, named in a .cpg file beside the table, as other programs
// of this kind do. A table to be read is refused, naming the file, when its header claims more than
// the file holds.

#include "inputs/dbf_field.h"
#include "inputs/foreign_driver.h"

namespace vesk {

class DbfDriver : public BufferingDriver {
public:
    static constexpr int kMaxText = kDbfMaxText;
    static constexpr int kMaxNameBytes = 10;

    DbfDriver() : BufferingDriver(QStringLiteral("table")) {}
    bool open(const QString& path, bool forWriting) override;
    bool createTable(const TableDef& def) override;
    std::optional<ForeignTable> readTable(const QString& name) override;
    bool close() override;

protected:
    bool fileHasTable(const QString& name) override { return !tableFile(name).isEmpty(); }
    bool bufferRows(BufferedTable& table, const CellArray& rows) override;

private:
    // The file of a table in the folder, found case-blind; empty when there is none.
    QString tableFile(const QString& name) const;
    bool writeTable(const BufferedTable& table);
    QString folder_;
};

} // namespace vesk
