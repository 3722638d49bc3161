#include "results/chart_look.h"

#include "platform/runtime.h"
#include "platform/texts.h"
#include "results/results_texts.h"

namespace vesk {

namespace rt = results_texts;
namespace gf = graph_field;

namespace {

bool word(const QString& v) {
    return v.trimmed().compare(QLatin1String("True"), Qt::CaseInsensitive) == 0;
}

double num(const QString& v) {
    return Val(v);
}

ChartFont font(const GraphLine& l, int name, int size, int style) {
    return {l.value(name).trimmed(), num(l.value(size)), l.value(style).trimmed() == QLatin1String("1")};
}

bool digitsOnly(const QString& v) {
    const QString t = v.trimmed();
    if (t.isEmpty())
        return false;
    for (QChar c : t)
        if (!c.isDigit())
            return false;
    return true;
}

} // namespace

ChartPlace placeOf(int code) {
    switch (code) {
    case 0:
    case 1:
    case 2:
        return ChartPlace::Top;
    case 3:
        return ChartPlace::Left;
    case 6:
    case 7:
    case 8:
        return ChartPlace::Bottom;
    default:
        return ChartPlace::Right;
    }
}

void applyFamilyTitles(GraphProps& props, const ChartData& data) {
    for (std::size_t k = 0; k < props.size() && k < data.tables.size(); ++k)
        props[k][gf::Title] = data.tables[k].title;
}

ChartLook chartLook(const GraphLine& l, const ChartTable& table) {
    ChartLook s;
    s.threeD = l.value(gf::Type).trimmed().compare(QLatin1String("3D Bar"), Qt::CaseInsensitive) == 0;
    s.stacked = word(l.value(gf::Stacking)) || table.stacked;
    s.legend = word(l.value(gf::ShowLegend));
    s.legendPlace = placeOf(int(num(l.value(gf::LegendPosition))));
    s.title = l.value(gf::Title).isEmpty() ? table.title : l.value(gf::Title);
    s.axisYTitle = l.value(gf::AxisYTitle);
    s.axisXTitle = l.value(gf::AxisXTitle);
    s.footnote = l.value(gf::Footnote);
    s.titleFont = font(l, gf::TitleFont, gf::TitleFontSize, gf::TitleFontStyle);
    s.axisYFont = font(l, gf::AxisYFont, gf::AxisYFontSize, gf::AxisYFontStyle);
    s.axisXFont = font(l, gf::AxisXFont, gf::AxisXFontSize, gf::AxisXFontStyle);
    s.footnoteFont = font(l, gf::FootnoteFont, gf::FootnoteFontSize, gf::FootnoteFontStyle);
    s.scaleMin = num(l.value(gf::ScaleMin));
    s.scaleMax = num(l.value(gf::ScaleMax));
    s.majorDivisions = int(num(l.value(gf::MajorDivisions)));
    s.barGap = num(l.value(gf::BarGap));
    for (const QString& c : l.value(gf::Colours).split(u';', Qt::SkipEmptyParts)) {
        const QStringList rgb = c.split(u',');
        if (rgb.size() == 3)
            s.colours.push_back({int(num(rgb[0])), int(num(rgb[1])), int(num(rgb[2]))});
    }
    s.fill = int(num(l.value(gf::FillStyle)));
    s.ticksX = num(l.value(gf::AxisXTicks)) != 0;
    s.ticksY = num(l.value(gf::AxisYTicks)) != 0;
    s.narrower = word(l.value(gf::Narrower));
    return s;
}

std::optional<QString> checkChartField(int field, const QString& value) {
    const auto below = [&](int limit) { return digitsOnly(value) && value.trimmed().toInt() < limit; };
    switch (field) {
    case gf::AxisXFontSize:
        return below(20) ? std::nullopt : std::optional(text(rt::kAxisXFontSize));
    case gf::FootnoteFontSize:
        return below(20) ? std::nullopt : std::optional(text(rt::kFootnoteFontSize));
    case gf::TitleFontSize:
    case gf::AxisYFontSize:
        return below(20) ? std::nullopt : std::optional(text(rt::kFontSize));
    case gf::LegendPosition:
        return below(9) ? std::nullopt : std::optional(text(rt::kLegendPosition));
    case gf::MajorDivisions:
        return digitsOnly(value) ? std::nullopt : std::optional(text(rt::kMajorDivisions));
    case gf::ScaleMax:
        return digitsOnly(value) ? std::nullopt : std::optional(text(rt::kScaleMaximum));
    case gf::ScaleMin:
        return digitsOnly(value) ? std::nullopt : std::optional(text(rt::kScaleMinimum));
    default:
        return std::nullopt;
    }
}

} // namespace vesk
