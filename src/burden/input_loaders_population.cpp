// The demographic loaders: population and deaths by basic age interval, the ages at death, and the
// check of the causes' shares of death.

#include "burden/age_at_death.h"
#include "burden/cell_guard.h"
#include "burden/computation_arrays.h"
#include "burden/computation_texts.h"
#include "burden/input_loaders.h"
#include "burden/input_loaders_support.h"
#include "foundation/error_store.h"
#include "foundation/runtime_arithmetic.h"
#include "platform/texts.h"

namespace vesk {

namespace ct = computation_texts;
using namespace loaders;

namespace {

// The distinct start ages of a table: the rows of its basic arrays.
int distinctAges(const LoaderStudy& s, const char* table, const char* source) {
    return int(readRows(s, QStringLiteral("SELECT DISTINCT BAI FROM %1").arg(QLatin1String(table)), {}, 1, source)
                   .size());
}

// One unit's records, (BAI, female, male), into rows of the basic array; the widths after the last.
void fillUnit(CellArray& a, int y, int b, const Rows& records, const char* source) {
    for (int r = 0; r < records.size(); ++r)
        guarded(source, [&] {
            const QList<Cell>& rec = records[r];
            a(y, b, r, kAgeBai) = rec[0];
            a(y, b, r, kAgeFemale) = rec[1];
            a(y, b, r, kAgeMale) = rec[2];
            a(y, b, r, kAgeBoth) = runtime_arithmetic::plus(rec[1], rec[2]);
        });
    const int last = std::min(int(records.size()), a.size(kAgeDimRow)) - 1;
    for (int r = 0; r < last; ++r)
        guarded(source, [&] {
            a(y, b, r, kAgeWidth) = runtime_arithmetic::plus(a(y, b, r + 1, kAgeBai), Cell(-runtime_arithmetic::operand(a(y, b, r, kAgeBai))));
        });
    if (last >= 0)
        a(y, b, last, kAgeWidth) = Cell(QString::fromLatin1(kOpenWidth));
}

void nullUnit(CellArray& a, int y, int b) {
    for (int r = 0; r < a.size(kAgeDimRow); ++r)
        for (int c = 0; c <= kAgeLastColumn; ++c)
            a(y, b, r, c) = Cell::null();
}

template <class Read> Cell basicArray(const LoaderStudy& s, int rows, Read&& read) {
    const int years = rowsIn(s.years), units = rowsIn(s.units);
    if (rows == 0 || years == 0 || units == 0)
        return Cell();
    CellArray a({years, units, rows, kAgeLastColumn + 1});
    for (int y = 0; y < years; ++y)
        for (int b = 0; b < units; ++b)
            read(a, y, b);
    return Cell(std::move(a));
}

} // namespace

Cell Build4DArrPopData(const LoaderStudy& s) {
    const char* source = ct::kSourcePopulation;
    return basicArray(s, distinctAges(s, "DatPOP", source), [&](CellArray& a, int y, int b) {
        const Rows records = readRows(
            s, QStringLiteral("SELECT BAI, F, M, UpdDt FROM DatPOP WHERE YEAR = ? AND BPUID = ? ORDER BY rowid"),
            {keyNumber(entry(s.years, y)), entry(s.units, b).toString()}, 3, source);
        if (records.isEmpty()) {
            ErrorStore(0, text(ct::kNoPopulation) + entry(s.units, b).toString(), text(source));
            nullUnit(a, y, b);
            return;
        }
        fillUnit(a, y, b, records, source);
    });
}

Cell BldDthArr(const LoaderStudy& s) {
    const char* source = ct::kSourceDeaths;
    return basicArray(s, distinctAges(s, "DatASDR", source), [&](CellArray& a, int y, int b) {
        const QString unit = entry(s.units, b).toString();
        const QVariant year = keyNumber(entry(s.years, y));
        const Rows records = readRows(
            s,
            QStringLiteral("SELECT DatASDR.BAI AS BAI, DatASDR.F * DatPOP.F AS DthF, DatASDR.M * DatPOP.M AS DthM "
                           "FROM DatASDR, DatPOP WHERE (DatASDR.BPUID = ? AND DatPOP.BPUID = ?) AND "
                           "(DatASDR.YEAR = ? AND DatPOP.YEAR = ?) AND (DatPOP.BAI = DatASDR.BAI) "
                           "ORDER BY DatASDR.rowid"),
            {unit, unit, year, year}, 3, source);
        fillUnit(a, y, b, records, source);
    });
}

namespace {

std::optional<double> number(const Cell& c) {
    if (c.isNull() || c.isEmpty())
        return std::nullopt;
    return runtime_arithmetic::operand(c);
}

// The unit's row of MtxDmgphy: that of the first study year when there is one, else its first.
int parameterRow(const Cell& dmgphy, const QString& unit, const Cell& year) {
    int first = -1;
    for (int r = 0; r < rowsIn(dmgphy); ++r) {
        const CellArray& m = dmgphy.array();
        if (m(m.lbound(0) + r, m.lbound(1)).toString() != unit)
            continue;
        if (first < 0)
            first = r;
        if (m(m.lbound(0) + r, m.lbound(1) + 1) == year)
            return r;
    }
    return first;
}

} // namespace

bool loadAgesAtDeath(const LoaderStudy& s, const Cell& ArrPop4D, const Cell& ArrDth4D, Cell& ArrAGD) {
    if (!s.yllLabels.isArray()) {
        show(text(ct::kAgdLabelsFailed));
        return false;
    }
    const Cell year = rowsIn(s.years) ? entry(s.years, 0) : Cell();
    ArrAGD = AGDARR(s.yllLabels, ArrPop4D, ArrDth4D, [&](int b) {
        DemographicParameters p;
        const int r = parameterRow(s.demography, entry(s.units, b).toString(), year);
        if (r < 0) {
            show(text(ct::kNoDemographicParameters) + s.study);
            return p;
        }
        guarded(ct::kSourceAgd, [&] {
            const CellArray& m = s.demography.array();
            const int row = m.lbound(0) + r, col = m.lbound(1);
            p.family = m(row, col + 2).toString();
            p.pgr = number(m(row, col + 3));
            p.imr = number(m(row, col + 4));
        });
        return p;
    });
    return ArrAGD.isArray();
}

void FnChkCSMTotals(const LoaderStudy& s) {
    const char* source = ct::kSourceCsmTotals;
    QHash<QString, Cell> totals;
    for (const QList<Cell>& row :
         readRows(s, QStringLiteral("SELECT BPUID, ASG, sum(CSMP) AS csmptot FROM DatCSM GROUP BY BPUID, ASG"), {},
                  3, source))
        totals.insert(row[0].toString() + QChar(0) + row[1].toString(), row[2]);
    for (int b = 0; b < rowsIn(s.units); ++b)
        for (int g = 0; g < rowsIn(s.yllLabels); ++g) {
            const QString unit = entry(s.units, b).toString(), group = entry(s.yllLabels, g).toString();
            const Cell total = totals.value(unit + QChar(0) + group);
            if (total.isNumber() && total.toDouble() > 1)
                ErrorStore(kCsmTotalError,
                           text(ct::kCsmSum1) + unit + text(ct::kCsmSum2) + group + text(ct::kCsmSum3), text(source));
        }
}

} // namespace vesk
