// A number that is no finite number (an infinity, not-a-number) cannot be stored by a worksheet, a
// workbook or a dBase table, nor not-a-number by a database table (the engine stores it as Null):
// the write is refused with a message naming the value, its row and its field, and no file is
// left behind. A database table keeps an infinity; a text file writes "Infinity" and "NaN" as the
// runtime prints them, which come back as the texts they are, as every value of a text file does.

#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "test_support.h"

#include <QFileInfo>
#include <limits>

namespace vesk::test {
namespace {

class NonFinite : public ScratchTest {
protected:
    static CellArray rowsWith(double v) { return table({{Cell("a"), Cell(1.0)}, {Cell("b"), Cell(v)}}); }
    void expectRefused(const QString& file, double v, const char* named) {
        SCOPED_TRACE(file.toStdString());
        EXPECT_FALSE(FnWriteArrFile(rowsWith(v), path(file), "T", {"k", "v"}));
        EXPECT_EQ(lastForeignError().number, 3349);
        const QString words = lastForeignError().words;
        EXPECT_TRUE(words.contains(QLatin1String(named))) << words.toStdString();
        EXPECT_TRUE(words.contains(QLatin1String("row 2"))) << words.toStdString();
        EXPECT_TRUE(words.contains(QLatin1String("'v'"))) << words.toStdString();
        EXPECT_FALSE(QFileInfo::exists(path(file)));
    }
};

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST_F(NonFinite, WorksheetsWorkbooksAndDbaseTablesRefuseEveryOne) {
    for (const char* file : {"t.wk1", "t.xlsx", "t.dbf"}) {
        expectRefused(QString::fromLatin1(file), kInf, "inf");
        expectRefused(QString::fromLatin1(file), -kInf, "-inf");
        expectRefused(QString::fromLatin1(file), kNaN, "nan");
    }
}

TEST_F(NonFinite, ADatabaseTableRefusesNotANumberAndKeepsAnInfinity) {
    expectRefused(QStringLiteral("t.vdb"), kNaN, "nan");
    ASSERT_TRUE(FnWriteArrFile(rowsWith(-kInf), path("t.vdb"), "T", {"k", "v"}));
    const CellArray back = FnReadArrFile(path("t.vdb"), "T");
    ASSERT_EQ(back.size(0), 2);
    EXPECT_EQ(back(1, 1).toDouble(), -kInf);
}

TEST_F(NonFinite, ATextFileWritesThemAsTheTextsTheyReadBackAs) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell(kInf), Cell(-kInf), Cell(kNaN)}}), path("t.txt"), "T", {}));
    const CellArray back = FnReadArrFile(path("t.txt"), QString());
    ASSERT_EQ(back.size(1), 3);
    EXPECT_EQ(back(0, 0).toString(), "Infinity");
    EXPECT_EQ(back(0, 1).toString(), "-Infinity");
    EXPECT_EQ(back(0, 2).toString(), "NaN");
}

// A refused write into a file that holds other tables leaves it as it was.
TEST_F(NonFinite, ARefusedTableLeavesTheFileItWouldJoinAsItWas) {
    for (const char* file : {"w.wk1", "w.xlsx", "w.vdb"}) {
        const QString p = path(QString::fromLatin1(file));
        ASSERT_TRUE(FnWriteArrFile(table({{Cell(1.0)}}), p, "Kept", {"k"}));
        QFile before(p);
        ASSERT_TRUE(before.open(QIODevice::ReadOnly));
        const QByteArray bytes = before.readAll();
        before.close();
        EXPECT_FALSE(FnWriteArrFile(rowsWith(kNaN), p, "T", {"k", "v"}));
        QFile after(p);
        ASSERT_TRUE(after.open(QIODevice::ReadOnly));
        EXPECT_EQ(after.readAll(), bytes) << file;
    }
}

} // namespace
} // namespace vesk::test
