#include "study/outline.h"

#include "database/sql_tokens.h"
#include "platform/runtime.h"
#include "study/cause_dictionary_texts.h"

#include <functional>

namespace vesk {

namespace {

QString cellText(const QVariant& v) {
    if (v.isNull())
        return {};
    const Cell c = cellFromVariant(v);
    return c.isNumber() ? numberToText(c.toDouble()) : c.toString();
}

// (code, description) of each row of a query.
QList<QPair<QString, QString>> pairs(const DbConnection& db, const QString& sql, const QVariantList& values) {
    QList<QPair<QString, QString>> out;
    auto q = db.query(sql, values);
    while (q && q->next())
        out.push_back({cellText(q->value(0)), cellText(q->value(1))});
    return out;
}

OutlineNode node(const QString& prefix, const QPair<QString, QString>& row) {
    return {prefix + row.first, outlineText(row.first, row.second), {}};
}

// Sets the bar to run over `count` steps, from none done.
void startProgress(Progress* progress, qsizetype count) {
    if (!progress)
        return;
    progress->setRange(0, std::max<int>(1, static_cast<int>(count)));
    progress->setValue(0);
}

// A node for each row, with the children `childrenOf` gives it (none without it); the bar, when
// given, steps once a row.
QList<OutlineNode>
nodesOf(const QList<QPair<QString, QString>>& rows, const QString& prefix,
        const std::function<QList<OutlineNode>(const QPair<QString, QString>&)>& childrenOf = {},
        Progress* progress = nullptr) {
    startProgress(progress, rows.size());
    QList<OutlineNode> out;
    int done = 0;
    for (const auto& row : rows) {
        OutlineNode n = node(prefix, row);
        if (childrenOf)
            n.children = childrenOf(row);
        out << n;
        if (progress)
            progress->setValue(++done);
    }
    return out;
}

// The study's column of _DctBDM as the file spells it; empty when there is none.
QString studyColumn(const DbConnection& db, const QString& study) {
    auto q = db.query(QStringLiteral("SELECT name FROM pragma_table_info('_DctBDM')"));
    while (q && q->next()) {
        const QString name = q->value(0).toString();
        if (name.compare(study.trimmed(), Qt::CaseInsensitive) == 0 && isPlainIdentifier(name))
            return name;
    }
    return {};
}

QList<OutlineNode> causesOf(const DbConnection& db, const QString& cluster, const QString& study,
                            const QString& column) {
    QString sql;
    if (study.isEmpty())
        sql = QStringLiteral("SELECT CobCd, Disease FROM _DctBDM WHERE ClstrCd = ? ORDER BY rowid");
    else if (!column.isEmpty())
        sql =
            QStringLiteral("SELECT CobCd, Disease FROM _DctBDM WHERE %1 <> 0 AND ClstrCd = ? ORDER BY rowid")
                .arg(sql::quoteName(column));
    else
        return {}; // a study without its column has no causes
    return nodesOf(pairs(db, sql, {cluster}), QStringLiteral("D"));
}

void addLines(const OutlineNode& n, int depth, QList<OutlineLine>& out) {
    out.push_back({depth, n.text});
    for (const OutlineNode& child : n.children)
        addLines(child, depth + 1, out);
}

} // namespace

QString outlineText(const QString& code, const QString& description) {
    return code + QStringLiteral(";(") + description + u')';
}

OutlineNode causeOutline(const DbConnection& db, const QString& study, Progress* progress) {
    using Row = QPair<QString, QString>;
    const QString column = study.isEmpty() ? QString() : studyColumn(db, study);
    const auto clustersOf = [&](const Row& subgroup) {
        return nodesOf(
            pairs(db,
                  QStringLiteral("SELECT ClstrCd, Cluster FROM _DctBDMClstr WHERE SGrpCd = ? ORDER BY rowid"),
                  {subgroup.first}),
            QStringLiteral("C"),
            [&](const Row& cluster) { return causesOf(db, cluster.first, study, column); });
    };
    const auto subgroupsOf = [&](const Row& group) {
        return nodesOf(
            pairs(db,
                  QStringLiteral("SELECT SGrpCd, Subgroup FROM _DctBDMSGrps WHERE GrpCd = ? ORDER BY SGrpCd"),
                  {group.first.toInt()}),
            QStringLiteral("S"), clustersOf);
    };
    OutlineNode causes{QStringLiteral("COB"), cdtext::CausesNode, {}};
    causes.children =
        nodesOf(pairs(db, QStringLiteral("SELECT GrpCd, \"Group\" FROM _DctBDMGrps ORDER BY rowid"), {}),
                QStringLiteral("G"), subgroupsOf, progress);
    return {QStringLiteral("ROOT"), cdtext::CausesRoot, {causes}};
}

OutlineNode populationOutline(const DbConnection& db, const QString& study, Progress* progress) {
    using Row = QPair<QString, QString>;
    using Children = std::function<QList<OutlineNode>(const Row&)>;
    // The study's entries under a row of the level above: `sql` binds that row's code and the study.
    const auto entriesUnder = [&db, &study](const char* sql, const char* prefix,
                                            Children children) -> Children {
        return [&db, &study, sql, prefix, children](const Row& parent) {
            return nodesOf(pairs(db, QString::fromLatin1(sql), {parent.first, study}),
                           QString::fromLatin1(prefix), children);
        };
    };
    const Children unitsOf = entriesUnder(
        "SELECT BPUID, BPUName FROM _DctBPU WHERE PAG1Id = ? AND BDSId = ? ORDER BY rowid", "B", {});
    const Children pag1sOf =
        entriesUnder("SELECT PAG1Id, PAG1Name FROM _DctPAG1 WHERE PAG2Id = ? AND BDSId = ? ORDER BY PAG1Id",
                     "P1", unitsOf);
    OutlineNode schema{QStringLiteral("POP"), cdtext::PopulationNode, {}};
    schema.children = nodesOf(
        pairs(db, QStringLiteral("SELECT PAG2Id, PAG2Name FROM _DctPAG2 WHERE BDSId = ? ORDER BY rowid"),
              {study}),
        QStringLiteral("P2"), pag1sOf, progress);
    return {QStringLiteral("ROOT"), cdtext::PopulationRoot, {schema}};
}

QList<OutlineLine> outlineEntries(const OutlineNode& root) {
    QList<OutlineLine> out;
    addLines(root, 0, out);
    return out;
}

QStringList outlineLines(const OutlineNode& root, int indent) {
    QStringList lines;
    for (const OutlineLine& l : outlineEntries(root))
        lines << QString(l.depth * indent, u' ') + l.text;
    return lines;
}

int outlineNodeCount(const OutlineNode& root) {
    return static_cast<int>(outlineEntries(root).size());
}

} // namespace vesk
