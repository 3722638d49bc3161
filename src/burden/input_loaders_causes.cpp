// The loaders by cause: deaths by cause (DBCProc), the disability weights (LoadDwt) and the
// epidemiological inputs (LoadADWIP).

#include "burden/basic_arrays.h"
#include "burden/cell_guard.h"
#include "burden/computation_arrays.h"
#include "burden/computation_texts.h"
#include "burden/input_loaders.h"
#include "burden/input_loaders_support.h"
#include "foundation/runtime_arithmetic.h"
#include "platform/texts.h"

#include <map>
#include <stdexcept>

namespace vesk {

namespace ct = computation_texts;
using namespace loaders;

namespace {

// The study and the arrays every loader by cause needs; false after the first message.
bool studyIsReady(const LoaderStudy& s) {
    if (s.study.isEmpty()) {
        show(text(ct::kStudyNotDefined));
        return false;
    }
    return true;
}

void step(const LoaderProgress& p, int value) {
    if (p.bar)
        p.bar->setValue(value);
}

void start(const LoaderStudy& s, const LoaderProgress& p, const char* words, const char* tail) {
    if (!p.bar)
        return;
    p.bar->setRange(0, (rowsIn(s.causes) + 1) * (rowsIn(s.units) + 1));
    p.bar->setValue(0);
    p.bar->setText(stepText(words, p, tail));
}

const Cell& causeCode(const LoaderStudy& s, int c) {
    const CellArray& m = s.causes.array();
    return m(m.lbound(0) + c, m.lbound(1) + kCobCdCode);
}

// The cause's sequelae (a vector of SqlaCd), or Empty.
const Cell& causeSequelae(const LoaderStudy& s, int c) {
    const CellArray& m = s.causes.array();
    return m(m.lbound(0) + c, m.lbound(1) + kCobCdSequelae);
}

} // namespace

bool DBCProc(const LoaderStudy& s, const Cell& ArrDth4D, const LoaderProgress& p, Cell& ArrDBC) {
    const char* source = ct::kSourceDbc;
    if (!studyIsReady(s))
        return false;
    if (!s.years.isArray() || !s.units.isArray()) {
        show(text(ct::kInputArrays1) + s.study + text(s.years.isArray() ? ct::kNoUnits : ct::kNoYears));
        return false;
    }
    if (!s.causes.isArray()) {
        show(text(ct::kNoDbcData1) + s.study + text(ct::kNoDbcData2));
        return false;
    }
    if (!s.yllLabels.isArray())
        return false;
    const Cell deathsYll = FnMapBasicToAsg(s.yllLabels, ArrDth4D);
    const int years = rowsIn(s.years), units = rowsIn(s.units), causes = rowsIn(s.causes);
    const int groups = rowsIn(s.yllLabels);
    start(s, p, ct::kLoadingCauseOfDeath, ct::kSecs);
    CellArray out({years, units, 1, causes, groups, kDbcLastSlot + 1});
    const Cell none;
    int done = 0;
    for (int y = 0; y < years; ++y)
        for (int b = 0; b < units; ++b) {
            // COBCd, ASG, CSMP of the year and unit in the binary order of ASG.
            const QHash<QString, Rows> byCause = groupedBy(
                readRows(s,
                         QStringLiteral("SELECT COBCd, ASG, CSMP FROM DatCSM WHERE YEAR = ? AND BPUID = ? "
                                        "ORDER BY ASG, rowid"),
                         {keyNumber(entry(s.years, y)), entry(s.units, b).toString()}, 3, source),
                0);
            for (int c = 0; c < causes; ++c) {
                step(p, ++done);
                const Rows rows = byCause.value(causeCode(s, c).toString());
                if (rows.isEmpty())
                    continue;
                if (rows.size() != groups)
                    show(text(ct::kDbcMismatch));
                for (int n = 0; n < rows.size(); ++n)
                    guarded(source, [&] {
                        const Cell& deaths =
                            deathsYll.isArray() ? deathsYll.array()(y, b, n, kAsgMapValue) : none;
                        out(y, b, kInputDap, c, n, kDbcAsg) = rows[n][1];
                        out(y, b, kInputDap, c, n, kDbcDeaths) = runtime_arithmetic::times(rows[n][2], deaths);
                    });
            }
        }
    ArrDBC = Cell(std::move(out));
    return true;
}

namespace {

// The weights under `code` into columns 1, 2, ... of row `r` of `m`.
void fillWeights(CellArray& m, int r, const Rows& weights) {
    for (int n = 0; n < weights.size(); ++n)
        guarded(ct::kSourceDwt, [&] { m(r, kDwtFirstWeight + n) = weights[n][1]; });
}

} // namespace

Cell LoadDwt(const LoaderStudy& s) {
    if (!s.causes.isArray())
        return Cell();
    // A set of weights serves both sexes: half as many columns as YLD groups, as CLng rounds.
    const int upper = runtime_arithmetic::toLong(rowsIn(s.yldLabels) / 2.0);
    const QHash<QString, Rows> byCode = groupedBy(
        readRows(s, QStringLiteral("SELECT COBCd, Dwt FROM DatDwt ORDER BY rowid"), {}, 2, ct::kSourceDwt), 0);
    CellArray m({rowsIn(s.causes), upper + 1});
    for (int c = 0; c < rowsIn(s.causes); ++c) {
        const Cell& code = causeCode(s, c);
        m(c, kDwtCobCd) = code;
        const Cell& sequelae = causeSequelae(s, c);
        if (!sequelae.isArray()) {
            fillWeights(m, c, byCode.value(code.toString()));
            continue;
        }
        CellArray nested({rowsIn(sequelae), upper + 1});
        for (int q = 0; q < rowsIn(sequelae); ++q) {
            const Cell& sqla = entry(sequelae, q);
            nested(q, kDwtCobCd) = sqla;
            fillWeights(nested, q, byCode.value(sqla.toString()));
        }
        guarded(ct::kSourceDwt, [&] { m(c, kDwtFirstWeight) = Cell(std::move(nested)); });
    }
    return Cell(std::move(m));
}

namespace {

// The columns of a row of DatADW or DatADWSqla as read below.
enum AdwColumn { kColCause, kColSqla, kColAsg, kColAgo, kColDurn, kColI, kColAgp, kColP, kAdwColumns };

// One unit's rows of DatADW by cause, and of DatADWSqla by cause and sequela, in the order of ASG.
struct UnitRows {
    QHash<QString, Rows> causes;
    QHash<QString, Rows> sequelae; // key: cause, NUL, sequela
};

QString sequelaKey(const QString& cause, const QString& sqla) {
    return cause + QChar(0) + sqla;
}

UnitRows readUnit(const LoaderStudy& s, const QString& unit) {
    const char* source = ct::kSourceAdwip;
    UnitRows u;
    u.causes = groupedBy(readRows(s,
                                  QStringLiteral("SELECT COBCd, '' AS SqlaCd, ASG, ago, DURN, i, agp, P FROM DatADW "
                                                 "WHERE BPUID = ? ORDER BY ASG, rowid"),
                                  {unit}, kAdwColumns, source),
                         kColCause);
    for (const QList<Cell>& row :
         readRows(s,
                  QStringLiteral("SELECT COBCd, SqlaCd, ASG, ago, DURN, i, agp, P FROM DatADWSqla WHERE BPUID = ? "
                                 "ORDER BY ASG, rowid"),
                  {unit}, kAdwColumns, source))
        u.sequelae[sequelaKey(row[kColCause].toString(), row[kColSqla].toString())].push_back(row);
    return u;
}

// The disability weight of the n-th group from a row of MtxDwt: column n + 1, beyond the fifth
// group the same five columns again.
const Cell& weightOf(const CellArray& weights, int row, int n) {
    const int column = n + 1 > kDwtWeightCycle ? (n % kDwtWeightCycle) + 1 : n + 1;
    return weights(row, weights.lbound(1) + column);
}

// The rows of one cause (or sequela) into `slot(n, k)`; false when their count is not that of the
// groups, after the message.
template <class Slot>
void fillEpidemiology(const Rows& rows, int groups, const CellArray* weights, int weightRow, const CellArray& pop,
                      int y, int b, Slot&& slot) {
    if (rows.isEmpty())
        return;
    if (rows.size() != groups) {
        show(text(ct::kAdwipMismatch));
        return;
    }
    const char* source = ct::kSourceAdwip;
    for (int n = 0; n < groups; ++n) {
        const QList<Cell>& r = rows[n];
        slot(n, kAdwipAsg) = r[kColAsg];
        slot(n, kAdwipAgo) = r[kColAgo];
        slot(n, kAdwipDurn) = r[kColDurn];
        guarded(source, [&] {
            if (!weights)
                throw std::out_of_range("no weights");
            slot(n, kAdwipDwt) = weightOf(*weights, weightRow, n);
        });
        const Cell& people = pop(y, b, n, kAsgMapValue);
        if (!people.isNull()) {
            guarded(source, [&] { slot(n, kAdwipIncident) = runtime_arithmetic::times(Cell(runtime_arithmetic::operand(r[kColI])), people); });
            guarded(source, [&] { slot(n, kAdwipPrevalent) = runtime_arithmetic::times(Cell(runtime_arithmetic::operand(r[kColP])), people); });
        }
        slot(n, kAdwipAgp) = r[kColAgp];
    }
}

} // namespace

bool LoadADWIP(const LoaderStudy& s, const Cell& MtxDwt, const Cell& ArrPop4D, const LoaderProgress& p,
               Cell& ArrADWIP) {
    if (!studyIsReady(s))
        return false;
    if (!s.years.isArray()) {
        show(text(ct::kNoStudyYear1) + s.study + text(ct::kNoStudyYear2));
        return false;
    }
    if (!s.yldLabels.isArray() || !s.units.isArray() || !s.causes.isArray())
        return false;
    const Cell popCell = FnMapBasicToAsg(s.yldLabels, ArrPop4D);
    const int years = rowsIn(s.years), units = rowsIn(s.units), causes = rowsIn(s.causes);
    const int groups = rowsIn(s.yldLabels);
    CellArray emptyPop({years, units, groups, kAsgMapLastSlot + 1});
    const CellArray& pop = popCell.isArray() ? popCell.array() : emptyPop;
    const CellArray* dwt = MtxDwt.isArray() ? &MtxDwt.array() : nullptr;
    start(s, p, ct::kLoadingEpidemiological, ct::kSecsEpi);
    CellArray out({years, units, 1, causes, groups, kAdwipLastSlot + 1});
    std::map<int, UnitRows> read; // each unit read once, whatever the number of years
    int done = 0;
    for (int y = 0; y < years; ++y)
        for (int b = 0; b < units; ++b) {
            auto it = read.find(b);
            if (it == read.end())
                it = read.emplace(b, readUnit(s, entry(s.units, b).toString())).first;
            const UnitRows& u = it->second;
            for (int c = 0; c < causes; ++c) {
                step(p, ++done);
                const QString code = causeCode(s, c).toString();
                const Cell& sequelae = causeSequelae(s, c);
                if (!sequelae.isArray()) {
                    fillEpidemiology(u.causes.value(code), groups, dwt, c, pop, y, b,
                                     [&](int n, int k) -> Cell& { return out(y, b, kInputDap, c, n, k); });
                    continue;
                }
                const Cell nestedWeights = dwt ? (*dwt)(c, kDwtFirstWeight) : Cell();
                CellArray nested({rowsIn(sequelae), groups, kAdwipLastSlot + 1});
                for (int q = 0; q < rowsIn(sequelae); ++q) {
                    const Cell& sqla = entry(sequelae, q);
                    nested(q, kSqlaCodeAsg, kSqlaCodeSlot) = sqla;
                    fillEpidemiology(u.sequelae.value(sequelaKey(code, sqla.toString())), groups,
                                     nestedWeights.isArray() ? &nestedWeights.array() : nullptr, q, pop, y, b,
                                     [&](int n, int k) -> Cell& { return nested(q, n, k); });
                }
                out(y, b, kInputDap, c, kSequelaHolderAsg, kSequelaHolderSlot) = Cell(std::move(nested));
            }
        }
    ArrADWIP = Cell(std::move(out));
    return true;
}

} // namespace vesk
