#pragma once
// The demonstration study: a small national study of a middle-income country, with names a reader
// knows. Its figures are plausible, not measured: the nation, its regions and districts are invented,
// and the rates are of the order that national studies of such countries report.
//
//   units        8 districts (80,000 to 900,000 people) in 3 regions under one nation; one region
//                holds a single district
//   causes       25 causes under the three broad groups, with codes of the program's scheme (group
//                digit, subgroup, cluster, cause); 5 causes have 2 to 4 sequelae
//   population   a stable population of each sex on the district's own death rates and growth rate,
//                with more people at 20 to 39 years where young adults move in, fewer where they leave
//   mortality    infant rates of 0.02 to 0.03, child rates falling to age 10, an injury hump in young
//                men, a Gompertz curve from 30 on; women's rates below men's at every age
//   CSMP         each cause's deaths per 100,000 men at eleven anchor ages, times a factor for each
//                sex and the district's weight of its kind of cause, as shares of their sum
//   epidemiology each cause's (or sequela's) incidence per person and year at the same anchors, a
//                duration cut at the remaining life expectancy at the group's start, prevalence the
//                cases begun at earlier ages that still last, onset and prevalent cases at the middle
//                of the group, one disability weight at every age
//
// Between two anchor ages a figure is read on the straight line through them; the hash of
// study_writer.h adds a few percent of variation by district, group and cause.

#include "study_recipe.h"

#include <QString>
#include <array>
#include <vector>

namespace vesk::studygen::demo {

// The ages at which the profiles below are given.
inline constexpr std::array<double, 11> kAnchorAges = {0, 1, 5, 15, 25, 35, 45, 55, 65, 75, 85};
using Profile = std::array<double, 11>;

// The profile at `age`: on the straight line between the anchors around it, the last anchor's value
// beyond it.
double atAge(const Profile& profile, double age);

struct Region {
    const char* id;
    const char* name;
};

struct District {
    const char* id;
    const char* name; // UTF-8
    const char* region;
    double people;       // the whole population
    double growth;       // the yearly growth rate (PGR)
    double mortality;    // the level of the death rates, the nation's being 1
    double communicable; // the weight of communicable, maternal, perinatal and nutritional deaths
    double malaria;      // the weight of malaria, on top of the one above
    double injuries;     // the weight of deaths from injuries
    double migrants;     // the share added to the people of 20 to 39 years
};

struct Sexes {
    double men = 1;
    double women = 1;
};

// The ages at which a cause strikes: from `from` up to, not including, `below`.
struct AgeWindow {
    double from = 0;
    double below = 1000;
    bool holds(double age) const { return age >= from && age < below; }
};

// The epidemiology of a cause without sequelae, or of one sequela.
struct Condition {
    const char* code;  // the sequela's code; empty for the cause itself
    const char* name;  // the sequela's name
    Profile incidence; // new cases per person and year, at the anchor ages, before the sexes' factors
    Sexes sexes;
    double years;  // the duration of a case, cut at the remaining life expectancy
    double weight; // the disability weight
};

struct Cause {
    const char* code;
    const char* name;
    const char* cluster;
    Profile deaths; // deaths per 100,000 a year at the anchor ages, before the sexes' factors
    Sexes sexes;
    AgeWindow ages;
    std::vector<Condition> conditions; // one with an empty code, or the sequelae
    bool hasSequelae() const { return conditions.size() > 1 || *conditions.front().code; }
};

struct Level {
    const char* code;
    const char* name;
    const char* parent;
};

const std::vector<Region>& regions();
const std::vector<District>& districts();
const std::vector<Level>& groups();
const std::vector<Level>& subgroups();
const std::vector<Level>& clusters();
const std::vector<Cause>& causes();

// Men's death rate in the group that starts at `age`, at the nation's level of mortality.
double menDeathRate(double age);
// Women's rate as a share of men's in the group that starts at `age`.
double womenToMen(double age);

} // namespace vesk::studygen::demo

namespace vesk::studygen {

// Writes the demonstration study into a new study file at `path`, as writeStudy does.
bool writeDemoStudy(const StudyRecipe& recipe, const QString& path, QString* error);

} // namespace vesk::studygen
