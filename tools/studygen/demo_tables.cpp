// The tables of the demonstration study, from the figures of demo_figures.cpp: the definitions in one
// transaction, each district's data in one of its own.

#include "demo_study.h"
#include "study/asg_labels.h"
#include "study_writer.h"

#include <algorithm>
#include <cmath>

namespace vesk::studygen {

namespace {

using namespace demo;

// The streams of the fixed hash, one for each kind of figure.
enum Stream : std::uint64_t { kPeopleNoise = 101, kRateNoise, kShareNoise, kIncidenceNoise };

const QString kNation = QStringLiteral("N1");

QString utf8(const char* text) {
    return QString::fromUtf8(text);
}

// ---- definitions ----

bool causeLevels(Writer& w) {
    for (const Level& g : groups())
        if (!w.one(QStringLiteral("INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (?, ?)"),
                   {utf8(g.code).toInt(), utf8(g.name)}))
            return false;
    for (const Level& s : subgroups())
        if (!w.one(QStringLiteral("INSERT INTO _DctBDMSGrps (SGrpCd, Subgroup, GrpCd) VALUES (?, ?, ?)"),
                   {utf8(s.code), utf8(s.name), utf8(s.parent).toInt()}))
            return false;
    for (const Level& c : clusters())
        if (!w.one(QStringLiteral("INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES (?, ?, ?)"),
                   {utf8(c.code), utf8(c.name), utf8(c.parent)}))
            return false;
    return true;
}

bool causeRows(Writer& w, const QString& study) {
    if (!addStudyColumn(w, study))
        return false;
    const QString sql =
        QStringLiteral("INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla, \"%1\") VALUES (?, ?, ?, ?, 1)")
            .arg(study);
    for (const Cause& c : causes()) {
        if (!w.one(sql, {utf8(c.code), utf8(c.name), utf8(c.cluster), c.hasSequelae() ? -1 : 0}))
            return false;
        if (!c.hasSequelae())
            continue;
        for (const Condition& s : c.conditions)
            if (!w.one(QStringLiteral("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES (?, ?)"),
                       {utf8(s.code), utf8(s.name)}) ||
                !w.one(QStringLiteral("INSERT INTO _MapBDMSqla (SqlaCd, cobcd) VALUES (?, ?)"),
                       {utf8(s.code), utf8(c.code)}))
                return false;
    }
    return true;
}

bool studyAndUnits(Writer& w, const StudyRecipe& r) {
    const QString scheme = r.id + QStringLiteral("S");
    if (!w.one(
            QStringLiteral("INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES (?, ?, ?, ?, 1)"),
            {r.id, r.year, r.title, scheme}) ||
        !w.one(QStringLiteral("INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES (?, ?, ?, ?)"),
               {scheme, QStringLiteral("District"), QStringLiteral("Region"), QStringLiteral("Nation")}) ||
        !w.one(QStringLiteral("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES (?, ?, ?)"),
               {r.id, kNation, QStringLiteral("Demonstration nation")}))
        return false;
    for (const Region& p : regions())
        if (!w.one(
                QStringLiteral("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES (?, ?, ?, ?)"),
                {r.id, utf8(p.id), utf8(p.name), kNation}))
            return false;
    int priority = 0;
    for (const District& d : districts())
        if (!w.one(QStringLiteral(
                       "INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES (?, ?, ?, ?, ?)"),
                   {r.id, utf8(d.id), utf8(d.name), ++priority, utf8(d.region)}))
            return false;
    return writeAgeGroups(w, r.id) && writeParameterSets(w);
}

// One weight a cause (or sequela) at every age, under the unisex labels; stored as the single float
// of the field.
bool weights(Writer& w, const StudyRecipe& r) {
    const QStringList unisex = asgLabelsFor(studyAges(), {QStringLiteral("U")});
    const QString sql =
        QStringLiteral("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES (?, ?, ?, ?, ?)");
    for (const Cause& c : causes())
        for (const Condition& s : c.conditions)
            for (const QString& label : unisex)
                if (!w.one(sql,
                           {r.id, r.year, utf8(*s.code ? s.code : c.code), label, double(float(s.weight))}))
                    return false;
    return true;
}

bool definitions(Writer& w, const StudyRecipe& r) {
    return causeLevels(w) && causeRows(w, r.id) && studyAndUnits(w, r) && weights(w, r);
}

// ---- a district's people and deaths ----

// A life table of one sex on the district's rates, each group's hazard constant.
struct SexTable {
    std::vector<double> rate;       // deaths per person and year in each group
    std::vector<double> years;      // person-years lived in the group, of one birth
    std::vector<double> expectancy; // life expectancy at the group's start
};

double groupWidth(int g) {
    const QList<double>& ages = studyAges();
    return g + 1 < ages.size() ? ages[g + 1] - ages[g] : 0; // 0: the open group
}

double groupMiddle(int g) {
    const double width = groupWidth(g);
    return studyAges()[g] + (width > 0 ? width / 2 : 2.5);
}

// The district's death rate in the group that starts at `age`: the nation's times the district's
// level, the level counted twice at 1 to 4 years, where deaths follow poverty the most.
double districtRate(const District& d, double age, bool women) {
    const double level = age >= 1 && age < 5 ? d.mortality * d.mortality : d.mortality;
    return menDeathRate(age) * level * (women ? womenToMen(age) : 1.0);
}

SexTable lifeTable(const District& d, bool women) {
    const QList<double>& ages = studyAges();
    SexTable t;
    double alive = 1;
    std::vector<double> start;
    for (int g = 0; g < ages.size(); ++g) {
        const double m = districtRate(d, ages[g], women);
        const double n = groupWidth(g);
        const double next = n > 0 ? alive * std::exp(-n * m) : 0;
        t.rate.push_back(m);
        t.years.push_back((alive - next) / m);
        start.push_back(alive);
        alive = next;
    }
    double after = 0;
    t.expectancy.resize(t.years.size());
    for (int g = int(t.years.size()) - 1; g >= 0; --g) {
        after += t.years[g];
        t.expectancy[g] = after / start[g];
    }
    return t;
}

struct UnitTables {
    SexTable men, women;
    const SexTable& of(bool female) const { return female ? women : men; }
};

struct People {
    std::vector<qint64> men, women;
};

// The people of each group: a stable population on the district's rates and growth, 1.05 boys to a
// girl at birth, young adults added where they move in, a little noise, scaled to the district's size.
People people(int b, const UnitTables& t) {
    const District& d = districts()[b];
    const QList<double>& ages = studyAges();
    std::vector<double> men, women;
    double total = 0;
    for (int g = 0; g < ages.size(); ++g) {
        const double movers = ages[g] >= 20 && ages[g] < 40 ? 1 + d.migrants : 1;
        const double stable = std::exp(-d.growth * groupMiddle(g)) * movers;
        total += men.emplace_back(t.men.years[g] * stable * 1.05 *
                                  between(0.98, 1.02, unit(kPeopleNoise, b, g, 0)));
        total +=
            women.emplace_back(t.women.years[g] * stable * between(0.98, 1.02, unit(kPeopleNoise, b, g, 1)));
    }
    People p;
    for (int g = 0; g < ages.size(); ++g) {
        p.men.push_back(std::llround(d.people * men[g] / total));
        p.women.push_back(std::llround(d.people * women[g] / total));
    }
    return p;
}

// The people, and the death rates of the life tables a few percent apart by group above the first
// year, both sexes together weighted by the people.
bool populationAndDeaths(Writer& w, const StudyRecipe& r, int b, const UnitTables& t) {
    const District& d = districts()[b];
    const QList<double>& ages = studyAges();
    const People p = people(b, t);
    for (int g = 0; g < ages.size(); ++g) {
        const double noise = g == 0 ? 1.0 : between(0.96, 1.04, unit(kRateNoise, b, g));
        const double m = t.men.rate[g] * noise, f = t.women.rate[g] * noise;
        const double both = (f * double(p.women[g]) + m * double(p.men[g])) / double(p.women[g] + p.men[g]);
        if (!w.one(QStringLiteral("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES (?, ?, ?, ?, ?)"),
                   {utf8(d.id), r.year, int(ages[g]), p.men[g], p.women[g]}) ||
            !w.one(
                QStringLiteral("INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M, P) VALUES (?, ?, ?, ?, ?, ?)"),
                {utf8(d.id), r.year, int(ages[g]), f, m, both}))
            return false;
    }
    return true;
}

// The infant mortality rate per 1,000 births of the life tables' first rates (a0 = 0.15), and the
// growth rate; West is the family of model life tables the nation's studies use.
bool parameters(Writer& w, const StudyRecipe& r, int b, const UnitTables& t) {
    const District& d = districts()[b];
    const auto q0 = [](double m0) { return m0 / (1 + 0.85 * m0); };
    const double imr = 1000 * (1.05 * q0(t.men.rate[0]) + q0(t.women.rate[0])) / 2.05;
    return w.one(
        QStringLiteral("INSERT INTO DatDmgphyPrmtrs (BPUID, YEAR, Cdmdl, PGR, IMR) VALUES (?, ?, ?, ?, ?)"),
        {utf8(d.id), r.year, QStringLiteral("West"), d.growth, std::round(imr * 10) / 10});
}

// ---- a district's causes ----

// The district's weight of a cause's kind: its communicable, maternal, perinatal and nutritional
// conditions, its vector-borne diseases on top of them, and its injuries.
double districtWeight(const District& d, const Cause& c) {
    const QString code = utf8(c.code);
    if (code.startsWith(u'1'))
        return d.communicable * (code.startsWith(QLatin1String("1103")) ? d.malaria : 1.0);
    return code.startsWith(u'3') ? d.injuries : 1.0;
}

double sexFactor(const Sexes& s, bool women) {
    return women ? s.women : s.men;
}

// Shares of death in one group: each cause's deaths over their sum, in multiples of 2^-20 that add to
// exactly 1, the parts lost to rounding down given to the largest.
bool sharesInGroup(Writer& w, const StudyRecipe& r, int b, int g, const QString& label) {
    constexpr qint64 kWhole = qint64(1) << 20;
    const District& d = districts()[b];
    const bool women = label.startsWith(u'F');
    const double age = FnAsgStart(label);
    std::vector<double> deaths;
    double total = 0;
    for (std::size_t c = 0; c < causes().size(); ++c) {
        const Cause& cause = causes()[c];
        const double rate =
            cause.ages.holds(age) ? atAge(cause.deaths, age) * sexFactor(cause.sexes, women) : 0;
        total += deaths.emplace_back(rate * districtWeight(d, cause) *
                                     between(0.9, 1.1, unit(kShareNoise, b, g, c)));
    }
    std::vector<qint64> parts;
    for (double x : deaths)
        parts.push_back(qint64(x / total * double(kWhole)));
    qint64 given = 0;
    for (qint64 p : parts)
        given += p;
    *std::max_element(parts.begin(), parts.end()) += kWhole - given;
    for (std::size_t c = 0; c < causes().size(); ++c)
        if (!w.one(
                QStringLiteral("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES (?, ?, ?, ?, ?)"),
                {utf8(d.id), r.year, utf8(causes()[c].code), label, double(parts[c]) / double(kWhole)}))
            return false;
    return true;
}

// The course of a cause (or sequela) in one sex: new cases per person and year in each group, and
// how long a case that starts in the group lasts (cut at the life expectancy at the group's start).
struct Course {
    std::vector<double> incidence, years;
};

Course courseOf(int b, int c, int q, bool women, const UnitTables& t) {
    const District& d = districts()[b];
    const Cause& cause = causes()[c];
    const Condition& s = cause.conditions[q];
    const QList<double>& ages = studyAges();
    Course course;
    for (int g = 0; g < ages.size(); ++g) {
        const double noise = between(0.9, 1.1, unit(kIncidenceNoise, b, g * 2 + (women ? 1 : 0), c * 8 + q));
        course.incidence.push_back(cause.ages.holds(ages[g])
                                       ? atAge(s.incidence, ages[g]) * sexFactor(s.sexes, women) *
                                             districtWeight(d, cause) * noise
                                       : 0.0);
        course.years.push_back(std::min(s.years, t.of(women).expectancy[g]));
    }
    return course;
}

// The prevalence at the middle x of group g: the cases that started at an age a of an earlier group k
// (or of g itself) and still last at x, x - a below the duration of k; deaths and remission before
// the end of the duration are left aside.
double prevalence(const Course& course, int g) {
    const QList<double>& ages = studyAges();
    const double x = groupMiddle(g);
    double cases = 0;
    for (int k = 0; k <= g; ++k) {
        const double end = k == g ? x : ages[k + 1];
        const double from = std::max(ages[k], x - course.years[k]);
        cases += course.incidence[k] * std::max(0.0, end - from);
    }
    return cases;
}

// The rows of one cause in DatADW, or of one sequela in DatADWSqla, in the order of the labels:
// incidence, prevalence, onset and prevalent cases at the group's middle, the duration.
bool conditionRows(Writer& w, const StudyRecipe& r, int b, int c, int q, const QStringList& labels,
                   const UnitTables& t) {
    const Condition& s = causes()[c].conditions[q];
    const Course courses[] = {courseOf(b, c, q, false, t), courseOf(b, c, q, true, t)};
    const QString sql =
        *s.code ? QStringLiteral("INSERT INTO DatADWSqla (BPUID, YEAR, COBCd, SqlaCd, ASG, i, P, ago, "
                                 "DURN, agp) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                : QStringLiteral("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P, ago, DURN, agp) "
                                 "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
    for (const QString& label : labels) {
        const Course& course = courses[label.startsWith(u'F') ? 1 : 0];
        const int g = int(studyAges().indexOf(FnAsgStart(label)));
        QVariantList row{utf8(districts()[b].id), r.year, utf8(causes()[c].code)};
        if (*s.code)
            row << utf8(s.code);
        row << label << course.incidence[g] << prevalence(course, g) << groupMiddle(g) << course.years[g]
            << groupMiddle(g);
        if (!w.one(sql, row))
            return false;
    }
    return true;
}

bool unitData(Writer& w, const StudyRecipe& r, int b, const QStringList& labels) {
    const UnitTables t{lifeTable(districts()[b], false), lifeTable(districts()[b], true)};
    if (!populationAndDeaths(w, r, b, t) || !parameters(w, r, b, t))
        return false;
    for (int g = 0; g < labels.size(); ++g)
        if (!sharesInGroup(w, r, b, g, labels[g]))
            return false;
    for (int c = 0; c < int(causes().size()); ++c)
        for (int q = 0; q < int(causes()[c].conditions.size()); ++q)
            if (!conditionRows(w, r, b, c, q, labels, t))
                return false;
    return true;
}

} // namespace

bool writeDemoStudy(const StudyRecipe& r, const QString& path, QString* error) {
    NewStudyFile file;
    if (!file.create(path, error))
        return false;
    QStringList labels = asgLabelsFor(studyAges(), {QStringLiteral("F"), QStringLiteral("M")});
    std::sort(labels.begin(), labels.end());
    Writer& w = file.rows();
    if (!file.unitOfWork([&] { return definitions(w, r); }))
        return false;
    for (int b = 0; b < int(districts().size()); ++b)
        if (!file.unitOfWork([&] { return unitData(w, r, b, labels); }))
            return false;
    return true;
}

} // namespace vesk::studygen
