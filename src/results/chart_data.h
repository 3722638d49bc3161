#pragma once
// The data of the five chart families, for each BPU (procBPUGraphs) or each PAG1 (procPagGraphs), of the
// first study year and the first chosen parameter set, built from the computation's arrays:
//
//   1 "YLD & YLL Rates by "  the IYLD and the YLL of all causes per 1,000 people of the unit ("0.000";
//     a zero total, or a zero or missing population, gives 0)
//   2 "Percentage Distribution of IDALYs by Age Group To Total DALYs, by "  for each age group of both
//     sexes (a "P" label: the F and M groups of the same ages), its share of the unit's IDALY ("0.00")
//   3 "Male-Female Ratio of YLD and YLL Rates by "  FnSexRatioByUnit of the IYLD and the YLL ("0.000")
//   4, 5 "Group I,II,III as a Percentage of Total IDALY (PDALY) by "  each group of the cause dictionary
//     as a share of the unit's IDALY (PDALY), stacked (FnGrpBDNPnl at the group level, FnPctOverCauses)
//
// The title is the stem and the level's word ("Region" for BPUs, "PAG1" for the aggregates). Values are
// the doubles of the texts the charts show.

#include "platform/cell.h"

#include <QString>
#include <QList>
#include <QStringList>
#include <optional>
#include <vector>

namespace vesk {

class Computation;
class StudyContext;

struct ChartTable {
    int family = 0;
    QString title;
    QStringList categories; // the units
    QStringList series;
    std::vector<std::vector<double>> values; // [series][category]
    bool stacked = false;
    QStringList head; // the data table's head row: the level's key, then the series
};

struct ChartData {
    std::vector<ChartTable> tables; // families 1 to 5
    // The four percentage tables behind them (IYLD, YLL, IDALY, PDALY): for each unit and group of causes
    // the group's share of the unit's total (FnPctOverCauses), each under its head row
    // (the level's key, "Group", "IYLD Percent" ...).
    std::vector<QList<QList<Cell>>> percentTables;
    QString dapLine;                // "Burden Of Disease with DAP Values ..." with the set's parameters
};

// std::nullopt with `error` (the words of the failure) when the arrays are not there or a figure
// cannot be formed.
std::optional<ChartData> procBPUGraphs(const Computation& comp, const StudyContext& study, QString* error);
std::optional<ChartData> procPagGraphs(const Computation& comp, const StudyContext& study, QString* error);

} // namespace vesk
