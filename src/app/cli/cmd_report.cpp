// vesk-cli report STUDY.vdb --level L --measure M [--detail] [--dap ID] [--unit ID] [--year Y] [--out FILE]:
// a result table of the Results menu, as its viewer shows it, for one unit, year and parameter set.

#include "app/cli/cli.h"
#include "app/cli/study_session.h"
#include "burden/computation.h"
#include "burden/leading_causes.h"
#include "database/study_context.h"
#include "foundation/settings.h"
#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "platform/cell_array.h"
#include "results/result_entries.h"
#include "results/result_tables.h"

namespace vesk::cli {

namespace {

int fail(const QString& why, int code = 1) {
    err(QStringLiteral("vesk-cli report: ") + why);
    return code;
}

// The entry of the Results menu for a level, kind and measure; the plain heads before "IYLL".
const ResultEntry* entryFor(const QString& level, bool detail, BurdenMeasure measure) {
    const ResultEntry* found = nullptr;
    for (const ResultEntry& e : resultEntries())
        if (levelName(e.level) == level && e.measure == measure &&
            (detail ? e.kind == ResultKind::Detail : e.kind == ResultKind::Distribution) && (!found || found->iyllHeads))
            found = &e;
    return found;
}

QString field(const Cell& c) {
    return c.isNumber() ? csvNumber(c.toDouble()) : csvField(c.toString());
}

void printCsv(const ResultTable& t) {
    QStringList head;
    for (const QString& h : t.heads)
        head << csvField(h);
    out(head.join(u',') + u'\n');
    for (int r = 0; r < t.rows.size(0); ++r) {
        QStringList row;
        for (int k = 0; k < t.rows.size(1); ++k)
            row << field(t.rows(r, k));
        out(row.join(u',') + u'\n');
    }
}

int report(const QStringList& arguments) {
    QStringList args = arguments;
    const QString level = takeOption(args, QStringLiteral("--level")).value_or(QStringLiteral("BPU")).toUpper();
    const auto measure = burdenMeasureNamed(takeOption(args, QStringLiteral("--measure")).value_or("IDALY"));
    const bool detail = takeFlag(args, QStringLiteral("--detail"));
    const QString dap = takeOption(args, QStringLiteral("--dap")).value_or(QStringLiteral("1"));
    const auto unit = takeOption(args, QStringLiteral("--unit"));
    const auto year = takeOption(args, QStringLiteral("--year"));
    const auto target = takeOption(args, QStringLiteral("--out"));
    const QString stp = takeOption(args, QStringLiteral("--settings")).value_or(defaultSettingsPath());
    if (args.size() != 1)
        return fail(QStringLiteral("give STUDY.vdb; `vesk-cli report --help` tells more"), 2);
    if (!measure)
        return fail(QStringLiteral("--measure is one of YLL, IYLD, PYLD, IDALY, PDALY"), 2);
    const ResultEntry* entry = entryFor(level, detail, *measure);
    if (!entry)
        return fail(QStringLiteral("--level is one of BPU, PAG1, PAG2"), 2);
    const StudyWithResults study(args[0], stp, dap, false);
    if (!study)
        return fail(study.error(), study.exitCode());
    const auto source = resultSource(*entry, computation(), studyContext());
    if (!source)
        return 1;
    QStringList ids;
    for (const ResultUnit& u : source->units)
        ids << u.id;
    const int u = chosenIndex(ids, unit), y = chosenIndex(entryTexts(studyContext().VctrYrLst), year);
    if (u < 0)
        return fail(QStringLiteral("no %1 '%2' in the study").arg(level, *unit), 2);
    if (y < 0)
        return fail(QStringLiteral("the study has no year %1").arg(*year), 2);
    const auto name = [](const QString& code) { return FnDiseaseName(*studyContext().StudyDB, code); };
    const int decimals = settings().RsltDecPlcs;
    const auto table = detail ? detailTable(*source, u, y, 0, decimals, name)
                              : summaryTable(*source, u, y, 0, QString(), decimals, name);
    if (!table)
        return 1;
    if (!target) {
        printCsv(*table);
        return 0;
    }
    if (!FnWriteArrFile(table->rows, *target, QStringLiteral("Results"), tableFieldNames(table->heads)))
        return fail(QStringLiteral("could not write %1: %2").arg(*target, lastForeignError().words));
    return 0;
}

const Registrar reportCommand({
    QStringLiteral("report"),
    QStringLiteral("a result table of the Results menu for one unit"),
    QStringLiteral(
        "Usage: vesk-cli report STUDY.vdb [--level BPU|PAG1|PAG2] [--measure M] [--detail] [--dap ID]\n"
        "                       [--unit ID] [--year Y] [--out FILE] [--settings FILE]\n\n"
        "The table a Results entry shows, for the current study of STUDY.vdb. The results are loaded\n"
        "from the result tables where they hold the set, otherwise computed and stored first.\n\n"
        "  --level L     BPU (default), PAG1 or PAG2: an aggregate sums the BPUs mapped to it\n"
        "  --measure M   YLL, IYLD, PYLD, IDALY (default) or PDALY\n"
        "  --detail      the table by age, sex and cause (a column for each age-sex group) instead of\n"
        "                the percentage distribution among causes\n"
        "  --dap ID      the built-in parameter set, 0 to 3 (default 1)\n"
        "  --unit ID     the unit or aggregate (default the first)\n"
        "  --year Y      a year of the study (default its first)\n"
        "  --out FILE    write the table into FILE, of the kind its extension names (.txt, .csv, .wk1,\n"
        "                .xls/.xlsx, .dbf, .vdb/.mdb); without it, CSV on standard output\n"
        "  --settings    the settings file (default: Vesk.stp beside vesk-cli); its RsltDecPlcs rounds\n"
        "                the values half to even when above 0\n\n"
        "Exit code 0 when the table was written, 1 when the study or its results could not be had, 2 for\n"
        "a command that cannot be run."),
    report,
});

} // namespace

} // namespace vesk::cli
