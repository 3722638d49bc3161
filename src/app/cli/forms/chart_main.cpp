// vesk-chart: the drawing behind `vesk-cli chart` and `vesk-cli pyramid` (see their usage there), one chart of Results -> Graphs
// drawn as the chart window draws it, on an offscreen surface where no display is found. A program of its
// own, so that vesk-cli links no GUI library: vesk-cli chart runs it beside itself.

#include "app/cli/cli.h"
#include "app/cli/study_session.h"
#include "burden/computation.h"
#include "database/study_context.h"
#include "foundation/settings.h"
#include "burden/compute_run.h"
#include "demography/forms/frm_pop_prymd.h"
#include "demography/pyramid.h"
#include "results/chart_data.h"
#include "results/chart_look.h"
#include "results/forms/chart_painter.h"
#include "results/graph_props.h"

#include <QApplication>
#include <QChart>
#include <QChartView>
#include <QDir>

namespace vesk::cli {

namespace {

int fail(const QString& why, int code = 1) {
    err(QStringLiteral("vesk-cli chart: ") + why);
    return code;
}

// The family's table cut to one unit.
ChartTable oneUnit(const ChartTable& t, int u) {
    ChartTable out = t;
    out.categories = {t.categories[u]};
    for (auto& series : out.values)
        series = {series[std::size_t(u)]};
    return out;
}

} // namespace

int drawChart(const QStringList& arguments) {
    QStringList args = arguments;
    bool ok = false;
    const int family = takeOption(args, QStringLiteral("--family")).value_or(QStringLiteral("1")).toInt(&ok);
    const QString level = takeOption(args, QStringLiteral("--level")).value_or(QStringLiteral("BPU")).toUpper();
    const auto unit = takeOption(args, QStringLiteral("--unit"));
    const QString dap = takeOption(args, QStringLiteral("--dap")).value_or(QStringLiteral("1"));
    const auto target = takeOption(args, QStringLiteral("--out"));
    const QString stp = takeOption(args, QStringLiteral("--settings")).value_or(defaultSettingsPath());
    if (args.size() != 1 || !target || target->isEmpty())
        return fail(QStringLiteral("give STUDY.vdb and --out FILE; `vesk-cli chart --help` tells more"), 2);
    if (!ok || family < 1 || family > 5)
        return fail(QStringLiteral("--family is 1 to 5"), 2);
    if (level != QLatin1String("BPU") && level != QLatin1String("PAG1"))
        return fail(QStringLiteral("--level is BPU or PAG1"), 2);
    QString error;
    const Cell sets = chosenSets(dap, false, &error);
    if (!sets.isArray())
        return fail(error, 2);
    auto props = readGraphProps(QDir(QFileInfo(stp).absolutePath()).filePath(QStringLiteral("Gph.stp")), &error);
    if (!props)
        return fail(error);
    if (std::size_t(family) > props->size())
        return fail(QStringLiteral("Gph.stp has no line for family %1").arg(family));
    const OpenStudy study(args[0], stp);
    if (!study)
        return fail(study.error());
    if (!studyResults(sets, stp, &error))
        return fail(error);
    const bool pag = level == QLatin1String("PAG1");
    const auto data = pag ? procPagGraphs(computation(), studyContext(), &error)
                          : procBPUGraphs(computation(), studyContext(), &error);
    if (!data)
        return fail(error);
    applyFamilyTitles(*props, *data);
    ChartTable table = data->tables[std::size_t(family - 1)];
    if (unit) {
        const int u = int(table.categories.indexOf(unit->trimmed()));
        if (u < 0)
            return fail(QStringLiteral("no %1 '%2' in the study").arg(level, *unit), 2);
        table = oneUnit(table, u);
    }
    const ChartLook look = chartLook((*props)[std::size_t(family - 1)], table);
    QChartView view;
    view.setRenderHint(QPainter::Antialiasing);
    view.resize(1000, 560);
    view.setChart(makeBarChart(look, table));
    if (!saveChartView(view, *target, look.title))
        return fail(QStringLiteral("could not write %1").arg(*target));
    return 0;
}

int drawPyramid(const QStringList& arguments) {
    QStringList args = arguments;
    const auto unit = takeOption(args, QStringLiteral("--unit"));
    const auto target = takeOption(args, QStringLiteral("--out"));
    const QString stp = takeOption(args, QStringLiteral("--settings")).value_or(defaultSettingsPath());
    const auto failWith = [](const QString& why, int code) {
        err(QStringLiteral("vesk-cli pyramid: ") + why);
        return code;
    };
    if (args.size() != 1 || !target || target->isEmpty())
        return failWith(QStringLiteral("give STUDY.vdb and --out FILE; `vesk-cli pyramid --help` tells more"), 2);
    const OpenStudy study(args[0], stp);
    if (!study)
        return failWith(study.error(), 1);
    const int index = chosenIndex(entryTexts(studyContext().VctrBPULst), unit);
    if (index < 0)
        return failWith(QStringLiteral("no BPU '%1' in the study").arg(*unit), 2);
    const PyramidTable table = pyramidOfUnit(singleYearPopulation(studyContext(), stp), index);
    if (table.empty())
        return failWith(QStringLiteral("the study has no population for this unit"), 1);
    if (!savePyramid(table, *target))
        return failWith(QStringLiteral("could not write %1").arg(*target), 1);
    return 0;
}

} // namespace vesk::cli

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    if (!args.isEmpty() && args.first() == QLatin1String("pyramid"))
        return vesk::cli::drawPyramid(args.mid(1));
    return vesk::cli::drawChart(args);
}
