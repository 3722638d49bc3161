#include "burden/cause_levels.h"

#include "burden/aggregation_texts.h"
#include "database/sql_tokens.h"
#include "platform/cell_array.h"
#include "platform/prompts.h"

namespace vesk {

namespace at = aggregation_texts;

namespace {

QString levelQuery(CauseLevel level) {
    switch (level) {
    case CauseLevel::Group:
        return QStringLiteral("SELECT GrpCd AS COBCd, \"Group\" AS Descr FROM _DctBDMGrps");
    case CauseLevel::Subgroup:
        return QStringLiteral("SELECT SGrpCd AS COBCd, SubGroup AS Descr FROM _DctBDMSGrps");
    case CauseLevel::Cluster:
        break;
    }
    return QStringLiteral("SELECT ClstrCd AS COBCd, Cluster AS Descr FROM _DctBDMClstr");
}

// A cause reaches its cluster, the cluster its subgroup and the subgroup its group; the study's
// causes are those whose column is set. The right joins of the dictionary's design read here as
// left joins from the cause.
QString mappingQuery(const QString& studyColumn) {
    return QStringLiteral("SELECT _DctBDM.CobCd AS CODCd, _DctBDMClstr.ClstrCd AS ClstCd, _DctBDMGrps.GrpCd AS GCd, "
                          "_DctBDMSGrps.SGrpCd AS SGpCd FROM _DctBDM INNER JOIN _DctBDMClstr ON _DctBDM.ClstrCd = "
                          "_DctBDMClstr.ClstrCd LEFT JOIN _DctBDMSGrps ON _DctBDMSGrps.SGrpCd = _DctBDMClstr.SGrpCd "
                          "LEFT JOIN _DctBDMGrps ON _DctBDMGrps.GrpCd = _DctBDMSGrps.GrpCd WHERE _DctBDM.%1 <> 0 "
                          "ORDER BY _DctBDM.rowid")
        .arg(sql::quoteName(studyColumn));
}

Cell matrixOf(const QList<QList<Cell>>& rows, int columns) {
    CellArray m({int(rows.size()), columns});
    for (int r = 0; r < rows.size(); ++r)
        for (int c = 0; c < columns; ++c)
            m(r, c) = rows[r][c];
    return Cell(std::move(m));
}

void showEngineError(const QSqlError& e) {
    prompts().ask(QString::fromUtf8(at::kLoadDictionaryError) + QString::number(engineErrorNumber(e)) +
                  QLatin1Char(' ') + engineDescription(e));
}

int levelColumn(CauseLevel level) {
    switch (level) {
    case CauseLevel::Group:
        return cod_levels::kGroup;
    case CauseLevel::Subgroup:
        return cod_levels::kSubgroup;
    case CauseLevel::Cluster:
        break;
    }
    return cod_levels::kCluster;
}

} // namespace

bool LoadDictionary(const DbConnection& db, CauseLevel level, const QString& studyColumn, CauseLevelDictionary& out) {
    QSqlError e;
    auto q = db.query(levelQuery(level), {}, &e);
    if (!q) {
        showEngineError(e);
        return false;
    }
    const auto entries = rowsOf(*q, 2);
    if (entries.isEmpty()) {
        prompts().ask(QString::fromUtf8(at::kNoLevelDictionary));
        return false;
    }
    auto m = db.query(mappingQuery(studyColumn), {}, &e);
    if (!m) {
        showEngineError(e);
        return false;
    }
    out.ArrDict = matrixOf(entries, 2);
    out.MtxCodLevels = matrixOf(rowsOf(*m, 4), 4);
    return true;
}

Cell FnCodeAtLevel(const Cell& mtxCodLevels, const QString& code, CauseLevel level) {
    if (!mtxCodLevels.isArray())
        return Cell();
    const CellArray& m = mtxCodLevels.array();
    const QString wanted = code.trimmed();
    for (int r = m.lbound(0); r <= m.ubound(0); ++r)
        if (m(r, m.lbound(1) + cod_levels::kCause).toString().trimmed() == wanted)
            return m(r, m.lbound(1) + levelColumn(level));
    return Cell();
}

} // namespace vesk
