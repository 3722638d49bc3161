// Files this program writes, read by another spreadsheet program: gnumeric's ssconvert turns them
// into comma-separated text, which must show the same cells. Skipped where ssconvert is missing.

#include "inputs/foreign_file.h"
#include "platform/csv.h"
#include "test_support.h"

#include <QFile>
#include <cmath>

using namespace vesk;
using vesk::test::table;

namespace {

class OtherPrograms : public vesk::test::ScratchTest {
protected:
    // The sheets of the file as CSV, one text per sheet in order.
    QStringList viaSsconvert(const QString& file, const QString& importer = QString()) {
        QStringList args{"-S"};
        if (!importer.isEmpty())
            args << "-I" << importer;
        args << file << path("out_%n.csv");
        if (!vesk::test::runProgram("ssconvert", args))
            return {};
        QStringList out;
        for (int i = 0; QFile::exists(path(QStringLiteral("out_%1.csv").arg(i))); ++i) {
            QFile f(path(QStringLiteral("out_%1.csv").arg(i)));
            f.open(QIODevice::ReadOnly);
            out << QString::fromUtf8(f.readAll());
            f.remove();
        }
        return out;
    }
    void SetUp() override {
        if (!vesk::test::runProgram("ssconvert", {"--version"}))
            GTEST_SKIP() << "gnumeric's ssconvert is not installed";
    }
};

const QString kWide = QStringLiteral("Zoë — ünïcode 中文");

CellArray sample() {
    return table({
        {Cell("Tuberculosis"), Cell(12), Cell(100000), Cell(0.125), Cell::date(dateSerial(QDate(2020, 1, 5))),
         Cell::boolean(true), Cell(kWide)},
        {Cell("Malaria"), Cell(-3), Cell(-70000), Cell(3.14159265358979),
         Cell::date(dateSerial(QDate(1900, 2, 1))), Cell::boolean(false), Cell()},
    });
}
const QStringList kNames{"Name", "Count", "Big", "Rate", "Day", "Flag", "Note"};

// The same cells: numbers equal to fourteen digits (the other program prints its own way), the
// rest as texts.
::testing::AssertionResult sameCsv(const QString& csvText, const QList<QStringList>& want) {
    const auto csv = parseCsv(csvText);
    if (!csv)
        return ::testing::AssertionFailure() << "not CSV: " << csvText.toStdString();
    QList<QStringList> got{csv->header};
    got += csv->rows;
    if (got.size() != want.size())
        return ::testing::AssertionFailure() << got.size() << " lines, not " << want.size() << ":\n"
                                             << csvText.toStdString();
    for (int i = 0; i < got.size(); ++i) {
        for (int j = 0; j < std::max(got[i].size(), want[i].size()); ++j) {
            const QString g = got[i].value(j), w = want[i].value(j);
            bool gn = false, wn = false;
            const double gv = g.toDouble(&gn), wv = w.toDouble(&wn);
            const bool same = gn && wn ? std::fabs(gv - wv) <= 1e-14 * std::max(1.0, std::fabs(wv)) : g == w;
            if (!same)
                return ::testing::AssertionFailure()
                       << "line " << i << " field " << j << ": got '" << g.toStdString() << "', want '"
                       << w.toStdString() << "'";
        }
    }
    return ::testing::AssertionSuccess();
}

const QList<QStringList> kSampleCsv{
    {"Name", "Count", "Big", "Rate", "Day", "Flag", "Note"},
    {"Tuberculosis", "12", "100000", "0.125", "2020/01/05", "TRUE", kWide},
    {"Malaria", "-3", "-70000", "3.14159265358979", "1900/02/01", "FALSE", ""},
};

} // namespace

TEST_F(OtherPrograms, GnumericReadsTheLotusWorksheet) {
    ASSERT_TRUE(FnWriteArrFile(sample(), path("t.wk1"), "SAMPLE", kNames));
    const QStringList sheets = viaSsconvert(path("t.wk1"));
    ASSERT_EQ(sheets.size(), 1);
    // Lotus has no logical cells: True and False are 1 and 0 there.
    QList<QStringList> want = kSampleCsv;
    want[1][5] = "1";
    want[2][5] = "0";
    EXPECT_TRUE(sameCsv(sheets[0], want));
}

// Text that Windows-1252 holds goes in that code page, which other dBase readers know by the
// language driver byte. (Other text is UTF-8, named in a .cpg file that older readers ignore.)
TEST_F(OtherPrograms, GnumericReadsTheDbaseTable) {
    CellArray a = sample();
    a(0, 6) = Cell("Zoë's fever");
    ASSERT_TRUE(FnWriteArrFile(a, path("t.dbf"), "", kNames));
    const QStringList sheets = viaSsconvert(path("t.dbf"));
    ASSERT_EQ(sheets.size(), 1);
    QList<QStringList> want = kSampleCsv;
    want[1][6] = "Zoë's fever";
    EXPECT_TRUE(sameCsv(sheets[0], want));
}

TEST_F(OtherPrograms, GnumericReadsTheNewAndTheExtendedWorkbook) {
    ASSERT_TRUE(FnWriteArrFile(sample(), path("t.xlsx"), "First", kNames));
    ASSERT_TRUE(FnWriteArrFile(sample(), path("t.xlsx"), "Second", kNames));
    const QStringList sheets = viaSsconvert(path("t.xlsx"));
    ASSERT_EQ(sheets.size(), 2);
    EXPECT_TRUE(sameCsv(sheets[0], kSampleCsv));
    EXPECT_TRUE(sameCsv(sheets[1], kSampleCsv));
}

TEST_F(OtherPrograms, GnumericReadsAWorkbookOfOpenpyxlWithATableAdded) {
    const QString file = path("book.xlsx");
    ASSERT_TRUE(QFile::copy(vesk::test::fixture("openpyxl_book.xlsx"), file));
    QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(FnWriteArrFile(sample(), file, "Added", kNames));
    const QStringList sheets = viaSsconvert(file);
    ASSERT_EQ(sheets.size(), 3);
    EXPECT_TRUE(sameCsv(sheets[1], {{"Age", "EXF", "EXM"}, {"0", "82.5", "80"}, {"1", "81.75", "79.25"}}));
    EXPECT_TRUE(sameCsv(sheets[2], kSampleCsv));
}
