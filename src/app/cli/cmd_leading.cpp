// vesk-cli leading STUDY.vdb --measure M [--n N] [--level BPU|PAG1|PAG2] [--unit ID] [--dap ID] [--year Y]:
// the N leading causes of a unit, as the report "N Leading Causes" ranks them.

#include "app/cli/cli.h"
#include "app/cli/study_session.h"
#include "burden/aggregation.h"
#include "burden/computation.h"
#include "burden/leading_causes.h"
#include "results/result_tables.h"
#include "database/study_context.h"
#include "platform/cell_array.h"

namespace vesk::cli {

namespace {

int fail(const QString& why, int code = 1) {
    err(QStringLiteral("vesk-cli leading: ") + why);
    return code;
}

int leading(const QStringList& arguments) {
    QStringList args = arguments;
    const auto measureName = takeOption(args, QStringLiteral("--measure"));
    const QString n = takeOption(args, QStringLiteral("--n")).value_or(QStringLiteral("10"));
    const QString level = takeOption(args, QStringLiteral("--level")).value_or(QStringLiteral("BPU")).toUpper();
    const auto unit = takeOption(args, QStringLiteral("--unit"));
    const QString dap = takeOption(args, QStringLiteral("--dap")).value_or(QStringLiteral("1"));
    const auto year = takeOption(args, QStringLiteral("--year"));
    const bool list = takeFlag(args, QStringLiteral("--list"));
    const QString stp = takeOption(args, QStringLiteral("--settings")).value_or(defaultSettingsPath());
    if (args.size() != 1)
        return fail(QStringLiteral("give STUDY.vdb; `vesk-cli leading --help` tells more"), 2);
    const auto measure = burdenMeasureNamed(measureName.value_or(QStringLiteral("IDALY")));
    if (!measure)
        return fail(QStringLiteral("--measure is one of YLL, IYLD, PYLD, IDALY, PDALY"), 2);
    if (level != QLatin1String("BPU") && level != QLatin1String("PAG1") && level != QLatin1String("PAG2"))
        return fail(QStringLiteral("--level is one of BPU, PAG1, PAG2"), 2);
    bool numberOk = false;
    if (n.toInt(&numberOk) <= 0 || !numberOk)
        return fail(QStringLiteral("--n is a whole number above 0"), 2);
    QString error;
    const Cell sets = chosenSets(dap, false, &error);
    if (!sets.isArray())
        return fail(error, 2);
    const OpenStudy study(args[0], stp);
    if (!study)
        return fail(study.error());
    std::vector<PagMembers> members;
    const ResultLevel at = level == QLatin1String("BPU")    ? ResultLevel::BPU
                           : level == QLatin1String("PAG1") ? ResultLevel::PAG1
                                                            : ResultLevel::PAG2;
    const std::vector<ResultUnit> units = levelUnits(at, studyContext(), &members);
    if (units.empty())
        return fail(QStringLiteral("the study has no %1").arg(level));
    if (list) {
        out(QStringLiteral("ID,Name\n"));
        for (const ResultUnit& u : units)
            out(csvField(u.id) + u',' + csvField(u.name) + u'\n');
        return 0;
    }
    QStringList ids;
    for (const ResultUnit& u : units)
        ids << u.id;
    const int index = chosenIndex(ids, unit);
    if (index < 0)
        return fail(QStringLiteral("no %1 '%2' in the study").arg(level, *unit), 2);
    const int y = chosenIndex(entryTexts(studyContext().VctrYrLst), year);
    if (y < 0)
        return fail(QStringLiteral("the study has no year %1").arg(*year), 2);
    if (!studyResults(sets, stp, &error))
        return fail(error);
    MeasureSource source = measureSource(computation(), *measure);
    if (level != QLatin1String("BPU"))
        source.result = FnBPUToPag(source.result, members);
    const auto table = procNLeadCausDALY(source, *measure, index, y, 0, n, [](const QString& code) {
        return FnDiseaseName(*studyContext().StudyDB, code);
    });
    if (!table)
        return 1;
    out(QStringLiteral("Rank,COBCd,Cause,Total,Percent\n"));
    const CellArray& rows = table->rows;
    for (int r = 0; r < rows.size(0); ++r)
        out(QString::number(r + 1) + u',' + csvField(rows(r, 0).toString()) + u',' + csvField(rows(r, 1).toString()) +
            u',' + csvNumber(rows(r, 2).toDouble()) + u',' + rows(r, 3).toString() + u'\n');
    return 0;
}

const Registrar leadingCommand({
    QStringLiteral("leading"),
    QStringLiteral("rank the leading causes of a unit by a burden measure"),
    QStringLiteral(
        "Usage: vesk-cli leading STUDY.vdb [--measure M] [--n N] [--level BPU|PAG1|PAG2] [--unit ID]\n"
        "                        [--dap ID] [--year Y] [--list] [--settings FILE]\n\n"
        "The report \"N Leading Causes\" of the current study of STUDY.vdb: the causes of one unit ranked\n"
        "by a measure summed over the age-sex groups, each with its share of the total of all causes (so\n"
        "that the shares shown need not add to 100). The results are loaded from the result tables where\n"
        "they hold the set, otherwise computed and stored first, as `vesk-cli compute` does.\n\n"
        "  --measure M   YLL, IYLD, PYLD, IDALY or PDALY (default IDALY)\n"
        "  --n N         how many causes (default 10); all of them when the study has fewer\n"
        "  --level L     BPU (default), PAG1 or PAG2: an aggregate sums the BPUs mapped to it\n"
        "  --unit ID     the unit or aggregate (default the first: the first BPU by priority, the first\n"
        "                aggregate by id)\n"
        "  --dap ID      the built-in parameter set, 0 to 3 (default 1)\n"
        "  --year Y      a year of the study (default its first)\n"
        "  --list        print the units of the level (ID,Name) instead\n"
        "  --settings    the settings file (default: Vesk.stp beside vesk-cli)\n\n"
        "Standard output: CSV with the head Rank,COBCd,Cause,Total,Percent; Total reads back to the\n"
        "same double, Percent is the share as the report shows it (\"0.000\", or 0 when the total is 0).\n"
        "Exit code 0 when the ranking was printed, 1 when the study or its results could not be had, 2\n"
        "for a command that cannot be run."),
    leading,
});

} // namespace

} // namespace vesk::cli
