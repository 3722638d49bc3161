#include "demography/standard_table_export.h"

#include "demography/standard_life_table.h"
#include "demography/standard_table_texts.h"
#include "demography/user_life_table_import.h"
#include "foundation/settings_file_keys.h"
#include "inputs/foreign_file.h"
#include "inputs/messages.h"
#include "inputs/transfer_tables.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QFileInfo>
#include <QSaveFile>
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

bool writeRows(const CellArray& rows, const QString& path, const QString& tableName) {
    return writeTableFile(rows, path, tableName, fieldNames());
}

void tellFailure(const FixedTable& fixed, const QString& reason) {
    prompts().ask(text(fixed.notExported) + (reason.isEmpty() ? QString() : u'\n' + reason), Buttons::Ok,
                  Icon::Critical);
}

// The user's table as its text import reads it: the block title and the three tagged lines.
bool writeUserTableText(const CellArray& rows, const QString& path) {
    auto column = [&](int c) {
        QStringList values;
        for (int i = 0; i < rows.size(0); ++i)
            values << valueText(rows(i, c));
        return values.join(u'|');
    };
    const QByteArray bytes =
        (text(t::kTextTitle) + QStringLiteral("\r\n[BAI]:") + column(0) + QStringLiteral("\r\n[EXM]:") +
         column(2) + QStringLiteral("\r\n[EXF]:") + column(1) + QStringLiteral("\r\n"))
            .toUtf8();
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.commit()) {
        setForeignError(engine_error::kCannotOpen, f.errorString());
        return false;
    }
    return true;
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

StandardTableExport exportUserTable(const QString& path, const VeskSettings& s,
                                    const PreferencesControls& p) {
    const Cell table = GetUsrLifeTable(p);
    if (!table.isArray() || table.array().rank() != 2 || table.array().size(0) == 0)
        return StandardTableExport::Declined;
    if (fileIsTheTable(path) && QFileInfo::exists(path) &&
        prompts().ask(text(texts::kReplaceExistingFile), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return StandardTableExport::Declined;
    const CellArray rows = standardTableRows(table.array());
    const bool written = foreignKind(path) == ForeignKind::Text
                             ? writeUserTableText(rows, path)
                             : writeRows(rows, path, userTableSourceName(s));
    if (!written) {
        prompts().ask(text(t::kUserNotExported) + u'\n' + lastForeignError().words, Buttons::Ok,
                      Icon::Critical);
        return StandardTableExport::Failed;
    }
    prompts().ask(text(t::kUserExported), Buttons::Ok, Icon::Information);
    return StandardTableExport::Exported;
}

} // namespace vesk
