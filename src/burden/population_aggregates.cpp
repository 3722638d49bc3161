#include "burden/population_aggregates.h"

#include "platform/cell_array.h"

#include <algorithm>

namespace vesk {

namespace {

const QString kPag1List = QStringLiteral(
    "SELECT DISTINCT PAG1Id, PAG1Name FROM _DctPAG1 WHERE upper(trim(BDSId)) = upper(trim(?)) AND PAG1Id IN "
    "(SELECT DISTINCT PAG1Id FROM _DctBPU WHERE upper(trim(BDSId)) = upper(trim(?))) ORDER BY PAG1Id");
const QString kPag2List = QStringLiteral(
    "SELECT DISTINCT PAG2Id, PAG2Name FROM _DctPAG2 WHERE upper(trim(BDSId)) = upper(trim(?)) ORDER BY PAG2Id");
// The PAG1s of a PAG2 are those of the same study: ids repeat between studies.
const QString kPag1OfPag2 = QStringLiteral(
    "SELECT PAG1Id FROM _DctPAG1 WHERE upper(trim(PAG2Id)) = upper(trim(?)) AND upper(trim(BDSId)) = "
    "upper(trim(?)) ORDER BY PAG1Id");
const QString kBpuOfPag1 = QStringLiteral(
    "SELECT DISTINCT BPUID FROM _DctBPU WHERE upper(trim(PAG1Id)) = upper(trim(?)) AND upper(trim(BDSId)) = "
    "upper(trim(?)) ORDER BY BPUID");

std::optional<QList<QList<Cell>>> rows(const DbConnection& db, const QString& sql, const QVariantList& values,
                                       int columns, QString* error) {
    QSqlError e;
    auto q = db.query(sql, values, &e);
    if (!q) {
        *error = engineDescription(e);
        return std::nullopt;
    }
    return rowsOf(*q, columns);
}

int indexOf(const Cell& vctrBPULst, const QString& bpu) {
    if (!vctrBPULst.isArray())
        return -1;
    const CellArray& v = vctrBPULst.array();
    for (int i = 0; i < v.size(0); ++i)
        if (v(v.lbound(0) + i).toString().trimmed().compare(bpu.trimmed(), Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

bool addBpusOf(const DbConnection& db, const QString& study, const QString& pag1, const Cell& vctrBPULst,
               PagMembers& members, QString* error) {
    const auto bpus = rows(db, kBpuOfPag1, {pag1, study}, 1, error);
    if (!bpus)
        return false;
    for (const auto& r : *bpus) {
        const int i = indexOf(vctrBPULst, r[0].toString());
        if (i >= 0 && std::find(members.begin(), members.end(), i) == members.end())
            members.push_back(i);
    }
    return true;
}

} // namespace

std::optional<std::vector<PopulationAggregate>> populationAggregates(const DbConnection& db, const QString& study,
                                                                     const Cell& vctrBPULst, PagLevel level,
                                                                     QString* error) {
    const bool pag1 = level == PagLevel::Pag1;
    const auto list = pag1 ? rows(db, kPag1List, {study, study}, 2, error) : rows(db, kPag2List, {study}, 2, error);
    if (!list)
        return std::nullopt;
    std::vector<PopulationAggregate> out;
    for (const auto& r : *list) {
        PopulationAggregate p{r[0].toString(), r[1].toString(), {}};
        if (pag1) {
            if (!addBpusOf(db, study, p.id, vctrBPULst, p.members, error))
                return std::nullopt;
        } else {
            const auto pag1s = rows(db, kPag1OfPag2, {p.id, study}, 1, error);
            if (!pag1s)
                return std::nullopt;
            for (const auto& q : *pag1s)
                if (!addBpusOf(db, study, q[0].toString(), vctrBPULst, p.members, error))
                    return std::nullopt;
        }
        out.push_back(std::move(p));
    }
    return out;
}

std::vector<PagMembers> memberLists(const std::vector<PopulationAggregate>& aggregates) {
    std::vector<PagMembers> out;
    out.reserve(aggregates.size());
    for (const auto& a : aggregates)
        out.push_back(a.members);
    return out;
}

} // namespace vesk
