#include "demography/coale_demeny.h"

#include "platform/csv.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <algorithm>
#include <cmath>
#include <limits>

namespace vesk {

namespace {

constexpr std::array<const char*, 4> kFamilyNames{"West", "North", "East", "South"};
constexpr int kRegressedAges[kCdRegressed] = {0,  1,  5,  10, 15, 20, 25, 30, 35,
                                              40, 45, 50, 55, 60, 65, 70, 75};

// Years of the trapezoid grid of the tail, and the grid's step.
constexpr double kTailStep = 0.2;

struct CsvFile {
    CsvTable table;
    QString name;
    std::vector<int> cols;
};

// Reads `name` from `folder` and finds the named columns; false with a message otherwise.
bool openCsv(const QString& folder, const QString& name, const QStringList& columns, CsvFile& out,
             QString* error) {
    QFile f(QDir(folder).filePath(name));
    if (!f.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot open %1: %2").arg(f.fileName(), f.errorString());
        return false;
    }
    QString parseError;
    auto table = parseCsv(QString::fromUtf8(f.readAll()), &parseError);
    if (!table) {
        *error = QStringLiteral("%1: %2").arg(f.fileName(), parseError);
        return false;
    }
    out.table = *table;
    out.name = f.fileName();
    out.cols.clear();
    for (const QString& c : columns) {
        const int i = out.table.column(c);
        if (i < 0) {
            *error = QStringLiteral("%1 has no column '%2'").arg(out.name, c);
            return false;
        }
        out.cols.push_back(i);
    }
    return true;
}

// The field of column number `k` (of the requested columns) in `row`, as a number.
bool number(const CsvFile& f, int row, int k, double& v, QString* error) {
    const QStringList& r = f.table.rows[row];
    const int c = f.cols[k];
    bool ok = false;
    if (c < r.size())
        v = r[c].trimmed().toDouble(&ok);
    if (!ok)
        *error = QStringLiteral("%1, line %2: '%3' is not a number")
                     .arg(f.name)
                     .arg(row + 2)
                     .arg(c < r.size() ? r[c] : QString());
    return ok;
}

// Family and sex of a row (columns 0 and 1 of the requested ones).
CdSexCoefficients* target(CoaleDemenyData& d, const CsvFile& f, int row, QString* error) {
    const QStringList& r = f.table.rows[row];
    const auto fam = cdFamilyFromName(r.value(f.cols[0]).trimmed());
    const auto sex = cdSexFromName(r.value(f.cols[1]).trimmed());
    if (!fam || !sex) {
        *error = QStringLiteral("%1, line %2: unknown family or sex").arg(f.name).arg(row + 2);
        return nullptr;
    }
    return &d.table[static_cast<int>(*fam)][static_cast<int>(*sex)];
}

// Marks one expected entry as seen; every entry must come exactly once.
bool mark(std::vector<char>& seen, size_t k, const CsvFile& f, int row, QString* error) {
    if (seen[k]) {
        *error = QStringLiteral("%1, line %2: a repeated entry").arg(f.name).arg(row + 2);
        return false;
    }
    seen[k] = 1;
    return true;
}

bool allSeen(const std::vector<char>& seen, const CsvFile& f, QString* error) {
    for (char s : seen)
        if (!s) {
            *error = QStringLiteral("%1 does not hold every family, sex and age").arg(f.name);
            return false;
        }
    return true;
}

size_t key(const CoaleDemenyData& d, const CdSexCoefficients* c) {
    return static_cast<size_t>(c - &d.table[0][0]);
}

bool loadRegression(const QString& folder, CoaleDemenyData& d, QString* error) {
    CsvFile f;
    if (!openCsv(folder, QStringLiteral("cd_regression_coefficients.csv"),
                 {"family", "sex", "age", "lin_a", "lin_b", "log_a", "log_b"}, f, error))
        return false;
    std::vector<char> seen(8 * kCdRegressed, 0);
    for (int row = 0; row < f.table.rows.size(); ++row) {
        CdSexCoefficients* c = target(d, f, row, error);
        double age = 0, v[4];
        if (!c || !number(f, row, 2, age, error))
            return false;
        const int* at = std::find(kRegressedAges, kRegressedAges + kCdRegressed, static_cast<int>(age));
        if (at == kRegressedAges + kCdRegressed || age != std::floor(age)) {
            *error = QStringLiteral("%1, line %2: age %3 is not one of 0, 1, 5, ..., 75")
                         .arg(f.name)
                         .arg(row + 2)
                         .arg(age);
            return false;
        }
        const int i = static_cast<int>(at - kRegressedAges);
        for (int k = 0; k < 4; ++k)
            if (!number(f, row, 3 + k, v[k], error))
                return false;
        if (!mark(seen, key(d, c) * kCdRegressed + i, f, row, error))
            return false;
        c->linA[i] = v[0], c->linB[i] = v[1], c->logA[i] = v[2], c->logB[i] = v[3];
    }
    return allSeen(seen, f, error);
}

bool loadLevels(const QString& folder, CoaleDemenyData& d, QString* error) {
    CsvFile f;
    if (!openCsv(folder, QStringLiteral("cd_level_e10.csv"), {"family", "sex", "level", "e10"}, f, error))
        return false;
    std::vector<char> seen(8 * kCdLevels, 0);
    for (int row = 0; row < f.table.rows.size(); ++row) {
        CdSexCoefficients* c = target(d, f, row, error);
        double level = 0, e10 = 0;
        if (!c || !number(f, row, 2, level, error) || !number(f, row, 3, e10, error))
            return false;
        if (level < 1 || level > kCdLevels || level != std::floor(level)) {
            *error =
                QStringLiteral("%1, line %2: level %3 is not 1 to 25").arg(f.name).arg(row + 2).arg(level);
            return false;
        }
        const int i = static_cast<int>(level) - 1;
        if (!mark(seen, key(d, c) * kCdLevels + i, f, row, error))
            return false;
        c->e10[i] = e10;
    }
    return allSeen(seen, f, error);
}

bool loadSeparationFactors(const QString& folder, CoaleDemenyData& d, QString* error) {
    CsvFile f;
    if (!openCsv(folder, QStringLiteral("cd_a0_4a1_rules.csv"),
                 {"family", "sex", "quantity", "intercept", "slope_on_q0", "value_if_q0_ge_0.100"}, f, error))
        return false;
    std::vector<char> seen(8 * 2, 0);
    for (int row = 0; row < f.table.rows.size(); ++row) {
        CdSexCoefficients* c = target(d, f, row, error);
        if (!c)
            return false;
        const QString q = f.table.rows[row].value(f.cols[2]).trimmed();
        double v[3];
        for (int k = 0; k < 3; ++k)
            if (!number(f, row, 3 + k, v[k], error))
                return false;
        int which = q == QLatin1String("1a0") ? 0 : q == QLatin1String("4a1") ? 1 : -1;
        if (which < 0) {
            *error = QStringLiteral("%1, line %2: quantity '%3' is neither 1a0 nor 4a1")
                         .arg(f.name)
                         .arg(row + 2)
                         .arg(q);
            return false;
        }
        if (!mark(seen, key(d, c) * 2 + which, f, row, error))
            return false;
        if (which == 0)
            c->a0Intercept = v[0], c->a0Slope = v[1], c->a0High = v[2];
        else
            c->a1Intercept = v[0], c->a1Slope = v[1], c->a1High = v[2];
    }
    return allSeen(seen, f, error);
}

// nqx of the 17 regressed groups: the linear, log-linear or mixed model by the crossover rule.
std::array<double, kCdRegressed> regressedQ(const CdSexCoefficients& c, double e10) {
    std::array<double, kCdRegressed> q{};
    for (int i = 0; i < kCdRegressed; ++i) {
        const double qA = c.linA[i] + c.linB[i] * e10;
        const double qL = std::pow(10.0, c.logA[i] + c.logB[i] * e10) / 10000.0;
        const double slopeRatio = (c.linB[i] / c.logB[i]) / (std::log(10.0) * qL);
        if (qA > qL)
            q[i] = (qA + qL) / 2;
        else
            q[i] = slopeRatio < 1 ? qA : qL;
    }
    return q;
}

// Years lived between t0 and t1 years above 80 (grid points of the tail), by the trapezoid rule.
double tailYears(const CdLifeTable& t, int k0, int k1) {
    double sum = 0;
    for (int k = k0; k <= k1; ++k)
        sum += (k == k0 || k == k1 ? 0.5 : 1.0) * t.tailSurvivorship(k * kTailStep);
    return sum * kTailStep;
}

void fillTail(CdLifeTable& t, double l75, double q75) {
    const double nL75 = 5 * l75 * (1 - q75) + 2.5 * l75 * q75;
    const double m77 = l75 * q75 / nL75; // the hazard at 77.5
    const double m105 = (t.sex == CdSex::Female ? 0.613 : 0.551) + 1.75 * q75;
    t.kappa = std::log(m105 / m77) / 27.5;
    t.m80 = m77 * std::exp(2.5 * t.kappa);
    t.l80 = l75 * (1 - q75);
    for (int g = 0; g < 4; ++g) {
        t.lx[17 + g] = t.tailSurvivorship(5.0 * g);
        t.nLx[17 + g] = tailYears(t, 25 * g, 25 * (g + 1));
    }
    for (int g = 0; g < 3; ++g)
        t.nqx[17 + g] = (t.lx[17 + g] - t.lx[18 + g]) / t.lx[17 + g];
    t.nqx[20] = 1;
    t.T100 = tailYears(t, 100, 200); // ages 100 to 120
}

} // namespace

double CdLifeTable::tailSurvivorship(double t) const {
    return l80 * std::exp(-(m80 / kappa) * (std::exp(kappa * t) - 1));
}

std::optional<CoaleDemenyData> loadCoaleDemenyData(const QString& folder, QString* error) {
    QString local;
    if (!error)
        error = &local;
    CoaleDemenyData d;
    if (!loadRegression(folder, d, error) || !loadLevels(folder, d, error) ||
        !loadSeparationFactors(folder, d, error))
        return std::nullopt;
    return d;
}

QString referenceDataFolder() {
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("refdata"));
}

CdLifeTable coaleDemenyTable(const CoaleDemenyData& data, CdFamily family, CdSex sex, int level) {
    const CdSexCoefficients& c = data.of(family, sex);
    CdLifeTable t;
    t.family = family, t.sex = sex, t.level = level;
    t.e10 = c.e10[level - 1];
    const auto q = regressedQ(c, t.e10);
    t.lx[0] = 1;
    for (int i = 0; i < kCdRegressed; ++i) {
        t.age[i] = kRegressedAges[i];
        t.n[i] = i == 0 ? 1 : i == 1 ? 4 : 5;
        t.nqx[i] = q[i];
        if (i + 1 < kCdRegressed)
            t.lx[i + 1] = t.lx[i] * (1 - q[i]);
    }
    for (int g = 0; g < 4; ++g) {
        t.age[17 + g] = 80 + 5 * g;
        t.n[17 + g] = g < 3 ? 5 : std::numeric_limits<double>::quiet_NaN();
    }
    fillTail(t, t.lx[16], q[16]);
    const double q0 = q[0];
    t.nax.fill(2.5);
    t.nax[0] = q0 < 0.100 ? c.a0Intercept + c.a0Slope * q0 : c.a0High;
    t.nax[1] = q0 < 0.100 ? c.a1Intercept + c.a1Slope * q0 : c.a1High;
    t.nax[2] = 2.25;
    for (int i = 3; i <= 15; ++i)
        t.nax[i] = 2.6;
    for (int i = 0; i < kCdAgeGroups; ++i)
        t.ndx[i] = t.lx[i] * t.nqx[i];
    for (int i = 0; i < kCdRegressed; ++i)
        t.nLx[i] = t.n[i] * (t.lx[i] - t.ndx[i]) + t.nax[i] * t.ndx[i];
    double T = t.T100;
    for (int i = kCdAgeGroups - 1; i >= 0; --i) {
        T += t.nLx[i];
        t.Tx[i] = T;
        t.nmx[i] = t.ndx[i] / t.nLx[i];
        t.ex[i] = t.Tx[i] / t.lx[i];
    }
    return t;
}

double cdSurvivorship(const CdLifeTable& t, double x) {
    if (x >= 80)
        return t.tailSurvivorship(x - 80);
    int i = kCdRegressed - 1;
    while (i > 0 && t.age[i] > x)
        --i;
    const double next = i + 1 < kCdRegressed ? t.lx[i + 1] : t.l80;
    const double mu = std::log(t.lx[i] / next) / t.n[i];
    return t.lx[i] * std::exp(-mu * (x - t.age[i]));
}

double cdHazard(const CdLifeTable& t, double x) {
    if (x >= 80)
        return t.m80 * std::exp(t.kappa * (x - 80));
    int i = kCdRegressed - 1;
    while (i > 0 && t.age[i] > x)
        --i;
    const double next = i + 1 < kCdRegressed ? t.lx[i + 1] : t.l80;
    return std::log(t.lx[i] / next) / t.n[i];
}

std::optional<CdFamily> cdFamilyFromName(const QString& name) {
    for (int i = 0; i < 4; ++i)
        if (name.compare(QLatin1String(kFamilyNames[i]), Qt::CaseInsensitive) == 0)
            return static_cast<CdFamily>(i);
    return std::nullopt;
}

std::optional<CdSex> cdSexFromName(const QString& name) {
    const QString s = name.trimmed().toUpper();
    if (s == QLatin1String("F") || s == QLatin1String("FEMALE"))
        return CdSex::Female;
    if (s == QLatin1String("M") || s == QLatin1String("MALE"))
        return CdSex::Male;
    return std::nullopt;
}

QString cdFamilyName(CdFamily f) {
    return QLatin1String(kFamilyNames[static_cast<int>(f)]);
}

QString cdSexLetter(CdSex s) {
    return s == CdSex::Female ? QStringLiteral("F") : QStringLiteral("M");
}

} // namespace vesk
