#include "reference_products.h"

#include "platform/csv.h"

#include <QDir>
#include <QFile>

namespace vesk::refgen {

namespace {

std::optional<CsvTable> readCsv(const QString& folder, const QString& name, QString* error) {
    QFile f(QDir(folder).filePath(name));
    if (!f.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot open %1: %2").arg(f.fileName(), f.errorString());
        return std::nullopt;
    }
    QString parseError;
    auto t = parseCsv(QString::fromUtf8(f.readAll()), &parseError);
    if (!t)
        *error = QStringLiteral("%1: %2").arg(f.fileName(), parseError);
    return t;
}

// Rows of (age, value) of two named columns; rows whose age is not a whole number, or whose value is
// empty, are left out (the sub-year ages of a table, an unpublished last value).
bool readColumn(const CsvTable& t, const QString& valueColumn, std::vector<int>& ages,
                std::vector<double>& values, QString* error) {
    const int ca = t.column(QStringLiteral("age")), cv = t.column(valueColumn);
    if (ca < 0 || cv < 0) {
        *error = QStringLiteral("no column 'age' or '%1'").arg(valueColumn);
        return false;
    }
    for (const QStringList& r : t.rows) {
        bool okAge = false, okValue = false;
        const int age = r.value(ca).trimmed().toInt(&okAge);
        const double v = r.value(cv).trimmed().toDouble(&okValue);
        if (!okAge || r.value(cv).trimmed().isEmpty())
            continue;
        if (!okValue) {
            *error = QStringLiteral("'%1' is not a number").arg(r.value(cv));
            return false;
        }
        ages.push_back(age);
        values.push_back(v);
    }
    return true;
}

bool readAbridged(const QString& folder, const QString& file, const QString& column, AbridgedExpectancy& out,
                  QString* error) {
    const auto t = readCsv(folder, file, error);
    if (!t || !readColumn(*t, column, out.ages, out.ex, error)) {
        *error = file + QStringLiteral(": ") + *error;
        return false;
    }
    return true;
}

// Single years 0..100 of a table that has them all (and may have more, or ages below 1).
bool readSingleYears(const QString& folder, const QString& file, std::vector<double>& out, QString* error) {
    AbridgedExpectancy t;
    if (!readAbridged(folder, file, QStringLiteral("ex_both_sexes"), t, error))
        return false;
    out.assign(101, 0.0);
    std::vector<char> seen(101, 0);
    for (size_t i = 0; i < t.ages.size(); ++i)
        if (t.ages[i] >= 0 && t.ages[i] <= 100)
            out[static_cast<size_t>(t.ages[i])] = t.ex[i], seen[static_cast<size_t>(t.ages[i])] = 1;
    for (size_t a = 0; a <= 100; ++a)
        if (!seen[a]) {
            *error = QStringLiteral("%1 has no value at age %2").arg(file).arg(a);
            return false;
        }
    return true;
}

bool readPanels(const QString& folder, std::array<Panel, 5>& panels, QString* error) {
    const QString file = QStringLiteral("sprague_panels.csv");
    const auto t = readCsv(folder, file, error);
    if (!t)
        return false;
    const int cb = t->column(QStringLiteral("settings_block")),
              cy = t->column(QStringLiteral("year_in_group"));
    std::array<std::array<char, 5>, 5> seen{};
    for (const QStringList& r : t->rows) {
        const QString block = r.value(cb).trimmed();
        const int k =
            block.size() == 9 && block.startsWith(QLatin1String("[PANEL ")) ? block[7].digitValue() : -1;
        bool ok = false;
        const int year = r.value(cy).toInt(&ok);
        if (cb < 0 || k < 0 || k > 4 || !ok || year < 0 || year > 4) {
            *error = file + QStringLiteral(": a row without a panel block [PANEL 0..4] and a year 0..4");
            return false;
        }
        for (int g = 0; g < 5; ++g) {
            const int c = t->column(QStringLiteral("G%1").arg(g + 1));
            panels[k][year][g] = r.value(c).toDouble(&ok);
            if (c < 0 || !ok) {
                *error = file + QStringLiteral(": a multiplier is missing or not a number");
                return false;
            }
        }
        seen[k][year] = 1;
    }
    for (const auto& p : seen)
        for (char s : p)
            if (!s) {
                *error = file + QStringLiteral(": a panel lacks a row");
                return false;
            }
    return true;
}

} // namespace

std::optional<ReferenceInputs> readReferenceInputs(const QString& folder, QString* error) {
    ReferenceInputs in;
    const QString standard = QStringLiteral("standard_le_gbd1990_west26f_west25f_abridged.csv");
    if (!readAbridged(folder, standard, QStringLiteral("ex_female_std_west26_female"), in.standardFemale,
                      error) ||
        !readAbridged(folder, standard, QStringLiteral("ex_male_std_west25_female"), in.standardMale,
                      error) ||
        !readAbridged(folder, QStringLiteral("standard_le_gbd2019_reference_abridged.csv"),
                      QStringLiteral("ex_both_sexes"), in.gbd2019, error) ||
        !readSingleYears(folder, QStringLiteral("standard_le_gbd2021_reference_single_year.csv"), in.gbd2021,
                         error) ||
        !readSingleYears(folder, QStringLiteral("standard_le_who_ghe_frontier_single_year.csv"),
                         in.whoFrontier, error) ||
        !readPanels(folder, in.panels, error))
        return std::nullopt;
    for (const AbridgedExpectancy* t : {&in.standardFemale, &in.standardMale, &in.gbd2019})
        if (t->ages.empty() || t->ages.front() != 0 || t->ages.back() != 95) {
            *error = QStringLiteral("an abridged standard table does not run from 0 to 95");
            return std::nullopt;
        }
    auto cd = loadCoaleDemenyData(folder, error);
    if (!cd)
        return std::nullopt;
    in.cd = *cd;
    return in;
}

AbridgedExpectancy closedAt100(const AbridgedExpectancy& table, double e100) {
    AbridgedExpectancy t = table;
    t.ages.push_back(100);
    t.ex.push_back(e100);
    return t;
}

namespace {

// The last three published values (85, 90, 95) carry the Gompertz fit.
GompertzFit fitTail(const AbridgedExpectancy& t) {
    const size_t n = t.ages.size();
    return fitGompertz({t.ages[n - 3], t.ages[n - 2], t.ages[n - 1]},
                       {t.ex[n - 3], t.ex[n - 2], t.ex[n - 1]});
}

bool piecewise(const AbridgedExpectancy& t, std::vector<double>& out, const QString& what, QString* error) {
    auto years = pweSingleYears(t);
    if (!years) {
        *error = what + QStringLiteral(": an interval admits no constant non-negative hazard");
        return false;
    }
    out = *years;
    return true;
}

} // namespace

std::optional<ReferenceProducts> makeReferenceProducts(const ReferenceInputs& in, QString* error) {
    ReferenceProducts p;
    p.maleE100 = coaleDemenyTable(in.cd, CdFamily::West, CdSex::Female, 25).e100();
    p.femaleTail = fitTail(in.standardFemale);
    p.femaleE100 = p.femaleTail.expectancy(100);
    p.maleTailCheck = fitTail(in.standardMale);
    p.gbd2019Tail = fitTail(in.gbd2019);
    p.gbd2019E100 = p.gbd2019Tail.expectancy(100);

    const AbridgedExpectancy female = closedAt100(in.standardFemale, p.femaleE100);
    const AbridgedExpectancy male = closedAt100(in.standardMale, p.maleE100);
    if (!piecewise(female, p.kro.female, QStringLiteral("female standard"), error) ||
        !piecewise(male, p.kro.male, QStringLiteral("male standard"), error) ||
        !piecewise(closedAt100(in.gbd2019, p.gbd2019E100), p.gbd2019Single, QStringLiteral("GBD 2019"),
                   error))
        return std::nullopt;
    p.who.female = geometricSingleYears(female);
    p.who.male = geometricSingleYears(male);
    p.panels = in.panels;
    p.oaigd = fitOaigd(in.cd);
    p.gbd2021Single = in.gbd2021;
    p.whoFrontierSingle = in.whoFrontier;
    return p;
}

} // namespace vesk::refgen
