#include "burden/kernel_loops.h"

#include "burden/cell_guard.h"
#include "burden/computation_arrays.h"
#include "burden/kernel.h"
#include "burden/sequela_sum.h"
#include "foundation/error_store.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "study/asg_map.h"

#include <cmath>
#include <stdexcept>

namespace vesk {

namespace {

using runtime_arithmetic::operand;

// A cell as the single-float argument of a kernel function: Empty is 0, a number or a text of a
// number its value; Null and other texts fail as the runtime's conversion does.
float single(const Cell& c) {
    const double v = operand(c);
    const float f = toSingle(v);
    if (std::isinf(f))
        runtime_arithmetic::overflow();
    return f;
}

bool present(const Cell& c) {
    return !c.isEmpty() && !c.isNull();
}

struct Dap {
    float r = 0, K = 0;
    Cell Beta, C;
};

// Beta or C as the kernel reads them, parsed once for the set rather than at every cell: a text of a
// number is that number (the kernel's checks and formulas read it so), any other cell as it is (an
// empty text still skips the checks, a text that is no number still fails where it is read).
Cell parsedOnce(const Cell& c) {
    if (!c.isText())
        return c;
    const auto v = runtime_arithmetic::textNumber(c.toString());
    return v ? Cell(*v) : c;
}

Dap dapOf(const CellArray& dap, int d) {
    return {single(dap(d, kDapR)), single(dap(d, kDapK)), parsedOnce(dap(d, kDapBeta)), parsedOnce(dap(d, kDapC))};
}


// The two YLD measures of one group of an ArrADWIP cause (or sequela) row `in` at group m. `first`:
// the first sequela, whose missing measure is Null; otherwise 0.
struct Yld {
    Cell iyld, pyld;
};

template <class In> Yld yldOf(const In& in, const Dap& p, Cell missing) {
    Yld y{missing, missing};
    const Cell &ago = in(kAdwipAgo), &durn = in(kAdwipDurn), &dwt = in(kAdwipDwt), &inc = in(kAdwipIncident);
    if (present(ago) && present(durn) && present(dwt) && present(inc))
        y.iyld = Cell::single(FnlYLD(single(ago), single(durn), single(dwt), p.r, p.K, p.Beta, p.C, single(inc)));
    const Cell &agp = in(kAdwipAgp), &prev = in(kAdwipPrevalent);
    if (present(agp) && present(dwt) && present(prev))
        y.pyld = Cell::single(FnPYLD(single(agp), single(dwt), p.K, p.Beta, p.C, single(prev)));
    return y;
}

} // namespace


namespace {

constexpr const char* kYldSource = "BldYLDArray";
constexpr const char* kYllSource = "BldYLLArray";
constexpr const char* kPerDeathSource = "BldYLLPerDeath";
constexpr const char* kDalySource = "BldDALYArray";


void yldOfSequelae(const CellArray& in, CellArray& out, int y, int b, int d, int c, const Dap& p) {
    const CellArray& nested = in(y, b, kInputDap, c, kSequelaHolderAsg, kSequelaHolderSlot).array();
    const int groups = out.size(kDimAsg);
    CellArray sq({nested.size(0), groups, kYldLastSlot + 1});
    for (int s = 0; s < nested.size(0); ++s) {
        sq(s, kSqlaCodeAsg, kSqlaCodeSlot) = nested(s, kSqlaCodeAsg, kSqlaCodeSlot);
        for (int m = 0; m < groups; ++m)
            guarded(kYldSource, [&] {
                sq(s, m, kYldAsg) = nested(s, m, kAdwipAsg);
                const Yld v = yldOf([&](int slot) -> const Cell& { return nested(s, m, slot); }, p,
                                    s == 0 ? Cell::null() : Cell(0.0));
                sq(s, m, kYldIYLD) = v.iyld;
                sq(s, m, kYldPYLD) = v.pyld;
                for (int k : {kYldIYLD, kYldPYLD})
                    out(y, b, d, c, m, k) = s == 0 ? sq(s, m, k) : sequelaSum(out(y, b, d, c, m, k), sq(s, m, k));
            });
    }
    for (int m = 0; m < groups; ++m)
        out(y, b, d, c, m, kYldAsg) = sq(0, m, kYldAsg);
    out(y, b, d, c, kSequelaHolderAsg, kSequelaHolderSlot) = Cell(std::move(sq));
}

} // namespace

Cell BldYLDArray(const Cell& ArrADWIP, const Cell& MtxDAP) {
    if (!ArrADWIP.isArray() || !MtxDAP.isArray())
        return Cell();
    const CellArray& in = ArrADWIP.array();
    const CellArray& dap = MtxDAP.array();
    CellArray out({in.size(kDimYear), in.size(kDimBPU), dap.size(0), in.size(kDimCause), in.size(kDimAsg),
                   kYldLastSlot + 1});
    for (int d = 0; d < dap.size(0); ++d) {
        Dap p;
        guarded(kYldSource, [&] { p = dapOf(dap, d); });
        for (int y = 0; y < in.size(kDimYear); ++y)
            for (int b = 0; b < in.size(kDimBPU); ++b)
                for (int c = 0; c < in.size(kDimCause); ++c) {
                    if (in(y, b, kInputDap, c, kSequelaHolderAsg, kSequelaHolderSlot).isArray()) {
                        yldOfSequelae(in, out, y, b, d, c, p);
                        continue;
                    }
                    for (int m = 0; m < in.size(kDimAsg); ++m)
                        guarded(kYldSource, [&] {
                            out(y, b, d, c, m, kYldAsg) = in(y, b, kInputDap, c, m, kAdwipAsg);
                            const Yld v = yldOf([&](int slot) -> const Cell& { return in(y, b, kInputDap, c, m, slot); },
                                                p, Cell(0.0));
                            out(y, b, d, c, m, kYldIYLD) = v.iyld;
                            out(y, b, d, c, m, kYldPYLD) = v.pyld;
                        });
                }
    }
    return Cell(std::move(out));
}

Cell BldYLLPerDeath(const Cell& ArrAGD, const Cell& MtxDAP, const CellArray& MtxLTS) {
    if (!ArrAGD.isArray() || !MtxDAP.isArray())
        return Cell();
    const CellArray& agd = ArrAGD.array();
    const CellArray& dap = MtxDAP.array();
    CellArray out({agd.size(kDimYear), agd.size(kDimBPU), dap.size(0), 1, agd.size(kDimAsg), kYllPerDeathLastSlot + 1});
    for (int d = 0; d < dap.size(0); ++d) {
        Dap p;
        guarded(kPerDeathSource, [&] { p = dapOf(dap, d); });
        for (int y = 0; y < agd.size(kDimYear); ++y)
            for (int b = 0; b < agd.size(kDimBPU); ++b)
                for (int m = 0; m < agd.size(kDimAsg); ++m)
                    guarded(kPerDeathSource, [&] {
                        const Cell& label = agd(y, b, kInputDap, kNoCause, m, kAgdAsg);
                        out(y, b, d, kNoCause, m, kYllPerDeathAsg) = label;
                        const Cell& age = agd(y, b, kInputDap, kNoCause, m, kAgdAge);
                        if (age.isNull()) {
                            out(y, b, d, kNoCause, m, kYllPerDeathValue) = Cell::null();
                            return;
                        }
                        const float a = single(age);
                        const QString sex = label.toString().trimmed().left(1);
                        const float L = FnLifeExpAt(MtxLTS, a, sex);
                        out(y, b, d, kNoCause, m, kYllPerDeathValue) = Cell(FnYLLF(a, L, p.r, p.K, p.Beta, p.C));
                    });
    }
    return Cell(std::move(out));
}

Cell BldYLLArray(const Cell& ArrDBC, const Cell& ArrYLLPerDeath) {
    if (!ArrDBC.isArray() || !ArrYLLPerDeath.isArray())
        return Cell();
    const CellArray& dbc = ArrDBC.array();
    const CellArray& per = ArrYLLPerDeath.array();
    const int groups = dbc.size(kDimAsg);
    CellArray out({dbc.size(kDimYear), dbc.size(kDimBPU), per.size(kDimDAP), dbc.size(kDimCause), groups,
                   kYllLastSlot + 1});
    for (int y = 0; y < dbc.size(kDimYear); ++y)
        for (int b = 0; b < dbc.size(kDimBPU); ++b)
            for (int d = 0; d < per.size(kDimDAP); ++d)
                for (int c = 0; c < dbc.size(kDimCause); ++c) {
                    const Cell& holder = dbc(y, b, kInputDap, c, kSequelaHolderAsg, kSequelaHolderSlot);
                    if (!holder.isArray()) {
                        for (int m = 0; m < groups; ++m)
                            guarded(kYllSource, [&] {
                                out(y, b, d, c, m, kYllAsg) = dbc(y, b, kInputDap, c, m, kDbcAsg);
                                out(y, b, d, c, m, kYllYLL) = runtime_arithmetic::times(dbc(y, b, kInputDap, c, m, kDbcDeaths),
                                                                    per(y, b, d, kNoCause, m, kYllPerDeathValue));
                            });
                        continue;
                    }
                    const CellArray& nested = holder.array();
                    CellArray sq({nested.size(0), groups, kYllLastSlot + 1});
                    for (int s = 0; s < nested.size(0); ++s) {
                        sq(s, kSqlaCodeAsg, kSqlaCodeSlot) = nested(s, kSqlaCodeAsg, kSqlaCodeSlot);
                        for (int m = 0; m < groups; ++m)
                            guarded(kYllSource, [&] {
                                sq(s, m, kYllAsg) = nested(s, m, kDbcAsg);
                                sq(s, m, kYllYLL) =
                                    runtime_arithmetic::times(nested(s, m, kDbcDeaths), per(y, b, d, kNoCause, m, kYllPerDeathValue));
                                if (!sq(s, m, kYllYLL).isNull())
                                    out(y, b, d, c, m, kYllYLL) = sequelaSum(out(y, b, d, c, m, kYllYLL), sq(s, m, kYllYLL));
                            });
                    }
                    for (int m = 0; m < groups; ++m)
                        out(y, b, d, c, m, kYllAsg) = nested.size(0) ? sq(0, m, kYllAsg) : Cell();
                    out(y, b, d, c, kSequelaHolderAsg, kSequelaHolderSlot) = Cell(std::move(sq));
                }
    return Cell(std::move(out));
}


Cell FnAsgVctr(const Cell& result) {
    if (!result.isArray() || result.array().rank() != kComputationRank) {
        prompts().ask(QStringLiteral("Invalid input. Not enough dimensions or not an array."), Buttons::Ok, Icon::None,
                      QString());
        return Cell();
    }
    const CellArray& a = result.array();
    CellArray labels({a.size(kDimAsg)});
    for (int m = 0; m < a.size(kDimAsg); ++m)
        labels(m) = a(0, 0, 0, 0, m, 1);
    return Cell(std::move(labels));
}

namespace {

// The DALY rule of one cell: a value added to a value, a value replacing a Null, a Null leaving the
// base as it is.
void addInto(Cell& base, const Cell& addend) {
    if (addend.isNull())
        return;
    if (base.isNull()) {
        base = addend;
        return;
    }
    base = Cell(operand(base) + operand(addend));
}

// The DALY slots of one source cell: YLD gives IYLD and PYLD, YLL its one value twice.
struct DalyPair {
    Cell idaly, pdaly;
};

DalyPair pairOf(const CellArray& a, bool yll, int y, int b, int d, int c, int m) {
    if (yll) {
        const Cell& v = a(y, b, d, c, m, kYllYLL);
        return {v, v};
    }
    return {a(y, b, d, c, m, kYldIYLD), a(y, b, d, c, m, kYldPYLD)};
}

struct DalySides {
    const CellArray* base; // the shorter classification S
    const CellArray* addend;
    bool baseIsYll;
    const CellArray* map; // one row a group of the longer list: (i, 2) the index in S
};

// The nested DALY array of a cause: each side's nested values (Null where a side has none) added as
// the cause-level cells are.
Cell nestedDaly(const Cell& baseNested, const Cell& addNested, const DalySides& sides, const Cell& baseLabels,
                const Cell& addLabels) {
    const Cell& shape = baseNested.isArray() ? baseNested : addNested;
    const CellArray& n = shape.array();
    const bool fromBase = baseNested.isArray();
    const bool yllShape = fromBase ? sides.baseIsYll : !sides.baseIsYll;
    const Cell& labels = fromBase ? baseLabels : addLabels;
    CellArray out({n.size(0), n.size(1), kDalyLastSlot + 1});
    for (int s = 0; s < n.size(0); ++s) {
        out(s, kSqlaCodeAsg, kSqlaCodeSlot) = n(s, kSqlaCodeAsg, kSqlaCodeSlot);
        for (int m = 0; m < n.size(1); ++m) {
            out(s, m, kDalyAsg) = labels.isArray() && m <= labels.array().ubound(0) ? labels.array()(m) : Cell();
            out(s, m, kDalyIDALY) = yllShape ? n(s, m, kYllYLL) : n(s, m, kYldIYLD);
            out(s, m, kDalyPDALY) = yllShape ? n(s, m, kYllYLL) : n(s, m, kYldPYLD);
        }
    }
    if (baseNested.isArray() && addNested.isArray()) {
        const CellArray& a = addNested.array();
        const bool addYll = !sides.baseIsYll;
        for (int s = 0; s < std::min(a.size(0), out.size(0)); ++s)
            for (int i = 0; i < sides.map->size(0) && i < a.size(1); ++i) {
                const int j = int((*sides.map)(i, 2).toDouble());
                addInto(out(s, j, kDalyIDALY), addYll ? a(s, i, kYllYLL) : a(s, i, kYldIYLD));
                addInto(out(s, j, kDalyPDALY), addYll ? a(s, i, kYllYLL) : a(s, i, kYldPYLD));
            }
    }
    return Cell(std::move(out));
}

} // namespace

Cell BldDALYArray(const Cell& ArrYld, const Cell& ArrYll, const Cell& VctrYLDAsg, const Cell& VctrYLLAsg) {
    if (!ArrYld.isArray() || !ArrYll.isArray())
        return Cell();
    const Cell yldLabels = FnAsgVctr(ArrYld), yllLabels = FnAsgVctr(ArrYll);
    if (!yldLabels.isArray() || !yllLabels.isArray())
        return Cell();
    const CellArray record = yldLabels.array().size(0) == yllLabels.array().size(0)
                                 ? FnAsgMapEq(yldLabels, yllLabels)
                                 : FnAsgMapUneq(yldLabels, yllLabels);
    if (record.rank() != 1 || !asgMapFeasible(record) || !record(kAsgMapRows).isArray())
        return Cell();
    const Cell& side = record(kAsgMapFirstSide);
    if (!side.isNumber() || (side.toDouble() != 0 && side.toDouble() != 1))
        return Cell();
    const bool yllShorter = side.toDouble() == 1;
    const DalySides sides{yllShorter ? &ArrYll.array() : &ArrYld.array(), yllShorter ? &ArrYld.array() : &ArrYll.array(),
                          yllShorter, &record(kAsgMapRows).array()};
    const CellArray& base = *sides.base;
    const CellArray& add = *sides.addend;
    CellArray out({base.size(0), base.size(1), base.size(2), base.size(3), base.size(4), kDalyLastSlot + 1});
    // Where each group of the longer list goes in the shorter, read once.
    std::vector<int> into(std::size_t(sides.map->size(0)));
    for (int i = 0; i < sides.map->size(0); ++i)
        into[std::size_t(i)] = int((*sides.map)(i, 2).toDouble());
    for (int y = 0; y < base.size(0); ++y)
        for (int b = 0; b < base.size(1); ++b)
            for (int d = 0; d < base.size(2); ++d)
                for (int c = 0; c < base.size(3); ++c)
                    guarded(kDalySource, [&] {
                        for (int m = 0; m < base.size(4); ++m) {
                            out(y, b, d, c, m, kDalyAsg) = base(y, b, d, c, m, 1);
                            const DalyPair v = pairOf(base, sides.baseIsYll, y, b, d, c, m);
                            out(y, b, d, c, m, kDalyIDALY) = v.idaly;
                            out(y, b, d, c, m, kDalyPDALY) = v.pdaly;
                        }
                        for (int i = 0; i < sides.map->size(0); ++i) {
                            const int j = into[std::size_t(i)];
                            const DalyPair a = pairOf(add, !sides.baseIsYll, y, b, d, c, i);
                            addInto(out(y, b, d, c, j, kDalyIDALY), a.idaly);
                            addInto(out(y, b, d, c, j, kDalyPDALY), a.pdaly);
                        }
                        const Cell& bn = base(y, b, d, c, kSequelaHolderAsg, kSequelaHolderSlot);
                        const Cell& an = add(y, b, d, c, kSequelaHolderAsg, kSequelaHolderSlot);
                        if (bn.isArray() || an.isArray())
                            out(y, b, d, c, kSequelaHolderAsg, kSequelaHolderSlot) =
                                nestedDaly(bn, an, sides, sides.baseIsYll ? VctrYLLAsg : VctrYLDAsg,
                                           sides.baseIsYll ? VctrYLDAsg : VctrYLLAsg);
                        else
                            out(y, b, d, c, kSequelaHolderAsg, kSequelaHolderSlot) = Cell();
                    });
    return Cell(std::move(out));
}

} // namespace vesk
