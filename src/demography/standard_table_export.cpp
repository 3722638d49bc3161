#include "demography/standard_table_export.h"

#include "demography/standard_table_texts.h"
#include "foundation/settings_file_keys.h"
#include "inputs/foreign_file.h"
#include "inputs/messages.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <algorithm>

namespace vesk {

namespace {

namespace t = standard_table_texts;

struct FixedTable {
    const CellArray& table;
    const char* block;
    const char* tableName;
    const char* exported;
    const char* notExported;
};

FixedTable fixedTable(FixedStandardTable which, const VeskSettings& s) {
    if (which == FixedStandardTable::Who)
        return {s.MtxLTSWHO, stp::kLtsWho, t::kWhoTable, t::kWhoExported, t::kWhoNotExported};
    return {s.MtxLTSKRO, stp::kLtsKro, t::kKroTable, t::kKroExported, t::kKroNotExported};
}

// A value the settings hold as a text, as the number it writes; any other text as it stands.
Cell numberOf(const Cell& v) {
    if (!v.isText())
        return v;
    bool ok = false;
    const double x = v.toString().trimmed().toDouble(&ok);
    return ok ? Cell(x) : v;
}

// Whether the file that `path` names is the table itself, so that writing means replacing it.
bool fileIsTheTable(const QString& path) {
    const ForeignKind kind = foreignKind(path);
    return kind == ForeignKind::Text || kind == ForeignKind::Dbf;
}

QStringList fieldNames() {
    QStringList names;
    for (const char* name : t::kFieldNames)
        names << text(name);
    return names;
}

// Writes the rows over a dBase table that is there: the old file steps aside under a name of its
// own in the same folder and comes back when the new one fails, so that it stays whole.
bool replaceDbf(const CellArray& rows, const QString& path, const QString& tableName) {
    const QFileInfo target(path);
    const QString unique = QUuid::createUuid().toString(QUuid::Id128);
    const QString aside =
        target.dir().filePath(QStringLiteral(".%1.%2.aside").arg(target.fileName(), unique));
    if (!QFile::rename(path, aside)) {
        setForeignError(engine_error::kNotWritable, QStringLiteral("'%1' cannot be replaced.").arg(path));
        return false;
    }
    const bool written = FnWriteArrFile(rows, path, tableName, fieldNames());
    if (written)
        QFile::remove(aside);
    else
        QFile::rename(aside, path);
    return written;
}

bool writeRows(const CellArray& rows, const QString& path, const QString& tableName) {
    if (foreignKind(path) == ForeignKind::Dbf && QFileInfo::exists(path))
        return replaceDbf(rows, path, tableName);
    return FnWriteArrFile(rows, path, tableName, fieldNames());
}

void tellFailure(const FixedTable& fixed, const QString& reason) {
    prompts().ask(text(fixed.notExported) + (reason.isEmpty() ? QString() : u'\n' + reason), Buttons::Ok,
                  Icon::Critical);
}

} // namespace

CellArray standardTableRows(const CellArray& table) {
    if (table.rank() != 2)
        return CellArray();
    const int n = table.size(0), columns = std::min(table.size(1), 3);
    CellArray rows({n, 3});
    for (int i = 0; i < n; ++i)
        for (int c = 0; c < columns; ++c)
            rows(i, c) = numberOf(table(table.lbound(0) + i, table.lbound(1) + c));
    return rows;
}

StandardTableExport exportStandardTable(FixedStandardTable which, const QString& path,
                                        const VeskSettings& s) {
    const FixedTable fixed = fixedTable(which, s);
    if (fixed.table.rank() != 2 || fixed.table.size(0) == 0) {
        tellFailure(fixed, text(t::kNoFixedTable).arg(text(fixed.block)));
        return StandardTableExport::Failed;
    }
    if (fileIsTheTable(path) && QFileInfo::exists(path) &&
        prompts().ask(text(texts::kReplaceExistingFile), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return StandardTableExport::Declined;
    if (!writeRows(standardTableRows(fixed.table), path, text(fixed.tableName))) {
        tellFailure(fixed, lastForeignError().words);
        return StandardTableExport::Failed;
    }
    prompts().ask(text(fixed.exported), Buttons::Ok, Icon::Information);
    return StandardTableExport::Exported;
}

} // namespace vesk
