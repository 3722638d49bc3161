#include "demography/pyramid.h"

#include "demography/pyramid_texts.h"
#include "platform/texts.h"

#include <algorithm>
#include <cmath>

namespace vesk {

namespace pt = pyramid_texts;

namespace {

// The columns of the population array: age, width, female, male, both.
constexpr int kAge = 0, kFemale = 2, kMale = 3;

QString number(double v) {
    return QString::number(v, 'g', 15);
}

} // namespace

double FnGetMax(const PyramidTable& table) {
    double m = 0;
    for (const PyramidRow& r : table)
        m = std::max({m, r.males, r.females});
    return m;
}

double FnGetUnits(double maximum) {
    double unit = 1, value = maximum;
    while (value > 10) {
        value = std::round(value / 10);
        unit *= 10;
    }
    return unit;
}

double FnGetResizeFactor(double maximum) {
    double factor = 1;
    while (maximum / factor > 100)
        factor *= 10;
    return factor;
}

PyramidTable FnResizeArrPopPrymd(const PyramidTable& table, double factor) {
    PyramidTable out = table;
    for (PyramidRow& r : out) {
        r.males /= factor;
        r.females /= factor;
    }
    return out;
}

QString FnGetUnitsInWords(double unit) {
    static const std::pair<double, const char*> words[] = {
        {1e2, pt::kTens},        {1e3, pt::kHundreds},        {1e4, pt::kThousands},
        {1e5, pt::kTenThousands}, {1e6, pt::kHundredThousands}, {1e7, pt::kMillions},
        {1e8, pt::kTenMillions}, {1e9, pt::kHundredMillions}};
    for (const auto& [u, w] : words)
        if (unit == u)
            return text(w);
    return {};
}

PyramidTable pyramidOfUnit(const Cell& arrPop4D, int unit) {
    PyramidTable out;
    if (!arrPop4D.isArray() || arrPop4D.array().rank() != 4)
        return out;
    const CellArray& a = arrPop4D.array();
    if (unit < 0 || unit >= a.size(1))
        return out;
    for (int r = 0; r < a.size(2); ++r) {
        const Cell& age = a(0, unit, r, kAge);
        if (!age.isNumber() && !age.isText())
            continue;
        out.push_back({age.toDouble(), a(0, unit, r, kMale).toDouble(), a(0, unit, r, kFemale).toDouble()});
    }
    return out;
}

QString ArrPopPrymdatToClip(const PyramidTable& table) {
    QString out;
    for (const PyramidRow& r : table)
        out += number(r.age) + u'\t' + number(r.males) + u'\t' + number(r.females) + u'\n';
    return out;
}

PyramidGeometry pyramidGeometry(const PyramidTable& table, double width, double height, int tickCount) {
    PyramidGeometry g;
    const double maximum = FnGetMax(table);
    g.unit = FnGetUnits(maximum);
    g.factor = FnGetResizeFactor(maximum);
    g.axisTitle = text(pt::kAxisTitle) + FnGetUnitsInWords(g.unit);
    g.centre = width / 2;
    g.halfWidth = width / 2;
    const PyramidTable scaled = FnResizeArrPopPrymd(table, g.factor);
    const double step = std::floor(height / double(table.size() + 1));
    tickCount = std::max(1, tickCount);
    const double tick = std::max(1.0, std::ceil(FnGetMax(scaled) / tickCount));
    const double span = tick * tickCount;
    for (int k = 1; k <= tickCount; ++k)
        g.ticks.push_back({g.halfWidth * k / tickCount, number(tick * k)});
    for (std::size_t i = 0; i < scaled.size(); ++i) {
        PyramidBar b;
        b.label = number(scaled[i].age) + (i + 1 == scaled.size() ? QStringLiteral("+") : QString());
        b.height = step;
        b.top = height - step * double(i + 1); // the youngest at the bottom
        b.maleLength = g.halfWidth * scaled[i].males / span;
        b.femaleLength = g.halfWidth * scaled[i].females / span;
        g.bars.push_back(b);
    }
    return g;
}

} // namespace vesk
