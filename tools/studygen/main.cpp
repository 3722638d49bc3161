// vesk-studygen STUDY OUT.vdb: a synthetic study (a benchmark, or the demonstration study) written into
// a new study file. A study that fails midway is taken away again, so that no half study is left.

#include "database/db_create.h"
#include "study_recipe.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    vesk::studygen::StudyRecipe recipe;
    if (args.size() != 2 || !vesk::studygen::recipeNamed(args[0], recipe)) {
        std::fprintf(stderr, "Usage: vesk-studygen nation|districts|tiny|demo OUT.vdb\n");
        return 2;
    }
    if (QFileInfo::exists(args[1])) {
        std::fprintf(stderr, "vesk-studygen: %s already exists\n", qPrintable(args[1]));
        return 1;
    }
    QString error;
    if (!vesk::studygen::writeStudy(recipe, args[1], &error)) {
        std::fprintf(stderr, "vesk-studygen: %s\n", qPrintable(error));
        QString ignored;
        vesk::removeStudyFile(args[1], &ignored);
        return 1;
    }
    return 0;
}
