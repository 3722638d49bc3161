#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "test_support.h"

using namespace vesk;
using vesk::test::table;

namespace {
QStringList typeNames(const CellArray& types) {
    QStringList out;
    for (int j = 0; j < types.size(1); ++j)
        out << types(0, j).toString();
    return out;
}
} // namespace

TEST(FnColTypes, NamesTheWidestTypeOfEachColumn) {
    const CellArray a = table({
        {Cell(1), Cell(1), Cell(1.5), Cell::date(43835), Cell::boolean(true), Cell::single(0.5f), Cell("ab")},
        {Cell(-32768), Cell(40000), Cell(2), Cell::date(43836), Cell::boolean(false), Cell(3), Cell("abcd")},
        {Cell(), Cell::null(), Cell(3), Cell(), Cell::null(), Cell::single(1.5f), Cell("")},
    });
    CellArray types;
    FnColTypes(a, types);
    ASSERT_EQ(types.rank(), 2);
    EXPECT_EQ(types.size(0), 2);
    EXPECT_EQ(typeNames(types),
              QStringList({"Integer", "Long", "Double", "Date", "Logical", "Single", "String"}));
    EXPECT_EQ(types(1, 6).toDouble(), 4.0); // the longest text
    EXPECT_EQ(types(1, 1).toDouble(), 5.0); // "40000"
}

TEST(FnColTypes, AColumnOfMixedNumbersAndTextIsString) {
    const CellArray a = table({{Cell(1)}, {Cell("x")}, {Cell(2.5)}});
    CellArray types;
    FnColTypes(a, types);
    EXPECT_EQ(types(0, 0).toString(), "String");
    EXPECT_EQ(types(1, 0).toDouble(), 3.0);
}

TEST(FnColTypes, OtherMixesAreStringAndNumbersWiden) {
    const CellArray a = table({
        {Cell::date(1), Cell::boolean(true), Cell(1), Cell::single(1.5f), Cell(70000)},
        {Cell(2), Cell(1), Cell(100000), Cell(2), Cell::single(2.5f)},
    });
    CellArray types;
    FnColTypes(a, types);
    EXPECT_EQ(typeNames(types), QStringList({"String", "String", "Long", "Single", "Double"}));
}

TEST(FnColTypes, AnEmptyColumnIsStringWithoutLength) {
    const CellArray a = table({{Cell(), Cell(1)}, {Cell::null(), Cell(2)}});
    CellArray types;
    FnColTypes(a, types);
    EXPECT_EQ(types(0, 0).toString(), "String");
    EXPECT_EQ(types(1, 0).toDouble(), 0.0);
    EXPECT_EQ(FnCreateTableSql("T", {"a", "b"}, types), "create table T ( [a] string,[b] Integer ) ");
}

TEST(FnCreateTableSql, BuildsEveryFieldAsTheDriversRead) {
    CellArray types{2, 4};
    types(0, 0) = Cell("String");
    types(1, 0) = Cell(12);
    types(0, 1) = Cell("Long");
    types(0, 2) = Cell("Logical");
    types(0, 3) = Cell("String");
    types(1, 3) = Cell(0);
    EXPECT_EQ(FnCreateTableSql("_DctBDM", {"COBCd", "Desc", "Sqla", "Note"}, types),
              "create table _DctBDM ( [COBCd] String(12),[Desc] Long,[Sqla] Logical,[Note] string ) ");
}

TEST(ParseCreateTable, ReadsTheCreateTextsBack) {
    CellArray types{2, 2};
    types(0, 0) = Cell("String");
    types(1, 0) = Cell(5);
    types(0, 1) = Cell("Double");
    // A bare table name ends at the first blank: names with blanks go in brackets.
    EXPECT_FALSE(parseCreateTable(FnCreateTableSql("My Table", {"Field one", "x"}, types)));
    const auto def2 = parseCreateTable("create table [My Table] ( [Field one] String(5),[x] Double ) ");
    ASSERT_TRUE(def2);
    EXPECT_EQ(def2->name, "My Table");
    ASSERT_EQ(def2->fields.size(), 2);
    EXPECT_EQ(def2->fields[0].name, "Field one");
    EXPECT_EQ(def2->fields[0].length, 5);
    EXPECT_EQ(def2->fields[0].type(), FieldType::Text);
    EXPECT_EQ(def2->fields[1].type(), FieldType::Double);
}

TEST(ParseCreateTable, TheUnnamedWorksheetTextStaysWithoutItsClosingParenthesis) {
    const QString text = wk1CreateText(QString(), 0);
    EXPECT_EQ(text, "Create table ArrFileData (ArrData char(255)");
    EXPECT_FALSE(text.endsWith("))"));
    const auto def = parseCreateTable(text); // and the drivers accept it
    ASSERT_TRUE(def);
    EXPECT_EQ(def->name, "ArrFileData");
    ASSERT_EQ(def->fields.size(), 1);
    EXPECT_EQ(def->fields[0].name, "ArrData");
    EXPECT_EQ(def->fields[0].length, 255);
}

TEST(ParseCreateTable, TheOlderWritersTexts) {
    EXPECT_EQ(wk1CreateText("LTS", 0), "Create table LTS (ArrData char(255))");
    EXPECT_EQ(wk1CreateText("LTS", 2), "Create table LTS (Field0 char(255),Field1 char(255))");
    EXPECT_EQ(dbfCreateText("POP", 0), "create table POP(Field0  char(254))");
    EXPECT_EQ(dbfCreateText("POP", 2), "create table POP(Field0 char(254),Field1 char(254))");
    for (const QString& t : {wk1CreateText("LTS", 0), wk1CreateText("", 3), dbfCreateText("POP", 0)})
        EXPECT_TRUE(parseCreateTable(t)) << t.toStdString();
}

TEST(ParseCreateTable, RefusesWhatIsNoTableDefinition) {
    QString error;
    EXPECT_FALSE(parseCreateTable("create view X (a int)", &error));
    EXPECT_EQ(error, "Syntax error in CREATE TABLE statement.");
    EXPECT_FALSE(parseCreateTable("create table X ()"));
    EXPECT_FALSE(parseCreateTable("create table X (a)"));
    EXPECT_FALSE(parseCreateTable("create table X (a int) trailing"));
}

TEST(SplitFolderAndBase, ADriveRootWithAFileNameStillGivesAFolderAndABaseName) {
    auto s = splitFolderAndBase("C:\\POP.DBF");
    EXPECT_EQ(s.folder, "C:\\");
    EXPECT_EQ(s.base, "POP");
    s = splitFolderAndBase("/pop.dbf");
    EXPECT_EQ(s.folder, "/");
    EXPECT_EQ(s.base, "pop");
    s = splitFolderAndBase("C:\\data\\2020\\Population.dbf");
    EXPECT_EQ(s.folder, "C:\\data\\2020");
    EXPECT_EQ(s.base, "Population");
    s = splitFolderAndBase("/home/a/x.y.dbf");
    EXPECT_EQ(s.folder, "/home/a");
    EXPECT_EQ(s.base, "x.y");
    s = splitFolderAndBase("pop.dbf");
    EXPECT_EQ(s.folder, ".");
    EXPECT_EQ(s.base, "pop");
}

TEST(ForeignKind, ByTheTrimmedUpperCasedPath) {
    EXPECT_EQ(foreignKind(" c:\\a\\b.wk1 "), ForeignKind::Wk1);
    EXPECT_EQ(foreignKind("/a/b.Xls"), ForeignKind::Xls);
    EXPECT_EQ(foreignKind("/a/b.xlsx"), ForeignKind::Xlsx);
    EXPECT_EQ(foreignKind("/a/b.DBF"), ForeignKind::Dbf);
    EXPECT_EQ(foreignKind("/a/b.mdb"), ForeignKind::Database);
    EXPECT_EQ(foreignKind("/a/b.vdb"), ForeignKind::Database);
    EXPECT_EQ(foreignKind("/a/b.sqlite"), ForeignKind::Database);
    EXPECT_EQ(foreignKind("/a/b.txt"), ForeignKind::Text);
    EXPECT_EQ(foreignKind("/a/b.csv"), ForeignKind::None);
    EXPECT_EQ(foreignKindOfName("wk1"), ForeignKind::Wk1);
    EXPECT_EQ(foreignKindOfName(""), ForeignKind::None);
}

TEST(ForeignError, TheLastFailureIsARunTimeErrorWithTheEnginesWords) {
    setForeignError(3010, QStringLiteral("Table 't' already exists."));
    const RuntimeError& e = lastForeignError();
    EXPECT_EQ(e.number, 3010);
    EXPECT_EQ(e.words, QStringLiteral("Table 't' already exists."));
    EXPECT_STREQ(e.what(), "Table 't' already exists.");
    clearForeignError();
    EXPECT_EQ(lastForeignError().number, 0);
    EXPECT_TRUE(lastForeignError().words.isEmpty());
    EXPECT_STREQ(lastForeignError().what(), "");
}
