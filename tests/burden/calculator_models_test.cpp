// The calculators' grids as models, and what print and save send out.

#include "burden/calculator_models.h"
#include "burden/calculator_output.h"
#include "calculator_support.h"

#include <QFile>

using namespace vesk;

namespace {
class ModelsTest : public vesk::test::CalculatorTest {};
} // namespace

TEST_F(ModelsTest, DapGridOfTheYllCalculator) {
    DapGridModel m(false);
    ASSERT_EQ(m.rowCount(), 5);
    ASSERT_EQ(m.columnCount(), 6);
    QStringList heads;
    for (int c = 0; c < 6; ++c)
        heads << m.headerData(c, Qt::Horizontal).toString();
    EXPECT_EQ(heads, QStringList({"DAP Id", "r", "K", "Beta", "C", "Select"}));
    EXPECT_EQ(m.text(0, 0), "Built In 0");
    EXPECT_EQ(m.text(1, DapGridModel::RColumn), "0.03");
    EXPECT_EQ(m.text(0, DapGridModel::BetaColumn), "");
    EXPECT_EQ(m.text(4, 0), "Custom");
    m.toggleSelect(2);
    EXPECT_EQ(m.text(2, DapGridModel::SelectColumn), "True");
    ASSERT_EQ(m.selectedSets().size(), 1u);
    EXPECT_EQ(m.selectedSets()[0].r, "0");
    EXPECT_EQ(m.selectedSets()[0].K, "1");
    m.toggleSelect(2);
    EXPECT_EQ(m.text(2, DapGridModel::SelectColumn), "False");
    EXPECT_FALSE(m.flags(m.index(1, DapGridModel::KColumn)) & Qt::ItemIsEditable);
    EXPECT_TRUE(m.flags(m.index(4, DapGridModel::KColumn)) & Qt::ItemIsEditable);
    EXPECT_FALSE(m.flags(m.index(4, DapGridModel::SelectColumn)) & Qt::ItemIsEditable);
}

TEST_F(ModelsTest, AgeGridAlwaysHasARowToTypeIn) {
    AgeDefModel m;
    EXPECT_EQ(m.rowCount(), 2);
    m.setData(m.index(0, 0), "0");
    m.setData(m.index(1, 0), "5");
    EXPECT_EQ(m.rowCount(), 3);
    m.setData(m.index(2, 0), " 15 ");
    EXPECT_EQ(m.ages(), QStringList({"0", "5", "15"}));
    m.setAges({0, 5, 15, 45, 60});
    EXPECT_EQ(m.rowCount(), 6);
    EXPECT_EQ(m.ages().size(), 5);
}

TEST_F(ModelsTest, DecimalFormatsOfTheResults) {
    EXPECT_EQ(formatCalculatorValue(Cell(12.345), 0), "12");
    EXPECT_EQ(formatCalculatorValue(Cell(12.345), 2), "12.35");
    EXPECT_EQ(formatCalculatorValue(Cell(0.5), 2), ".50");
    EXPECT_EQ(formatCalculatorValue(Cell(1234.5), 10), "1234.5000000000");
    EXPECT_EQ(formatCalculatorValue(Cell::null(), 2), "");
    CalcDataModel m;
    m.build("T", {"F0-w", "M0-w"}, {"Deaths"});
    m.setResultColumn("YLL[0,0]", {Cell(1.25), Cell::null()});
    m.setDecimals(1);
    EXPECT_EQ(m.data(m.index(0, 2)).toString(), "1.3");
    m.setDecimals(3);
    EXPECT_EQ(m.data(m.index(0, 2)).toString(), "1.250");
    EXPECT_FALSE(m.flags(m.index(0, 2)) & Qt::ItemIsEditable);
    EXPECT_FALSE(m.flags(m.index(0, 0)) & Qt::ItemIsEditable);
    EXPECT_TRUE(m.flags(m.index(0, 1)) & Qt::ItemIsEditable);
    EXPECT_EQ(m.GetIdx("M0-w"), 1);
    EXPECT_EQ(m.GetIdx("P0-w"), -1);
    EXPECT_EQ(m.GetString(0), QStringList({"F0-w", "", "1.250"}));
    m.clearResults();
    EXPECT_EQ(m.columnCount(), 2);
}

TEST_F(ModelsTest, SavedTextHasFieldsSeparatedBySemicolons) {
    CalcDataModel m;
    m.build("Data Inputs and Results", {"F0-w", "M0-w"}, {"Deaths", "Age at Death"});
    m.setInputText(0, 0, "10");
    m.setInputText(0, 1, "30");
    m.setResultColumn("YLL[0,0]", {Cell(505.0), Cell::null()});
    const CalculatorSheet sheet{"YLL Calculator", "Analyst A", "Malaria", {{m.title(), &m}}};
    const QString text = calculatorSaveText(sheet);
    EXPECT_EQ(text, "YLL Calculator\r\nUser Indentification;Analyst A\r\nCause;Malaria\r\n\r\n"
                    "Data Inputs and Results\r\nASG;Deaths;Age at Death;YLL[0,0]\r\n"
                    "F0-w;10;30;505.00\r\nM0-w;;;\r\n");
    const QString path = dir_.filePath("out.txt");
    QString error;
    ASSERT_TRUE(writeCalculatorFile(path, text, &error)) << error.toStdString();
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(f.readAll()), text);
    EXPECT_FALSE(writeCalculatorFile(dir_.filePath("no/such/folder/out.txt"), text, &error));
    EXPECT_FALSE(error.isEmpty());
    const QString html = calculatorPrintHtml(sheet);
    EXPECT_TRUE(html.contains("<th>YLL[0,0]</th>"));
    EXPECT_TRUE(html.contains("Malaria"));
}

TEST_F(ModelsTest, TheGridsAlignTheirColumnsAndNumberOnlyTheAgeRows) {
    const auto align = [](const QAbstractItemModel& m, int column) {
        return m.data(m.index(0, column), Qt::TextAlignmentRole).value<Qt::Alignment>();
    };
    DapGridModel dap(true);
    EXPECT_EQ(align(dap, 0), Qt::AlignLeft | Qt::AlignVCenter);
    EXPECT_EQ(align(dap, DapGridModel::KColumn), Qt::Alignment(Qt::AlignCenter));
    EXPECT_FALSE(dap.headerData(0, Qt::Vertical).isValid());
    EXPECT_EQ(dap.text(0, 0), "Built In-0");
    AgeDefModel ages;
    EXPECT_EQ(align(ages, 0), Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(ages.headerData(0, Qt::Horizontal).toString(), "Age");
    EXPECT_EQ(ages.headerData(1, Qt::Vertical).toInt(), 2);
    CalcDataModel data;
    EXPECT_EQ(data.columnCount(), 1); // the label column before any sheet is built
    EXPECT_EQ(data.headerData(0, Qt::Horizontal).toString(), "ASG");
    EXPECT_FALSE(data.isBuilt());
    data.build("T", {"F0-w"}, {"Deaths"});
    EXPECT_EQ(align(data, 0), Qt::AlignLeft | Qt::AlignVCenter);
    EXPECT_EQ(align(data, 1), Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_FALSE(data.headerData(0, Qt::Vertical).isValid());
    EXPECT_FALSE(data.headerData(0, Qt::Horizontal, Qt::EditRole).isValid());
}

TEST_F(ModelsTest, ATypedTextIsTrimmedAndOnlyCellsThatTakeTextKeepIt) {
    CalcDataModel data;
    data.build("T", {"F0-w", "M0-w"}, {"Deaths", "Age at Death"});
    EXPECT_TRUE(data.setData(data.index(1, 2), "  42 "));
    EXPECT_EQ(data.inputText(1, 1), "42");
    EXPECT_FALSE(data.setData(data.index(1, 0), "X"));
    EXPECT_EQ(data.labels(), QStringList({"F0-w", "M0-w"}));
    EXPECT_FALSE(data.setData(data.index(0, 1), "7", Qt::DisplayRole));
    EXPECT_EQ(data.inputText(0, 0), "");
    DapGridModel dap(false);
    EXPECT_FALSE(dap.setData(dap.index(0, DapGridModel::RColumn), "0.5"));
    EXPECT_TRUE(dap.setData(dap.index(DapGridModel::kCustomRow, DapGridModel::CColumn), " 0.16 "));
    EXPECT_EQ(dap.text(DapGridModel::kCustomRow, DapGridModel::CColumn), "0.16");
    EXPECT_TRUE(prompts_.shown().isEmpty());
}
