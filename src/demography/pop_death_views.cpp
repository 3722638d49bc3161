#include "demography/pop_death_views.h"

#include "demography/pyramid_texts.h"
#include "platform/cell_array.h"
#include "platform/csv.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <limits>

namespace vesk {

namespace pt = pyramid_texts;

namespace {

// The columns of the single-year arrays: age, width, female, male, both.
constexpr int kAge = 0, kFemale = 2, kMale = 3;

std::vector<AgeInterval> ladder(const std::vector<std::pair<int, int>>& rows) {
    std::vector<AgeInterval> out;
    for (const auto& [from, to] : rows)
        out.push_back({QString::number(from), to < 0 ? QStringLiteral("w") : QString::number(to)});
    return out;
}

bool open(const QString& eai) {
    return eai.trimmed().compare(QLatin1String("w"), Qt::CaseInsensitive) == 0;
}

double endOf(const QString& eai) {
    return open(eai) ? std::numeric_limits<double>::infinity() : Val(eai);
}

QStringList columnsOf(const QString& sex) {
    if (sex == QLatin1String("M"))
        return {QStringLiteral("Male")};
    if (sex == QLatin1String("F"))
        return {QStringLiteral("Female")};
    if (sex == QLatin1String("P"))
        return {QStringLiteral("Persons")};
    if (sex == QLatin1String("MF"))
        return {QStringLiteral("Male"), QStringLiteral("Female")};
    return {QStringLiteral("Male"), QStringLiteral("Female"), QStringLiteral("Persons")};
}

} // namespace

std::vector<AgeInterval> fiveAgeGroups() {
    return ladder({{0, 4}, {5, 14}, {15, 44}, {45, 59}, {60, -1}});
}

std::vector<AgeInterval> sevenAgeGroups() {
    return ladder({{0, 4}, {5, 14}, {15, 29}, {30, 44}, {45, 59}, {60, 69}, {70, -1}});
}

std::vector<AgeInterval> fiveYearGroups(int openAge) {
    std::vector<std::pair<int, int>> rows;
    for (int a = 0; a < openAge; a += 5)
        rows.push_back({a, a + 4});
    rows.push_back({openAge, -1});
    return ladder(rows);
}

std::optional<QString> checkIntervals(const std::vector<AgeInterval>& rows) {
    if (rows.empty())
        return text(pt::kNoIntervals);
    for (const AgeInterval& r : rows) {
        if (r.bai.trimmed().isEmpty() || r.eai.trimmed().isEmpty())
            return text(pt::kCellBlank);
        if (Val(r.bai) > endOf(r.eai))
            return text(pt::kBaiAboveEai);
    }
    return std::nullopt;
}

std::vector<UnitTable> popDeathTables(const Cell& array4D, const Cell& units, const std::vector<AgeInterval>& rows,
                                      const QString& sex) {
    std::vector<UnitTable> out;
    if (!array4D.isArray() || array4D.array().rank() != 4)
        return out;
    const CellArray& a = array4D.array();
    const QStringList columns = columnsOf(sex);
    for (int b = 0; b < a.size(1); ++b) {
        UnitTable t;
        t.unit = units.isArray() && b < units.array().size(0) ? units.array()(units.array().lbound(0) + b).toString()
                                                              : QString::number(b + 1);
        t.heads = QStringList{QStringLiteral("BAI"), QStringLiteral("EAI")} + columns;
        for (const AgeInterval& interval : rows) {
            const double from = Val(interval.bai), to = endOf(interval.eai);
            double male = 0, female = 0;
            for (int r = 0; r < a.size(2); ++r) {
                const Cell& age = a(0, b, r, kAge);
                if (!age.isNumber())
                    continue;
                if (age.toDouble() >= from && age.toDouble() <= to) {
                    male += a(0, b, r, kMale).isNumber() ? a(0, b, r, kMale).toDouble() : 0.0;
                    female += a(0, b, r, kFemale).isNumber() ? a(0, b, r, kFemale).toDouble() : 0.0;
                }
            }
            std::vector<double> values;
            for (const QString& c : columns)
                values.push_back(c == QLatin1String("Male") ? male : c == QLatin1String("Female") ? female : male + female);
            std::vector<QString> row{interval.bai, interval.eai};
            for (double v : values)
                row.push_back(shortestNumber(v));
            t.rows.push_back(row);
            t.values.push_back(values);
        }
        out.push_back(std::move(t));
    }
    return out;
}

CellArray unitTableTexts(const UnitTable& t) {
    CellArray out({int(t.rows.size()), int(t.heads.size())});
    for (int r = 0; r < int(t.rows.size()); ++r)
        for (int k = 0; k < int(t.rows[std::size_t(r)].size()); ++k)
            out(r, k) = Cell(t.rows[std::size_t(r)][std::size_t(k)]);
    return out;
}

CellArray unitTableValues(const UnitTable& t) {
    CellArray out({int(t.rows.size()), int(t.heads.size())});
    for (int r = 0; r < int(t.rows.size()); ++r) {
        out(r, 0) = Cell(t.rows[std::size_t(r)][0]);
        out(r, 1) = Cell(t.rows[std::size_t(r)][1]);
        for (int k = 0; k < int(t.values[std::size_t(r)].size()); ++k)
            out(r, 2 + k) = Cell(t.values[std::size_t(r)][std::size_t(k)]);
    }
    return out;
}

} // namespace vesk
