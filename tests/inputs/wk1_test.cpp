#include "inputs/foreign_file.h"
#include "inputs/wk1_file.h"
#include "test_support.h"

#include <QFile>
#include <QtEndian>
#include <cstring>

using namespace vesk;
using vesk::test::dump;
using vesk::test::table;

namespace {

QByteArray le16(int v) {
    QByteArray b(2, '\0');
    qToLittleEndian<quint16>(static_cast<quint16>(v), b.data());
    return b;
}

QByteArray record(int type, const QByteArray& body) {
    return le16(type) + le16(static_cast<int>(body.size())) + body;
}

QByteArray cellHead(int format, int col, int row) {
    return QByteArray(1, static_cast<char>(format)) + le16(col) + le16(row);
}

QByteArray numberBody(double v) {
    QByteArray b(8, '\0');
    const double le = qToLittleEndian(v);
    std::memcpy(b.data(), &le, 8);
    return b;
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

struct Rec {
    int type;
    QByteArray body;
};

QList<Rec> records(const QByteArray& data) {
    QList<Rec> out;
    for (int at = 0; at + 4 <= data.size();) {
        const int type = qFromLittleEndian<quint16>(data.constData() + at);
        const int len = qFromLittleEndian<quint16>(data.constData() + at + 2);
        out << Rec{type, data.mid(at + 4, len)};
        at += 4 + len;
    }
    return out;
}

class Wk1 : public vesk::test::ScratchTest {};

} // namespace

TEST_F(Wk1, ANewFileIsARunOfRelease2Records) {
    const CellArray a = table({{Cell("Zoë 中"), Cell(7), Cell(2.5), Cell::date(43835), Cell::boolean(true)}});
    ASSERT_TRUE(FnWriteArrFile(a, path("t.wk1"), "TBL", {"A", "B", "C", "D", "E"}));
    const QByteArray data = readAll(path("t.wk1"));
    EXPECT_TRUE(data.startsWith(QByteArray::fromHex("000002000604"))) << "BOF, release 2 (0x0406)";
    EXPECT_TRUE(data.endsWith(QByteArray::fromHex("01000000"))) << "EOF";
    const QList<Rec> recs = records(data);
    ASSERT_GE(recs.size(), 4);
    EXPECT_EQ(recs[1].type, 0x0006);                                  // RANGE
    EXPECT_EQ(recs[1].body, QByteArray::fromHex("0000000004000100")); // A1..E2
    QList<int> types;
    for (const auto& r : recs)
        types << r.type;
    EXPECT_EQ(types.count(0x000F), 6); // five headings and one text: LABEL
    EXPECT_EQ(types.count(0x000D), 2); // 7 and True: INTEGER
    EXPECT_EQ(types.count(0x000E), 2); // 2.5 and the date: NUMBER
    EXPECT_EQ(types.count(0x000B), 1); // NAME
    for (const auto& r : recs) {
        if (r.type == 0x000F && r.body.mid(1, 4) == QByteArray::fromHex("00000100")) {
            // ' prefix, ë in code page 850, 中 as an LMBCS Unicode escape, NUL at the end
            EXPECT_EQ(r.body.mid(5), QByteArray("'Zo\x89 \x14\x4E\x2D", 8) + QByteArray(1, '\0'));
        }
        if (r.type == 0x000E && r.body.mid(1, 4) == QByteArray::fromHex("03000100")) {
            EXPECT_EQ(static_cast<unsigned char>(r.body[0]), 0xF2) << "the date format D1";
        }
        if (r.type == 0x000B) {
            EXPECT_EQ(r.body.size(), 24);
            EXPECT_EQ(r.body.left(4), QByteArray("TBL\0", 4));
            EXPECT_EQ(r.body.mid(16), QByteArray::fromHex("0000000004000100"));
        }
    }
}

TEST_F(Wk1, ASecondTableGoesBelowTheFirstAndTheFileKeepsItsRecords) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("a"), Cell(1)}, {Cell("b"), Cell(2)}}), path("t.wk1"), "FIRST",
                               {"Code", "N"}));
    const QByteArray before = readAll(path("t.wk1"));
    ASSERT_TRUE(FnWriteArrFile(table({{Cell(3.5)}}), path("t.wk1"), "SECOND", {"X"}));
    EXPECT_EQ(FnReadArrFile(path("t.wk1"), "first"), table({{Cell("a"), Cell(1)}, {Cell("b"), Cell(2)}}));
    QStringList names;
    EXPECT_EQ(FnReadArrFile(path("t.wk1"), "SECOND", &names), table({{Cell(3.5)}}));
    EXPECT_EQ(names, QStringList{"X"});
    QString error;
    auto sheet = Wk1Sheet::load(path("t.wk1"), &error);
    ASSERT_TRUE(sheet);
    const Wk1Name* second = sheet->findName("SECOND");
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->row1, 4) << "one blank row below rows 0-2";
    EXPECT_EQ(second->row2, 5);
    // Every cell record of the first writing is still there, in its order.
    QList<QByteArray> oldCells, newCells;
    for (const auto& r : records(before))
        if (r.type >= 0x000C && r.type <= 0x0010)
            oldCells << r.body;
    for (const auto& r : records(readAll(path("t.wk1"))))
        if (r.type >= 0x000C && r.type <= 0x0010)
            newCells << r.body;
    EXPECT_EQ(newCells.mid(0, oldCells.size()), oldCells);
}

TEST_F(Wk1, ReadsFormulasBlanksAndEveryLabelPrefix) {
    QByteArray data = record(0x0000, le16(0x0404));
    data += record(0x0006, le16(0) + le16(0) + le16(2) + le16(3));
    data += record(0x000F, cellHead(0xFF, 0, 0) + "^Centred" + QByteArray(1, '\0'));
    data += record(0x000F, cellHead(0xFF, 1, 0) + "\"Right" + QByteArray(1, '\0'));
    data += record(0x000F, cellHead(0xFF, 2, 0) + "'Left" + QByteArray(1, '\0'));
    // A number formula: its last value, then the formula bytes (here @PI, opcode 0x26, and the end 0x03).
    data +=
        record(0x0010, cellHead(0x02, 0, 1) + numberBody(3.14159) + le16(2) + QByteArray::fromHex("2603"));
    // A text formula: the value is in the STRING record that follows.
    data += record(0x0010, cellHead(0xFF, 1, 1) + numberBody(0.0) + le16(1) + QByteArray::fromHex("03"));
    data += record(0x0033, cellHead(0xFF, 1, 1) + "result" + QByteArray(1, '\0'));
    data += record(0x000C, cellHead(0xFF, 2, 1));
    data += record(0x000D, cellHead(0xF2, 0, 2) + le16(367)); // a date kept as a whole number: 1 Jan 1901
    data += record(0x000B, QByteArray("lts").leftJustified(16, '\0') + le16(0) + le16(0) + le16(2) + le16(2));
    data += record(0x0001, QByteArray());
    QFile f(path("hand.wk1"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(data);
    f.close();
    QStringList names;
    const CellArray back = FnReadArrFile(path("hand.wk1"), "LTS", &names);
    EXPECT_EQ(names, QStringList({"Centred", "Right", "Left"}));
    EXPECT_EQ(back, table({{Cell(3.14159), Cell("result"), Cell::null()},
                           {Cell::date(367), Cell::null(), Cell::null()}}))
        << dump(back);
    EXPECT_EQ(back(1, 0).toString(), "1901-01-01");
}

TEST_F(Wk1, ARangeNameHasAtMostFifteenCharacters) {
    EXPECT_FALSE(FnWriteArrFile(table({{Cell(1)}}), path("t.wk1"), "SIXTEEN_CHARACTE", {"a"}));
    EXPECT_EQ(lastForeignError().number, 3125);
    EXPECT_TRUE(FnWriteArrFile(table({{Cell(1)}}), path("t.wk1"), "FIFTEEN_CHARACT", {"a"}));
}

TEST_F(Wk1, AFileOfAnotherKindIsNoWorksheet) {
    QFile f(path("bad.wk1"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("not a worksheet at all");
    f.close();
    EXPECT_TRUE(FnReadArrFile(path("bad.wk1"), "T").isEmpty());
    EXPECT_EQ(lastForeignError().number, 3051);
    EXPECT_FALSE(FnWriteArrFile(table({{Cell(1)}}), path("bad.wk1"), "T", {"a"}));
    EXPECT_EQ(readAll(path("bad.wk1")), "not a worksheet at all");
}

namespace {

void writeFile(const QString& path, const QByteArray& data) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(data);
}

// A worksheet with a heading and one record in A1:B2, and the range "T" over the given corners.
QByteArray sheetWithRange(int col1, int row1, int col2, int row2) {
    QByteArray data = record(0x0000, le16(0x0406));
    data += record(0x000F, cellHead(0xFF, 0, 0) + "'K" + QByteArray(1, '\0'));
    data += record(0x000F, cellHead(0xFF, 1, 0) + "'V" + QByteArray(1, '\0'));
    data += record(0x000D, cellHead(0xFF, 0, 1) + le16(1));
    data += record(0x000D, cellHead(0xFF, 1, 1) + le16(2));
    data += record(0x000B, QByteArray("T").leftJustified(16, '\0') + le16(col1) + le16(row1) + le16(col2) +
                               le16(row2));
    return data + record(0x0001, QByteArray());
}

} // namespace

// Characters outside code page 850 go as two-byte Unicode escapes, whose high or low byte may be
// zero (Ā is 01 00, a line break 00 0A): the label ends at the NUL after the last character, not
// at the first zero byte.
TEST_F(Wk1, TextWhoseEscapesHoldAZeroByteComesBackWhole) {
    const CellArray a = table({{Cell(1), Cell("一二三")},
                               {Cell(2), Cell("ĀBC")},
                               {Cell(3), Cell("Ѐ and Ā")},
                               {Cell(4), Cell("two\nlines")},
                               {Cell(5), Cell("tab\tand ĀĀ\r\n")}});
    ASSERT_TRUE(FnWriteArrFile(a, path("u.wk1"), "U", {"k", "t"}));
    QStringList names;
    EXPECT_EQ(FnReadArrFile(path("u.wk1"), "U", &names), a) << dump(FnReadArrFile(path("u.wk1"), "U"));
    EXPECT_EQ(names, QStringList({"k", "t"}));
}

TEST_F(Wk1, ATextFormulaResultWithAZeroByteEscapeComesBackWhole) {
    QByteArray data = record(0x0000, le16(0x0406));
    data += record(0x000F, cellHead(0xFF, 0, 0) + "'S" + QByteArray(1, '\0'));
    data += record(0x0010, cellHead(0xFF, 0, 1) + numberBody(0.0) + le16(1) + QByteArray::fromHex("03"));
    data +=
        record(0x0033, cellHead(0xFF, 0, 1) + QByteArray::fromHex("14010042430014") + QByteArray(1, '\0'));
    data += record(0x000B, QByteArray("S").leftJustified(16, '\0') + le16(0) + le16(0) + le16(0) + le16(1));
    data += record(0x0001, QByteArray());
    writeFile(path("f.wk1"), data);
    EXPECT_EQ(FnReadArrFile(path("f.wk1"), "S"), table({{Cell("ĀBC")}}));
}

// A range that claims more of the sheet than Lotus has (8192 rows, 256 columns) is a damaged file.
TEST_F(Wk1, ARangeBeyondTheSheetIsRefusedNamingTheFile) {
    QByteArray data = sheetWithRange(0, 0, 0xFFFF, 0xFFFF);
    data.insert(data.size() - 4, record(0x000F, cellHead(0xFF, 2, 2) + "'x" + QByteArray(1, '\0')));
    ASSERT_EQ(data.size(), 96);
    writeFile(path("huge.wk1"), data);
    EXPECT_TRUE(FnReadArrFile(path("huge.wk1"), "T").isEmpty());
    EXPECT_EQ(lastForeignError().number, 3051);
    EXPECT_TRUE(lastForeignError().words.contains(path("huge.wk1")))
        << lastForeignError().words.toStdString();
    EXPECT_TRUE(lastForeignError().words.contains("'T'")) << lastForeignError().words.toStdString();
}

TEST_F(Wk1, ACellBeyondTheSheetIsRefusedNamingTheFile) {
    QByteArray data = sheetWithRange(0, 0, 1, 1);
    data.insert(data.size() - 4, record(0x000D, cellHead(0xFF, 0xFFFF, 0xFFFF) + le16(9)));
    writeFile(path("far.wk1"), data);
    EXPECT_TRUE(FnReadArrFile(path("far.wk1"), "T").isEmpty());
    EXPECT_EQ(lastForeignError().number, 3051);
    EXPECT_TRUE(lastForeignError().words.contains(path("far.wk1"))) << lastForeignError().words.toStdString();
}

// A range wider than what it holds is read from the cells that are there.
TEST_F(Wk1, ARangeIsReadFromTheCellsItHolds) {
    writeFile(path("wide.wk1"), sheetWithRange(0, 0, 255, 8191));
    QStringList names;
    EXPECT_EQ(FnReadArrFile(path("wide.wk1"), "T", &names), table({{Cell(1), Cell(2)}}));
    EXPECT_EQ(names, QStringList({"K", "V"}));
}

// Two cells in opposite corners of the sheet ask for two million cells: too many for a file of
// a few dozen bytes.
TEST_F(Wk1, ARangeFarSparserThanItsFileIsRefused) {
    QByteArray data = sheetWithRange(0, 0, 255, 8191);
    data.insert(data.size() - 4, record(0x000D, cellHead(0xFF, 255, 8191) + le16(9)));
    writeFile(path("sparse.wk1"), data);
    EXPECT_TRUE(FnReadArrFile(path("sparse.wk1"), "T").isEmpty());
    EXPECT_EQ(lastForeignError().number, 3051);
    EXPECT_TRUE(lastForeignError().words.contains(path("sparse.wk1")))
        << lastForeignError().words.toStdString();
}
