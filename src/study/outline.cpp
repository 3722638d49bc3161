#include "study/outline.h"

#include "database/sql_tokens.h"
#include "platform/runtime.h"
#include "study/cause_dictionary_texts.h"

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
    QList<OutlineNode> out;
    for (const auto& row : pairs(db, sql, {cluster}))
        out << node(QStringLiteral("D"), row);
    return out;
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
    const QString column = study.isEmpty() ? QString() : studyColumn(db, study);
    OutlineNode causes{QStringLiteral("COB"), cdtext::CausesNode, {}};
    const auto groups =
        pairs(db, QStringLiteral("SELECT GrpCd, \"Group\" FROM _DctBDMGrps ORDER BY rowid"), {});
    if (progress) {
        progress->setRange(0, std::max<int>(1, static_cast<int>(groups.size())));
        progress->setValue(0);
    }
    int done = 0;
    for (const auto& group : groups) {
        OutlineNode g = node(QStringLiteral("G"), group);
        for (const auto& subgroup : pairs(
                 db,
                 QStringLiteral("SELECT SGrpCd, Subgroup FROM _DctBDMSGrps WHERE GrpCd = ? ORDER BY SGrpCd"),
                 {group.first.toInt()})) {
            OutlineNode s = node(QStringLiteral("S"), subgroup);
            for (const auto& cluster :
                 pairs(db,
                       QStringLiteral(
                           "SELECT ClstrCd, Cluster FROM _DctBDMClstr WHERE SGrpCd = ? ORDER BY rowid"),
                       {subgroup.first})) {
                OutlineNode c = node(QStringLiteral("C"), cluster);
                c.children = causesOf(db, cluster.first, study, column);
                s.children << c;
            }
            g.children << s;
        }
        causes.children << g;
        if (progress)
            progress->setValue(++done);
    }
    return {QStringLiteral("ROOT"), cdtext::CausesRoot, {causes}};
}

OutlineNode populationOutline(const DbConnection& db, const QString& study, Progress* progress) {
    OutlineNode schema{QStringLiteral("POP"), cdtext::PopulationNode, {}};
    const auto pag2s = pairs(
        db, QStringLiteral("SELECT PAG2Id, PAG2Name FROM _DctPAG2 WHERE BDSId = ? ORDER BY rowid"), {study});
    if (progress) {
        progress->setRange(0, std::max<int>(1, static_cast<int>(pag2s.size())));
        progress->setValue(0);
    }
    int done = 0;
    for (const auto& pag2 : pag2s) {
        OutlineNode p2 = node(QStringLiteral("P2"), pag2);
        for (const auto& pag1 : pairs(
                 db,
                 QStringLiteral(
                     "SELECT PAG1Id, PAG1Name FROM _DctPAG1 WHERE PAG2Id = ? AND BDSId = ? ORDER BY PAG1Id"),
                 {pag2.first, study})) {
            OutlineNode p1 = node(QStringLiteral("P1"), pag1);
            for (const auto& bpu : pairs(
                     db,
                     QStringLiteral(
                         "SELECT BPUID, BPUName FROM _DctBPU WHERE PAG1Id = ? AND BDSId = ? ORDER BY rowid"),
                     {pag1.first, study}))
                p1.children << node(QStringLiteral("B"), bpu);
            p2.children << p1;
        }
        schema.children << p2;
        if (progress)
            progress->setValue(++done);
    }
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
