#include "demography/sprague.h"

#include "demography/sprague_texts.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "foundation/settings_file.h"
#include "platform/program_end.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <stdexcept>

namespace vesk {

using runtime_arithmetic::finite;
using runtime_arithmetic::operand;

namespace {

constexpr int kMinimumClosedGroups = 5;

std::optional<SpraguePanel> panelOf(const CellArray& t) {
    if (t.rank() != 2 || t.size(0) != 5 || t.size(1) < 5)
        return std::nullopt;
    SpraguePanel p{};
    for (int r = 0; r < 5; ++r)
        for (int c = 0; c < 5; ++c) {
            const auto v = runtime_arithmetic::textNumber(t(t.lbound(0) + r, t.lbound(1) + c).toString());
            if (!v)
                return std::nullopt;
            p[r][c] = *v;
        }
    return p;
}

// One output value: the panel's row `year` over the groups from `first`, columns `fromCol` to 4.
double term(const CellArray& groups, const SpraguePanel& p, int year, int first, int fromCol) {
    double sum = 0;
    for (int k = fromCol; k < 5; ++k)
        sum = finite(sum + operand(groups(first + k)) * p[year][k]);
    return sum;
}

} // namespace

std::optional<SpraguePanels> ProcLoadPanels(const QString& file) {
    SpraguePanels panels;
    for (int n = 0; n < 5; ++n) {
        CellArray t;
        if (!FnReadPanel(n, t, file))
            return std::nullopt;
        const auto p = panelOf(t);
        if (!p)
            return std::nullopt;
        panels.panel[n] = *p;
    }
    return panels;
}

Cell FnSprague(const CellArray& groups, qint16 keepOpen, CellArray& single, const SpraguePanels& panels) {
    try {
        const int U = groups.rank() == 1 ? groups.ubound(0) : -1;
        if (U < kMinimumClosedGroups)
            return Cell(0);
        const int N = 5 * U;
        single = CellArray({keepOpen == 1 ? N + 1 : N});
        const auto& P = panels.panel;
        for (int y = 0; y < N; ++y) {
            const int g = y / 5, j = y % 5;
            double v;
            if (g == 0)
                v = term(groups, P[0], j, 0, 0);
            else if (g == 1)
                v = term(groups, P[1], j, 0, 0);
            else if (y < N - 10)
                v = term(groups, P[2], j, g - 2, 0);
            else if (y < N - 5)
                v = term(groups, P[4], j, U - 5, 1);
            else
                v = term(groups, P[3], j, U - 5, 1);
            if (v < 0)
                return Cell(1);
            single(y) = Cell(v);
        }
        if (keepOpen == 1)
            single(N) = Cell(operand(groups(U)));
        return Cell(single);
    } catch (const RuntimeError& e) {
        prompts().ask(text(sprague_texts::kErrorFrom) + e.words, Buttons::Ok, Icon::None, QString());
    } catch (const std::out_of_range&) {
        prompts().ask(text(sprague_texts::kErrorFrom) + runtimeWords(runtime_error::kSubscriptOutOfRange),
                      Buttons::Ok, Icon::None, QString());
    }
    return Cell();
}

Cell FnSprague(const CellArray& groups, qint16 keepOpen, CellArray& single) {
    const auto panels = ProcLoadPanels();
    if (!panels) {
        prompts().ask(text(sprague_texts::kPanelsMissing), Buttons::Ok, Icon::Critical, QString());
        endTheProgram();
        return Cell();
    }
    return FnSprague(groups, keepOpen, single, *panels);
}

Cell FnSpreadUniform(const Cell& values, qint16 keepOpen, const CellArray& ageBreaks) {
    if (!values.isArray() || values.array().rank() != 1 || ageBreaks.rank() != 1 ||
        values.array().size(0) != ageBreaks.size(0))
        return Cell(0);
    const CellArray& v = values.array();
    const int U = ageBreaks.ubound(0);
    const int last = int(operand(ageBreaks(U)));
    CellArray out({keepOpen == 1 ? last + 1 : last});
    for (int i = ageBreaks.lbound(0); i < U; ++i) {
        const int from = int(operand(ageBreaks(i))), to = int(operand(ageBreaks(i + 1)));
        for (int a = from; a < to; ++a)
            out(a) = Cell(runtime_arithmetic::quot(operand(v(v.lbound(0) + i - ageBreaks.lbound(0))), double(to - from)));
    }
    if (keepOpen == 1)
        out(last) = Cell(operand(v(v.ubound(0))));
    return Cell(std::move(out));
}

} // namespace vesk
