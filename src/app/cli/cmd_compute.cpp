// vesk-cli compute STUDY.vdb [--dap 0,1,2,3] [--sensitivity] [--settings FILE]: the DALY computation
// of the current study of STUDY.vdb, as the DALY computation window runs it, without the window.

#include "app/cli/cli.h"
#include "app/cli/study_session.h"

namespace vesk::cli {

namespace {

int fail(const QString& why, int code = 1) {
    err(QStringLiteral("vesk-cli compute: ") + why);
    return code;
}

int compute(const QStringList& arguments) {
    QStringList args = arguments;
    const QString ids = takeOption(args, QStringLiteral("--dap")).value_or(QStringLiteral("1"));
    const bool sensitivity = takeFlag(args, QStringLiteral("--sensitivity"));
    const QString stp = takeOption(args, QStringLiteral("--settings")).value_or(defaultSettingsPath());
    if (args.size() != 1)
        return fail(QStringLiteral("give STUDY.vdb; `vesk-cli compute --help` tells more"), 2);
    QString error;
    const Cell sets = chosenSets(ids, sensitivity, &error);
    if (!sets.isArray())
        return fail(error, 2);
    const OpenStudy study(args[0], stp);
    if (!study)
        return fail(study.error());
    TimeLog log;
    const RunOutcome outcome = computeStudy(sets, stp, log);
    for (const QString& line : log.lines())
        out(line + u'\n');
    printStoredErrors();
    err(outcome.message);
    return outcome.end == RunEnd::Stored ? 0 : 1;
}

const Registrar computeCommand({
    QStringLiteral("compute"),
    QStringLiteral("compute and store the YLD, YLL and DALY of a study"),
    QStringLiteral(
        "Usage: vesk-cli compute STUDY.vdb [--dap IDS] [--sensitivity] [--settings FILE]\n\n"
        "Runs the DALY computation of the current study of STUDY.vdb as the window Compute -> DALYs\n"
        "runs it: population and death rates to single years of age, ages at death, deaths by cause,\n"
        "the epidemiological inputs, YLD, YLL and DALY for each parameter set chosen, and the results\n"
        "stored in RsltYLD, RsltYLL and RsltDALY. Results already stored for a year, unit and set stay as\n"
        "they are: delete them first to store new ones.\n\n"
        "  --dap IDS       the built-in parameter sets, 0 to 3, separated by commas (default 1: r 0.03,\n"
        "                  K 1, Beta 0.04, C 0.1658); more than one needs --sensitivity\n"
        "  --sensitivity   the sensitivity analysis: any number of sets\n"
        "  --settings      the settings file: standard life table, Sprague's panels, the open-interval\n"
        "                  coefficients, Choice For Five Years (default: Vesk.stp beside vesk-cli)\n\n"
        "Standard output: the lines of Time.stp of the run. Standard error: the progress of a run longer\n"
        "than a second, the errors stored on the way (number, description, source), and the message\n"
        "the run ends with. Messages the window would show go to standard error; questions take their\n"
        "first button.\n\n"
        "Exit code 0 when the results were computed and stored, 1 when the run stopped early or the\n"
        "DALY could not be formed, 2 for a command that cannot be run."),
    compute,
});

} // namespace

} // namespace vesk::cli
