#pragma once
// The recipe of a synthetic study: its size and the rules its figures follow. Every figure is made
// from the unit, the cause and the age by a fixed hash, so the same recipe gives the same file on
// every machine.
//
// The benchmark recipes ("nation", "districts", "tiny") follow the rules below, with generated names
// ("Cause 11011", "District 7"):
//
//   units       BPUs in PAG1 regions under one PAG2 nation
//   causes      a group > subgroup > cluster > cause tree; some causes have 2 to 4 sequelae
//   ages        0, 1, 5, 10, ..., 85 for YLL, YLD and PND (19 a sex, 38 age-sex groups)
//   population  a pyramid falling with age, women slightly more at old ages; 50,000 to 500,000 a unit
//   mortality   infant and child rates, then a Gompertz curve; women's rates 0.75 of men's
//   CSMP        positive shares of the causes in each unit and group, multiples of 2^-20 that add to
//               exactly 1
//   epidemiology incidence 1e-4 to 5e-3, prevalence 1e-3 to 5e-2 a person, onset at the group's middle,
//               durations 0.5 to 30 years, weights 0.01 to 0.7 in 19 columns a cause or sequela
//
// The demonstration recipe ("demo") is a small national study with names a reader knows, the study a
// new user opens first: 8 districts in 3 regions, 25 causes under the three broad groups (5 of them
// with 2 to 4 sequelae), a pyramid and death rates of a middle-income country, shares of death and
// epidemiology by cause that follow the age and sex of each cause. Its figures are in demo_figures.cpp.

#include <QString>

namespace vesk::studygen {

struct StudyRecipe {
    QString id = QStringLiteral("NAT");
    QString title;
    int year = 2020;
    int units = 36;
    int regions = 6;
    int causes = 135;
    int causesWithSequelae = 30;
    // The demonstration study: its own units and causes, not the counts above.
    bool demonstration = false;
};

// "nation" (36 units, 135 causes), "districts" (700 units), "tiny" (3 units, 12 causes), "demo" (the
// demonstration study: 8 districts, 25 causes); false for another name.
bool recipeNamed(const QString& name, StudyRecipe& recipe);

// Writes the study into a new study file at `path` (which must not exist): the dictionaries, the
// study and its scheme, age definitions, units, demographic inputs, shares of death, epidemiology,
// weights and the four built-in parameter sets: the definitions in one transaction, each unit's data in
// one of its own. False with `error`; the rows of a failed transaction are not written.
bool writeStudy(const StudyRecipe& recipe, const QString& path, QString* error);

} // namespace vesk::studygen
