#include "inputs/demography_sheet.h"

#include "inputs/sheet_texts.h"
#include "platform/csv.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <QRegularExpression>

#include <cmath>

namespace vesk {

namespace col = demography_col;
namespace t = sheet_texts;

namespace {

void setRow(GridModel& grid, int row, double bai, const QString& size) {
    grid.setTextMatrix(row, col::kAge, shortestNumber(bai));
    grid.setTextMatrix(row, col::kSize, size);
}

bool rowFilled(const GridModel& grid, int row) {
    return cellFigure(grid.textMatrix(row, col::kMale)) && cellFigure(grid.textMatrix(row, col::kFemale));
}

// The power of ten that `scale` is (1000 gives 3), or nothing.
std::optional<int> decimalPower(double scale) {
    int k = 0;
    double p = 1.0;
    while (p < scale && k < 308) {
        p *= 10.0;
        ++k;
    }
    return p == scale ? std::optional<int>(k) : std::nullopt;
}

// How far the point of a number may move and the number still be written without an exponent.
constexpr int kPlainShift = 20;

// The number written in `number` (as shortestNumber or a user writes it: sign, digits, a point,
// an exponent) times 10^k, written plainly (0.0001 per 1,000 is 0.1), or with an exponent where the
// point would move more than 20 places (1e-300 stays 1e-297). Nothing
// when the text is no plain number.
std::optional<QString> shiftedDecimal(const QString& number, int k) {
    static const QRegularExpression plain(QStringLiteral("^([+-]?)(\\d*)(?:\\.(\\d*))?(?:[eE]([+-]?\\d{1,4}))?$"));
    const QRegularExpressionMatch m = plain.match(number);
    if (!m.hasMatch() || (m.captured(2).isEmpty() && m.captured(3).isEmpty()))
        return std::nullopt;
    const QString sign = m.captured(1) == u"-" ? QStringLiteral("-") : QString();
    const int shift = k + m.captured(4).toInt(); // an exponent moves the point as the scale does
    if (std::abs(shift) > kPlainShift) {
        const QString mantissa = m.captured(2) + (m.captured(3).isEmpty() ? QString() : u'.' + m.captured(3));
        return sign + mantissa + u'e' + QString::number(shift);
    }
    QString digits = m.captured(2) + m.captured(3);
    qsizetype point = m.captured(2).size() + shift; // digits before the point once moved
    if (point < 0) {
        digits.prepend(QString(-point, u'0'));
        point = 0;
    }
    if (point > digits.size())
        digits.append(QString(point - digits.size(), u'0'));
    QString whole = digits.left(point), fraction = digits.mid(point);
    while (whole.size() > 1 && whole.startsWith(u'0'))
        whole.remove(0, 1);
    while (fraction.endsWith(u'0'))
        fraction.chop(1);
    if (whole.isEmpty())
        whole = QStringLiteral("0");
    return sign + whole + (fraction.isEmpty() ? QString() : u'.' + fraction);
}

// The exponent of ten that takes a typed figure to its stored value.
int storedShift(DemographyKind kind, int power) {
    return kind == DemographyKind::Population ? power : -power;
}

double scaledInDouble(double v, DemographyKind kind, double scale) {
    return kind == DemographyKind::Population ? v * scale : v / scale;
}

} // namespace

std::optional<double> storedFigure(const QString& typed, DemographyKind kind, double scale) {
    const auto figure = cellFigure(typed);
    if (!figure)
        return std::nullopt;
    if (const auto power = decimalPower(scale))
        if (const auto shifted = shiftedDecimal(typed.trimmed(), storedShift(kind, *power)))
            return cellFigure(*shifted);
    return scaledInDouble(*figure, kind, scale);
}

QString shownFigure(double stored, DemographyKind kind, double scale) {
    if (const auto power = decimalPower(scale))
        if (const auto shifted = shiftedDecimal(shortestNumber(stored), -storedShift(kind, *power)))
            return *shifted;
    // Another scale: the double nearest the reverse operation, or the nearest of its neighbours whose
    // text goes back to the stored figure.
    const double reverse = kind == DemographyKind::Population ? stored / scale : stored * scale;
    const auto goesBack = [&](double candidate) {
        return storedFigure(shortestNumber(candidate), kind, scale) == stored;
    };
    double below = reverse, above = reverse;
    for (int step = 0; step <= 8; ++step) {
        if (goesBack(below))
            return shortestNumber(below);
        if (goesBack(above))
            return shortestNumber(above);
        below = std::nextafter(below, -HUGE_VAL);
        above = std::nextafter(above, HUGE_VAL);
    }
    return shortestNumber(reverse);
}

void layoutDemographyGrid(GridModel& grid, const QList<double>& lowerAges) {
    grid.setRedraw(false);
    grid.setFixedRows(1);
    grid.setFixedCols(1);
    grid.setCols(5);
    grid.setRows(1 + std::max<int>(1, static_cast<int>(lowerAges.size())));
    grid.clear();
    const char* headings[] = {t::kHeadAge, t::kHeadSize, t::kHeadMale, t::kHeadFemale, t::kHeadPersons};
    for (int c = 0; c < 5; ++c)
        grid.setTextMatrix(0, c, text(headings[c]));
    for (int i = 0; i < lowerAges.size(); ++i) {
        const bool last = i + 1 == lowerAges.size();
        setRow(grid, i + 1, lowerAges[i],
               last ? text(t::kOpenAge) : shortestNumber(lowerAges[i + 1] - lowerAges[i]));
    }
    grid.setCurrent(1, col::kMale);
    grid.setRedraw(true);
}

QList<double> demographyAges(const GridModel& grid) {
    QList<double> ages;
    for (int r = grid.fixedRows(); r < grid.rows(); ++r)
        if (const auto age = cellFigure(grid.textMatrix(r, col::kAge)))
            ages << *age;
    return ages;
}

LastRowSwitch switchLastRow(GridModel& grid, bool& added) {
    const int last = grid.rows() - 1;
    if (added) {
        grid.setRows(last);
        grid.setTextMatrix(last - 1, col::kSize, text(t::kOpenAge));
        added = false;
        return LastRowSwitch::Opened;
    }
    if (!rowFilled(grid, last))
        return LastRowSwitch::NeedsValues;
    const double bai = cellFigure(grid.textMatrix(last, col::kAge)).value_or(0.0);
    grid.setTextMatrix(last, col::kSize, shortestNumber(kClosedLastInterval));
    grid.setRows(last + 2);
    setRow(grid, last + 1, bai + kClosedLastInterval, text(t::kOpenAge));
    added = true;
    return LastRowSwitch::Closed;
}

double scaleFactor(const QString& typed) {
    const QString digits = typed.trimmed();
    for (const QChar c : digits)
        if (!c.isDigit())
            return 1.0;
    const double v = digits.isEmpty() ? 0.0 : Val(digits);
    return v < 1.0 ? 1.0 : v;
}

std::optional<double> cellFigure(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;
    return Val(trimmed);
}

std::optional<double> personsRate(double maleRate, double femaleRate, double popMale, double popFemale) {
    const double people = popFemale + popMale;
    if (people == 0.0)
        return std::nullopt;
    return (femaleRate * popFemale + maleRate * popMale) / people;
}

void fillPersons(GridModel& grid, DemographyKind kind, const QList<AgePopulation>& population) {
    for (int r = grid.fixedRows(); r < grid.rows(); ++r) {
        const auto male = cellFigure(grid.textMatrix(r, col::kMale));
        const auto female = cellFigure(grid.textMatrix(r, col::kFemale));
        std::optional<double> persons;
        if (male && female && kind == DemographyKind::Population) {
            persons = *male + *female;
        } else if (male && female) {
            const auto age = cellFigure(grid.textMatrix(r, col::kAge));
            for (const AgePopulation& p : population)
                if (age && p.bai == *age)
                    persons = personsRate(*male, *female, p.male, p.female);
        }
        grid.setTextMatrix(r, col::kPersons, persons ? shortestNumber(*persons) : QString());
    }
}

} // namespace vesk
