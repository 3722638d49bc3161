#include "burden/computation_helpers.h"

#include "burden/computation_arrays.h"
#include "burden/kernel_loops.h"
#include "foundation/error_store.h"
#include "platform/prompts.h"

namespace vesk {

Cell FnArrBounds(const Cell& a) {
    if (!a.isArray())
        return Cell();
    const CellArray& x = a.array();
    CellArray out({x.rank()});
    for (int d = 0; d < x.rank(); ++d)
        out(d) = Cell(x.ubound(d));
    return Cell(std::move(out));
}

int FnNDims(const Cell& a) {
    return a.isArray() ? a.array().rank() : 0;
}

Cell FnDropRow(const Cell& a, int row, bool isVector) {
    if (!a.isArray())
        return Cell();
    const CellArray& x = a.array();
    if (isVector) {
        CellArray out({std::max(0, x.size(0) - 1)});
        for (int i = x.lbound(0), k = 0; i <= x.ubound(0); ++i)
            if (i != row)
                out(k++) = x(i);
        return Cell(std::move(out));
    }
    CellArray out({std::max(0, x.size(0) - 1), x.size(1)});
    for (int i = x.lbound(0), k = 0; i <= x.ubound(0); ++i) {
        if (i == row)
            continue;
        for (int c = 0; c < x.size(1); ++c)
            out(k, c) = x(i, x.lbound(1) + c);
        ++k;
    }
    return Cell(std::move(out));
}

namespace {

struct ParamRow {
    const char* name;
    const Cell* value;
    int dims; // 0: no array wanted
};

CellArray labelsOf(const Cell& m, int column) {
    if (!m.isArray())
        return CellArray();
    const CellArray& x = m.array();
    CellArray out({x.size(0)});
    for (int i = 0; i < x.size(0); ++i)
        out(i) = x(x.lbound(0) + i, x.lbound(1) + column);
    return out;
}

template <size_t N> Cell names(const std::array<const char*, N>& list) {
    CellArray out({int(N)});
    for (size_t i = 0; i < N; ++i)
        out(int(i)) = Cell(list[i]);
    return Cell(std::move(out));
}

Cell entries(const Cell& years, const Cell& units, const Cell& daps, const Cell& causes, const Cell& ages,
             const Cell& measures) {
    CellArray out({kLblEntries});
    out(kLblYears) = years;
    out(kLblBPUs) = units;
    out(kLblDAPs) = daps;
    out(kLblCauses) = causes;
    out(kLblAsgs) = ages;
    out(kLblMeasures) = measures;
    return Cell(std::move(out));
}

} // namespace

CellArray FnBDNParams(const KernelInputs& in) {
    const ParamRow rows[] = {{"ArrADWIP", &in.ArrADWIP, kComputationRank}, {"ArrAGD", &in.ArrAGD, kComputationRank},
                             {"ArrDBC", &in.ArrDBC, kComputationRank},     {"MtxLTS", &in.MtxLTS, 2},
                             {"IOrP", &in.IOrP, 0},                        {"VctrYrLst", &in.VctrYrLst, 1},
                             {"VctrBPULst", &in.VctrBPULst, 1},            {"MtxDAP", &in.MtxDAP, 2},
                             {"MtxCobCd", &in.MtxCobCd, 2}};
    const char* heads[] = {"Parameter", "Parameter Address", "IsArray", "Dimensions", "DNLblMatch", "Remarks"};
    CellArray t({10, 6});
    for (int c = 0; c < 6; ++c)
        t(0, c) = Cell(heads[c]);
    int r = 1;
    for (const ParamRow& p : rows) {
        t(r, 0) = Cell(p.name);
        t(r, 1) = Cell(r - 1);
        t(r, 2) = Cell::boolean(p.value->isArray());
        t(r, 3) = FnArrBounds(*p.value);
        if (p.dims > 0 && (!p.value->isArray() || p.value->array().rank() != p.dims))
            ErrorStore(kBdnParamsError, QStringLiteral("%1 is not an array of %2 dimensions").arg(p.name).arg(p.dims),
                       QStringLiteral("FnBDNParams"));
        ++r;
    }
    const QString mode = in.IOrP.toString();
    if (mode != QLatin1String("B") && mode != QLatin1String("P") && mode != QLatin1String("I"))
        ErrorStore(kBdnParamsError, QStringLiteral("an error"), QStringLiteral("BdnKernal"));
    return t;
}

ResultLabels BldResultLabels(const Cell& VctrYrLst, const Cell& VctrBPULst, const Cell& MtxDAP, const Cell& MtxCobCd,
                             const Cell& VctrYLDAsg, const Cell& VctrYLLAsg, const Cell& ArrDaly) {
    const Cell daps(labelsOf(MtxDAP, kDapId)), causes(labelsOf(MtxCobCd, kCobCdCode));
    ResultLabels l;
    l.yld = entries(VctrYrLst, VctrBPULst, daps, causes, VctrYLDAsg, names(kYldMeasureNames));
    l.yll = entries(VctrYrLst, VctrBPULst, daps, causes, VctrYLLAsg, names(kYllMeasureNames));
    ScriptedPrompts quiet; // a DALY array that is not there has no labels, and says nothing here
    ScopedPromptService scope(&quiet);
    l.daly = entries(VctrYrLst, VctrBPULst, daps, causes, ArrDaly.isArray() ? FnAsgVctr(ArrDaly) : Cell(),
                     names(kDalyMeasureNames));
    return l;
}

} // namespace vesk
