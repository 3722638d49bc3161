// The DALY calculator: the IYLD of one grid and the YLL of another, joined through the age-sex map.

#include "burden/calculator.h"
#include "burden/calculator_texts.h"
#include "foundation/array_helpers.h"
#include "platform/prompts.h"
#include "study/asg_labels.h"
#include "study/asg_map.h"

#include <exception>

namespace vesk {

namespace ct = calculator_texts;

namespace {

using calculator_texts::text;

CellArray labelArray(const QStringList& labels) {
    CellArray out({static_cast<int>(labels.size())});
    for (int i = 0; i < labels.size(); ++i)
        out(i) = Cell(labels[i]);
    return out;
}

// The map of the two sides, YLD first as in a study's feasibility rule.
CellArray sidesMap(const QStringList& yldLabels, const QStringList& yllLabels) {
    return FnAsgMap(Cell(labelArray(yldLabels)), Cell(labelArray(yllLabels)));
}

// Each row's inputs are all typed or all blank, and at least one row is typed.
bool inputsComplete(const CalcDataModel& data) {
    bool anyRow = false;
    for (int row = 0; row < data.rowCount(); ++row) {
        int typed = 0;
        for (int c = 0; c < data.inputCount(); ++c)
            typed += data.inputText(row, c).trimmed().isEmpty() ? 0 : 1;
        if (typed != 0 && typed != data.inputCount())
            return false;
        anyRow = anyRow || typed != 0;
    }
    return anyRow;
}

// A base value plus one added value: a Null (or blank) base takes the value, a number takes the sum.
Cell addInto(const Cell& base, const Cell& value) {
    if (value.isNull() || value.isEmpty())
        return base;
    if (base.isNull() || base.isEmpty())
        return value;
    return Cell(base.toDouble() + value.toDouble());
}

} // namespace

bool buildDalyCalculator(const AgeDefModel& yldDef, const AgeDefModel& yllDef, CalcDataModel& yld,
                         CalcDataModel& yll, bool feasibility) {
    if (yllDef.ages().isEmpty()) {
        calculatorSay(ct::kFillYllAsg);
        return false;
    }
    if (yldDef.ages().isEmpty()) {
        calculatorSay(ct::kFillYldAsg);
        return false;
    }
    const auto yldLabels = calculatorLabels(yldDef.ages());
    const auto yllLabels = yldLabels ? calculatorLabels(yllDef.ages()) : std::nullopt;
    if (!yldLabels || !yllLabels) {
        calculatorSay(ct::kUnexpectedError, nullptr, Icon::Critical);
        return false;
    }
    if (feasibility && !asgMapFeasible(sidesMap(*yldLabels, *yllLabels))) {
        calculatorSay(ct::kDoNotMap);
        return false;
    }
    yld.build(text(ct::kYldTitle), *yldLabels,
              {text(ct::kAgeAtOnset), text(ct::kDuration), text(ct::kDisabilityWeight), text(ct::kCases)});
    yll.build(text(ct::kYllTitle), *yllLabels, {text(ct::kDeaths), text(ct::kAgeAtDeath)});
    return true;
}

DalyJoin joinDaly(const QStringList& yldLabels, const std::vector<Cell>& iyld, const QStringList& yllLabels,
                  const std::vector<Cell>& yll, const CellArray& map) {
    DalyJoin join;
    const bool mapped = asgMapFeasible(map);
    // The longer list is the base: with a map, the side that plays L (cell 1 says whether the first
    // argument, the YLD side, is the shorter); without one, the longer side, YLL when they tie.
    join.baseIsYll = mapped ? map(kAsgMapFirstSide).toDouble() == 0 : yllLabels.size() >= yldLabels.size();
    const QStringList& baseLabels = join.baseIsYll ? yllLabels : yldLabels;
    const QStringList& otherLabels = join.baseIsYll ? yldLabels : yllLabels;
    const std::vector<Cell>& otherValues = join.baseIsYll ? iyld : yll;
    join.values = join.baseIsYll ? yll : iyld;
    const CellArray* rows = mapped ? &map(kAsgMapRows).array() : nullptr;
    for (int i = 0; i < otherLabels.size(); ++i) {
        int target = -1;
        if (rows) {
            // GetIdx: the first map row whose group is this row's label.
            for (int k = rows->lbound(0); k <= rows->ubound(0) && target < 0; ++k)
                if ((*rows)(k, 1).toString() == otherLabels[i])
                    target = static_cast<int>(baseLabels.indexOf((*rows)(k, 0).toString()));
        } else {
            target = static_cast<int>(baseLabels.indexOf(otherLabels[i]));
        }
        if (target >= 0)
            join.values[target] = addInto(join.values[target], otherValues[i]);
    }
    return join;
}

namespace {

bool computeDalySets(const std::vector<DapValues>& sets, CalcDataModel& yld, CalcDataModel& yll) {
    const auto yldRows = BuildADW(CalculatorTask::Iyld, yld);
    if (!yldRows)
        return false;
    const auto in = readYllInputs(yll);
    if (!in)
        return false;
    const CellArray map = sidesMap(yld.labels(), yll.labels());
    for (const DapValues& dap : sets) {
        const std::vector<Cell> iyld = CalIyld(*yldRows, dap);
        const std::vector<Cell> yllValues =
            CalYllCalculator(yll.labels(), in->ages, in->deaths, dap, *in->lifeTable);
        yld.setResultColumn(calculatorResultHead(text(ct::kIyldPrefix), dap), iyld);
        yll.setResultColumn(calculatorResultHead(text(ct::kYllPrefix), dap), yllValues);
        const DalyJoin join = joinDaly(yld.labels(), iyld, yll.labels(), yllValues, map);
        (join.baseIsYll ? yll : yld)
            .setResultColumn(calculatorResultHead(text(ct::kDalyPrefix), dap), join.values);
    }
    return true;
}

} // namespace

bool CalculateDalyCal(const DapGridModel& dap, CalcDataModel& yld, CalcDataModel& yll, bool feasibility) {
    const bool built = yld.isBuilt() && yll.isBuilt();
    if (feasibility && built && !asgMapFeasible(sidesMap(yld.labels(), yll.labels()))) {
        calculatorSay(ct::kNotFeasible, ct::kFeasibilityTitle);
        return false;
    }
    const std::vector<DapValues> sets = dap.selectedSets();
    if (sets.empty()) {
        calculatorSay(ct::kSelectDapDaly);
        return false;
    }
    if (!built || !inputsComplete(yld) || !inputsComplete(yll)) {
        calculatorSay(ct::kFillRequiredInput);
        return false;
    }
    try {
        return computeDalySets(sets, yld, yll);
    } catch (const std::exception& e) {
        prompts().ask(text(ct::kYllCalculatorError) + QString::fromStdString(e.what()), Buttons::Ok,
                      Icon::Critical, text(ct::kYllCalculatorTitle));
        return false;
    }
}

} // namespace vesk
