#include "inputs/dictionary_transfer.h"

#include "inputs/foreign_file.h"
#include "inputs/text_file.h"
#include "inputs/transfer_tables.h"
#include "inputs/transfer_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

namespace {

namespace t = transfer_texts;

struct Dictionary {
    DictionaryTable which;
    const char* table;
    QString VeskSettings::*source;
    const char* importItem;
    const char* exportItem;
    const char* title;
    const char* columns;
    int columnCount;
    const char* word;
    const char* imported;
    const char* notFound;
    const char* exported;
    const char* notExported;
};

const std::array<Dictionary, 6>& dictionaries() {
    static const std::array<Dictionary, 6> all{{
        {DictionaryTable::Groups, "_DctBDMGrps", &VeskSettings::GrpDctTblNm, "mnu_GrpDic", "mnu_ExpGDict",
         t::kGroupsTitle, t::kGroupsColumns, 2, t::kGroupsWord, t::kGroupsImported, t::kGroupsNotFound,
         t::kGroupsExported, t::kGroupsNotExported},
        {DictionaryTable::SubGroups, "_DctBDMSGrps", &VeskSettings::SGrpDctTblNm, "mnu_SubGrpsDic",
         "mnu_ExpSGDict", t::kSubGroupsTitle, t::kSubGroupsColumns, 3, t::kSubGroupsWord,
         t::kSubGroupsImported, t::kSubGroupsNotFound, t::kSubGroupsExported, t::kSubGroupsNotExported},
        {DictionaryTable::Clusters, "_DctBDMClstr", &VeskSettings::ClstrDctTblNm, "mnu_ClusterDic",
         "mnu_ExpClstrDict", t::kClustersTitle, t::kClustersColumns, 3, t::kClustersWord,
         t::kClustersImported, t::kClustersNotFound, t::kClustersExported, t::kClustersNotExported},
        {DictionaryTable::Causes, "_DctBDM", &VeskSettings::COBDctTblNm, "mnu_causeOfBurdenCodes",
         "mnu_ExpCOBDict", t::kCausesTitle, t::kCausesColumns, 4, t::kCausesWord, t::kCausesImported,
         t::kCausesNotFound, t::kCausesExported, t::kCausesNotExported},
        {DictionaryTable::Sequelae, "_DctBDMSqla", &VeskSettings::SqlaDctTblNm, "mnu_Squ_Dic",
         "mnu_ExpSqlaDict", t::kSequelaeTitle, t::kSequelaeColumns, 2, t::kSequelaeWord, t::kSequelaeImported,
         t::kSequelaeNotFound, t::kSequelaeExported, t::kSequelaeNotExported},
        {DictionaryTable::Map, "_MapBDMSqla", &VeskSettings::MapDctTblNm, "mnu_Sql_Cobcd_map",
         "mnu_ExpMapDict", t::kMapTitle, t::kMapColumns, 2, t::kMapWord, t::kMapImported, t::kMapNotFound,
         t::kMapExported, t::kMapNotExported},
    }};
    return all;
}

const Dictionary& dictionary(DictionaryTable which) {
    return dictionaries()[static_cast<std::size_t>(which)];
}

// The six emptied, dependants first, before an import of all.
const QStringList kEmptyBeforeAll = {
    QStringLiteral("DELETE FROM _MapBDMSqla"),  QStringLiteral("DELETE FROM _DctBDMSqla"),
    QStringLiteral("DELETE FROM _DctBDM"),      QStringLiteral("DELETE FROM _DctBDMClstr"),
    QStringLiteral("DELETE FROM _DctBDMSGrps"), QStringLiteral("DELETE FROM _DctBDMGrps")};

// The statements that empty one dictionary before its import: for the causes the map first.
QStringList emptyBefore(DictionaryTable which) {
    QStringList out;
    if (which == DictionaryTable::Causes)
        out << QStringLiteral("DELETE FROM _MapBDMSqla");
    out << QStringLiteral("DELETE FROM ") + dictionary(which).table;
    return out;
}

bool isSheet(ForeignKind kind) {
    return kind == ForeignKind::Wk1 || kind == ForeignKind::Xlsx || kind == ForeignKind::Xls;
}

// In "_DctBDM", the fourth column's "Yes" / "No" as the Boolean it stands for (the runtime's True,
// -1, as the study stores it). A worksheet may give a True back as 1: any number but 0 is True.
Cell causeValue(int column, const Cell& v) {
    if (column != 3)
        return v;
    if (v.isNumber())
        return Cell::boolean(v.toDouble() != 0);
    if (!v.isText())
        return v;
    const QString word = v.toString().trimmed().toUpper();
    if (word == QLatin1String("YES"))
        return Cell::boolean(true);
    if (word == QLatin1String("NO"))
        return Cell::boolean(false);
    return v;
}

ValueConversion conversionFor(DictionaryTable which) {
    return which == DictionaryTable::Causes ? ValueConversion(causeValue) : ValueConversion();
}

// The rows of a dictionary's table in a file; an empty array with `failure` set when the file could
// not be read (a missing table is no failure: the caller says "not found").
CellArray readSource(const QString& path, const QString& source, bool wholeFile, QString* failure) {
    if (foreignKind(path) == ForeignKind::Text && !wholeFile) {
        QString error;
        auto rows = ImpDctTxtAll(path, source, &error);
        *failure = error;
        return rows.value_or(CellArray());
    }
    const QString file = wholeFile ? path : tablePath(path, source);
    CellArray rows = FnReadArrFile(file, source);
    const RuntimeError& e = lastForeignError();
    if (e.number != 0 && e.number != engine_error::kNoSuchTable)
        *failure = e.words;
    return rows;
}

// A row of a text file that lost its end (a file cut short); worksheets and tables keep their
// fields whatever they hold.
std::optional<QString> textRowCut(const QString& path, const CellArray& rows) {
    return foreignKind(path) == ForeignKind::Text ? shortTextRow(rows) : std::nullopt;
}

bool noRows(const CellArray& rows) {
    return rows.rank() != 2 || rows.size(0) == 0;
}

void show(const QString& message, Icon icon) {
    prompts().ask(message, Buttons::Ok, icon);
}

// The rows of a study table for a file: in "_DctBDM" the fourth column as "Yes" / "No".
std::optional<TableRows> exportRows(const DbConnection& db, DictionaryTable which, QString* failure) {
    QSqlError error;
    auto rows = selectRows(db, QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(dictionary(which).table),
                           {}, &error);
    if (!rows) {
        *failure = engineDescription(error);
        return std::nullopt;
    }
    if (rows->rowCount() == 0) {
        *failure = QStringLiteral("The table %1 has no rows.").arg(dictionary(which).table);
        return std::nullopt;
    }
    if (which == DictionaryTable::Causes && rows->rows.size(1) > 3)
        for (int i = 0; i < rows->rowCount(); ++i) {
            Cell& v = rows->rows(i, 3);
            if (v.isNumber())
                v = Cell(v.toDouble() != 0 ? QStringLiteral("Yes") : QStringLiteral("No"));
        }
    return rows;
}

bool breaksSection(const QString& value) {
    return value.contains(u'\n') || value.contains(u'\r');
}

TransferResult exportAllAsSections(const DbConnection& db, const QString& path, const VeskSettings& s) {
    QList<Section> sections;
    for (const Dictionary& d : dictionaries()) {
        QString failure;
        auto rows = exportRows(db, d.which, &failure);
        if (rows) {
            const auto bad = firstBreakingValue(rows->rows, breaksSection);
            if (bad)
                failure = text(t::kLineBreakInSection).arg(*bad, text(d.table));
            for (int i = 0; failure.isEmpty() && i < rows->rowCount(); ++i)
                if (valueText(rows->rows(i, 0)).startsWith(u'['))
                    failure = text(t::kOpensSection).arg(valueText(rows->rows(i, 0)), text(d.table));
        }
        if (!failure.isEmpty()) {
            show(text(d.notExported) + u'\n' + failure, Icon::Critical);
            return TransferResult::Failed;
        }
        sections << Section{u'[' + dictionarySourceName(d.which, s) + u']', rows->rows};
    }
    QString error;
    if (!writeSections(path, sections, &error)) {
        show(text(dictionary(DictionaryTable::Groups).notExported) + u'\n' + error, Icon::Critical);
        return TransferResult::Failed;
    }
    show(text(t::kAllDictionariesExported), Icon::Information);
    return TransferResult::Done;
}

bool exportOne(const DbConnection& db, DictionaryTable which, const QString& path, const VeskSettings& s) {
    const Dictionary& d = dictionary(which);
    QString failure;
    auto rows = exportRows(db, which, &failure);
    if (rows && !writeTableFile(rows->rows, path, dictionarySourceName(which, s), rows->fieldNames))
        failure = lastForeignError().words;
    if (!failure.isEmpty()) {
        show(text(d.notExported) + u'\n' + failure, Icon::Critical);
        return false;
    }
    return true;
}

// The six into one worksheet, workbook or database file in one writing: all of them or none.
bool exportAllTogether(const DbConnection& db, const QString& path, const VeskSettings& s) {
    QList<NamedTable> tables;
    for (const Dictionary& d : dictionaries()) {
        QString failure;
        auto rows = exportRows(db, d.which, &failure);
        if (!rows) {
            show(text(d.notExported) + u'\n' + failure, Icon::Critical);
            return false;
        }
        tables << NamedTable{dictionarySourceName(d.which, s), rows->fieldNames, rows->rows};
    }
    if (FnWriteArrTables(path, tables))
        return true;
    show(text(dictionary(DictionaryTable::Groups).notExported) + u'\n' + lastForeignError().words, Icon::Critical);
    return false;
}

} // namespace

const std::array<DictionaryTable, 6>& dictionaryTables() {
    static const std::array<DictionaryTable, 6> all{DictionaryTable::Groups,   DictionaryTable::SubGroups,
                                                    DictionaryTable::Clusters, DictionaryTable::Causes,
                                                    DictionaryTable::Sequelae, DictionaryTable::Map};
    return all;
}

QString dictionaryTableName(DictionaryTable which) {
    return text(dictionary(which).table);
}

QString dictionarySourceName(DictionaryTable which, const VeskSettings& s) {
    const QString named = (s.*dictionary(which).source).trimmed();
    return named.isEmpty() ? dictionaryTableName(which) : named;
}

QString dictionaryImportTitle(DictionaryTable which) {
    return text(dictionary(which).title);
}

const char* dictionaryImportItem(DictionaryTable which) {
    return dictionary(which).importItem;
}

const char* dictionaryExportItem(DictionaryTable which) {
    return dictionary(which).exportItem;
}

QString dictionaryLayoutQuestion(DictionaryTable which, const QString& path, const VeskSettings& s) {
    const Dictionary& d = dictionary(which);
    const ForeignKind kind = foreignKind(path);
    QString q;
    if (kind == ForeignKind::Text) {
        q = text(t::kTextLayout) + text(d.columns);
    } else if (isSheet(kind)) {
        const char* count = d.columnCount == 2   ? t::kTwoColumns
                            : d.columnCount == 3 ? t::kThreeColumns
                                                 : t::kFourColumns;
        q = text(t::kRangeLayout) + dictionarySourceName(which, s) + text(count) + text(d.columns);
    } else {
        q = text(t::kTableLayout) + text(d.columns);
    }
    if (which == DictionaryTable::Groups)
        q += text(t::kSingleDigitGroups);
    return q;
}

TransferResult importDictionary(const DbConnection& db, DictionaryTable which, const QString& path,
                                const VeskSettings& s) {
    const Dictionary& d = dictionary(which);
    if (prompts().ask(dictionaryLayoutQuestion(which, path, s), Buttons::YesNo, Icon::Question) !=
        Answer::Yes)
        return TransferResult::Declined;
    if (hasRows(db, QStringLiteral("SELECT 1 FROM %1 LIMIT 1").arg(d.table)) &&
        prompts().ask(text(t::kAlreadyHasData).arg(text(d.table)) + u'\n' + text(t::kZapHint) +
                          text(t::kZapHintMenu),
                      Buttons::YesNo, Icon::Question) != Answer::Yes)
        return TransferResult::Declined;
    QString failure;
    const CellArray rows = readSource(path, dictionarySourceName(which, s), true, &failure);
    if (!failure.isEmpty()) {
        show(text(t::kImportError).arg(text(d.word)) + failure, Icon::Critical);
        return TransferResult::Failed;
    }
    if (noRows(rows)) {
        show(text(d.notFound), Icon::Critical);
        return TransferResult::Failed;
    }
    if (const auto cut = textRowCut(path, rows)) {
        show(text(t::kUnableToAppend) + u' ' + text(d.table) + u'\n' + *cut, Icon::Critical);
        return TransferResult::Failed;
    }
    QSqlError error;
    const QStringList fields = FnGetFldNames(db, text(d.table));
    const bool stored = inOneImport(
        db,
        [&](QSqlError* e) {
            return runStatements(db, emptyBefore(which), e) &&
                   appendRows(db, text(d.table), fields, rows, e, {}, conversionFor(which));
        },
        &error);
    if (!stored) {
        show(text(t::kUnableToAppend) + u' ' + text(d.table) + u'\n' + engineDescription(error),
             Icon::Critical);
        return TransferResult::Failed;
    }
    show(text(d.imported), Icon::Information);
    return TransferResult::Done;
}

TransferResult ImpAllDct(const DbConnection& db, const QString& path, const VeskSettings& s) {
    if (hasRows(db, QStringLiteral("SELECT 1 FROM _DctBDMGrps LIMIT 1")) &&
        prompts().ask(text(t::kAllOverwrite), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return TransferResult::Declined;
    // Every table is read before anything is written, so that a missing one changes nothing.
    std::array<CellArray, 6> rows;
    for (const Dictionary& d : dictionaries()) {
        QString failure;
        rows[static_cast<std::size_t>(d.which)] =
            readSource(path, dictionarySourceName(d.which, s), false, &failure);
        if (!failure.isEmpty()) {
            show(text(t::kImportError).arg(text(d.word)) + failure, Icon::Critical);
            return TransferResult::Failed;
        }
        if (noRows(rows[static_cast<std::size_t>(d.which)])) {
            show(text(d.notFound), Icon::Critical);
            return TransferResult::Failed;
        }
        if (const auto cut = textRowCut(path, rows[static_cast<std::size_t>(d.which)])) {
            show(text(t::kUnableToUpdate) + text(d.table) + u'\n' + *cut, Icon::Critical);
            return TransferResult::Failed;
        }
    }
    QSqlError error;
    QString failedTable;
    const bool stored = inOneImport(
        db,
        [&](QSqlError* e) {
            if (!runStatements(db, kEmptyBeforeAll, e))
                return false;
            for (const Dictionary& d : dictionaries()) {
                failedTable = text(d.table);
                if (!appendRows(db, failedTable, FnGetFldNames(db, failedTable),
                                rows[static_cast<std::size_t>(d.which)], e, {}, conversionFor(d.which)))
                    return false;
            }
            failedTable.clear(); // a failure now is the commit's: the keys between the tables
            return true;
        },
        &error);
    if (!stored) {
        show(text(t::kUnableToUpdate) + failedTable + u'\n' + engineDescription(error), Icon::Critical);
        return TransferResult::Failed;
    }
    show(text(foreignKind(path) == ForeignKind::Text ? t::kAllUpdated : t::kAllImported), Icon::Information);
    return TransferResult::Done;
}

std::optional<CellArray> ImpDctTxtAll(const QString& path, const QString& name, QString* error) {
    const auto content = readTextContent(path);
    if (!content) {
        if (error)
            *error = QStringLiteral("The file '%1' cannot be read.").arg(path);
        return std::nullopt;
    }
    const QString heading = u'[' + name.toUpper() + u']';
    return sectionRows(
        *content, path, [&](const QString& line) { return line.toUpper() == heading; },
        [](const QString& line) { return line.isEmpty() || line.startsWith(u'['); }, error);
}

TransferResult exportDictionary(const DbConnection& db, std::optional<DictionaryTable> which,
                                const QString& path, const VeskSettings& s) {
    if (which) {
        if (!exportOne(db, *which, path, s))
            return TransferResult::Failed;
        show(text(dictionary(*which).exported), Icon::Information);
        return TransferResult::Done;
    }
    if (foreignKind(path) == ForeignKind::Text)
        return exportAllAsSections(db, path, s);
    if (foreignKind(path) == ForeignKind::Dbf) {
        for (const Dictionary& d : dictionaries())
            if (!exportOne(db, d.which, tablePath(path, dictionarySourceName(d.which, s)), s))
                return TransferResult::Failed;
    } else if (!exportAllTogether(db, path, s)) {
        return TransferResult::Failed;
    }
    show(text(t::kAllDictionariesExported), Icon::Information);
    return TransferResult::Done;
}

} // namespace vesk
