#pragma once
// The two outlines of frmCOB: the causes of burden (group, subgroup, cluster, cause) and the
// population schema of the current study (level-2 aggregate, level-1 aggregates, units). The
// tree and the printed list walk the same queries; the core builds the nodes, the form shows or
// prints them. A node reads as its code, ";(" and its description, and its key holds the code.

#include "database/db_connection.h"
#include "platform/progress.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace vesk {

struct OutlineNode {
    QString key;
    QString text;
    QList<OutlineNode> children;
};

// The text of a node: code + ";(" + description + ")".
QString outlineText(const QString& code, const QString& description);

// " Causes of Burden Outline" > "Cause of Burden" > groups > subgroups > clusters > causes. With a
// study, the causes are those of its column of _DctBDM; with an empty study, the whole dictionary.
// `progress` (when given) moves once per group.
OutlineNode causeOutline(const DbConnection& db, const QString& study, Progress* progress = nullptr);

// " Population Schema Outline" > "Population Schema" > PAG2 > PAG1 > BPU, for the study.
OutlineNode populationOutline(const DbConnection& db, const QString& study, Progress* progress = nullptr);

// One line per node, depth first, each indented by `indent` blanks a level (the printed list).
QStringList outlineLines(const OutlineNode& root, int indent = 4);
// The nodes with their depth, depth first (0 for the root).
struct OutlineLine {
    int depth;
    QString text;
};
QList<OutlineLine> outlineEntries(const OutlineNode& root);
// Every node's text, depth first.
int outlineNodeCount(const OutlineNode& root);

} // namespace vesk
