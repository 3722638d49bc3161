// The import of the epidemiological sheets, against a real study file: the rows of the unit, year
// and cause by their labels, under the bases in force; the sequela sheet by its sequela; and each
// test that ends an import with its message.

#include "inputs/epi_import.h"
#include "inputs/foreign_file.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"

#include <QFile>

namespace vesk::test {
namespace {

namespace col = epi_col;
namespace t = sheet_texts;

const QStringList kLabels{"F0-14", "F15-w", "M0-14", "M15-w"};

class EpiImportTest : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        layoutEpiGrid(grid, kLabels);
        key.unit = SheetUnit{QStringLiteral("B1"), 2000, QStringLiteral("District")};
        key.cause = QStringLiteral("A01");
    }
    void writeText(const QString& name, const QByteArray& content) {
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
    }
    bool import(const QString& name) { return importEpi(EpiImport{key, path(name), QString()}, grid); }
    QStringList row(int r) {
        QStringList out;
        for (int c = 1; c < grid.cols(); ++c)
            out << grid.textMatrix(r, c);
        return out;
    }
    GridModel grid;
    EpiKey key;
};

TEST_F(EpiImportTest, ATextFileOfTheUnitFillsTheRowsOfItsCause) {
    key.incidenceBase = 1000;
    writeText("epi.txt", "B1;2000;A01;F15-w;0.0015;0.2;30;5.5;34\r\n"
                         "B1;2000;B02;F15-w;9;9;9;9;9\r\n"
                         "B1;2000;a01;M0-14;0.0001;;2;1;3\r\n");
    EXPECT_TRUE(import("epi.txt"));
    EXPECT_EQ(row(2), (QStringList{"1.5", "0.2", "30", "5.5", "34"}));
    EXPECT_EQ(row(3), (QStringList{"0.1", "", "2", "1", "3"}));
    EXPECT_EQ(row(1), (QStringList{"", "", "", "", ""}));
    EXPECT_EQ(prompts.messages(), (QStringList{text(t::kAskText) + "District" + text(t::kAskEpiDbfFields),
                                               text(t::kEpiImported)}));
}

TEST_F(EpiImportTest, TheSequelaSheetTakesTheRowsOfItsSequela) {
    key.sequela = QStringLiteral("SQ1");
    CellArray a{2, 10};
    const QList<QList<Cell>> rows{{Cell("B1"), Cell(2000), Cell("A01"), Cell("SQ1"), Cell("M15-w"), Cell(0.25),
                                   Cell(0.5), Cell(40.0), Cell(3.0), Cell(45.0)},
                                  {Cell("B1"), Cell(2000), Cell("A01"), Cell("SQ2"), Cell("F0-14"), Cell(1.0),
                                   Cell(1.0), Cell(1.0), Cell(1.0), Cell(1.0)}};
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 10; ++j)
            a(i, j) = rows[i][j];
    ASSERT_TRUE(FnWriteArrFile(a, path("epi.xlsx"), "B1",
                               {"BPUID", "Year", "COBCd", "SqlaCd", "ASG", "i", "P", "ago", "DURN", "agp"}));
    EXPECT_TRUE(import("epi.xlsx"));
    EXPECT_EQ(row(4), (QStringList{"0.25", "0.5", "40", "3", "45"}));
    EXPECT_EQ(row(1), (QStringList{"", "", "", "", ""}));
}

TEST_F(EpiImportTest, EachTestEndsTheImportWithItsMessage) {
    writeText("empty.txt", "");
    EXPECT_FALSE(import("empty.txt"));
    EXPECT_EQ(prompts.messages().last(), text(t::kEpiNoRecords));
    writeText("other.txt", "B2;2000;A01;F15-w;1;1;1;1;1\r\n");
    EXPECT_FALSE(import("other.txt"));
    EXPECT_EQ(prompts.messages().last(), text(t::kTextOtherUnitPart1) + "District" + text(t::kTextOtherUnitPart2));
    writeText("year.txt", "B1;1999;A01;F15-w;1;1;1;1;1\r\n");
    EXPECT_FALSE(import("year.txt"));
    EXPECT_EQ(prompts.messages().last(), text(t::kNotInSourcePart1) + "District" + text(t::kNotInSourcePart2) +
                                             path("year.txt") + text(t::kNotInSourcePart3));
    writeText("ages.txt", "B1;2000;A01;F15-44;1;1;1;1;1\r\n");
    EXPECT_FALSE(import("ages.txt"));
    EXPECT_EQ(prompts.messages().last(), text(t::kEpiOtherAges));
    EXPECT_EQ(row(2), (QStringList{"", "", "", "", ""}));
}

} // namespace
} // namespace vesk::test
