#include "inputs/foreign_file.h"
#include "inputs/messages.h"
#include "platform/prompts.h"
#include "test_support.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>

using namespace vesk;
using vesk::test::dump;
using vesk::test::table;

namespace {

class ForeignFile : public vesk::test::ScratchTest {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
};

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

TEST_F(ForeignFile, OlderWriterWritesTextAndSaysSo) {
    const CellArray a = table({{Cell("a"), Cell(1)}, {Cell("b"), Cell(2.5)}});
    ASSERT_TRUE(FnWriteArr(a, 0, QString(), path("out.txt")));
    EXPECT_EQ(readAll(path("out.txt")), "a;1\r\nb;2.5\r\n");
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, texts::kDataStoredInFile + path("out.txt"));
    EXPECT_EQ(prompts_.shown()[0].text, "The data is successfully stored in the file " + path("out.txt"));
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Information);
}

TEST_F(ForeignFile, OlderWriterAsksBeforeReplacingAFile) {
    CellArray one{2};
    one(0) = Cell("x");
    one(1) = Cell("y");
    QFile f(path("out.txt"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("old\r\n");
    f.close();

    prompts_.answer(Answer::No);
    EXPECT_FALSE(FnWriteArr(one, 0, QString(), path("out.txt")));
    EXPECT_EQ(readAll(path("out.txt")), "old\r\n");
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text,
              "The file mentioned in the path string already exists. Do you want to "
              "replace the existing file?");
    EXPECT_EQ(prompts_.shown()[0].buttons, Buttons::YesNo);
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Question);

    prompts_.answer(Answer::Yes);
    EXPECT_TRUE(FnWriteArr(one, 0, QString(), path("out.txt")));
    EXPECT_EQ(readAll(path("out.txt")), "x\r\ny\r\n");
    EXPECT_EQ(prompts_.unanswered(), 0);
}

TEST_F(ForeignFile, OlderWriterUsesTheFixedFieldsOfEachKind) {
    CellArray one{3};
    one(0) = Cell("alpha");
    one(1) = Cell(2);
    one(2) = Cell::null();
    ASSERT_TRUE(FnWriteArr(one, 0, QString(), path("one.wk1")));
    QStringList names;
    CellArray back = FnReadArrFile(path("one.wk1"), "ArrFileData", &names);
    EXPECT_EQ(names, QStringList{"ArrData"});
    EXPECT_EQ(back, table({{Cell("alpha")}, {Cell("2")}, {Cell::null()}})) << dump(back);

    const CellArray two = table({{Cell(1), Cell("a")}, {Cell(2), Cell("b")}});
    ASSERT_TRUE(FnWriteArr(two, 0, QString(), path("two.dbf")));
    back = FnReadArrFile(path("two.dbf"), QString(), &names);
    EXPECT_EQ(names, QStringList({"Field0", "Field1"}));
    EXPECT_EQ(back, table({{Cell("1"), Cell("a")}, {Cell("2"), Cell("b")}})) << dump(back);

    ASSERT_TRUE(FnWriteArr(two, 1, QString(), path("flat.vdb"), "Results"));
    back = FnReadArrFile(path("flat.vdb"), "Results", &names);
    EXPECT_EQ(names, QStringList{"ArrData"});
    EXPECT_EQ(back, table({{Cell("1")}, {Cell("a")}, {Cell("2")}, {Cell("b")}})) << dump(back);

    // The kind named apart wins over the path.
    ASSERT_TRUE(FnWriteArr(two, 2, "WK1", path("named.dat"), "Sheet"));
    ASSERT_TRUE(QFile::copy(path("named.dat"), path("named.wk1")));
    back = FnReadArrFile(path("named.wk1"), "Sheet", &names);
    EXPECT_EQ(names, QStringList({"Field0", "Field1"}));
    EXPECT_EQ(back, table({{Cell("1"), Cell("a")}, {Cell("2"), Cell("b")}})) << dump(back);
}

TEST_F(ForeignFile, OlderWriterShowsTheFailure) {
    const CellArray two = table({{Cell(1), Cell("a")}});
    EXPECT_FALSE(FnWriteArr(two, 0, QString(), path("nowhere/x.dbf")));
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Critical);
    EXPECT_TRUE(prompts_.shown()[0].text.contains("is not a valid path"));
}

TEST_F(ForeignFile, WriterRefusesNoPathOrNoArray) {
    EXPECT_FALSE(FnWriteArrFile(table({{Cell(1)}}), "  ", "T", {"a"}));
    EXPECT_FALSE(FnWriteArrFile(CellArray(), path("x.vdb"), "T", {"a"}));
    EXPECT_FALSE(QFile::exists(path("x.vdb")));
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(ForeignFile, AMissingFileOrTableGivesAnEmptyResult) {
    QStringList names{"stale"};
    for (const char* f : {"none.wk1", "none.xlsx", "none.xls", "none.dbf", "none.vdb", "none.txt"}) {
        EXPECT_TRUE(FnReadArrFile(path(f), "T", &names).isEmpty()) << f;
        EXPECT_TRUE(names.isEmpty());
    }
    ASSERT_TRUE(FnWriteArrFile(table({{Cell(1)}}), path("some.vdb"), "Here", {"a"}));
    EXPECT_TRUE(FnReadArrFile(path("some.vdb"), "There").isEmpty());
    EXPECT_FALSE(QFile::exists(path("none.vdb"))); // reading never makes a file
}

// The usual form of a wrong range name: the file is there, the name is not; the caller words the
// message.
TEST_F(ForeignFile, AWrongRangeNameGivesAnEmptyResultAndTheEngineError) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("A01")}}), path("dict.wk1"), "DCTTBL", {"Code"}));
    EXPECT_FALSE(FnReadArrFile(path("dict.wk1"), "DCTTBL").isEmpty());
    EXPECT_TRUE(FnReadArrFile(path("dict.wk1"), "GRPTBL").isEmpty());
    EXPECT_EQ(lastForeignError().number, 3078);
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(ForeignFile, CauseDictionaryStoresYesAndNoAsBooleans) {
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "study");
        db.setDatabaseName(path("study.vdb"));
        ASSERT_TRUE(db.open());
        QSqlQuery q(db);
        ASSERT_TRUE(
            q.exec("CREATE TABLE _DctBDM (COBCd VARCHAR(12), Desc TEXT, Clstr VARCHAR(5), Sqla BOOLEAN)"));
        ASSERT_TRUE(q.exec("CREATE TABLE Other (a VARCHAR(12), b TEXT, c VARCHAR(5), d TEXT)"));
    }
    QSqlDatabase::removeDatabase("study");
    const CellArray a = table({
        {Cell(101), Cell("Tuberculosis"), Cell(11), Cell("Yes")},
        {Cell("A02"), Cell("Malaria"), Cell("C1"), Cell("no")},
        {Cell("A03"), Cell("Other"), Cell("C1"), Cell("NO")},
    });
    CellArray types;
    FnColTypes(a, types);
    ASSERT_TRUE(FnWriteArrFile(a, path("study.vdb"), "_DctBDM", {}, &types));
    const CellArray back = FnReadArrFile(path("study.vdb"), "_DctBDM");
    const CellArray expected = table({
        {Cell("101"), Cell("Tuberculosis"), Cell("11"), Cell::boolean(true)},
        {Cell("A02"), Cell("Malaria"), Cell("C1"), Cell::boolean(false)},
        {Cell("A03"), Cell("Other"), Cell("C1"), Cell::boolean(false)},
    });
    EXPECT_EQ(back, expected) << dump(back);

    // Any other table stores the values as they come.
    ASSERT_TRUE(FnWriteArrFile(a, path("study.vdb"), "Other", {}, &types));
    EXPECT_EQ(FnReadArrFile(path("study.vdb"), "Other")(0, 3), Cell("Yes"));
    // In a new table the types follow the values as they are stored: the fourth column is logical.
    ASSERT_TRUE(FnWriteArrFile(a, path("new.xlsx"), "_DCTBDM", {"COBCd", "Desc", "Clstr", "Sqla"}));
    EXPECT_EQ(FnReadArrFile(path("new.xlsx"), "_DctBDM"), expected);
}

TEST_F(ForeignFile, ATextLongerThanTheDriversLimitIsCut) {
    const QString longText = QString(300, u'x');
    const CellArray a = table({{Cell(longText)}});
    for (const auto& [file, limit] : {std::pair{"long.wk1", 255}, {"long.xlsx", 255}, {"long.dbf", 254}}) {
        ASSERT_TRUE(FnWriteArrFile(a, path(file), "LONG", {"Text"})) << file;
        const CellArray back = FnReadArrFile(path(file), "LONG");
        ASSERT_EQ(back.count(), 1u) << file;
        EXPECT_EQ(back(0, 0).toString(), QString(limit, u'x')) << file;
    }
    // A database table keeps it whole.
    ASSERT_TRUE(FnWriteArrFile(a, path("long.vdb"), "LONG", {"Text"}));
    EXPECT_EQ(FnReadArrFile(path("long.vdb"), "LONG")(0, 0).toString(), longText);
}

TEST_F(ForeignFile, GivenTypesAddRowsToTheExistingDatabaseTableTrimmed) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("G1"), Cell("Group one")}}), path("s.vdb"), "_DctBDMGrps",
                               {"GrpCd", "GrpName"}));
    CellArray types;
    const CellArray more = table({{Cell("  G2 "), Cell(" Group two")}, {Cell("G3"), Cell("   ")}});
    FnColTypes(more, types);
    ASSERT_TRUE(FnWriteArrFile(more, path("s.vdb"), "_DctBDMGrps", {}, &types));
    const CellArray back = FnReadArrFile(path("s.vdb"), "_dctbdmgrps");
    EXPECT_EQ(
        back,
        table({{Cell("G1"), Cell("Group one")}, {Cell("G2"), Cell("Group two")}, {Cell("G3"), Cell::null()}}))
        << dump(back);
    // An array wider than the table fails, and the table keeps what it had.
    const CellArray wide = table({{Cell("G4"), Cell("x"), Cell("extra")}});
    FnColTypes(wide, types);
    EXPECT_FALSE(FnWriteArrFile(wide, path("s.vdb"), "_DctBDMGrps", {}, &types));
    EXPECT_EQ(lastForeignError().number, 3265);
    EXPECT_EQ(FnReadArrFile(path("s.vdb"), "_DctBDMGrps").size(0), 3);
}

TEST_F(ForeignFile, ATableThatExistsIsNotMadeTwice) {
    const CellArray a = table({{Cell(1)}});
    for (const char* f : {"t.wk1", "t.xlsx", "t.vdb"}) {
        ASSERT_TRUE(FnWriteArrFile(a, path(f), "T", {"a"})) << f;
        EXPECT_FALSE(FnWriteArrFile(a, path(f), "t", {"a"})) << f;
        EXPECT_EQ(lastForeignError().number, 3010);
        EXPECT_EQ(lastForeignError().words, "Table 't' already exists.");
    }
    ASSERT_TRUE(FnWriteArrFile(a, path("T.dbf"), "", {"a"}));
    EXPECT_FALSE(FnWriteArrFile(a, path("t.dbf"), "", {"a"}));
    EXPECT_EQ(lastForeignError().number, 3010);
}

TEST_F(ForeignFile, TextLinesGiveTheirOwnFieldCounts) {
    QFile f(path("in.txt"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("G1;Group one\r\nG2;Group two;extra\r\n\r\nG3\r\n");
    f.close();
    const CellArray back = FnReadArrFile(path("in.txt"), QString());
    EXPECT_EQ(back, table({{Cell("G1"), Cell("Group one"), Cell()},
                           {Cell("G2"), Cell("Group two"), Cell("extra")},
                           {Cell(""), Cell(), Cell()},
                           {Cell("G3"), Cell(), Cell()}}))
        << dump(back);
}

TEST_F(ForeignFile, TextInWindows1252IsReadToo) {
    QFile f(path("ansi.txt"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("Zo\xEB;\x80\r\n");
    f.close();
    EXPECT_EQ(FnReadArrFile(path("ansi.txt"), QString()), table({{Cell("Zoë"), Cell("€")}}));
}
