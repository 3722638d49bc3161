#pragma once
// User defined standard life tables for the tests of their import and export: tables of numbers
// whose values a file must bring back exactly (91.94, 0.30000000000000004, 1e-300), written into a
// file of each kind through the program's own writers, and the text layout of the import.

#include "inputs/foreign_file.h"
#include "platform/cell_array.h"
#include "platform/csv.h"

#include <QFile>
#include <QString>
#include <QStringList>

namespace vesk::test {

// Single years 0 to `lastAge`: e(x) falling by 0.9 (females, from 91.94) and 0.85 (males, from
// 88.5) a year, the second-to-last row 0.30000000000000004 and 0.1, the last 1e-300 for both.
inline CellArray exactUserTable(int lastAge = 100) {
    CellArray t({lastAge + 1, 3});
    for (int x = 0; x <= lastAge; ++x) {
        t(x, 0) = Cell(static_cast<double>(x));
        t(x, 1) = Cell(91.94 - 0.9 * x);
        t(x, 2) = Cell(88.5 - 0.85 * x);
    }
    t(lastAge - 1, 1) = Cell(0.1 + 0.2);
    t(lastAge - 1, 2) = Cell(0.1);
    t(lastAge, 1) = Cell(1e-300);
    t(lastAge, 2) = Cell(1e-300);
    return t;
}

inline const QStringList& userTableFields() {
    static const QStringList names{QStringLiteral("Age"), QStringLiteral("EXF"), QStringLiteral("EXM")};
    return names;
}

// One column of the table as the "|"-separated list of a text file, each value in its shortest text.
inline QString userTableColumn(const CellArray& t, int column) {
    QStringList values;
    for (int i = 0; i < t.size(0); ++i)
        values << (t(i, column).isNumber() ? shortestNumber(t(i, column).toDouble())
                                           : t(i, column).toString());
    return values.join(u'|');
}

// The text layout of the import: the block title, then [BAI]:, and [EXM]: before [EXF]: when
// `maleFirst`, as the settings file writes them.
inline QString userTableText(const CellArray& t, bool maleFirst = true) {
    const QString f = QStringLiteral("[EXF]:") + userTableColumn(t, 1) + QStringLiteral("\r\n");
    const QString m = QStringLiteral("[EXM]:") + userTableColumn(t, 2) + QStringLiteral("\r\n");
    return QStringLiteral("[User Defined Tables]\r\n[BAI]:") + userTableColumn(t, 0) +
           QStringLiteral("\r\n") + (maleFirst ? m + f : f + m);
}

inline bool writeTextFile(const QString& path, const QString& text) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(text.toUtf8()) >= 0;
}

// The table written to `path` in the kind of its extension: the text layout of the import for a
// text file, else the table `tableName` (a dBase table takes the file's base name) through
// FnWriteArrFile with the fields [Age] [EXF] [EXM].
inline bool writeUserTable(const QString& path, const CellArray& t, const QString& tableName,
                           bool maleFirst = true) {
    if (foreignKind(path) == ForeignKind::Text)
        return writeTextFile(path, userTableText(t, maleFirst));
    return FnWriteArrFile(t, path, tableName, userTableFields());
}

} // namespace vesk::test
