#include "inputs/foreign_file.h"
#include "inputs/sqlite_table_file.h"
#include "test_support.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>

using namespace vesk;
using vesk::test::dump;
using vesk::test::table;

namespace {
class SqliteTable : public vesk::test::ScratchTest {};
} // namespace

TEST(SqliteTableDdl, NamesTheOldTypes) {
    const auto def =
        parseCreateTable("create table T ( [a b] String(5),[c] string,[d] Integer,[e] Long,[f] Single,"
                         "[g] Double,[h] Date,[i] Logical ) ");
    ASSERT_TRUE(def);
    EXPECT_EQ(
        SqliteTableDriver::sqliteDdl(*def),
        "CREATE TABLE \"T\" (\"a b\" VARCHAR(5), \"c\" TEXT, \"d\" SMALLINT, \"e\" INTEGER, \"f\" SINGLE, "
        "\"g\" DOUBLE, \"h\" DATETIME, \"i\" BOOLEAN)");
}

TEST_F(SqliteTable, DatesAreIsoTextAndBooleansOneAndZero) {
    const CellArray a =
        table({{Cell::date(43835.5), Cell::boolean(true), Cell::single(0.1f), Cell("00123")}});
    ASSERT_TRUE(FnWriteArrFile(a, path("s.vdb"), "T", {"d", "b", "s", "t"}));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "peek");
        db.setDatabaseName(path("s.vdb"));
        ASSERT_TRUE(db.open());
        QSqlQuery q(db);
        ASSERT_TRUE(q.exec("SELECT d, b, typeof(b), t, typeof(t) FROM T"));
        ASSERT_TRUE(q.next());
        EXPECT_EQ(q.value(0).toString(), "2020-01-05 12:00:00");
        EXPECT_EQ(q.value(1).toInt(), 1);
        EXPECT_EQ(q.value(2).toString(), "integer");
        EXPECT_EQ(q.value(3).toString(), "00123") << "text stays text: no leading zero is lost";
        EXPECT_EQ(q.value(4).toString(), "text");
    }
    QSqlDatabase::removeDatabase("peek");
    EXPECT_EQ(FnReadArrFile(path("s.vdb"), "t"), a);
}

TEST_F(SqliteTable, AFailingRowLeavesNoneOfTheCallsRows) {
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "make");
        db.setDatabaseName(path("s.vdb"));
        ASSERT_TRUE(db.open());
        QSqlQuery q(db);
        ASSERT_TRUE(q.exec("CREATE TABLE Grp (Code VARCHAR(5) PRIMARY KEY, Name TEXT NOT NULL)"));
    }
    QSqlDatabase::removeDatabase("make");
    CellArray types;
    const CellArray rows = table({{Cell("G1"), Cell("one")}, {Cell("G2"), Cell()}});
    FnColTypes(rows, types);
    EXPECT_FALSE(FnWriteArrFile(rows, path("s.vdb"), "Grp", {}, &types));
    EXPECT_NE(lastForeignError().words.indexOf("Row 2"), -1);
    EXPECT_TRUE(FnReadArrFile(path("s.vdb"), "Grp").isEmpty());
}

TEST_F(SqliteTable, AFileThatIsNoDatabaseIsNotOpened) {
    QFile f(path("x.vdb"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("this is not a database file, not at all, but it is long enough to look like a header.");
    f.close();
    EXPECT_TRUE(FnReadArrFile(path("x.vdb"), "T").isEmpty());
    EXPECT_EQ(lastForeignError().number, 3051);
}

// The table and its rows are one unit of work: rows that fail take the new table with them, so an
// existing file is left as it was, not with an empty table that a second try would run into.
TEST_F(SqliteTable, RowsThatFailTakeTheirNewTableWithThem) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell(1.0)}}), path("s.vdb"), "Kept", {"k"}));
    SqliteTableDriver driver;
    ASSERT_TRUE(driver.open(path("s.vdb"), true));
    TableDef def;
    def.name = "Fresh";
    def.fields << FieldDef{"a", "double", 0};
    ASSERT_TRUE(driver.createTable(def));
    EXPECT_FALSE(driver.appendRows("Fresh", table({{Cell(1.0), Cell(2.0)}}))); // wider than the table
    EXPECT_FALSE(driver.close());
    EXPECT_EQ(lastForeignError().number, 3265); // the rows' failure, not the undoing of the table
    SqliteTableDriver again;
    ASSERT_TRUE(again.open(path("s.vdb"), false));
    EXPECT_FALSE(again.hasTable("Fresh"));
    EXPECT_TRUE(again.hasTable("Kept"));
    again.close();
}

// Rows that go in leave their table and rows behind once the file is closed.
TEST_F(SqliteTable, ATableAndItsRowsStandOnceClosed) {
    SqliteTableDriver driver;
    ASSERT_TRUE(driver.open(path("s.vdb"), true));
    TableDef def;
    def.name = "Fresh";
    def.fields << FieldDef{"a", "double", 0};
    ASSERT_TRUE(driver.createTable(def));
    ASSERT_TRUE(driver.appendRows("Fresh", table({{Cell(1.5)}, {Cell(-2.0)}})));
    EXPECT_TRUE(driver.close());
    EXPECT_EQ(dump(FnReadArrFile(path("s.vdb"), "Fresh")), dump(table({{Cell(1.5)}, {Cell(-2.0)}})));
}
