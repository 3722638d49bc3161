// vesk-cli asg: age-sex group labels from boundaries, and the map between two label sets.

#include "app/cli/cli.h"
#include "foundation/array_helpers.h"
#include "platform/cell_array.h"
#include "platform/prompts.h"
#include "study/asg_labels.h"
#include "study/asg_map.h"

namespace vesk::cli {

namespace {

const char* kUsage =
    "Usage:\n"
    "  vesk-cli asg labels --boundaries 0,1,5,15,45,60 [--persons]\n"
    "      The age-sex group labels of a list of lower ages, one a line, sorted as text: M and F\n"
    "      labels, or P labels with --persons. The last age opens the interval to the end of life.\n"
    "  vesk-cli asg map --first LABELS --second LABELS\n"
    "      The map between two comma-separated label sets (equal sizes: the groups must coincide;\n"
    "      otherwise each group of the shorter set must be a union of groups of the longer).\n"
    "      Prints CSV: feasible (true/false), cell1 (0 when the first set is the shorter), cell2,\n"
    "      then one row per label of the longer set: index,label,group,group_index.\n";

int fail(const QString& message) {
    err(QStringLiteral("vesk-cli asg: ") + message);
    return 2;
}

int runLabels(QStringList args) {
    const bool persons = takeFlag(args, QStringLiteral("--persons"));
    const auto list = takeOption(args, QStringLiteral("--boundaries"));
    if (!list || list->trimmed().isEmpty())
        return fail(
            QStringLiteral("give the lower ages with --boundaries, e.g. --boundaries 0,1,5,15,45,60"));
    if (!args.isEmpty())
        return fail(QStringLiteral("unknown argument '%1'").arg(args.first()));
    const QStringList ages = list->split(u',');
    CellArray boundaries({static_cast<int>(ages.size()), 1});
    for (int i = 0; i < ages.size(); ++i) {
        const QString a = ages[i].trimmed();
        if (!isNumericCell(Cell(a)))
            return fail(QStringLiteral("'%1' is not an age").arg(ages[i]));
        boundaries(i, 0) = Cell(a);
    }
    // ASGDfn's message box would go to the headless service; the tool says it once, itself.
    ScriptedPrompts silent;
    ScopedPromptService scope(&silent);
    CellArray labels;
    if (!ASGDfn(boundaries, persons ? 7 : 0, labels) || labels.rank() != 1)
        return fail(silent.messages().value(0, QStringLiteral("the labels could not be built")));
    QString text;
    for (int i = labels.lbound(0); i <= labels.ubound(0); ++i)
        text += labels(i).toString() + u'\n';
    out(text);
    return 0;
}

Cell labelList(const QString& text) {
    const QStringList parts = text.split(u',', Qt::SkipEmptyParts);
    CellArray out({static_cast<int>(parts.size())});
    for (int i = 0; i < parts.size(); ++i)
        out(i) = Cell(parts[i].trimmed());
    return Cell(std::move(out));
}

int runMap(QStringList args) {
    const auto first = takeOption(args, QStringLiteral("--first"));
    const auto second = takeOption(args, QStringLiteral("--second"));
    if (!first || !second || first->trimmed().isEmpty() || second->trimmed().isEmpty())
        return fail(QStringLiteral("give both label sets: --first F0-4,F5-w,M0-4,M5-w --second ..."));
    if (!args.isEmpty())
        return fail(QStringLiteral("unknown argument '%1'").arg(args.first()));
    const CellArray record = FnAsgMap(labelList(*first), labelList(*second));
    const bool feasible = asgMapFeasible(record);
    QString text =
        QStringLiteral("feasible,%1\n").arg(feasible ? QStringLiteral("true") : QStringLiteral("false"));
    if (feasible) {
        text += QStringLiteral("cell1,%1\ncell2,%2\nindex,label,group,group_index\n")
                    .arg(record(kAsgMapFirstSide).toString(), record(kAsgMapSecondSide).toString());
        const CellArray& map = record(kAsgMapRows).array();
        for (int i = map.lbound(0); i <= map.ubound(0); ++i)
            text += QStringLiteral("%1,%2,%3,%4\n")
                        .arg(QString::number(i), map(i, 0).toString(), map(i, 1).toString(),
                             map(i, 2).toString());
    }
    out(text);
    return 0;
}

int runAsg(const QStringList& argsIn) {
    QStringList args = argsIn;
    if (args.isEmpty()) {
        err(QString::fromLatin1(kUsage));
        return 2;
    }
    const QString sub = args.takeFirst();
    if (sub == QLatin1String("labels"))
        return runLabels(args);
    if (sub == QLatin1String("map"))
        return runMap(args);
    return fail(QStringLiteral("unknown subcommand '%1' (labels or map)").arg(sub));
}

const Registrar registrar({QStringLiteral("asg"),
                           QStringLiteral("age-sex group labels and the map between two sets"),
                           QString::fromLatin1(kUsage), runAsg});

} // namespace

} // namespace vesk::cli
