// Text files: values that hold the separator, quotes or line breaks travel between double quotes;
// numbers go out as the shortest text that reads back to the same double; files without quotes
// read as they always did; a file whose shape would take far more memory than its size is refused.

#include "inputs/foreign_file.h"
#include "test_support.h"

#include <QFile>
#include <cmath>
#include <cstdlib>

using namespace vesk;
using vesk::test::dump;
using vesk::test::table;

namespace {

class TextFile : public vesk::test::ScratchTest {
protected:
    void writeBytes(const QString& name, const QByteArray& bytes) {
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QByteArray readBytes(const QString& name) {
        QFile f(path(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
};

const QStringList kUglyTexts = {
    "Lagos; port", "say \"hi\"", "\"",         "two\nlines", "crlf\r\nend", "trailing\r", "  padded  ",
    " ",           ";",          ";;\"\";",    "007",        "01001",       "一二三",     "Ёлка",
    "مرحبا",       "😀 emoji",    "\"quoted\"", "end;",       "x\"y",        "",
};

} // namespace

TEST_F(TextFile, ValuesWithSeparatorsQuotesAndLineBreaksComeBack) {
    CellArray a{static_cast<int>(kUglyTexts.size()), 2};
    for (int i = 0; i < kUglyTexts.size(); ++i) {
        a(i, 0) = Cell(kUglyTexts[i]);
        a(i, 1) = Cell(QStringLiteral("k%1").arg(i));
    }
    ASSERT_TRUE(FnWriteArrFile(a, path("ugly.txt"), QString(), {}));
    const CellArray back = FnReadArrFile(path("ugly.txt"), QString());
    ASSERT_EQ(back.rank(), 2) << dump(back);
    ASSERT_EQ(back.size(0), a.size(0)) << dump(back);
    ASSERT_EQ(back.size(1), 2) << dump(back);
    for (int i = 0; i < a.size(0); ++i) {
        EXPECT_EQ(back(i, 0).toString(), kUglyTexts[i]) << i;
        EXPECT_EQ(back(i, 1).toString(), QStringLiteral("k%1").arg(i)) << i;
    }
    EXPECT_TRUE(readBytes("ugly.txt").startsWith("\"Lagos; port\";k0\r\n\"say \"\"hi\"\"\";k1\r\n"));
}

TEST_F(TextFile, NumbersGoOutAsTheShortestTextOfTheSameDouble) {
    const std::vector<double> values = {
        1e-300, 1e300, -1e300,    0.1, 12345.678901234567, 123456789012345678.0, 9007199254740993.0, 1e-7,
        2.5,    -0.5,  1.0 / 3.0, 4.35};
    CellArray a{static_cast<int>(values.size()), 1};
    for (std::size_t i = 0; i < values.size(); ++i)
        a(static_cast<int>(i), 0) = Cell(values[i]);
    ASSERT_TRUE(FnWriteArrFile(a, path("n.txt"), QString(), {}));
    const CellArray back = FnReadArrFile(path("n.txt"), QString());
    ASSERT_EQ(back.size(0), a.size(0)) << dump(back);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const QString text = back(static_cast<int>(i), 0).toString();
        EXPECT_EQ(std::strtod(text.toLatin1().constData(), nullptr), values[i]) << text.toStdString();
    }
    // Values that fifteen digits hold keep the runtime's form.
    EXPECT_EQ(back(7, 0).toString(), "1E-07");
    EXPECT_EQ(back(8, 0).toString(), "2.5");
    EXPECT_EQ(back(11, 0).toString(), "4.35");
}

TEST_F(TextFile, QuotesThatOpenNoQuotedValueReadAsBefore) {
    writeBytes("old.txt", "a\"b;c\r\n\"open;d\r\n\"x\"y;z\r\nplain\r\n");
    const CellArray back = FnReadArrFile(path("old.txt"), QString());
    EXPECT_EQ(back, table({{Cell("a\"b"), Cell("c")},
                           {Cell("\"open"), Cell("d")},
                           {Cell("\"x\"y"), Cell("z")},
                           {Cell("plain"), Cell()}}))
        << dump(back);
}

TEST_F(TextFile, AQuotedValueMaySpanLines) {
    writeBytes("q.txt", "\"first\r\nsecond\";2\r\n\"\";\"\"\"\"\r\n");
    const CellArray back = FnReadArrFile(path("q.txt"), QString());
    EXPECT_EQ(back, table({{Cell("first\r\nsecond"), Cell("2")}, {Cell(""), Cell("\"")}})) << dump(back);
}

TEST_F(TextFile, OneWideLineDoesNotWidenEveryRowBeyondTheFile) {
    // 100,000 separators on the first line and 100,000 empty lines: 200 KB that would ask for ten
    // thousand million cells if every row took the widest line's width.
    QByteArray bytes(100000, ';');
    bytes += QByteArray(100000, '\n');
    writeBytes("wide.txt", bytes);
    const CellArray back = FnReadArrFile(path("wide.txt"), QString());
    EXPECT_TRUE(back.isEmpty());
    EXPECT_EQ(lastForeignError().number, engine_error::kTooLarge);
    EXPECT_TRUE(lastForeignError().words.contains(path("wide.txt")))
        << lastForeignError().words.toStdString();
}

TEST_F(TextFile, AWideLineAmongFewRowsIsStillRead) {
    QByteArray bytes = "a" + QByteArray(5000, ';') + "\r\nb\r\nc\r\n";
    writeBytes("ok.txt", bytes);
    const CellArray back = FnReadArrFile(path("ok.txt"), QString());
    ASSERT_EQ(back.size(0), 3) << lastForeignError().words.toStdString();
    EXPECT_EQ(back.size(1), 5001);
    EXPECT_EQ(back(2, 0).toString(), "c");
}

TEST_F(TextFile, AnEmptyFileIsAnEmptyTable) {
    writeBytes("empty.txt", "");
    EXPECT_TRUE(FnReadArrFile(path("empty.txt"), QString()).isEmpty());
    EXPECT_EQ(lastForeignError().number, 0);
}
