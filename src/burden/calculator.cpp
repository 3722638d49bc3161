#include "burden/calculator.h"

#include "burden/calculator_texts.h"
#include "burden/kernel.h"
#include "demography/standard_life_table.h"
#include "foundation/array_helpers.h"
#include "foundation/settings.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "study/asg_labels.h"

#include <exception>

namespace vesk {

namespace ct = calculator_texts;

namespace {

using calculator_texts::text;

float single(const QString& text) {
    return toSingle(Val(text));
}

} // namespace

const CalculatorTaskInfo& calculatorTaskInfo(CalculatorTask task) {
    static const CalculatorTaskInfo yll{
        ct::kYllCaption, ct::kYllTitle, {text(ct::kDeaths), text(ct::kAgeAtDeath)}, ct::kYllPrefix};
    static const CalculatorTaskInfo iyld{
        ct::kIyldCaption,
        ct::kYldTitle,
        {text(ct::kAgeAtOnset), text(ct::kDuration), text(ct::kDisabilityWeight), text(ct::kIncidentCases)},
        ct::kIyldPrefix};
    static const CalculatorTaskInfo pyld{
        ct::kPyldCaption,
        ct::kYldTitle,
        {text(ct::kPrevalentCases), text(ct::kDisabilityWeight), text(ct::kAgeOfPrevalentCases)},
        ct::kPyldPrefix};
    switch (task) {
    case CalculatorTask::Iyld:
        return iyld;
    case CalculatorTask::Pyld:
        return pyld;
    default:
        return yll;
    }
}

void calculatorSay(const char* message, const char* title, Icon icon) {
    prompts().ask(text(message), Buttons::Ok, icon, title ? text(title) : QString());
}

QString calculatorResultHead(const QString& prefix, const DapValues& dap) {
    return prefix + u'[' + dap.r + u',' + dap.K + u']';
}

const CellArray* calculatorLifeTable() {
    const StandardLifeTable chosen = standardLifeTable();
    if (chosen.lack == StandardLifeTableLack::NoUserTable)
        calculatorSay(ct::kNoUserLifeTable, ct::kLifeTableTitle);
    // A missing fixed block passes its empty table: reading it is the calculator's error.
    return chosen.table;
}

// ---------------------------------------------------------------------------------------------
// Build

std::optional<QStringList> calculatorLabels(const QStringList& ages) {
    CellArray boundaries({static_cast<int>(ages.size()), 1});
    for (int i = 0; i < ages.size(); ++i)
        boundaries(i, 0) = Cell(ages[i]);
    CellArray labels;
    if (!ASGDfn(boundaries, 0, labels) || labels.rank() != 1)
        return std::nullopt;
    QStringList out;
    for (int i = labels.lbound(0); i <= labels.ubound(0); ++i)
        out.push_back(labels(i).toString());
    return out;
}

bool buildCalculator(CalculatorTask task, const AgeDefModel& ageDef, CalcDataModel& data) {
    const QStringList ages = ageDef.ages();
    if (ages.isEmpty()) {
        calculatorSay(ct::kFillAgeDefinition);
        return false;
    }
    const auto labels = calculatorLabels(ages);
    if (!labels) {
        calculatorSay(ct::kUnexpectedError, nullptr, Icon::Critical);
        return false;
    }
    const CalculatorTaskInfo& info = calculatorTaskInfo(task);
    data.build(text(info.title), *labels, info.inputHeads);
    return true;
}

// ---------------------------------------------------------------------------------------------
// Readers

bool ageInGroup(const QString& label, double age) {
    if (age < FnAsgStart(label))
        return false;
    const Cell end = FnAsgEnd(label);
    if (end.isText())
        return true; // "W": the open end
    return age < end.toDouble();
}

namespace {

// The age of column `input` of each row, none when blank; nullopt when one lies outside its group.
std::optional<std::vector<std::optional<float>>> readAges(const CalcDataModel& data, int input,
                                                          const char* refusal) {
    std::vector<std::optional<float>> out;
    for (int row = 0; row < data.rowCount(); ++row) {
        const QString text = data.inputText(row, input);
        if (text.trimmed().isEmpty()) {
            out.emplace_back();
            continue;
        }
        const float a = single(text);
        if (!ageInGroup(data.labels().at(row), a)) {
            calculatorSay(refusal);
            return std::nullopt;
        }
        out.emplace_back(a);
    }
    return out;
}

} // namespace

std::optional<std::vector<std::optional<float>>> BuildAGD(const CalcDataModel& data, int input) {
    return readAges(data, input, ct::kBadAgd);
}

std::vector<float> BuildDBC(const CalcDataModel& data, int input) {
    std::vector<float> out;
    for (int row = 0; row < data.rowCount(); ++row)
        out.push_back(single(data.inputText(row, input)));
    return out;
}

std::optional<YllInputs> readYllInputs(const CalcDataModel& data) {
    auto ages = BuildAGD(data, 1);
    if (!ages)
        return std::nullopt;
    YllInputs in{std::move(*ages), BuildDBC(data, 0), calculatorLifeTable()};
    if (!in.lifeTable)
        return std::nullopt;
    return in;
}

std::optional<std::vector<YldRow>> BuildADW(CalculatorTask task, const CalcDataModel& data) {
    // Columns: IYLD age at onset, duration, weight, cases; PYLD cases, weight, age.
    const bool prevalence = task == CalculatorTask::Pyld;
    const int ageColumn = prevalence ? 2 : 0;
    const auto ages = readAges(data, ageColumn, ct::kBadOnset);
    if (!ages)
        return std::nullopt;
    std::vector<YldRow> out;
    for (int row = 0; row < data.rowCount(); ++row) {
        YldRow r;
        r.a = (*ages)[row];
        if (prevalence) {
            r.N = single(data.inputText(row, 0));
            r.D = single(data.inputText(row, 1));
        } else {
            r.L = single(data.inputText(row, 1));
            r.D = single(data.inputText(row, 2));
            r.N = single(data.inputText(row, 3));
        }
        out.push_back(r);
    }
    return out;
}

// ---------------------------------------------------------------------------------------------
// Arithmetic

std::vector<Cell> CalYllCalculator(const QStringList& labels, const std::vector<std::optional<float>>& ages,
                                   const std::vector<float>& deaths, const DapValues& dap,
                                   const CellArray& lifeTable) {
    const float r = single(dap.r);
    const float K = single(dap.K);
    const Cell Beta(dap.Beta);
    const Cell C(dap.C);
    std::vector<Cell> out;
    for (std::size_t row = 0; row < ages.size(); ++row) {
        if (!ages[row]) {
            out.push_back(Cell::null());
            continue;
        }
        const float a = *ages[row];
        const QString sex = labels.at(static_cast<int>(row)).trimmed().left(1).toUpper();
        const float L = FnLifeExpAt(lifeTable, a, sex);
        const double perDeath = FnYLLF(a, L, r, K, Beta, C);
        out.push_back(Cell(deaths[row] * perDeath));
    }
    return out;
}

namespace {

// One result a row: the value of the row, Null for a row without an age.
template <typename Value> std::vector<Cell> eachRow(const std::vector<YldRow>& rows, Value value) {
    std::vector<Cell> out;
    for (const YldRow& row : rows)
        out.push_back(row.a ? Cell(static_cast<double>(value(row))) : Cell::null());
    return out;
}

} // namespace

std::vector<Cell> CalIyld(const std::vector<YldRow>& rows, const DapValues& dap) {
    const float r = single(dap.r);
    const float K = single(dap.K);
    return eachRow(rows, [&](const YldRow& row) {
        return FnlYLD(*row.a, row.L, row.D, r, K, Cell(dap.Beta), Cell(dap.C), row.N);
    });
}

std::vector<Cell> CalPyld(const std::vector<YldRow>& rows, const DapValues& dap) {
    const float K = single(dap.K);
    return eachRow(rows, [&](const YldRow& row) {
        return FnPYLD(*row.a, row.D, K, Cell(dap.Beta), Cell(dap.C), row.N);
    });
}

// ---------------------------------------------------------------------------------------------
// Compute

namespace {

// CalYllRslt: the ages and deaths of the grid, the life table, and a column per set.
bool CalYllRslt(const std::vector<DapValues>& sets, CalcDataModel& data) {
    const auto in = readYllInputs(data);
    if (!in)
        return false;
    for (const DapValues& dap : sets)
        data.setResultColumn(calculatorResultHead(text(ct::kYllPrefix), dap),
                             CalYllCalculator(data.labels(), in->ages, in->deaths, dap, *in->lifeTable));
    return true;
}

bool computeYld(CalculatorTask task, const std::vector<DapValues>& sets, CalcDataModel& data) {
    const auto rows = BuildADW(task, data);
    if (!rows)
        return false;
    const QString prefix = text(calculatorTaskInfo(task).resultPrefix);
    for (const DapValues& dap : sets)
        data.setResultColumn(calculatorResultHead(prefix, dap),
                             task == CalculatorTask::Pyld ? CalPyld(*rows, dap) : CalIyld(*rows, dap));
    return true;
}

} // namespace

bool computeCalculator(CalculatorTask task, const DapGridModel& dap, CalcDataModel& data) {
    const std::vector<DapValues> sets = dap.selectedSets();
    if (sets.empty()) {
        calculatorSay(ct::kSelectDap);
        return false;
    }
    if (!data.isBuilt()) {
        calculatorSay(ct::kFillAgeDefinition);
        return false;
    }
    try {
        return task == CalculatorTask::Yll ? CalYllRslt(sets, data) : computeYld(task, sets, data);
    } catch (const std::exception& e) {
        prompts().ask(text(ct::kYllCalculatorError) + QString::fromStdString(e.what()), Buttons::Ok,
                      Icon::Critical, text(ct::kYllCalculatorTitle));
        return false;
    }
}

} // namespace vesk
