// The tables of a synthetic study, written row by row through prepared statements in one transaction.

#include "database/db_connection.h"
#include "database/db_create.h"
#include "study/asg_labels.h"
#include "study_recipe.h"

#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace vesk::studygen {

namespace {

// A fixed hash of up to four small integers into [0, 1): the same figures on every machine.
double unit(std::uint64_t a, std::uint64_t b = 0, std::uint64_t c = 0, std::uint64_t d = 0) {
    std::uint64_t x = a * 0x9E3779B97F4A7C15ULL ^ (b + 0x632BE59BD9B4E019ULL) * 0xBF58476D1CE4E5B9ULL ^
                      (c + 0x8CB92BA72F3D8DD7ULL) * 0x94D049BB133111EBULL ^ (d + 0x2545F4914F6CDD1DULL);
    x ^= x >> 30;
    x *= 0xBF58476D1CE4E5B9ULL;
    x ^= x >> 27;
    x *= 0x94D049BB133111EBULL;
    x ^= x >> 31;
    return double(x >> 11) / double(1ULL << 53);
}

double between(double lo, double hi, double u) {
    return lo + (hi - lo) * u;
}

const QList<double> kAges = {0, 1, 5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60, 65, 70, 75, 80, 85};

struct Cause {
    QString code, cluster;
    QStringList sequelae;
};

// Each statement prepared once and kept for all its rows.
class Writer {
public:
    Writer(DbConnection& db, QString* error) : db_(db), error_(error) {}

    // Runs `sql` with `values`; false at a refusal, with the statement in `error`.
    bool one(const QString& sql, const QVariantList& values) {
        auto it = prepared_.find(sql);
        if (it == prepared_.end()) {
            auto q = std::make_unique<QSqlQuery>(db_.database());
            if (!q->prepare(sql))
                return fail(sql, q->lastError());
            it = prepared_.emplace(sql, std::move(q)).first;
        }
        QSqlQuery& q = *it->second;
        for (int i = 0; i < values.size(); ++i)
            q.bindValue(i, values[i]);
        return q.exec() || fail(sql, q.lastError());
    }

private:
    bool fail(const QString& sql, const QSqlError& e) {
        *error_ = sql + QStringLiteral(": ") + e.text();
        return false;
    }
    DbConnection& db_;
    QString* error_;
    std::map<QString, std::unique_ptr<QSqlQuery>> prepared_;
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
    if (!w.one(QStringLiteral("ALTER TABLE _DctBDM ADD COLUMN \"%1\" BOOLEAN").arg(r.id), {}))
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
    for (double age : kAges)
        if (!w.one(QStringLiteral("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)"),
                   {r.id, age, age, age}))
            return false;
    const char* sets[][5] = {{"0", "0", "0", nullptr, nullptr},
                             {"1", "0.03", "1", "0.04", "0.1658"},
                             {"2", "0", "1", "0.04", "0.1658"},
                             {"3", "0.03", "0", nullptr, nullptr}};
    for (const auto& s : sets)
        if (!w.one(QStringLiteral("INSERT INTO _DctDAP (DAPID, r, K, Beta, C) VALUES (?, ?, ?, ?, ?)"),
                   {QString::fromLatin1(s[0]).toInt(), QString::fromLatin1(s[1]).toDouble(),
                    QString::fromLatin1(s[2]).toDouble(), s[3] ? QVariant(QString::fromLatin1(s[3]).toDouble()) : QVariant(),
                    s[4] ? QVariant(QString::fromLatin1(s[4]).toDouble()) : QVariant()}))
            return false;
    return true;
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
    if (!createStudyFile(path, error))
        return false;
    auto db = DbConnection::open(path, error);
    if (!db)
        return false;
    QStringList labels = asgLabelsFor(kAges, {QStringLiteral("F"), QStringLiteral("M")});
    std::sort(labels.begin(), labels.end());
    const QList<Cause> causes = causeTree(r);
    Writer w(*db, error);
    // A transaction for the definitions and one for each unit's data: each keeps the pages it
    // touches in the engine's cache, whatever the size of the study.
    db->exec(QStringLiteral("PRAGMA cache_size = -262144"));
    const auto unitOfWork = [&](const std::function<bool()>& work) {
        if (!db->database().transaction()) {
            *error = db->database().lastError().text();
            return false;
        }
        if (!work()) {
            db->database().rollback();
            return false;
        }
        if (!db->database().commit()) {
            *error = db->database().lastError().text();
            return false;
        }
        return true;
    };
    if (!unitOfWork([&] { return dictionaries(w, r, causes) && studyRows(w, r) && weights(w, r, causes); }))
        return false;
    for (int b = 0; b < r.units; ++b)
        if (!unitOfWork([&] {
                return demography(w, r, b) && sharesOfDeath(w, r, causes, labels, b) &&
                       epidemiology(w, r, causes, labels, b);
            }))
            return false;
    return true;
}

} // namespace vesk::studygen
