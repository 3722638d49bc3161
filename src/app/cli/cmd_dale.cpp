// vesk-cli dale STUDY.vdb [--dap IDS] [--settings FILE]: DALE and the Sullivan health expectancy of
// every year, BPU and parameter set of the current study of STUDY.vdb.

#include "app/cli/cli.h"
#include "app/cli/study_session.h"
#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "burden/dale.h"
#include "database/study_context.h"
#include "foundation/error_store.h"
#include "platform/cell_array.h"

namespace vesk::cli {

namespace {

int fail(const QString& why, int code = 1) {
    err(QStringLiteral("vesk-cli dale: ") + why);
    return code;
}

QString field(const Cell& c) {
    return c.isNumber() ? csvNumber(c.toDouble()) : csvField(c.toString());
}

void printDale(const Cell& arrDale, const Cell& years, const Cell& sets) {
    out(QStringLiteral("Year,Region ID,DAPID,") + daleFieldNames().join(u',') + u'\n');
    const CellArray& a = arrDale.array();
    const CellArray& m = sets.array();
    for (int y = 0; y < a.size(0); ++y)
        for (int b = 0; b < a.size(1); ++b)
            for (int d = 0; d < a.size(2); ++d) {
                QStringList row{field(years.array()(years.array().lbound(0) + y)), field(a(y, b, d, dale_slot::kRegion)),
                                field(m(m.lbound(0) + d, m.lbound(1) + kDapId))};
                for (int k = dale_slot::kE0F; k <= dale_slot::kLast; ++k)
                    row << field(a(y, b, d, k));
                out(row.join(u',') + u'\n');
            }
}

int dale(const QStringList& arguments) {
    QStringList args = arguments;
    const QString ids = takeOption(args, QStringLiteral("--dap")).value_or(QStringLiteral("1"));
    const QString stp = takeOption(args, QStringLiteral("--settings")).value_or(defaultSettingsPath());
    if (args.size() != 1)
        return fail(QStringLiteral("give STUDY.vdb; `vesk-cli dale --help` tells more"), 2);
    const StudyWithResults study(args[0], stp, ids, ids.contains(u','));
    if (!study)
        return fail(study.error(), study.exitCode());
    const bool computed = computeDale(studyContext(), computation(), stp);
    printStoredErrors();
    clearErrorStore();
    if (!computed)
        return 1;
    printDale(computation().ArrDale, studyContext().VctrYrLst, computation().MtxDAP);
    return 0;
}

const Registrar daleCommand({
    QStringLiteral("dale"),
    QStringLiteral("DALE and the Sullivan health expectancy of every unit of a study"),
    QStringLiteral(
        "Usage: vesk-cli dale STUDY.vdb [--dap IDS] [--settings FILE]\n\n"
        "Compute -> DALE of the current study of STUDY.vdb. The results are loaded from the result\n"
        "tables where they hold the sets, otherwise computed and stored first, as `vesk-cli compute`\n"
        "does. The fraction of time lived in disability at each age is the incidence-based YLD of all\n"
        "causes over the population of the YLD group; the life table runs on the unit's death rates by\n"
        "the Standard method with IMR 0 and growth 0, for females, males and both.\n\n"
        "  --dap IDS     the built-in parameter sets, 0 to 3, separated by commas (default 1)\n"
        "  --settings    the settings file (default: Vesk.stp beside vesk-cli)\n\n"
        "Standard output: CSV with the head\n"
        "  Year,Region ID,DAPID,E0_F,DALE_F,E0_M,DALE_M,E0_P,DALE_P,HE_F,HE_M,HE_P\n"
        "one row for each year, BPU and set, every number as the shortest text that reads back to the\n"
        "same double. E0 is the life expectancy at birth. DALE is the table's adjusted expectancy at\n"
        "birth, Ex(0) less Ex(0) times the disability fraction of the first age row, so that it depends\n"
        "on that row alone. HE is the Sullivan health expectancy: the person-years of every row, each\n"
        "less its own row's fraction, summed and divided by the radix. A table that could not be formed\n"
        "leaves its cells empty. Standard error: the errors stored on the way (number, description,\n"
        "source), such as a fraction above 1.\n\n"
        "Exit code 0 when the table was printed, 1 when the study, its results or its death rates could\n"
        "not be had, 2 for a command that cannot be run."),
    dale,
});

} // namespace

} // namespace vesk::cli
