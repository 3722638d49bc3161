#include "inputs/study_data_transfer.h"

#include "inputs/foreign_file.h"
#include "inputs/transfer_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace vesk {

namespace {

namespace t = transfer_texts;

struct Kind {
    StudyData kind;
    const char* item;
    const char* label;
    const char* table;
    const char* prefix; // of the table's name in a worksheet or database file
    const char* stem;   // of its file in a text or dBase export
};

// The five of the menu, then the two that only an export of all study data writes.
const std::array<Kind, 7>& kinds() {
    static const std::array<Kind, 7> all{{
        {StudyData::Population, "mnu_exp_Pop", t::kPopulationLabel, "DatPOP", "POP", "Population"},
        {StudyData::DeathRates, "mnu_expASRD", t::kAsdrLabel, "DatASDR", "ASDR", "ASDR"},
        {StudyData::Proportions, "mnu_exp_CSMP", t::kCsmpLabel, "DatCSM", "CSMP", "CSMP"},
        {StudyData::Epi, "mnu_exp_epi", t::kEpiLabel, "DatADW", "EPI", "EpiEst"},
        {StudyData::Weights, "mnu_Dwt", t::kDwtLabel, "DatDwt", "DWT", "CSMP"},
        {StudyData::SequelaEpi, nullptr, t::kSequelaEpiLabel, "DatADWSqla", "SEPI", "SqlaEpiEst"},
        {StudyData::Demography, nullptr, t::kDemographyLabel, "DatDmgphyPrmtrs", "DMG", "Demography"},
    }};
    return all;
}

const Kind& kindOf(StudyData kind) {
    return kinds()[static_cast<std::size_t>(kind)];
}

bool isCrossTable(StudyData kind) {
    return kind == StudyData::Proportions || kind == StudyData::Weights;
}

// Whether each table goes to a file of its own: a text file and a dBase table are one table, and a
// Lotus worksheet is one sheet of 8192 rows, which the data of a study outgrow.
bool fileForEachTable(const QString& path) {
    const ForeignKind k = foreignKind(path);
    return k == ForeignKind::Text || k == ForeignKind::Dbf || k == ForeignKind::Wk1;
}

void show(const QString& message, Icon icon) {
    prompts().ask(message, Buttons::Ok, icon);
}

// The key columns of a cross table and the rows (key, group, value) it is made of.
struct Crossed {
    QStringList keyNames;
    QList<QList<Cell>> rows; // key cells..., group, value
};

// TRANSFORM ... PIVOT in code: a row for each key in the order keys first come, a column for each
// group in the order groups first come.
TableRows pivot(const Crossed& c) {
    const int keys = static_cast<int>(c.keyNames.size());
    QStringList groups;
    QHash<QString, int> groupAt, keyAt;
    QList<QList<Cell>> keyRows;
    QList<QPair<int, int>> cellOf; // the row and column of each source row's value
    for (const auto& r : c.rows) {
        const QString g = r[keys].toString();
        if (!groupAt.contains(g)) {
            groupAt.insert(g, static_cast<int>(groups.size()));
            groups << g;
        }
        QStringList keyText;
        for (int k = 0; k < keys; ++k)
            keyText << valueText(r[k]);
        const QString joined = keyText.join(QChar(0x1F));
        if (!keyAt.contains(joined)) {
            keyAt.insert(joined, static_cast<int>(keyRows.size()));
            keyRows << r.mid(0, keys);
        }
        cellOf << qMakePair(keyAt.value(joined), keys + groupAt.value(g));
    }
    TableRows out;
    out.fieldNames = c.keyNames + groups;
    if (keyRows.isEmpty())
        return out;
    out.rows = CellArray{static_cast<int>(keyRows.size()), static_cast<int>(out.fieldNames.size())};
    for (int i = 0; i < keyRows.size(); ++i)
        for (int k = 0; k < keys; ++k)
            out.rows(i, k) = keyRows[i][k];
    for (int n = 0; n < c.rows.size(); ++n)
        out.rows(cellOf[n].first, cellOf[n].second) = c.rows[n][keys + 1];
    return out;
}

std::optional<TableRows> crossRows(const DbConnection& db, const QString& sql, const QVariantList& values,
                                   const QStringList& keyNames, QSqlError* error) {
    auto q = db.query(sql, values, error);
    if (!q)
        return std::nullopt;
    Crossed c{keyNames, rowsOf(*q, static_cast<int>(keyNames.size()) + 2)};
    return pivot(c);
}

// The units and years of the context, or the ones the scope names.
QStringList unitsOf(const StudyContext& context, const StudyDataScope& scope) {
    if (scope.bpu)
        return {*scope.bpu};
    QStringList out;
    if (context.VctrBPULst.isArray())
        for (std::size_t k = 0; k < context.VctrBPULst.array().count(); ++k)
            out << context.VctrBPULst.array().flat(k).toString();
    return out;
}

QList<int> yearsOf(const StudyContext& context, const StudyDataScope& scope) {
    if (scope.year)
        return {*scope.year};
    QList<int> out;
    if (context.VctrYrLst.isArray())
        for (std::size_t k = 0; k < context.VctrYrLst.array().count(); ++k)
            out << static_cast<int>(context.VctrYrLst.array().flat(k).toDouble());
    return out;
}

// One table of an export or import: the unit (empty for the weights) and the year.
struct Slot {
    StudyData kind;
    QString bpu;
    int year;
};

QList<Slot> slotsOf(const StudyContext& context, std::optional<StudyData> kind, const StudyDataScope& scope) {
    QList<Slot> out;
    for (const Kind& k : kinds()) {
        if (kind && *kind != k.kind)
            continue;
        for (int year : yearsOf(context, scope)) {
            if (k.kind == StudyData::Weights) {
                out << Slot{k.kind, QString(), year};
                continue;
            }
            for (const QString& bpu : unitsOf(context, scope))
                out << Slot{k.kind, bpu, year};
        }
    }
    return out;
}

QString labelOf(std::optional<StudyData> kind) {
    return kind ? studyDataLabel(*kind) : text(t::kAllStudyDataLabel);
}

// A cross table in a text file carries its field names on its first line.
CellArray withHeads(const TableRows& t) {
    CellArray out{t.rowCount() + 1, static_cast<int>(t.fieldNames.size())};
    for (int c = 0; c < t.fieldNames.size(); ++c)
        out(0, c) = Cell(t.fieldNames[c]);
    for (int i = 0; i < t.rowCount(); ++i)
        for (int c = 0; c < t.fieldNames.size(); ++c)
            out(i + 1, c) = t.rows(i, c);
    return out;
}

// The table of a slot in the file of its own: a worksheet's range is named as in a workbook.
QString ownFileTable(const Slot& s, const QString& file) {
    return foreignKind(file) == ForeignKind::Wk1 ? studyDataTableName(s.kind, s.bpu, s.year)
                                                 : QFileInfo(file).completeBaseName();
}

bool writeSlot(const TableRows& rows, const Slot& s, const QString& path) {
    if (fileForEachTable(path)) {
        const QString file = studyDataFilePath(s.kind, path, s.bpu, s.year);
        const bool heads = foreignKind(path) == ForeignKind::Text && isCrossTable(s.kind);
        return writeTableFile(heads ? withHeads(rows) : rows.rows, file, ownFileTable(s, file),
                              rows.fieldNames, true);
    }
    return writeTableFile(rows.rows, path, studyDataTableName(s.kind, s.bpu, s.year), rows.fieldNames);
}

} // namespace

const std::array<StudyData, 5>& studyDataKinds() {
    static const std::array<StudyData, 5> all{StudyData::Population, StudyData::DeathRates,
                                              StudyData::Proportions, StudyData::Epi, StudyData::Weights};
    return all;
}

const char* studyDataItem(StudyData kind) {
    return kindOf(kind).item;
}

QString studyDataLabel(StudyData kind) {
    return text(kindOf(kind).label);
}

QString studyDataTable(StudyData kind) {
    return text(kindOf(kind).table);
}

std::optional<TableRows> studyDataRows(const DbConnection& db, const QString& study, StudyData kind,
                                       const QString& bpu, int year, QSqlError* error) {
    switch (kind) {
    case StudyData::Proportions:
        return crossRows(
            db,
            QStringLiteral("SELECT BPUID, COBCd, YEAR, ASG, AVG(CSMP) FROM DatCSM WHERE BPUID = ? AND "
                           "YEAR = ? GROUP BY BPUID, COBCd, YEAR, ASG ORDER BY MIN(rowid)"),
            {bpu, year}, {QStringLiteral("BPUID"), QStringLiteral("COBCD"), QStringLiteral("YEAR")}, error);
    case StudyData::Weights:
        return crossRows(
            db,
            QStringLiteral("SELECT d.COBCd, (SELECT s.Sequela FROM _DctBDMSqla s WHERE s.SqlaCd = "
                           "d.COBCd ORDER BY s.rowid LIMIT 1), d.ASG, MAX(d.Dwt) FROM DatDwt d WHERE "
                           "d.BDSId = ? AND d.YEAR = ? GROUP BY d.COBCd, d.ASG ORDER BY MIN(d.rowid)"),
            {study, year}, {QStringLiteral("SQLACD"), QStringLiteral("SEQUELA")}, error);
    default:
        return selectRows(db,
                          QStringLiteral("SELECT * FROM %1 WHERE BPUID = ? AND YEAR = ? ORDER BY rowid")
                              .arg(studyDataTable(kind)),
                          {bpu, year}, error);
    }
}

QString studyDataTableName(StudyData kind, const QString& bpu, int year) {
    const QString prefix = text(kindOf(kind).prefix);
    return kind == StudyData::Weights ? QStringLiteral("%1_%2").arg(prefix).arg(year)
                                      : QStringLiteral("%1_%2_%3").arg(prefix, bpu).arg(year);
}

QString studyDataFilePath(StudyData kind, const QString& path, const QString& bpu, int year) {
    const QString stem = text(kindOf(kind).stem);
    const QString ext = QFileInfo(path).suffix();
    const QString name = kind == StudyData::Weights
                             ? QStringLiteral("%1_%2.%3").arg(stem).arg(year).arg(ext)
                             : QStringLiteral("%1_%2_%3.%4").arg(stem, bpu).arg(year).arg(ext);
    return QFileInfo(path).dir().filePath(name);
}

TransferResult exportStudyData(const StudyContext& context, std::optional<StudyData> kind,
                               const QString& path, const StudyDataScope& scope) {
    const DbConnection& db = *context.StudyDB;
    const bool fileEach = fileForEachTable(path);
    if (fileEach)
        QDir().mkpath(QFileInfo(path).absolutePath());
    // A workbook or database file takes every table in one writing.
    QList<NamedTable> together;
    int written = 0;
    for (const Slot& s : slotsOf(context, kind, scope)) {
        QSqlError error;
        auto rows = studyDataRows(db, context.CurBDSId, s.kind, s.bpu, s.year, &error);
        QString failure;
        if (!rows)
            failure = engineDescription(error);
        else if (rows->rowCount() > 0 && fileEach && !writeSlot(*rows, s, path))
            failure = lastForeignError().words;
        if (!failure.isEmpty()) {
            show(text(t::kDataNotExported).arg(studyDataLabel(s.kind)) + u'\n' + failure, Icon::Critical);
            return TransferResult::Failed;
        }
        if (rows->rowCount() == 0)
            continue;
        ++written;
        if (!fileEach)
            together << NamedTable{studyDataTableName(s.kind, s.bpu, s.year), rows->fieldNames, rows->rows};
    }
    if (written == 0) {
        show(text(t::kDataNotExported).arg(labelOf(kind)) + u'\n' + text(t::kNoStudyData), Icon::Critical);
        return TransferResult::Failed;
    }
    if (!fileEach && !FnWriteArrTables(path, together)) {
        show(text(t::kDataNotExported).arg(labelOf(kind)) + u'\n' + lastForeignError().words, Icon::Critical);
        return TransferResult::Failed;
    }
    show(text(t::kDataExported).arg(labelOf(kind)).arg(written), Icon::Information);
    return TransferResult::Done;
}

// --- The way back -------------------------------------------------------------------------------

namespace {

// A table of an export read back, as rows for its study table.
struct ReadSlot {
    Slot slot;
    QStringList fields; // of the study table, after `lead`
    QVariantList lead;  // values of the first fields (the weights' study and year)
    CellArray rows;
};

// The heads of a cross table and its rows without them; a text file's heads are its first row.
bool splitHeads(const QString& path, CellArray& rows, QStringList& heads) {
    if (foreignKind(path) != ForeignKind::Text)
        return true;
    if (rows.rank() != 2 || rows.size(0) == 0)
        return false;
    heads.clear();
    for (int c = 0; c < rows.size(1); ++c)
        heads << rows(0, c).toString().trimmed();
    CellArray body{rows.size(0) - 1, rows.size(1)};
    for (int i = 1; i < rows.size(0); ++i)
        for (int c = 0; c < rows.size(1); ++c)
            body(i - 1, c) = rows(i, c);
    rows = body;
    return true;
}

// A cross table back into rows (keys..., group, value), one for each cell that holds a value.
CellArray uncross(const CellArray& rows, const QStringList& heads, const QList<int>& keyColumns,
                  int firstGroup) {
    QList<QList<Cell>> out;
    for (int i = 0; rows.rank() == 2 && i < rows.size(0); ++i)
        for (int c = firstGroup; c < rows.size(1) && c < heads.size(); ++c) {
            const Cell& v = rows(i, c);
            if (v.isEmpty() || v.isNull() || (v.isText() && v.toString().trimmed().isEmpty()))
                continue;
            QList<Cell> r;
            for (int k : keyColumns)
                r << rows(i, k);
            r << Cell(heads[c]) << v;
            out << r;
        }
    if (out.isEmpty())
        return CellArray();
    CellArray a{static_cast<int>(out.size()), static_cast<int>(out[0].size())};
    for (int i = 0; i < out.size(); ++i)
        for (int c = 0; c < out[i].size(); ++c)
            a(i, c) = out[i][c];
    return a;
}

// A slot's table as a file gave it: its rows and field names; `found` false when the export wrote
// none.
struct ReadTable {
    bool found = false;
    QString file;
    CellArray rows;
    QStringList heads;
};

// Reads the table of a slot from its file of its own; false with `failure` when the file is there
// but cannot be read or is cut short.
bool readOwnFile(const QString& path, const Slot& s, ReadTable& r, QString* failure) {
    r = ReadTable{false, studyDataFilePath(s.kind, path, s.bpu, s.year), CellArray(), {}};
    if (!QFileInfo::exists(r.file))
        return true;
    r.rows = FnReadArrFile(r.file, ownFileTable(s, r.file), &r.heads);
    const RuntimeError& e = lastForeignError();
    if (e.number == engine_error::kNoSuchTable)
        return true;
    if (e.number != 0) {
        *failure = e.words;
        return false;
    }
    if (foreignKind(r.file) == ForeignKind::Text)
        if (const auto cut = shortTextRow(r.rows)) {
            *failure = r.file + u'\n' + *cut;
            return false;
        }
    r.found = true;
    return true;
}

// A table read as the rows of its study table.
ReadSlot slotRows(const DbConnection& db, const Slot& s, const QString& study, ReadTable r) {
    ReadSlot out{s, {}, {}, CellArray()};
    if (!r.found)
        return out;
    if (!isCrossTable(s.kind)) {
        out.fields = FnGetFldNames(db, studyDataTable(s.kind));
        out.rows = r.rows;
        return out;
    }
    if (!splitHeads(r.file, r.rows, r.heads))
        return out;
    if (s.kind == StudyData::Proportions) {
        out.fields = {QStringLiteral("BPUID"), QStringLiteral("COBCd"), QStringLiteral("YEAR"),
                      QStringLiteral("ASG"), QStringLiteral("CSMP")};
        out.rows = uncross(r.rows, r.heads, {0, 1, 2}, 3);
    } else {
        out.lead = {study, s.year};
        out.fields = {QStringLiteral("BDSId"), QStringLiteral("YEAR"), QStringLiteral("COBCd"),
                      QStringLiteral("ASG"), QStringLiteral("Dwt")};
        out.rows = uncross(r.rows, r.heads, {0}, 2);
    }
    return out;
}

// The tables of the slots as a file gave them: each from its own file, or all from one workbook or
// database file read once. False with `failure` when a file cannot be read.
bool readTables(const QString& path, const QList<Slot>& slotList, QList<ReadTable>& out, QString* failure) {
    out.clear();
    if (fileForEachTable(path)) {
        for (const Slot& s : slotList) {
            ReadTable r;
            if (!readOwnFile(path, s, r, failure))
                return false;
            out << r;
        }
        return true;
    }
    QStringList names;
    for (const Slot& s : slotList)
        names << studyDataTableName(s.kind, s.bpu, s.year);
    if (!QFileInfo::exists(path)) {
        out.resize(slotList.size());
        return true;
    }
    const auto tables = FnReadArrTables(path, names);
    if (!tables) {
        *failure = lastForeignError().words;
        return false;
    }
    for (const auto& t : *tables)
        out << (t ? ReadTable{true, path, t->rows, t->fieldNames} : ReadTable{});
    return true;
}

// The rows of the study that a slot's rows replace.
QString whereOf(const Slot& s) {
    return s.kind == StudyData::Weights ? QStringLiteral(" WHERE BDSId = ? AND YEAR = ?")
                                        : QStringLiteral(" WHERE BPUID = ? AND YEAR = ?");
}

QVariantList keyOf(const Slot& s, const QString& study) {
    return {s.kind == StudyData::Weights ? study : s.bpu, s.year};
}

int rowCount(const CellArray& rows) {
    return rows.rank() == 2 ? rows.size(0) : 0;
}

} // namespace

TransferResult importStudyData(const StudyContext& context, std::optional<StudyData> kind,
                               const QString& path, const StudyDataScope& scope) {
    const DbConnection& db = *context.StudyDB;
    const QList<Slot> slotList = slotsOf(context, kind, scope);
    QList<ReadTable> tables;
    QString failure;
    if (!readTables(path, slotList, tables, &failure)) {
        show(text(t::kDataNotImported) + failure, Icon::Critical);
        return TransferResult::Failed;
    }
    QList<ReadSlot> found;
    QStringList withRows;
    for (int k = 0; k < slotList.size(); ++k) {
        const Slot& s = slotList[k];
        const ReadSlot r = slotRows(db, s, context.CurBDSId, tables[k]);
        if (rowCount(r.rows) == 0)
            continue;
        const QString table = studyDataTable(s.kind);
        if (!withRows.contains(table) &&
            hasRows(db, QStringLiteral("SELECT 1 FROM ") + table + whereOf(s) + QStringLiteral(" LIMIT 1"),
                    keyOf(s, context.CurBDSId)))
            withRows << table;
        found << r;
    }
    if (found.isEmpty()) {
        show(text(t::kDataNotImported) + text(t::kNoDataTables).arg(path), Icon::Critical);
        return TransferResult::Failed;
    }
    if (!withRows.isEmpty() && prompts().ask(text(t::kDataHasRows).arg(withRows.join(QStringLiteral(", "))),
                                             Buttons::YesNo, Icon::Question) != Answer::Yes)
        return TransferResult::Declined;
    QSqlError error;
    QString failedTable;
    int stored = 0;
    const bool ok = inOneImport(
        db,
        [&](QSqlError* e) {
            for (const ReadSlot& r : found) {
                failedTable = studyDataTable(r.slot.kind);
                if (!db.exec(QStringLiteral("DELETE FROM ") + failedTable + whereOf(r.slot),
                             keyOf(r.slot, context.CurBDSId), e) ||
                    !appendRows(db, failedTable, r.fields, r.rows, e, r.lead))
                    return false;
                stored += rowCount(r.rows);
            }
            return true;
        },
        &error);
    if (!ok) {
        show(text(t::kDataNotImported) + failedTable + u'\n' + engineDescription(error), Icon::Critical);
        return TransferResult::Failed;
    }
    show(text(t::kDataImported).arg(stored).arg(found.size()), Icon::Information);
    return TransferResult::Done;
}

} // namespace vesk
