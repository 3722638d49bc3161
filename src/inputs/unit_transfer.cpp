#include "inputs/unit_transfer.h"

#include "inputs/foreign_file.h"
#include "inputs/text_file.h"
#include "inputs/transfer_tables.h"
#include "inputs/transfer_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

namespace {

namespace t = transfer_texts;

struct Level {
    UnitLevel level;
    const char* table;
    QString VeskSettings::*source;
    const char* word; // as "... not found" names it
    const char* imported;
    const char* exported;
    const char* notExported;
};

const std::array<Level, 3>& levels() {
    static const std::array<Level, 3> all{{
        {UnitLevel::Bpu, "_DctBPU", &VeskSettings::BPUTblNm, "BPU", t::kBpuImported, t::kBpuExported,
         t::kBpuNotExported},
        {UnitLevel::Pag1, "_DctPAG1", &VeskSettings::PAG1TblNm, "PAG1", t::kPag1Imported, t::kPag1Exported,
         t::kPag1NotExported},
        {UnitLevel::Pag2, "_DctPAG2", &VeskSettings::PAG2TblNm, "PAG2", t::kPag2Imported, t::kPag2Exported,
         t::kPag2NotExported},
    }};
    return all;
}

const Level& levelOf(UnitLevel level) {
    return levels()[static_cast<std::size_t>(level)];
}

// The levels an import of `level` takes: all three, the aggregates first, for "ALL".
QList<UnitLevel> levelsFor(std::optional<UnitLevel> level) {
    if (level)
        return {*level};
    return {UnitLevel::Pag2, UnitLevel::Pag1, UnitLevel::Bpu};
}

// The levels an export of `level` writes: all three, the units first, for "POPALL".
QList<UnitLevel> exportedLevels(std::optional<UnitLevel> level) {
    if (level)
        return {*level};
    return {UnitLevel::Bpu, UnitLevel::Pag1, UnitLevel::Pag2};
}

void show(const QString& message, Icon icon) {
    prompts().ask(message, Buttons::Ok, icon);
}

// The rows of a level in a text file of units: after the line that holds the level's name, up to
// the next line that holds any of the three.
std::optional<CellArray> textRows(const QString& content, const QString& path, UnitLevel level,
                                  const VeskSettings& s, QString* error) {
    const QString name = unitSourceName(level, s);
    const QStringList names = {unitSourceName(UnitLevel::Bpu, s), unitSourceName(UnitLevel::Pag1, s),
                               unitSourceName(UnitLevel::Pag2, s)};
    auto rows = sectionRows(
        content, path, [&](const QString& line) { return line.contains(name); },
        [&](const QString& line) {
            return std::any_of(names.begin(), names.end(),
                               [&](const QString& n) { return line.contains(n); });
        },
        error);
    if (!rows || rows->rank() != 2)
        return rows;
    // Blank lines between the rows are no rows.
    QList<int> kept;
    for (int i = 0; i < rows->size(0); ++i) {
        bool blank = true;
        for (int c = 0; c < rows->size(1) && blank; ++c)
            blank = (*rows)(i, c).toString().trimmed().isEmpty();
        if (!blank)
            kept << i;
    }
    if (kept.size() == rows->size(0))
        return rows;
    if (kept.isEmpty())
        return CellArray();
    CellArray out{static_cast<int>(kept.size()), rows->size(1)};
    for (int k = 0; k < kept.size(); ++k)
        for (int c = 0; c < rows->size(1); ++c)
            out(k, c) = (*rows)(kept[k], c);
    return out;
}

// The rows of each level the import takes, read before anything is written; false with the message
// shown when a file cannot be read or a level has no rows.
bool readLevels(const QString& path, std::optional<UnitLevel> level, const VeskSettings& s,
                std::array<CellArray, 3>& rows) {
    std::optional<QString> content;
    if (foreignKind(path) == ForeignKind::Text) {
        content = readTextContent(path);
        if (!content) {
            show(text(t::kPopError) + QStringLiteral("The file '%1' cannot be read.").arg(path),
                 Icon::Critical);
            return false;
        }
    }
    for (UnitLevel l : levelsFor(level)) {
        QString failure;
        CellArray found;
        if (content) {
            found = textRows(*content, path, l, s, &failure).value_or(CellArray());
        } else {
            found = FnReadArrFile(level ? path : tablePath(path, unitSourceName(l, s)), unitSourceName(l, s));
            if (lastForeignError().number != 0 && lastForeignError().number != engine_error::kNoSuchTable)
                failure = lastForeignError().words;
        }
        if (!failure.isEmpty()) {
            show(text(t::kPopError) + failure, Icon::Critical);
            return false;
        }
        if (found.rank() != 2 || found.size(0) == 0) {
            show(text(t::kLevelNotFound).arg(text(levelOf(l).word)), Icon::Critical);
            return false;
        }
        if (const auto cut = content ? shortTextRow(found) : std::nullopt) {
            show(text(t::kPopRecover) + u'\n' + *cut, Icon::Critical);
            return false;
        }
        rows[static_cast<std::size_t>(l)] = found;
    }
    return true;
}

QStringList purgeStatements() {
    return {QStringLiteral("DELETE FROM _DctBPU WHERE BDSId = ?"),
            QStringLiteral("DELETE FROM _DctPAG1 WHERE BDSId = ?"),
            QStringLiteral("DELETE FROM _DctPAG2 WHERE BDSId = ?")};
}

const char* importedMessage(std::optional<UnitLevel> level) {
    return level ? levelOf(*level).imported : t::kSchemaImported;
}

std::optional<TableRows> studyRows(const DbConnection& db, const QString& study, UnitLevel level,
                                   QString* failure) {
    QSqlError error;
    auto rows = selectRows(
        db, QStringLiteral("SELECT * FROM %1 WHERE BDSId = ? ORDER BY rowid").arg(levelOf(level).table),
        {study}, &error);
    if (!rows) {
        *failure = engineDescription(error);
        return std::nullopt;
    }
    if (rows->rowCount() == 0) {
        *failure = QStringLiteral("The study %1 has no rows in %2.").arg(study, text(levelOf(level).table));
        return std::nullopt;
    }
    rows->rows = FnRemCol(rows->rows, 0);
    rows->fieldNames.removeFirst();
    return rows;
}

// A value that would end a level's rows early in a text file: one that holds a line break, or any
// of the three names.
std::optional<QString> sectionFailure(const CellArray& rows, UnitLevel level, const VeskSettings& s) {
    const QStringList names = {unitSourceName(UnitLevel::Bpu, s), unitSourceName(UnitLevel::Pag1, s),
                               unitSourceName(UnitLevel::Pag2, s)};
    const auto breaking =
        firstBreakingValue(rows, [](const QString& v) { return v.contains(u'\n') || v.contains(u'\r'); });
    if (breaking)
        return text(t::kLineBreakInSection).arg(*breaking, text(levelOf(level).table));
    for (const QString& name : names) {
        const auto holding = firstBreakingValue(rows, [&](const QString& v) { return v.contains(name); });
        if (holding)
            return text(t::kNameInSection).arg(*holding, text(levelOf(level).table), name);
    }
    return std::nullopt;
}

TransferResult exportAsSections(const DbConnection& db, const QString& study, std::optional<UnitLevel> level,
                                const QString& path, const VeskSettings& s) {
    QList<Section> sections;
    for (UnitLevel l : exportedLevels(level)) {
        QString failure;
        auto rows = studyRows(db, study, l, &failure);
        if (rows)
            failure = sectionFailure(rows->rows, l, s).value_or(QString());
        if (!failure.isEmpty()) {
            show(text(levelOf(l).notExported) + u'\n' + failure, Icon::Critical);
            return TransferResult::Failed;
        }
        sections << Section{u'[' + unitSourceName(l, s) + u']', rows->rows};
    }
    QString error;
    if (!writeSections(path, sections, &error)) {
        show(text(levelOf(level.value_or(UnitLevel::Bpu)).notExported) + u'\n' + error, Icon::Critical);
        return TransferResult::Failed;
    }
    show(text(level ? levelOf(*level).exported : t::kAllUnitsExported), Icon::Information);
    return TransferResult::Done;
}

} // namespace

std::optional<UnitLevel> unitLevelOfKey(const QString& key, bool* known) {
    const QString k = key.trimmed().toUpper();
    if (known)
        *known = true;
    if (k == QLatin1String("BPU"))
        return UnitLevel::Bpu;
    if (k == QLatin1String("PAG1"))
        return UnitLevel::Pag1;
    if (k == QLatin1String("PAG2"))
        return UnitLevel::Pag2;
    if (known)
        *known = k == QLatin1String("ALL");
    return std::nullopt;
}

QString unitTableName(UnitLevel level) {
    return text(levelOf(level).table);
}

QString unitSourceName(UnitLevel level, const VeskSettings& s) {
    const QString named = (s.*levelOf(level).source).trimmed();
    return named.isEmpty() ? unitTableName(level) : named;
}

TransferResult FnImpPopUntsAll(StudyContext& context, std::optional<UnitLevel> level, const QString& path,
                               const VeskSettings& s) {
    const DbConnection& db = *context.StudyDB;
    const QString study = context.CurBDSId;
    std::array<CellArray, 3> rows;
    if (!readLevels(path, level, s, rows))
        return TransferResult::Failed;
    // The schema is purged when the study has one (its units) and the user says so.
    const bool purge = hasRows(db, QStringLiteral("SELECT 1 FROM _DctBPU WHERE BDSId = ?"), {study});
    if (purge &&
        prompts().ask(text(t::kPurgeSchema).arg(study), Buttons::YesNo, Icon::Question) != Answer::Yes) {
        show(text(t::kAbortSchema), Icon::Information);
        return TransferResult::Declined;
    }
    QSqlError error;
    const bool stored = inOneImport(
        db,
        [&](QSqlError* e) {
            for (const QString& sql : purge ? purgeStatements() : QStringList())
                if (!db.exec(sql, {study}, e))
                    return false;
            for (UnitLevel l : levelsFor(level)) {
                const QString table = unitTableName(l);
                if (!appendRows(db, table, FnGetFldNames(db, table), rows[static_cast<std::size_t>(l)], e,
                                {study}))
                    return false;
            }
            return true;
        },
        &error);
    if (!stored) {
        show(text(t::kPopRecover) + u'\n' + engineDescription(error), Icon::Critical);
        return TransferResult::Failed;
    }
    if (!level) {
        context.InitBPULst(unitTableName(UnitLevel::Bpu));
        context.InitPAGLst(unitTableName(UnitLevel::Pag1));
    }
    show(text(importedMessage(level)), Icon::Information);
    return TransferResult::Done;
}

TransferResult exportUnits(const DbConnection& db, const QString& study, std::optional<UnitLevel> level,
                           const QString& path, const VeskSettings& s) {
    if (foreignKind(path) == ForeignKind::Text)
        return exportAsSections(db, study, level, path, s);
    // The three levels go into a worksheet, workbook or database file in one writing (all or none),
    // into a dBase folder as a file each.
    const bool together = !level && foreignKind(path) != ForeignKind::Dbf;
    QList<NamedTable> tables;
    for (UnitLevel l : exportedLevels(level)) {
        QString failure;
        auto rows = studyRows(db, study, l, &failure);
        const QString file = level ? path : tablePath(path, unitSourceName(l, s));
        if (rows && together)
            tables << NamedTable{unitSourceName(l, s), rows->fieldNames, rows->rows};
        else if (rows && !writeTableFile(rows->rows, file, unitSourceName(l, s), rows->fieldNames))
            failure = lastForeignError().words;
        if (!failure.isEmpty()) {
            show(text(levelOf(l).notExported) + u'\n' + failure, Icon::Critical);
            return TransferResult::Failed;
        }
    }
    if (together && !FnWriteArrTables(path, tables)) {
        show(text(levelOf(UnitLevel::Bpu).notExported) + u'\n' + lastForeignError().words, Icon::Critical);
        return TransferResult::Failed;
    }
    show(text(level ? levelOf(*level).exported : t::kAllUnitsExported), Icon::Information);
    return TransferResult::Done;
}

} // namespace vesk
