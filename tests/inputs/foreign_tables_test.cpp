// Several tables of one worksheet, workbook or database file written and read in one session
// (FnWriteArrTables, FnReadArrTables): each comes back whole, and a failure leaves the file as it was.

#include "inputs/foreign_file.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <limits>

namespace vesk::test {
namespace {

NamedTable table(const QString& name, double first, int rows) {
    CellArray a{rows, 2};
    for (int i = 0; i < rows; ++i) {
        a(i, 0) = Cell(QStringLiteral("%1-%2").arg(name).arg(i, 3, 10, QLatin1Char('0')));
        a(i, 1) = Cell(first + 0.1 * i);
    }
    return {name, {QStringLiteral("Code"), QStringLiteral("Value")}, a};
}

QByteArray bytesOf(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

TEST(ForeignTables, ManyTablesGoInOneWritingAndComeBackInOneReading) {
    QTemporaryDir dir;
    for (const char* name : {"t.WK1", "t.xlsx", "t.vdb"}) {
        const QString file = dir.filePath(QString::fromLatin1(name));
        const QList<NamedTable> tables = {table("A_1", 1e-300, 3), table("B_2", 0.30000000000000004, 5),
                                          table("C_3", -7, 1)};
        ASSERT_TRUE(FnWriteArrTables(file, tables)) << name << ' ' << lastForeignError().words.toStdString();
        const auto back = FnReadArrTables(file, {QStringLiteral("C_3"), QStringLiteral("None"), QStringLiteral("A_1"),
                                                 QStringLiteral("B_2")});
        ASSERT_TRUE(back) << name;
        ASSERT_EQ(back->size(), 4);
        EXPECT_FALSE((*back)[1].has_value());
        for (const auto& [at, want] : {std::pair{0, 2}, std::pair{2, 0}, std::pair{3, 1}}) {
            const auto& got = (*back)[at];
            ASSERT_TRUE(got.has_value()) << name;
            EXPECT_EQ(got->fieldNames, tables[want].fieldNames);
            ASSERT_EQ(got->rowCount(), tables[want].rows.size(0)) << name;
            for (int i = 0; i < got->rowCount(); ++i) {
                EXPECT_EQ(got->rows(i, 0).toString(), tables[want].rows(i, 0).toString());
                EXPECT_EQ(got->rows(i, 1).toDouble(), tables[want].rows(i, 1).toDouble()) << name;
            }
        }
    }
}

TEST(ForeignTables, AFailureLeavesTheFileAsItWas) {
    QTemporaryDir dir;
    for (const char* name : {"f.WK1", "f.xlsx", "f.vdb"}) {
        const QString file = dir.filePath(QString::fromLatin1(name));
        ASSERT_TRUE(FnWriteArrTables(file, {table("Old", 1, 2)}));
        const QByteArray before = bytesOf(file);
        // A second table of a name the file holds, after a good one.
        EXPECT_FALSE(FnWriteArrTables(file, {table("New", 2, 2), table("Old", 3, 2)})) << name;
        EXPECT_NE(lastForeignError().number, 0);
        const auto back = FnReadArrTables(file, {QStringLiteral("New"), QStringLiteral("Old")});
        ASSERT_TRUE(back) << name;
        EXPECT_FALSE((*back)[0].has_value()) << name;
        EXPECT_EQ((*back)[1]->rows(1, 1).toDouble(), 1.1);
        if (!QString::fromLatin1(name).endsWith(QLatin1String("vdb"))) {
            EXPECT_EQ(bytesOf(file), before) << name;
        }
        // A number no kind holds is refused before anything is written.
        NamedTable bad = table("Bad", 0, 2);
        bad.rows(1, 1) = Cell(std::numeric_limits<double>::quiet_NaN());
        EXPECT_FALSE(FnWriteArrTables(file, {table("Fine", 0, 1), bad})) << name;
        EXPECT_FALSE((*FnReadArrTables(file, {QStringLiteral("Fine")}))[0].has_value()) << name;
    }
    // A file of no such kind, and one that cannot be opened, say so.
    EXPECT_FALSE(FnWriteArrTables(dir.filePath("x.txt"), {table("A", 0, 1)}));
    EXPECT_FALSE(FnReadArrTables(dir.filePath("missing.xlsx"), {QStringLiteral("A")}).has_value());
    EXPECT_NE(lastForeignError().number, 0);
}

} // namespace
} // namespace vesk::test
