#include "demography/single_year.h"

#include "demography/sprague_texts.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QMap>
#include <stdexcept>

namespace vesk {

namespace {

// Basic array columns (the same as the computation's).
constexpr int kBai = 0, kWidth = 1, kFemale = 2, kMale = 3, kBoth = 4;
constexpr const char* kOpen = "W";

// The rows merged at the start: 0 for "0 - 4", 1 for "0 , 1 -4 ", 2 for "0 , 1 , 2-4 ".
int mergedRows(int choice) {
    return choice == 1 || choice == 2 ? choice : 0;
}

// The group vector of one column over rows first..last, the first `merge` + 1 rows added together;
// with the start ages of the groups in `breaks`.
CellArray groupVector(const CellArray& a, int y, int b, int column, int merge, CellArray* breaks) {
    const int first = a.lbound(2), last = a.ubound(2);
    const int n = last - first + 1 - merge;
    CellArray v({std::max(n, 0)});
    if (breaks)
        *breaks = CellArray({std::max(n, 0)});
    for (int k = 0; k < n; ++k) {
        const int row = first + (k == 0 ? 0 : k + merge);
        double value = runtime_arithmetic::operand(a(y, b, row, column));
        if (k == 0)
            for (int extra = 1; extra <= merge; ++extra)
                value += runtime_arithmetic::operand(a(y, b, first + extra, column));
        v(k) = Cell(value);
        if (breaks)
            (*breaks)(k) = a(y, b, row, kBai);
    }
    return v;
}

Cell sprague(const CellArray& groups, CellArray& single, const SpraguePanels* panels) {
    return panels ? FnSprague(groups, 1, single, *panels) : FnSprague(groups, 1, single);
}

} // namespace

Cell singleYearSeries(const CellArray& groups, const CellArray& ageBreaks, const SpraguePanels* panels) {
    CellArray single;
    const Cell r = sprague(groups, single, panels);
    if (r.isNumber() && r.toDouble() == 1)
        return FnSpreadUniform(Cell(groups), 1, ageBreaks);
    return r;
}

namespace {
Cell singleYears(const CellArray& a, int merge, const SpraguePanels* panels);
} // namespace

Cell Newp(const Cell& basic, int choiceFiveYears, const SpraguePanels* panels) {
    if (!basic.isArray() || basic.array().rank() != 4) {
        prompts().ask(text(sprague_texts::kNotAnArray), Buttons::Ok, Icon::None, QString());
        return Cell();
    }
    try {
        return singleYears(basic.array(), mergedRows(choiceFiveYears), panels);
    } catch (const RuntimeError& e) {
        prompts().ask(e.words, Buttons::Ok, Icon::None, QString());
    } catch (const std::out_of_range& e) {
        prompts().ask(QString::fromUtf8(e.what()), Buttons::Ok, Icon::None, QString());
    }
    return Cell();
}

namespace {

Cell singleYears(const CellArray& a, int merge, const SpraguePanels* panels) {
    CellArray out;
    int length = -1;
    for (int y = a.lbound(0); y <= a.ubound(0); ++y)
        for (int b = a.lbound(1); b <= a.ubound(1); ++b) {
            const Cell& firstCell = a(y, b, a.lbound(2), a.lbound(3));
            if (firstCell.isEmpty() || firstCell.isNull())
                continue;
            CellArray breaks;
            const Cell male = singleYearSeries(groupVector(a, y, b, kMale, merge, &breaks), breaks, panels);
            const Cell female = singleYearSeries(groupVector(a, y, b, kFemale, merge, nullptr), breaks, panels);
            if (!male.isArray() || !female.isArray() || male.array().size(0) != female.array().size(0))
                continue;
            const int n = male.array().size(0);
            if (length < 0) {
                length = n;
                out = CellArray(std::vector<Bound>{{a.lbound(0), a.ubound(0)},
                                                   {a.lbound(1), a.ubound(1)},
                                                   {0, n - 1},
                                                   {a.lbound(3), a.ubound(3)}});
            }
            if (n != length)
                continue;
            for (int i = 0; i < n; ++i) {
                const double f = female.array()(i).toDouble(), m = male.array()(i).toDouble();
                out(y, b, i, kBai) = Cell(i);
                out(y, b, i, kWidth) = i + 1 < n ? Cell(1) : Cell(QString::fromLatin1(kOpen));
                out(y, b, i, kFemale) = Cell(f);
                out(y, b, i, kMale) = Cell(m);
                if (a.ubound(3) >= kBoth)
                    out(y, b, i, kBoth) = Cell(f + m);
            }
        }
    return length < 0 ? Cell() : Cell(std::move(out));
}

} // namespace

void BuildSnglYr(const QList<SingleYearRecord>& rows, QList<SingleYearRecord>& out, const SpraguePanels* panels) {
    // The rows of each unit and year, in the order given.
    QList<QPair<QString, QString>> order;
    QMap<QPair<QString, QString>, QList<const SingleYearRecord*>> groups;
    for (const SingleYearRecord& r : rows) {
        const QPair<QString, QString> key{r.bpu.toString(), r.year.toString()};
        if (!groups.contains(key))
            order << key;
        groups[key] << &r;
    }
    for (const auto& key : order) {
        const auto& list = groups[key];
        CellArray m({int(list.size())}), f({int(list.size())}), breaks({int(list.size())});
        Cell date = list.first()->date;
        for (int i = 0; i < list.size(); ++i) {
            m(i) = list[i]->male;
            f(i) = list[i]->female;
            breaks(i) = list[i]->age;
            if (list[i]->date.toString() > date.toString())
                date = list[i]->date;
        }
        const Cell male = singleYearSeries(m, breaks, panels);
        const Cell female = singleYearSeries(f, breaks, panels);
        if ((male.isNumber() && male.toDouble() == 0) || (female.isNumber() && female.toDouble() == 0)) {
            prompts().ask(text(sprague_texts::kLessThanFiveRows), Buttons::Ok, Icon::None, QString());
            continue;
        }
        if (!male.isArray() || !female.isArray() || male.array().size(0) != female.array().size(0))
            continue;
        for (int i = 0; i < male.array().size(0); ++i)
            out << SingleYearRecord{list.first()->bpu, list.first()->year, Cell(i), male.array()(i),
                                    female.array()(i), date};
    }
}

} // namespace vesk
