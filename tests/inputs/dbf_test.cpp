#include "inputs/dbf_file.h"
#include "inputs/foreign_file.h"
#include "test_support.h"

#include <QFile>
#include <shapefil.h>

using namespace vesk;
using vesk::test::dump;
using vesk::test::fixture;
using vesk::test::table;

namespace {
class Dbf : public vesk::test::ScratchTest {};
} // namespace

// dbase3_hand.dbf is written byte by byte by make_fixtures.py, as a dBase III program would.
TEST(DbfFixture, ReadsATableWrittenByAnotherDbaseWriter) {
    QStringList names;
    const CellArray back = FnReadArrFile(fixture("dbase3_hand.dbf"), QString(), &names);
    EXPECT_EQ(names, QStringList({"CODE", "NAME", "CNT", "RATE", "DAY", "FLAG"}));
    const CellArray expected = table({
        {Cell("A01"), Cell("Tuberculosis"), Cell(12), Cell(0.125), Cell::date(dateSerial(QDate(2020, 1, 5))),
         Cell::boolean(true)},
        {Cell("A02"), Cell("Zoë's fever"), Cell(-3), Cell(-2.5), Cell::date(dateSerial(QDate(2021, 6, 30))),
         Cell::boolean(false)},
        {Cell("A03"), Cell::null(), Cell::null(), Cell(1234.5678), Cell::null(), Cell::null()},
    });
    EXPECT_EQ(back, expected) << dump(back) << "the deleted record is not read";
}

TEST_F(Dbf, FieldsFollowTheData) {
    const CellArray a =
        table({{Cell("ab"), Cell(7), Cell(100000), Cell(0.125), Cell::date(43835), Cell::boolean(true)},
               {Cell("abcdef"), Cell(-7), Cell(1), Cell(-1234.5), Cell(), Cell::boolean(false)}});
    ASSERT_TRUE(FnWriteArrFile(a, path("t.dbf"), "", {"Text", "Small", "Big", "Frac", "Day", "Flag"}));
    DBFHandle h = DBFOpen(QFile::encodeName(path("t.dbf")).constData(), "rb");
    ASSERT_NE(h, nullptr);
    struct Want {
        char type;
        int width, decimals;
    };
    const Want want[] = {{'C', 6, 0}, {'N', 6, 0}, {'N', 11, 0}, {'N', 20, 3}, {'D', 8, 0}, {'L', 1, 0}};
    for (int j = 0; j < 6; ++j) {
        int width = 0, decimals = 0;
        char name[12];
        DBFGetFieldInfo(h, j, name, &width, &decimals);
        EXPECT_EQ(DBFGetNativeFieldType(h, j), want[j].type) << j;
        EXPECT_EQ(width, want[j].width) << j;
        EXPECT_EQ(decimals, want[j].decimals) << j;
    }
    EXPECT_STREQ(DBFGetCodePage(h), "LDID/87") << "Windows-1252 when every text fits";
    DBFClose(h);
    EXPECT_FALSE(QFile::exists(path("t.cpg")));
}

TEST_F(Dbf, LongFieldNamesAreCutToTenBytesAndKeptApart) {
    const CellArray a = table({{Cell(1), Cell(2)}});
    ASSERT_TRUE(FnWriteArrFile(a, path("n.dbf"), "", {"Population1", "Population2"}));
    QStringList names;
    FnReadArrFile(path("n.dbf"), "", &names);
    EXPECT_EQ(names, QStringList({"Population", "Populatio1"}));
}

TEST_F(Dbf, TheFolderMustExist) {
    EXPECT_FALSE(FnWriteArrFile(table({{Cell(1)}}), path("missing/t.dbf"), "", {"a"}));
    EXPECT_EQ(lastForeignError().number, 3044);
}

TEST_F(Dbf, TheTableIsTheFilesBaseNameWhateverItsCase) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("x")}}), path("Pop2020.dbf"), "ignored", {"a"}));
    EXPECT_EQ(FnReadArrFile(path("Pop2020.dbf"), "other"), table({{Cell("x")}}));
    EXPECT_TRUE(FnReadArrFile(path("POP2020.DBF"), "").isEmpty()) << "the file itself must exist";
}

TEST_F(Dbf, TextThatIsNoNumberFailsInANumberField) {
    CellArray types{2, 1};
    types(0, 0) = Cell("Double");
    EXPECT_FALSE(FnWriteArrFile(table({{Cell("abc")}}), path("bad.dbf"), "", {"a"}, &types));
    EXPECT_EQ(lastForeignError().number, 3421);
    EXPECT_TRUE(FnWriteArrFile(table({{Cell(" 2.5 ")}}), path("good.dbf"), "", {"a"}, &types));
    EXPECT_EQ(FnReadArrFile(path("good.dbf"), ""), table({{Cell(2.5)}}));
}
