// The tables of a benchmark study, written row by row through prepared statements: the definitions in
// one transaction, each unit's data in one of its own.

#include "demo_study.h"
#include "study/asg_labels.h"
#include "study_recipe.h"
#include "study_writer.h"

#include <algorithm>
#include <cmath>

namespace vesk::studygen {

namespace {

const QList<double>& kAges = studyAges();

struct Cause {
    QString code, cluster;
    QStringList sequelae;
};

QList<Cause> causeTree(const StudyRecipe& r) {
    QList<Cause> out;
    const int clusters = std::max(1, (r.causes + 3) / 4);
    for (int k = 0; k < r.causes; ++k) {
        const int c = k % clusters, g = c % 3 + 1, s = (c / 3) % 4 + 1, n = c / 12 + 1;
        Cause cause;
        cause.cluster = QStringLiteral("%1%2%3").arg(g).arg(s).arg(n, 2, 10, QChar('0'));
        cause.code = cause.cluster + QString::number(k / clusters + 1);
        if (k % std::max(1, r.causes / std::max(1, r.causesWithSequelae)) == 0 &&
            int(std::count_if(out.begin(), out.end(), [](const Cause& x) { return !x.sequelae.isEmpty(); })) <
                r.causesWithSequelae)
            for (int q = 0; q < 2 + k % 3; ++q)
                cause.sequelae << QStringLiteral("S%1%2").arg(cause.code).arg(q + 1);
        out << cause;
    }
    std::sort(out.begin(), out.end(), [](const Cause& a, const Cause& b) { return a.code < b.code; });
    return out;
}

bool dictionaries(Writer& w, const StudyRecipe& r, const QList<Cause>& causes) {
    QStringList groups, subgroups, clusters;
    for (const Cause& c : causes) {
        if (!groups.contains(c.cluster.left(1)))
            groups << c.cluster.left(1);
        if (!subgroups.contains(c.cluster.left(2)))
            subgroups << c.cluster.left(2);
        if (!clusters.contains(c.cluster))
            clusters << c.cluster;
    }
    for (const QString& g : groups)
        if (!w.one(QStringLiteral("INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (?, ?)"),
                   {g.toInt(), QStringLiteral("Group ") + g}))
            return false;
    for (const QString& s : subgroups)
        if (!w.one(QStringLiteral("INSERT INTO _DctBDMSGrps (SGrpCd, Subgroup, GrpCd) VALUES (?, ?, ?)"),
                   {s, QStringLiteral("Subgroup ") + s, s.left(1).toInt()}))
            return false;
    for (const QString& c : clusters)
        if (!w.one(QStringLiteral("INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES (?, ?, ?)"),
                   {c, QStringLiteral("Cluster ") + c, c.left(2)}))
            return false;
    if (!addStudyColumn(w, r.id))
        return false;
    for (const Cause& c : causes) {
        if (!w.one(QStringLiteral("INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla, \"%1\") VALUES (?, ?, ?, ?, 1)")
                       .arg(r.id),
                   {c.code, QStringLiteral("Cause ") + c.code, c.cluster, c.sequelae.isEmpty() ? 0 : -1}))
            return false;
        for (const QString& s : c.sequelae)
            if (!w.one(QStringLiteral("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES (?, ?)"),
                       {s, QStringLiteral("Sequela ") + s}) ||
                !w.one(QStringLiteral("INSERT INTO _MapBDMSqla (SqlaCd, cobcd) VALUES (?, ?)"), {s, c.code}))
                return false;
    }
    return true;
}

QString unitId(int b) {
    return QStringLiteral("B%1").arg(b + 1, 4, 10, QChar('0'));
}

bool studyRows(Writer& w, const StudyRecipe& r) {
    const QString scheme = r.id + QStringLiteral("S");
    if (!w.one(QStringLiteral("INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES (?, ?, ?, ?, 1)"),
               {r.id, r.year, r.title, scheme}) ||
        !w.one(QStringLiteral("INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES (?, ?, ?, ?)"),
               {scheme, QStringLiteral("District"), QStringLiteral("Province"), QStringLiteral("Nation")}) ||
        !w.one(QStringLiteral("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES (?, 'N1', 'Nation')"), {r.id}))
        return false;
    for (int p = 0; p < r.regions; ++p)
        if (!w.one(QStringLiteral("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES (?, ?, ?, 'N1')"),
                   {r.id, QStringLiteral("R%1").arg(p + 1, 2, 10, QChar('0')), QStringLiteral("Region %1").arg(p + 1)}))
            return false;
    for (int b = 0; b < r.units; ++b)
        if (!w.one(QStringLiteral("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES (?, ?, ?, ?, ?)"),
                   {r.id, unitId(b), QStringLiteral("District %1").arg(b + 1), b + 1,
                    QStringLiteral("R%1").arg(b % r.regions + 1, 2, 10, QChar('0'))}))
            return false;
    return writeAgeGroups(w, r.id) && writeParameterSets(w);
}

// Men's death rate at the start age of a group.
double maleRate(double age) {
    if (age == 0)
        return 0.035;
    if (age < 5)
        return 0.0025;
    if (age < 15)
        return 0.0008;
    return std::max(0.001, 0.00012 * std::exp(0.088 * (age + 2.5)));
}

bool demography(Writer& w, const StudyRecipe& r, int b) {
    const QString pop = QStringLiteral("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES (?, ?, ?, ?, ?)");
    const QString asdr = QStringLiteral("INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M, P) VALUES (?, ?, ?, ?, ?, ?)");
    {
        const double size = between(50000, 500000, unit(1, b));
        for (int a = 0; a < kAges.size(); ++a) {
            const double age = kAges[a];
            const double width = a + 1 < kAges.size() ? kAges[a + 1] - age : 10;
            const double share = std::exp(-0.028 * age) * width / 40.0;
            const qint64 men = qint64(size * share * between(0.95, 1.05, unit(2, b, a)));
            const qint64 women = qint64(men * (1.0 + age / 400.0));
            const double m = maleRate(age) * between(0.85, 1.15, unit(3, b, a)), f = 0.75 * m;
            const double p = (f * double(women) + m * double(men)) / double(women + men);
            if (!w.one(pop, {unitId(b), r.year, int(age), men, women}) ||
                !w.one(asdr, {unitId(b), r.year, int(age), f, m, p}))
                return false;
        }
        static const char* families[] = {"West", "North", "East", "South"};
        if (!w.one(QStringLiteral("INSERT INTO DatDmgphyPrmtrs (BPUID, YEAR, Cdmdl, PGR, IMR) VALUES (?, ?, ?, ?, ?)"),
                   {unitId(b), r.year, QString::fromLatin1(families[b % 4]), between(0.005, 0.025, unit(4, b)),
                    between(10, 60, unit(5, b))}))
            return false;
    }
    return true;
}

// Shares of death of each cause in each unit and group: multiples of 2^-20 adding to exactly 1.
bool sharesOfDeath(Writer& w, const StudyRecipe& r, const QList<Cause>& causes, const QStringList& labels, int b) {
    const QString sql = QStringLiteral("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES (?, ?, ?, ?, ?)");
    constexpr qint64 kWhole = qint64(1) << 20;
    {
        for (int g = 0; g < labels.size(); ++g) {
            QList<double> weights;
            double total = 0;
            for (int c = 0; c < causes.size(); ++c)
                total += weights.emplace_back(between(1, 100, unit(6, b, g, c)));
            qint64 given = 0;
            for (int c = 0; c < causes.size(); ++c) {
                const qint64 parts = c + 1 < causes.size() ? qint64(weights[c] / total * double(kWhole)) : kWhole - given;
                given += parts;
                if (!w.one(sql, {unitId(b), r.year, causes[c].code, labels[g], double(parts) / double(kWhole)}))
                    return false;
            }
        }
    }
    return true;
}

bool epidemiology(Writer& w, const StudyRecipe& r, const QList<Cause>& causes, const QStringList& labels, int b) {
    const QString adw = QStringLiteral(
        "INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P, ago, DURN, agp) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
    const QString sqla = QStringLiteral("INSERT INTO DatADWSqla (BPUID, YEAR, COBCd, SqlaCd, ASG, i, P, ago, DURN, "
                                        "agp) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    {
        for (int c = 0; c < causes.size(); ++c) {
            const QStringList parts = causes[c].sequelae.isEmpty() ? QStringList{QString()} : causes[c].sequelae;
            for (int q = 0; q < parts.size(); ++q)
                for (int g = 0; g < labels.size(); ++g) {
                    const double start = FnAsgStart(labels[g]);
                    const double onset = start + 2.5, duration = between(0.5, 30, unit(7, c, q, g));
                    const QVariantList measures = {between(1e-4, 5e-3, unit(8, b, c * 8 + q, g)),
                                                   between(1e-3, 5e-2, unit(9, b, c * 8 + q, g)), onset, duration,
                                                   onset + 2};
                    QVariantList row{unitId(b), r.year, causes[c].code};
                    if (!parts[q].isEmpty())
                        row << parts[q];
                    row << labels[g] << measures;
                    if (!w.one(parts[q].isEmpty() ? adw : sqla, row))
                        return false;
                }
        }
    }
    return true;
}

bool weights(Writer& w, const StudyRecipe& r, const QList<Cause>& causes) {
    const QStringList unisex = asgLabelsFor(kAges, {QStringLiteral("U")});
    const QString sql = QStringLiteral("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES (?, ?, ?, ?, ?)");
    for (int c = 0; c < causes.size(); ++c) {
        const QStringList codes = causes[c].sequelae.isEmpty() ? QStringList{causes[c].code} : causes[c].sequelae;
        for (int q = 0; q < codes.size(); ++q)
            for (int g = 0; g < unisex.size(); ++g)
                if (!w.one(sql, {r.id, r.year, codes[q], unisex[g], double(float(between(0.01, 0.7, unit(10, c, q, g))))}))
                    return false;
    }
    return true;
}

} // namespace

bool writeStudy(const StudyRecipe& r, const QString& path, QString* error) {
    if (r.demonstration)
        return writeDemoStudy(r, path, error);
    NewStudyFile file;
    if (!file.create(path, error))
        return false;
    QStringList labels = asgLabelsFor(kAges, {QStringLiteral("F"), QStringLiteral("M")});
    std::sort(labels.begin(), labels.end());
    const QList<Cause> causes = causeTree(r);
    Writer& w = file.rows();
    // A transaction for the definitions and one for each unit's data.
    if (!file.unitOfWork([&] { return dictionaries(w, r, causes) && studyRows(w, r) && weights(w, r, causes); }))
        return false;
    for (int b = 0; b < r.units; ++b)
        if (!file.unitOfWork([&] {
                return demography(w, r, b) && sharesOfDeath(w, r, causes, labels, b) &&
                       epidemiology(w, r, causes, labels, b);
            }))
            return false;
    return true;
}

} // namespace vesk::studygen
