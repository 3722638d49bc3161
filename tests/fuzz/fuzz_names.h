#pragma once
// What the fuzz targets ask of each input, shared with the test that reads every kept input the
// same ways in the ordinary suite: the table names of the seed files, and the settings blocks.

#include "foundation/settings_file.h"
#include "platform/cell_array.h"

#include <QString>
#include <QStringList>

namespace vesk::fuzz {

// Table names by the extension of the input's file: those the seed files hold, so that the fuzzer
// starts inside their tables. A text file is its one table.
inline QStringList tableNamesFor(const QString& extension) {
    const QString kind = extension.toLower();
    if (kind == QLatin1String("wk1"))
        return {QStringLiteral("T"), QStringLiteral("DCTTBL")};
    if (kind == QLatin1String("xlsx"))
        return {QStringLiteral("T"), QStringLiteral("DCTTBL"), QStringLiteral("Life")};
    if (kind == QLatin1String("dbf"))
        return {QStringLiteral("T")};
    return {QString()};
}

// The seven readers of the settings file's numeric blocks.
inline constexpr int kSettingsReaders = 7;

// Reader `which` (0 the standard life table, 1 the open-interval block, 2 to 6 the panels 0 to 4)
// on the settings file at `path`, into `table`.
inline bool readSettingsBlock(int which, const QString& path, CellArray& table) {
    switch (which) {
    case 0: return FnReadLTS(QStringLiteral("[Standard Life Table-KRO]"), table, path);
    case 1: return FnReadOAIGD(table, path);
    default: return FnReadPanel(which - 2, table, path);
    }
}

} // namespace vesk::fuzz
