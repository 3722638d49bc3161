// vesk-cli compute STUDY.vdb [--dap 0,1,2,3] [--sensitivity] [--settings FILE]: the DALY computation
// of the current study of STUDY.vdb, as the DALY computation window runs it, without the window.

#include "app/cli/cli.h"
#include "burden/compute_run.h"
#include "burden/calculator_models.h"
#include "demography/standard_life_table.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "platform/cell_array.h"
#include "platform/progress.h"

#include <QElapsedTimer>
#include <QFileInfo>

namespace vesk::cli {

namespace {

int fail(const QString& why, int code = 1) {
    err(QStringLiteral("vesk-cli compute: ") + why);
    return code;
}

// The progress of a run on standard error, once the run has taken more than a second: each new step
// on a line of its own.
class StderrProgress : public Progress {
public:
    StderrProgress() { clock_.start(); }
    void setRange(int, int) override {}
    void setValue(int) override {}
    void setVisible(bool) override {}
    void setText(const QString& text) override {
        const QString step = text.section(QStringLiteral("   "), 0, 0);
        if (step == last_ || clock_.elapsed() < 1000)
            return;
        last_ = step;
        err(step);
    }

private:
    QElapsedTimer clock_;
    QString last_;
};

// MtxDAP of the sets `ids`, chosen in the window's grid as its clicks choose them.
Cell chosenSets(const QString& ids, bool sensitivity, QString* error) {
    DapGridModel grid(DapRowTexts::Computation);
    const QStringList wanted = ids.split(u',', Qt::SkipEmptyParts);
    if (wanted.isEmpty() || (!sensitivity && wanted.size() > 1)) {
        *error = sensitivity ? QStringLiteral("--dap names no parameter set")
                             : QStringLiteral("a quick computation takes one parameter set; add --sensitivity for more");
        return Cell();
    }
    for (const QString& id : wanted) {
        int row = -1;
        for (int r = 0; r < DapGridModel::kCustomRow; ++r)
            if (grid.text(r, DapGridModel::IdColumn) == id.trimmed())
                row = r;
        if (row < 0) {
            *error = QStringLiteral("no built-in parameter set '%1'; the sets are 0, 1, 2 and 3").arg(id);
            return Cell();
        }
        if (!grid.isSelected(row))
            grid.chooseRow(row, sensitivity ? kCompModeSensitivity : kCompModeQuick);
    }
    return grid.chosenDaps();
}

void printStoredErrors() {
    const Cell& store = ErrStore();
    if (!store.isArray())
        return;
    const CellArray& e = store.array();
    for (int r = e.lbound(0); r <= e.ubound(0); ++r)
        err(QStringLiteral("error %1, %2, %3")
                .arg(e(r, 0).toString(), e(r, 1).toString(), e(r, 2).toString()));
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
    const QFileInfo study(args[0]);
    if (!study.isFile())
        return fail(QStringLiteral("no study file at %1").arg(args[0]));
    if (!QFileInfo(stp).isFile())
        return fail(QStringLiteral("no settings file at %1").arg(stp));
    setErrorLogEnabled(false); // the errors go to standard error, not to a log where the tool runs
    readSettingsFile(stp, settings(), preferences());
    preferences().txtwklocation = study.absolutePath();
    preferences().txtVESKObj = study.fileName();
    const StandardLifeTable table = standardLifeTable();
    const CellArray none;

    int code = 1;
    if (openComputationStudy(studyContext())) {
        Computation& comp = computation();
        comp.MtxDAP = sets;
        StderrProgress progress;
        TimeLog log;
        const RunOutcome outcome =
            runComputation(studyContext(), comp, table.table ? *table.table : none, &progress, log, stp);
        for (const QString& line : log.lines())
            out(line + u'\n');
        printStoredErrors();
        err(outcome.message);
        code = outcome.end == RunEnd::Stored ? 0 : 1;
    }
    // The connection goes before the program's statics do, as the frame's File -> Close lets it go.
    computation() = Computation{};
    studyContext() = StudyContext{};
    return code;
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
