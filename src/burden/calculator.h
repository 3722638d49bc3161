#pragma once
// The calculators: the burden kernel applied to numbers typed into a grid, with no study behind them.
// frmYLLCal serves three tasks (YLL, IYLD and PYLD of the rows of one grid), frmDALYCal joins the YLL
// of one grid and the IYLD of another into a DALY for one cause. The only setting they read is the
// standard life table, chosen by LifeTblType; they store nothing.
//
// Per row, with r, K, Beta, C of each marked parameter set (texts as the grid holds them):
//   YLL  = deaths * FnYLLF(a, FnLifeExpAt(table, a, sex of the label), r, K, Beta, C);
//          Null where the age at death is blank
//   IYLD = FnlYLD(age at onset, duration, weight, r, K, Beta, C, incident cases)
//   PYLD = FnPYLD(age of the prevalent cases, weight, K, Beta, C, prevalent cases), K as it stands,
//          so that a K strictly between 0 and 1 gives 0
//   DALY = the IYLD and YLL columns joined through the age-sex map: the longer list is the base,
//          each row of the other is added into the first base row the map gives it
// With "Built In 0" (r = 0, K = 0): YLL = L * deaths, IYLD = D * L * N, PYLD = D * N.
//
// Every message goes through the prompt service; a refused reading computes nothing.

#include "burden/calculator_models.h"
#include "platform/cell_array.h"
#include "platform/prompts.h"

#include <optional>
#include <vector>

namespace vesk {

enum class CalculatorTask { Yll, Iyld, Pyld };

struct CalculatorTaskInfo {
    const char* caption;      // "YLL Calculator"
    const char* title;        // the head of the data grid
    QStringList inputHeads;   // the columns after the age label
    const char* resultPrefix; // "YLL", "IYLD", "PYLD"
};
const CalculatorTaskInfo& calculatorTaskInfo(CalculatorTask task);

// A message of the calculators' texts in a box with an OK button, Warning unless told, and its
// title when one is named.
void calculatorSay(const char* message, const char* title = nullptr, Icon icon = Icon::Warning);

// "YLL[" r "," K "]", r and K as the grid holds them.
QString calculatorResultHead(const QString& prefix, const DapValues& dap);

// The standard life table the settings choose (standardLifeTable: 1 MtxLTSKRO, 2 the user's table
// of the preferences, 3 MtxLTSWHO, any other value MtxLTSKRO). nullptr, after "There is no User
// defined Life Table " (title "Life Table"), when the user's table is chosen but none is loaded.
const CellArray* calculatorLifeTable();

// The labels of a list of lower ages (ASGDfn mode 0: M and F, sorted); std::nullopt after a failure,
// which ASGDfn has shown.
std::optional<QStringList> calculatorLabels(const QStringList& ages);

// Build (ID_BUILD): labels from the lower ages of `ageDef` (ASGDfn mode 0: M and F, sorted) and the
// heads of the task. "Please fill the Age definition" for an empty age grid, "Unexpected error.
// Quiting.." when the labels cannot be made.
bool buildCalculator(CalculatorTask task, const AgeDefModel& ageDef, CalcDataModel& data);
// The DALY calculator's build of both sides: "Please fill the Yll  ASG", "Please fill the YLD  ASG";
// with the feasibility option, the two sets must map ("The data you have entered in YLL and YLd do
// not map. Please enter the proper data"), or nothing is built.
bool buildDalyCalculator(const AgeDefModel& yldDef, const AgeDefModel& yllDef, CalcDataModel& yld,
                         CalcDataModel& yll, bool feasibility);

// One row of YLD inputs.
struct YldRow {
    std::optional<float> a; // age at onset or of the prevalent cases; none when blank
    float L = 0;            // duration (IYLD)
    float D = 0;            // disability weight
    float N = 0;            // cases
};

// Whether `age` lies in the group of `label`: FnAsgStart <= age < FnAsgEnd, "W" having no end.
bool ageInGroup(const QString& label, double age);

// BuildAGD: the ages at death of column `input`, none for a blank cell. An age outside the group of
// its row is refused with "Please enter the currect AGD values": std::nullopt.
std::optional<std::vector<std::optional<float>>> BuildAGD(const CalcDataModel& data, int input);
// BuildDBC: the deaths of column `input` (a blank cell counts 0).
std::vector<float> BuildDBC(const CalcDataModel& data, int input);
// BuildADW: the YLD inputs of the IYLD or PYLD sheet (or of the DALY calculator's YLD side, task
// Iyld). An age outside its group: "Please enter the currect Age at Onset values", std::nullopt.
std::optional<std::vector<YldRow>> BuildADW(CalculatorTask task, const CalcDataModel& data);

// The arithmetic. CalYllCalculator throws std::out_of_range for a table it cannot read.
std::vector<Cell> CalYllCalculator(const QStringList& labels, const std::vector<std::optional<float>>& ages,
                                   const std::vector<float>& deaths, const DapValues& dap,
                                   const CellArray& lifeTable);
// The inputs of a YLL sheet: the ages at death of input 1 (BuildAGD), the deaths of input 0
// (BuildDBC) and the standard life table; std::nullopt, after the message, when the ages or the
// table cannot be had.
struct YllInputs {
    std::vector<std::optional<float>> ages;
    std::vector<float> deaths;
    const CellArray* lifeTable = nullptr;
};
std::optional<YllInputs> readYllInputs(const CalcDataModel& data);
std::vector<Cell> CalIyld(const std::vector<YldRow>& rows, const DapValues& dap);
std::vector<Cell> CalPyld(const std::vector<YldRow>& rows, const DapValues& dap);

// Compute (ID_COMPUTE_YLL, ID_COMPUTE_YLD, ID_COMPUTE_PYLD): one result column per marked set.
// "Please select the r,k, Beta,c values from the list" when none is marked; a failure shows
// "Error from Yll Calculator: " and its text (title "YLL Calculator").
bool computeCalculator(CalculatorTask task, const DapGridModel& dap, CalcDataModel& data);

// The DALY join of two result columns. `map` is a record of FnAsgMap(yld labels, yll labels), or an
// unfeasible record, in which case rows are joined by equal labels. Returns which side is the base
// (true: the YLL side) and the DALY values of the base rows.
struct DalyJoin {
    bool baseIsYll = true;
    std::vector<Cell> values;
};
DalyJoin joinDaly(const QStringList& yldLabels, const std::vector<Cell>& iyld, const QStringList& yllLabels,
                  const std::vector<Cell>& yll, const CellArray& map);

// ID_COMPUTE of frmDALYCal: the checks in order (feasibility, a marked set, the needed inputs), then
// per marked set the IYLD column on the YLD side, the YLL column on the YLL side and the DALY column
// on the base side.
bool CalculateDalyCal(const DapGridModel& dap, CalcDataModel& yld, CalcDataModel& yll, bool feasibility);

} // namespace vesk
