// vesk-cli pyramid STUDY.vdb [--unit ID] --out FILE.svg|.png|.pdf: the population pyramid of a BPU, drawn
// as Results -> Population Pyramid draws it, by vesk-chart beside vesk-cli (the drawing needs a GUI
// library, which vesk-cli does not link).

#include "app/cli/cli.h"


namespace vesk::cli {

namespace {

int pyramid(const QStringList& arguments) {
    return runBeside(QStringLiteral("vesk-chart"), QStringList{QStringLiteral("pyramid")} + arguments, QStringLiteral("pyramid"));
}

const Registrar pyramidCommand({
    QStringLiteral("pyramid"),
    QStringLiteral("draw the population pyramid of a BPU into an SVG, PNG or PDF file"),
    QStringLiteral(
        "Usage: vesk-cli pyramid STUDY.vdb --out FILE [--unit ID] [--settings FILE]\n\n"
        "The population pyramid of a BPU of the current study of STUDY.vdb, as Results -> Population\n"
        "Pyramid draws it: the population by single year of age (Sprague's panels from the settings\n"
        "file), men to the left and women to the right, the axis in the unit its largest value calls for.\n"
        "The drawing is done by vesk-chart beside vesk-cli.\n\n"
        "  --unit ID     the BPU (default the first by priority)\n"
        "  --out FILE    .svg, .pdf, or an image (.png, .jpg, .bmp)\n"
        "  --settings    the settings file (default: Vesk.stp beside vesk-cli)\n\n"
        "Exit code 0 when the picture was written, 1 when the study or its population could not be had,\n"
        "2 for a command that cannot be run."),
    pyramid,
});

} // namespace

} // namespace vesk::cli
