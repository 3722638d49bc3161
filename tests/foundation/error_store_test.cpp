// The error store and its log errorsrec.stp.

#include "platform/cell_array.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace vesk {
namespace {

class ErrorStoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        clearErrorStore();
        // The log's path is the folder's text with the name appended directly.
        settings().StatOutPath = dir_.path() + "/";
    }
    void TearDown() override {
        clearErrorStore();
        settings() = VeskSettings{};
    }
    QByteArray log() const {
        QFile f(dir_.path() + "/errorsrec.stp");
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QTemporaryDir dir_;
};

const QRegularExpression
    kStamp(QStringLiteral("^\\[Date : \\d\\d/\\d\\d/\\d{4}   Time : \\d\\d:\\d\\d:\\d\\d\\]$"));

TEST_F(ErrorStoreTest, ThreeErrorsGiveThreeGrowingBlocks) {
    ErrorStore(-2, QStringLiteral("Invalid parameter value, r must be >=0 and <1"), QStringLiteral("FnlYLD"));
    ErrorStore(9, QStringLiteral("Subscript out of range"), QStringLiteral("InitCobcd "));
    ErrorStore(11, QStringLiteral("Division by zero"), QStringLiteral("procBDNKernel"));
    EXPECT_EQ(errorStoreCount(), 3);

    const QStringList lines = QString::fromUtf8(log()).split(QStringLiteral("\r\n"));
    ASSERT_EQ(lines.size(),
              (1 + 1) + (1 + 2) + (1 + 3) + 1); // three blocks and the empty rest after the last CR LF
    EXPECT_TRUE(kStamp.match(lines[0]).hasMatch()) << lines[0].toStdString();
    EXPECT_EQ(lines[1], "       -2,Invalid parameter value, r must be >=0 and <1,FnlYLD");
    EXPECT_TRUE(kStamp.match(lines[2]).hasMatch());
    EXPECT_EQ(lines[3], lines[1]);
    EXPECT_EQ(lines[4], "       9,Subscript out of range,InitCobcd ");
    EXPECT_TRUE(kStamp.match(lines[5]).hasMatch());
    EXPECT_EQ(lines[6], lines[1]);
    EXPECT_EQ(lines[7], lines[4]);
    EXPECT_EQ(lines[8], "       11,Division by zero,procBDNKernel");
    EXPECT_EQ(lines[9], "");
}

TEST_F(ErrorStoreTest, StoreHoldsNumberDescriptionAndSource) {
    ErrorStore(-3, QStringLiteral("bad"), QStringLiteral("FnPYLD"));
    const CellArray& rows = ErrStore().array();
    ASSERT_EQ(rows.size(0), 1);
    EXPECT_EQ(rows(0, 0), Cell(-3));
    EXPECT_EQ(rows(0, 1), Cell("bad"));
    EXPECT_EQ(rows(0, 2), Cell("FnPYLD"));
    clearErrorStore();
    EXPECT_EQ(errorStoreCount(), 0);
    EXPECT_TRUE(ErrStore().isEmpty());
}

TEST_F(ErrorStoreTest, LogIsNeverTruncated) {
    {
        QFile f(dir_.path() + "/errorsrec.stp");
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("earlier run\r\n");
    }
    ErrorStore(1, QStringLiteral("one"), QStringLiteral("A"));
    clearErrorStore(); // a new run starts with an empty store, the log keeps growing
    ErrorStore(2, QStringLiteral("two"), QStringLiteral("B"));
    const QByteArray text = log();
    EXPECT_TRUE(text.startsWith("earlier run\r\n"));
    EXPECT_TRUE(text.contains("       1,one,A\r\n"));
    EXPECT_TRUE(text.endsWith("       2,two,B\r\n"));
    EXPECT_EQ(text.count("[Date : "), 2);
}

TEST_F(ErrorStoreTest, UnwritableLogDoesNotStopTheStore) {
    settings().StatOutPath = dir_.path() + "/nosuch/";
    ErrorStore(5, QStringLiteral("x"), QStringLiteral("Y"));
    EXPECT_EQ(errorStoreCount(), 1);
}

} // namespace
} // namespace vesk
