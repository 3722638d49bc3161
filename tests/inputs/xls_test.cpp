#include "inputs/foreign_file.h"
#include "inputs/xls_file.h"
#include "test_support.h"

using namespace vesk;
using vesk::test::dump;
using vesk::test::fixture;
using vesk::test::table;

// gnumeric_book.xls: gnumeric's BIFF8 copy of openpyxl_book.xlsx (see make_fixtures.sh). BIFF keeps
// no Booleans apart from numbers in freexl's reading: they come back as 1 and 0.
TEST(Xls, ReadsADefinedNameOfAWorkbookWrittenByGnumeric) {
    QStringList names;
    const CellArray back = FnReadArrFile(fixture("gnumeric_book.xls"), "DCTTBL", &names);
    EXPECT_EQ(names, QStringList({"Code", "Description", "Cluster", "Sequela", "Count", "Rate", "Started"}));
    const CellArray expected = table({
        {Cell("A01"), Cell("Tuberculosis"), Cell("C1"), Cell(1), Cell(12), Cell(0.125),
         Cell::date(dateSerial(QDate(2020, 1, 5)))},
        {Cell("A02"), Cell("Zoë's fever — ünïcode 中文"), Cell("C1"), Cell(0), Cell(-3), Cell(1e-7),
         Cell::date(dateSerial(QDateTime(QDate(2021, 6, 30), QTime(12, 30))))},
        {Cell("A03"), Cell::null(), Cell("C2"), Cell::null(), Cell(40000), Cell(3.14159265358979),
         Cell::null()},
    });
    EXPECT_TRUE(vesk::test::sameTable(back, expected, 1e-12));
}

TEST(Xls, TheNamesComeFromTheWorkbookStream) {
    const QList<XlsName> names = readXlsNames(fixture("gnumeric_book.xls"));
    ASSERT_EQ(names.size(), 1);
    EXPECT_EQ(names[0].name, "DCTTBL");
    EXPECT_EQ(names[0].area.sheet, 0);
    EXPECT_EQ(names[0].area.row1, 0);
    EXPECT_EQ(names[0].area.col1, 0);
    EXPECT_EQ(names[0].area.row2, 3);
    EXPECT_EQ(names[0].area.col2, 6);
    EXPECT_TRUE(readXlsNames(fixture("openpyxl_book.xlsx")).isEmpty());
}

TEST(Xls, ASheetNameStandsForTheRangeWhereTheFileHasNoSuchName) {
    QStringList names;
    EXPECT_EQ(FnReadArrFile(fixture("gnumeric_book.xls"), "life", &names),
              table({{Cell(0), Cell(82.5), Cell(80)}, {Cell(1), Cell(81.75), Cell(79.25)}}));
    EXPECT_EQ(names, QStringList({"Age", "EXF", "EXM"}));
    EXPECT_TRUE(FnReadArrFile(fixture("gnumeric_book.xls"), "GRPTBL").isEmpty());
    EXPECT_EQ(lastForeignError().number, 3078);
}
