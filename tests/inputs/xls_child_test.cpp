// Legacy workbooks are read in a child process: a table crosses as a table stream and comes back
// whole; a damaged workbook, or a child that crashes, is refused with a message naming the file,
// and the program goes on.

#include "inputs/foreign_file.h"
#include "inputs/table_stream.h"
#include "inputs/xls_file.h"
#include "test_support.h"

#include <QFile>
#include <cstdlib>

using namespace vesk;
using vesk::test::fixture;
using vesk::test::table;

namespace {

TEST(TableStream, EveryCellComesBackAsItWentOut) {
    ForeignTable t;
    t.fieldNames = {"Code", "Value", "Name\nwith break", "When"};
    t.rows = table({
        {Cell("007"), Cell(12345.678901234567), Cell("Lagos; port \\n not a break"), Cell::date(-657434.0)},
        {Cell("\xe4\xb8\x80\xe4\xba\x8c \xd0\xbc\xd0\xb8\xd1\x80 \xf0\x9f\x98\x80"), Cell(1e-300), Cell("two\r\nlines"),
         Cell::date(2958465.5)},
        {Cell("  padded "), Cell(-1e300), Cell::null(), Cell(9007199254740992.0)},
    });
    QString error;
    const auto back = decodeTable(encodeTable(t), &error);
    ASSERT_TRUE(back.has_value()) << error.toStdString();
    EXPECT_EQ(back->fieldNames, t.fieldNames);
    EXPECT_TRUE(vesk::test::sameTable(back->rows, t.rows, 0.0));
}

TEST(TableStream, AStreamThatIsNotWholeIsRefusedBeforeAnythingIsAllocated) {
    for (const QByteArray& s : {QByteArray(), QByteArray("garbage\n"), QByteArray("VESK-TABLE 2147483647 2147483647\n"),
                                QByteArray("VESK-TABLE 1 1\nFa\n"), QByteArray("VESK-TABLE 1 1\nFa\nX1\n"),
                                QByteArray("VESK-TABLE 1 1\nFa\nT\\q\n"), QByteArray("VESK-TABLE -1 1\nFa\n")}) {
        QString error;
        EXPECT_FALSE(decodeTable(s, &error).has_value()) << s.toStdString();
        EXPECT_FALSE(error.isEmpty());
    }
}

TEST(XlsChild, AWorkbookIsReadThroughTheChildReader) {
    // A reader that is not there: the table cannot be read, and the message names the workbook.
    qputenv("VESK_CLI", "/nonexistent/vesk-cli");
    const QString book = fixture("gnumeric_book.xls");
    EXPECT_EQ(FnReadArrFile(book, "DCTTBL").rank(), 0);
    EXPECT_TRUE(lastForeignError().words.contains(book)) << lastForeignError().words.toStdString();
    qunsetenv("VESK_CLI");
    EXPECT_EQ(FnReadArrFile(book, "DCTTBL").size(0), 3);
}

TEST(XlsChild, AChildThatCrashesIsRefusedByTheFileName) {
    QTemporaryDir dir;
    const QString crasher = dir.filePath("crash.sh");
    QFile f(crasher);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("#!/bin/sh\nkill -SEGV $$\n");
    f.close();
    f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("VESK_CLI", crasher.toUtf8());
    const QString book = fixture("gnumeric_book.xls");
    XlsDriver driver;
    ASSERT_TRUE(driver.open(book, false));
    EXPECT_FALSE(driver.readTable("DCTTBL").has_value());
    EXPECT_TRUE(lastForeignError().words.contains(book)) << lastForeignError().words.toStdString();
    qunsetenv("VESK_CLI");
}

TEST(XlsChild, ADamagedWorkbookIsRefusedByTheFileNameAtOpen) {
    const QString damaged =
        QStringLiteral(VESK_SOURCE_DIR "/tests/fuzz/corpus/xls/crash-209b4926b2e7d73c8bf0638de75a1b74d321801a");
    XlsDriver driver;
    EXPECT_FALSE(driver.open(damaged, false));
    EXPECT_TRUE(lastForeignError().words.contains(damaged)) << lastForeignError().words.toStdString();
}

} // namespace
