#include "study_recipe.h"

namespace vesk::studygen {

bool recipeNamed(const QString& name, StudyRecipe& r) {
    if (name == QLatin1String("nation")) {
        r = StudyRecipe{};
        r.title = QStringLiteral("Nation benchmark");
        return true;
    }
    if (name == QLatin1String("districts")) {
        r = StudyRecipe{};
        r.id = QStringLiteral("DST");
        r.title = QStringLiteral("Districts benchmark");
        r.units = 700;
        r.regions = 35;
        return true;
    }
    if (name == QLatin1String("tiny")) {
        r = StudyRecipe{};
        r.id = QStringLiteral("TNY");
        r.title = QStringLiteral("Tiny benchmark");
        r.units = 3;
        r.regions = 2;
        r.causes = 12;
        r.causesWithSequelae = 3;
        return true;
    }
    if (name == QLatin1String("demo")) {
        r = StudyRecipe{};
        r.id = QStringLiteral("DEM");
        r.title = QStringLiteral("Demonstration nation 2020");
        r.demonstration = true;
        return true;
    }
    return false;
}

} // namespace vesk::studygen
