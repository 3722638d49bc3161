// Each kind writes an array of texts, whole numbers, fractions, dates, Booleans, empty cells and
// text beyond ASCII, and reads it back. What a kind cannot hold is stated where it differs.

#include "inputs/foreign_driver.h"
#include "inputs/foreign_file.h"
#include "test_support.h"

#include <QFile>

using namespace vesk;
using vesk::test::dump;
using vesk::test::table;

namespace {

const QString kWide = QStringLiteral("Zoë — ünïcode 中文");
const double kNoon = dateSerial(QDateTime(QDate(2021, 6, 30), QTime(12, 30)));
const double kDay1 = dateSerial(QDate(2020, 1, 5));
const double kDay2 = dateSerial(QDate(2021, 6, 30));
const QStringList kNames{"Name", "Count", "Big", "Rate", "Day", "Flag", "Note"};

CellArray sample() {
    return table({
        {Cell("Tuberculosis"), Cell(12), Cell(100000), Cell(0.125), Cell::date(kDay1), Cell::boolean(true),
         Cell(kWide)},
        {Cell("Malaria"), Cell(-3), Cell(-70000), Cell(3.14159265358979), Cell::date(kNoon),
         Cell::boolean(false), Cell()},
        {Cell(), Cell(0), Cell(0), Cell(1e-7), Cell(), Cell(), Cell("plain")},
    });
}

// What the typed kinds give back: an Empty cell is a field without a value, Null.
CellArray typedBack() {
    CellArray a = sample();
    for (std::size_t k = 0; k < a.count(); ++k)
        if (a.flat(k).isEmpty())
            a.flat(k) = Cell::null();
    return a;
}

class RoundTrip : public vesk::test::ScratchTest {
protected:
    // relTol 0: equal to the last bit.
    void roundTrip(const QString& file, const QString& tableName, const CellArray& expected,
                   const QStringList& expectedNames, double relTol = 0.0, const CellArray& written = sample()) {
        ASSERT_TRUE(FnWriteArrFile(written, path(file), tableName, kNames))
            << lastForeignError().words.toStdString();
        QStringList names;
        const CellArray back = FnReadArrFile(path(file), tableName, &names);
        EXPECT_EQ(names, expectedNames);
        EXPECT_TRUE(vesk::test::sameTable(back, expected, relTol));
    }
};

} // namespace

TEST_F(RoundTrip, DatabaseTableKeepsEverything) {
    roundTrip("study.vdb", "Sample", typedBack(), kNames);
}

TEST_F(RoundTrip, MdbPathIsADatabaseTableToo) {
    roundTrip("old.mdb", "Sample", typedBack(), kNames);
}

TEST_F(RoundTrip, ExcelWorkbookKeepsEverything) {
    roundTrip("book.xlsx", "Sample", typedBack(), kNames);
}

// Lotus has no logical cells: True and False come back as the numbers 1 and 0.
TEST_F(RoundTrip, LotusWorksheetKeepsAllButBooleans) {
    CellArray expected = typedBack();
    expected(0, 5) = Cell(1);
    expected(1, 5) = Cell(0);
    roundTrip("sheet.wk1", "SAMPLE", expected, kNames);
}

// A dBase date holds the day only: a date with a time of day is refused, naming it, and no file is
// left; the same table with whole days comes back whole.
TEST_F(RoundTrip, DbaseTableRefusesATimeOfDayAndKeepsTheDays) {
    EXPECT_FALSE(FnWriteArrFile(sample(), path("sample.dbf"), "", kNames));
    EXPECT_EQ(lastForeignError().number, 3349);
    EXPECT_TRUE(lastForeignError().words.contains(Cell::date(kNoon).toString()))
        << lastForeignError().words.toStdString();
    EXPECT_FALSE(QFile::exists(path("sample.dbf")));
    CellArray days = sample();
    days(1, 4) = Cell::date(kDay2);
    CellArray expected = typedBack();
    expected(1, 4) = Cell::date(kDay2);
    roundTrip("sample.dbf", "ignored", expected, kNames, 0.0, days);
    EXPECT_TRUE(QFile::exists(path("sample.cpg")))
        << "text beyond Windows-1252 is UTF-8, named in a .cpg file";
}

// Values of every kind and scale through a dBase table: texts of several scripts with line breaks,
// ";" and quotes, codes with leading zeros, numbers from 1e-300 to 1e300, dates of the years 100 to
// 9999. What the field cannot hold is said in `vesk-cli convert --help`: a text keeps 254
// characters.
TEST_F(RoundTrip, DbaseTableKeepsValuesOfEveryKindAndScale) {
    const QStringList texts{QStringLiteral("中文 — 日本語 — 한국어"), QStringLiteral("Кириллица"),
                            QStringLiteral("العربية"), QStringLiteral("emoji 😀🎉"),
                            QStringLiteral("two\nlines\r\nand more"), QStringLiteral("Lagos; port"),
                            QStringLiteral("say \"yes\" 'no'"), QStringLiteral("007"),
                            QStringLiteral("  leading blanks"), QString(300, u'ж')};
    const QList<double> numbers{1e-300, 1e300, 0.1, 12345.678901234567, 123456789012345678.0,
                                9007199254740993.0, -1e-7, 1e25, -0.5, 0};
    CellArray a{static_cast<int>(texts.size()), 4};
    for (int i = 0; i < texts.size(); ++i) {
        a(i, 0) = Cell(texts[i]);
        a(i, 1) = Cell(numbers[i]);
        a(i, 2) = Cell::date(dateSerial(QDate(100 + i * 1099, 1 + i, 28)));
        a(i, 3) = i % 3 == 2 ? Cell::null() : Cell::boolean(i % 2 == 0);
    }
    ASSERT_TRUE(FnWriteArrFile(a, path("ugly.dbf"), "", {"Text", "Number", "Day", "Flag"}))
        << lastForeignError().words.toStdString();
    CellArray expected = a;
    expected(9, 0) = Cell(QString(254, u'ж'));
    QStringList names;
    const CellArray back = FnReadArrFile(path("ugly.dbf"), "", &names);
    EXPECT_EQ(names, QStringList({"Text", "Number", "Day", "Flag"}));
    EXPECT_EQ(back, expected) << dump(back);
}

// Blanks at the end of a text cannot be told from the padding of a dBase field: such a text is
// refused, naming it; blanks at its start come back.
TEST_F(RoundTrip, DbaseTextRefusesTrailingBlanksAndKeepsLeadingOnes) {
    EXPECT_FALSE(FnWriteArrFile(table({{Cell("  both  ")}}), path("pad.dbf"), "", {"t"}));
    EXPECT_TRUE(lastForeignError().words.contains("'  both  '")) << lastForeignError().words.toStdString();
    EXPECT_FALSE(QFile::exists(path("pad.dbf")));
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("  lead")}}), path("pad.dbf"), "", {"t"}));
    EXPECT_EQ(FnReadArrFile(path("pad.dbf"), ""), table({{Cell("  lead")}}));
}

// A text longer than the field is cut to its 254 characters, as the format allows, blanks and all.
TEST_F(RoundTrip, DbaseTextBeyondTheFieldIsCutWhateverItEndsIn) {
    const QString longText = QString(253, u'x') + QStringLiteral("  tail ");
    ASSERT_TRUE(FnWriteArrFile(table({{Cell(longText)}}), path("cut.dbf"), "", {"t"}));
    EXPECT_EQ(FnReadArrFile(path("cut.dbf"), ""), table({{Cell(QString(253, u'x'))}}));
}

// A text file holds texts: every value comes back as its text, an empty cell as an empty text;
// there is no row of field names.
TEST_F(RoundTrip, TextFileGivesTextsBack) {
    const CellArray expected = table({
        {Cell("Tuberculosis"), Cell("12"), Cell("100000"), Cell("0.125"), Cell("2020-01-05"), Cell("True"),
         Cell(kWide)},
        {Cell("Malaria"), Cell("-3"), Cell("-70000"), Cell("3.14159265358979"), Cell("2021-06-30 12:30:00"),
         Cell("False"), Cell("")},
        {Cell(""), Cell("0"), Cell("0"), Cell("1E-07"), Cell(""), Cell(""), Cell("plain")},
    });
    roundTrip("sample.txt", QString(), expected, {});
    QFile f(path("sample.txt"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.readAll().startsWith("Tuberculosis;12;100000;0.125;2020-01-05;True;Zo\xC3\xAB"));
}

TEST_F(RoundTrip, LegacyExcelIsReadOnly) {
    EXPECT_FALSE(FnWriteArrFile(sample(), path("book.xls"), "Sample", kNames));
    EXPECT_EQ(lastForeignError().number, 3027);
    EXPECT_TRUE(lastForeignError().words.contains(".xlsx"));
    EXPECT_FALSE(QFile::exists(path("book.xls")));
}

namespace {

// Values that break careless writers: every scale of number, scripts beyond Latin, line breaks,
// blanks at either end, separators and quotes, codes with leading zeros, and a day of every
// century from the year 100 to 9999.
const QStringList kUglyNames{"Number", "Text", "Day"};

QList<double> uglyNumbers() {
    return {1e-300,
            1e300,
            -1e300,
            0.1,
            12345.678901234567,
            9007199254740994.0,
            1e18,
            -1.5e17,
            123456789012345678.0,
            1e-7,
            -0.1,
            4.9406564584124654e-320,
            1.7976931348623157e308,
            2.2250738585072014e-308,
            1.0 / 3.0,
            32767,
            -32768,
            32768};
}

QStringList uglyTexts() {
    return {QStringLiteral("一二三"),
            QStringLiteral("ĀBC"),
            QStringLiteral("Ѐ Москва"),
            QStringLiteral("القاهرة"),
            QStringLiteral("😀 🌍 end"),
            QStringLiteral("two\nlines"),
            QStringLiteral("windows\r\nbreak"),
            QStringLiteral("  padded  "),
            QStringLiteral("Lagos; port"),
            QStringLiteral("say \"hi\" 'there'"),
            QStringLiteral("007"),
            QStringLiteral("<tag> & </tag>"),
            QStringLiteral("tab\there"),
            QStringLiteral("_x0041_ looks escaped"),
            QString(300, QChar(u'é')),
            QString(254, QChar(u'x')) + QStringLiteral("😀")};
}

QList<double> uglyDays() {
    QList<double> out;
    for (int year = 100; year <= 9900; year += 100)
        out << dateSerial(QDate(year, 1 + year % 12, 1 + year % 28));
    out << dateSerial(QDate(9999, 12, 31)) << dateSerial(QDate(1899, 12, 30))
        << dateSerial(QDate(1900, 2, 28)) << dateSerial(QDate(1900, 3, 1))
        << dateSerial(QDateTime(QDate(1066, 10, 14), QTime(9, 30)));
    return out;
}

CellArray uglySample() {
    const QList<double> numbers = uglyNumbers(), days = uglyDays();
    const QStringList texts = uglyTexts();
    const int n = static_cast<int>(std::max({numbers.size(), days.size(), texts.size()}));
    CellArray a{n, 3};
    for (int i = 0; i < n; ++i) {
        a(i, 0) = Cell(numbers[i % numbers.size()]);
        a(i, 1) = Cell(texts[i % texts.size()]);
        a(i, 2) = Cell::date(days[i % days.size()]);
    }
    return a;
}

// The one loss a worksheet imposes: a text keeps its first 255 characters, never half of one.
CellArray uglyInAWorksheet() {
    CellArray a = uglySample();
    for (int i = 0; i < a.size(0); ++i)
        a(i, 1) = Cell(cutText(a(i, 1).toString(), 255));
    return a;
}

} // namespace

TEST_F(RoundTrip, LotusWorksheetKeepsEveryUglyValue) {
    ASSERT_TRUE(FnWriteArrFile(uglySample(), path("ugly.wk1"), "UGLY", kUglyNames))
        << lastForeignError().words.toStdString();
    QStringList names;
    const CellArray back = FnReadArrFile(path("ugly.wk1"), "UGLY", &names);
    EXPECT_EQ(names, kUglyNames);
    EXPECT_TRUE(vesk::test::sameTable(back, uglyInAWorksheet(), 0.0));
}

TEST_F(RoundTrip, ExcelWorkbookKeepsEveryUglyValue) {
    ASSERT_TRUE(FnWriteArrFile(uglySample(), path("ugly.xlsx"), "Ugly", kUglyNames))
        << lastForeignError().words.toStdString();
    QStringList names;
    const CellArray back = FnReadArrFile(path("ugly.xlsx"), "Ugly", &names);
    EXPECT_EQ(names, kUglyNames);
    EXPECT_TRUE(vesk::test::sameTable(back, uglyInAWorksheet(), 0.0));
}

// A table added to a workbook that exists goes through the program's own sheet writer.
TEST_F(RoundTrip, ExcelWorkbookKeepsEveryUglyValueInAnAddedSheet) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell(1)}}), path("two.xlsx"), "First", {"A"}));
    ASSERT_TRUE(FnWriteArrFile(uglySample(), path("two.xlsx"), "Ugly", kUglyNames))
        << lastForeignError().words.toStdString();
    QStringList names;
    const CellArray back = FnReadArrFile(path("two.xlsx"), "Ugly", &names);
    EXPECT_EQ(names, kUglyNames);
    EXPECT_TRUE(vesk::test::sameTable(back, uglyInAWorksheet(), 0.0));
}

namespace {
// Field names keep what they hold, blanks at either end and scripts other than Latin included.
class FieldNames : public vesk::test::ScratchTest {};

TEST_F(FieldNames, WorksheetsAndDatabaseFilesKeepTheirBlanksAndScripts) {
    const QStringList names{" lead", "trail ", "名前", "a;b"};
    const CellArray rows = table({{Cell(1.0), Cell(2.0), Cell(3.0), Cell(4.0)}});
    for (const char* file : {"n.wk1", "n.xlsx", "n.vdb"}) {
        ASSERT_TRUE(FnWriteArrFile(rows, path(QString::fromLatin1(file)), "T", names))
            << file << lastForeignError().words.toStdString();
        QStringList back;
        FnReadArrFile(path(QString::fromLatin1(file)), "T", &back);
        EXPECT_EQ(back, names) << file;
    }
}
} // namespace
