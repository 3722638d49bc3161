// vesk-cli chart STUDY.vdb --out FILE [--family N] [--level BPU|PAG1] [--unit ID] [--dap ID]: one chart of
// Results -> Graphs drawn into a picture. The drawing needs the chart window's painter, and so a GUI
// library, which vesk-cli does not link: the command runs vesk-chart beside it and hands on its output
// and exit code.

#include "app/cli/cli.h"


namespace vesk::cli {

namespace {

int chart(const QStringList& arguments) {
    return runBeside(QStringLiteral("vesk-chart"), arguments, QStringLiteral("chart"));
}

const Registrar chartCommand({
    QStringLiteral("chart"),
    QStringLiteral("draw a chart of Results -> Graphs into an SVG or PNG file"),
    QStringLiteral(
        "Usage: vesk-cli chart STUDY.vdb --out FILE [--family N] [--level BPU|PAG1] [--unit ID] [--dap ID]\n"
        "                      [--settings FILE]\n\n"
        "One chart of the current study of STUDY.vdb, drawn as Results -> Graphs draws it (the look from\n"
        "the line of Gph.stp beside the settings file), without a display. The results are loaded from the\n"
        "result tables where they hold the set, otherwise computed and stored first. The drawing is done by\n"
        "vesk-chart beside vesk-cli.\n\n"
        "  --family N    1 rates of YLD and YLL per 1,000 people, 2 IDALY by age group, 3 male-female\n"
        "                ratios, 4 groups I-III of IDALY, 5 groups I-III of PDALY (default 1); a 3D line is\n"
        "                drawn flat\n"
        "  --level L     BPU (default) or PAG1\n"
        "  --unit ID     one unit only (default every unit of the level)\n"
        "  --dap ID      the built-in parameter set, 0 to 3 (default 1)\n"
        "  --out FILE    .svg for a vector picture; .png, .jpg, .bmp for an image\n\n"
        "Exit code 0 when the picture was written, 1 when the study, its results or the chart list could\n"
        "not be had, 2 for a command that cannot be run."),
    chart,
});

} // namespace

} // namespace vesk::cli
