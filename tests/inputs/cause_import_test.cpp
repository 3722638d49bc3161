// The import of the cause-of-death sheet, against a real study file: a text file whose first line
// names the fields, a workbook range named after the unit, labels that differ from the sheet's, and
// the messages of a missing file, a missing range and a file of another layout.

#include "inputs/cause_import.h"
#include "inputs/cause_sheet.h"
#include "inputs/foreign_file.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"
#include "test_support.h"

#include <QFile>

namespace vesk::test {
namespace {

namespace t = sheet_texts;

const QList<StudyCause> kCauses{{"A01", "Tuberculosis"}, {"B02", "Malaria"}};
const QStringList kLabels{"F0-4", "F5-w", "M0-4", "M5-w"};

class CauseImportTest : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        layoutCauseGrid(grid, kCauses, kLabels);
    }
    void writeText(const QString& name, const QByteArray& content) {
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
    }
    bool import(const QString& name) { return importCauses(CauseImport{unit, path(name), QString()}, grid); }
    QStringList row(int r) {
        QStringList out;
        for (int c = kCauseFixedCols; c < grid.cols(); ++c)
            out << grid.textMatrix(r, c);
        return out;
    }
    GridModel grid;
    SheetUnit unit{QStringLiteral("B1"), 2000, QStringLiteral("District")};
};

TEST_F(CauseImportTest, ATextFileNamingItsFieldsFillsTheRowsOfTheUnit) {
    writeText("csm.txt", "BPUID;Year;COBCd;F0-4;F5-w;M0-4;M5-w\r\n"
                         "B1;2000;a01;0.123456789012;0.25;0.75;1\r\n"
                         "B1;2000;B02;0.876543210988;0.75;0.25;0\r\n"
                         "B2;2000;A01;0.9;0.9;0.9;0.9\r\n");
    EXPECT_TRUE(import("csm.txt"));
    EXPECT_EQ(row(1), (QStringList{"0.123456789012", "0.25", "0.75", "1"}));
    EXPECT_EQ(row(2), (QStringList{"0.876543210988", "0.75", "0.25", "0"}));
    EXPECT_EQ(row(3), (QStringList{"1", "1", "1", "1"})); // the totals
    EXPECT_EQ(prompts.messages(), (QStringList{text(t::kAskText) + "District" + text(t::kAskCausesFields),
                                               text(t::kCausesImported)}));
    ASSERT_EQ(confirmCauses(grid, unit, *db).outcome, ConfirmResult::Outcome::Stored);
    EXPECT_EQ(value("SELECT CSMP FROM DatCSM WHERE COBCd = 'A01' AND ASG = 'F0-4'"), "0.123456789012");
}

TEST_F(CauseImportTest, AWorkbookRangeNamedAfterTheUnitIsRead) {
    CellArray a{1, 7};
    const QList<Cell> values{Cell("B1"), Cell(2000), Cell("B02"), Cell(0.5), Cell(0.25), Cell(0.125), Cell(1e-9)};
    for (int j = 0; j < 7; ++j)
        a(0, j) = values[j];
    ASSERT_TRUE(FnWriteArrFile(a, path("csm.xlsx"), "B1", {"BPUID", "Year", "COBCd", "F0-4", "F5-w", "M0-4", "M5-w"}));
    EXPECT_TRUE(import("csm.xlsx"));
    EXPECT_EQ(row(2), (QStringList{"0.5", "0.25", "0.125", "1e-09"}));
    EXPECT_EQ(row(1), (QStringList{"", "", "", ""}));
}

TEST_F(CauseImportTest, OtherLabelsAskAndYesTakesTheSheetsOwn) {
    writeText("csm.txt", "BPUID;Year;COBCd;F0-4;F5-w;M0-4;M5-w;F0-9\r\nB1;2000;A01;0.1;0.2;0.3;0.4;0.9\r\n");
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::No);
    EXPECT_FALSE(import("csm.txt"));
    EXPECT_EQ(prompts.messages().last(), text(t::kYllLabelsChanged));
    EXPECT_EQ(row(1), (QStringList{"", "", "", ""}));
    EXPECT_TRUE(import("csm.txt"));
    EXPECT_EQ(row(1), (QStringList{"0.1", "0.2", "0.3", "0.4"}));
}

// A proportion above 1 cannot be typed, yet an import is not tested cell by cell: it stands in the
// grid, and Confirm refuses it there.
TEST_F(CauseImportTest, AnImportedProportionAboveOneReachesTheGridAndConfirmRefusesIt) {
    writeText("csm.txt", "BPUID;Year;COBCd;F0-4;F5-w;M0-4;M5-w\r\nB1;2000;A01;1.5;1;1;1\r\n");
    EXPECT_TRUE(import("csm.txt"));
    EXPECT_EQ(row(1).value(0), "1.5");
    const ConfirmResult r = confirmCauses(grid, unit, *db);
    EXPECT_EQ(r.outcome, ConfirmResult::Outcome::Refused);
    EXPECT_EQ(prompts.messages().last(), text(t::kProportionOutOfRange));
    EXPECT_EQ(value("SELECT count(*) FROM DatCSM"), "0");
}

TEST_F(CauseImportTest, AMissingFileRangeOrLayoutIsSaid) {
    EXPECT_FALSE(import("nowhere.txt"));
    EXPECT_EQ(prompts.messages().last(), text(t::kImportFileMissing));
    ASSERT_TRUE(FnWriteArrFile(table({{Cell(1.0)}}), path("other.xlsx"), "B9", {"x"}));
    EXPECT_FALSE(import("other.xlsx"));
    EXPECT_EQ(prompts.messages().last(), text(t::kNoTableOrRange) + "\n" + text(t::kNoTableOrRangeHint));
    writeText("plain.txt", "a;b;c\r\n1;2;3\r\n");
    EXPECT_FALSE(import("plain.txt"));
    EXPECT_EQ(prompts.messages().last(), text(t::kImportNotExpectedFormat));
}

} // namespace
} // namespace vesk::test
