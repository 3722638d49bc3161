#include "inputs/dbf_file.h"
#include "inputs/foreign_file.h"
#include "test_support.h"

#include <QFile>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <shapefil.h>

using namespace vesk;
using vesk::test::dump;
using vesk::test::fixture;
using vesk::test::table;

namespace {
class Dbf : public vesk::test::ScratchTest {};
} // namespace

// dbase3_hand.dbf is written byte by byte by make_fixtures.py, as a dBase III program would.
TEST(DbfFixture, ReadsATableWrittenByAnotherDbaseWriter) {
    QStringList names;
    const CellArray back = FnReadArrFile(fixture("dbase3_hand.dbf"), QString(), &names);
    EXPECT_EQ(names, QStringList({"CODE", "NAME", "CNT", "RATE", "DAY", "FLAG"}));
    const CellArray expected = table({
        {Cell("A01"), Cell("Tuberculosis"), Cell(12), Cell(0.125), Cell::date(dateSerial(QDate(2020, 1, 5))),
         Cell::boolean(true)},
        {Cell("A02"), Cell("Zoë's fever"), Cell(-3), Cell(-2.5), Cell::date(dateSerial(QDate(2021, 6, 30))),
         Cell::boolean(false)},
        {Cell("A03"), Cell::null(), Cell::null(), Cell(1234.5678), Cell::null(), Cell::null()},
    });
    EXPECT_EQ(back, expected) << dump(back) << "the deleted record is not read";
}

TEST_F(Dbf, FieldsFollowTheData) {
    const CellArray a =
        table({{Cell("ab"), Cell(7), Cell(100000), Cell(0.125), Cell::date(43835), Cell::boolean(true)},
               {Cell("abcdef"), Cell(-7), Cell(1), Cell(-1234.5), Cell(), Cell::boolean(false)}});
    ASSERT_TRUE(FnWriteArrFile(a, path("t.dbf"), "", {"Text", "Small", "Big", "Frac", "Day", "Flag"}));
    DBFHandle h = DBFOpen(QFile::encodeName(path("t.dbf")).constData(), "rb");
    ASSERT_NE(h, nullptr);
    struct Want {
        char type;
        int width, decimals;
    };
    const Want want[] = {{'C', 6, 0}, {'N', 6, 0}, {'N', 11, 0}, {'N', 20, 3}, {'D', 8, 0}, {'L', 1, 0}};
    for (int j = 0; j < 6; ++j) {
        int width = 0, decimals = 0;
        char name[12];
        DBFGetFieldInfo(h, j, name, &width, &decimals);
        EXPECT_EQ(DBFGetNativeFieldType(h, j), want[j].type) << j;
        EXPECT_EQ(width, want[j].width) << j;
        EXPECT_EQ(decimals, want[j].decimals) << j;
    }
    EXPECT_STREQ(DBFGetCodePage(h), "LDID/87") << "Windows-1252 when every text fits";
    DBFClose(h);
    EXPECT_FALSE(QFile::exists(path("t.cpg")));
}

TEST_F(Dbf, LongFieldNamesAreCutToTenBytesAndKeptApart) {
    const CellArray a = table({{Cell(1), Cell(2)}});
    ASSERT_TRUE(FnWriteArrFile(a, path("n.dbf"), "", {"Population1", "Population2"}));
    QStringList names;
    FnReadArrFile(path("n.dbf"), "", &names);
    EXPECT_EQ(names, QStringList({"Population", "Populatio1"}));
}

TEST_F(Dbf, TheFolderMustExist) {
    EXPECT_FALSE(FnWriteArrFile(table({{Cell(1)}}), path("missing/t.dbf"), "", {"a"}));
    EXPECT_EQ(lastForeignError().number, 3044);
}

TEST_F(Dbf, TheTableIsTheFilesBaseNameWhateverItsCase) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("x")}}), path("Pop2020.dbf"), "ignored", {"a"}));
    EXPECT_EQ(FnReadArrFile(path("Pop2020.dbf"), "other"), table({{Cell("x")}}));
    EXPECT_TRUE(FnReadArrFile(path("POP2020.DBF"), "").isEmpty()) << "the file itself must exist";
}

TEST_F(Dbf, TextThatIsNoNumberFailsInANumberField) {
    CellArray types{2, 1};
    types(0, 0) = Cell("Double");
    EXPECT_FALSE(FnWriteArrFile(table({{Cell("abc")}}), path("bad.dbf"), "", {"a"}, &types));
    EXPECT_EQ(lastForeignError().number, 3421);
    EXPECT_TRUE(FnWriteArrFile(table({{Cell(" 2.5 ")}}), path("good.dbf"), "", {"a"}, &types));
    EXPECT_EQ(FnReadArrFile(path("good.dbf"), ""), table({{Cell(2.5)}}));
}

namespace {

// A number comes back when it is the same double or within 1e-15 of it, relative to its size.
::testing::AssertionResult comesBack(const Cell& got, double want) {
    if (got.isNumber() && !got.isDate() && !got.isBoolean() &&
        (got.toDouble() == want || std::fabs(got.toDouble() - want) <= 1e-15 * std::fabs(want)))
        return ::testing::AssertionSuccess();
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", want);
    return ::testing::AssertionFailure() << text << " came back as " << ::testing::PrintToString(got);
}

CellArray column(const QList<Cell>& values) {
    CellArray a{static_cast<int>(values.size()), 1};
    for (int i = 0; i < values.size(); ++i)
        a(i, 0) = values[i];
    return a;
}

CellArray column(const QList<double>& values) {
    QList<Cell> cells;
    for (const double v : values)
        cells << Cell(v);
    return column(cells);
}

// Doubles of every scale, with the short and the full-length ones side by side.
const QList<double> kScales{0.5,
                            1e25,
                            12345.678901234567,
                            1e-7,
                            -1e300,
                            1e300,
                            1e-300,
                            -1e-300,
                            0.1,
                            -0.1,
                            0.30000000000000004,
                            1.0 / 3,
                            -2.0 / 3 * 1e-5,
                            123456789012345678.0,
                            9007199254740993.0,
                            -9007199254740993.0,
                            18446744073709551616.0,
                            1234567890123456.7,
                            5e-324,
                            2.2250738585072014e-308,
                            -70000,
                            0};

struct FieldInfo {
    char type = 0;
    int width = 0, decimals = 0;
};

// The first field as another dBase reader sees it.
FieldInfo firstField(const QString& file) {
    FieldInfo f;
    DBFHandle h = DBFOpen(QFile::encodeName(file).constData(), "rb");
    if (!h)
        return f;
    char name[12];
    DBFGetFieldInfo(h, 0, name, &f.width, &f.decimals);
    f.type = DBFGetNativeFieldType(h, 0);
    DBFClose(h);
    return f;
}

} // namespace

TEST_F(Dbf, EveryNumberComesBackAlone) {
    for (int k = 0; k < kScales.size(); ++k) {
        const QString file = path(QStringLiteral("n%1.dbf").arg(k));
        ASSERT_TRUE(FnWriteArrFile(column(kScales.mid(k, 1)), file, "", {"v"}))
            << k << ": " << lastForeignError().words.toStdString();
        const CellArray back = FnReadArrFile(file, "");
        ASSERT_EQ(back.count(), 1u) << k;
        EXPECT_TRUE(comesBack(back(0, 0), kScales[k])) << k;
    }
}

TEST_F(Dbf, NumbersOfEveryScaleComeBackFromOneColumn) {
    ASSERT_TRUE(FnWriteArrFile(column(kScales), path("all.dbf"), "", {"v"}))
        << lastForeignError().words.toStdString();
    const CellArray back = FnReadArrFile(path("all.dbf"), "");
    ASSERT_EQ(back.count(), static_cast<std::size_t>(kScales.size()));
    for (int k = 0; k < kScales.size(); ++k)
        EXPECT_TRUE(comesBack(back(k, 0), kScales[k])) << k;
    // No fixed-point text of 20 characters holds 1e300: the field's texts take exponents, and stay
    // an N field, which other readers parse so where some take an F field for a binary one.
    EXPECT_EQ(firstField(path("all.dbf")).type, 'N');
    EXPECT_LE(firstField(path("all.dbf")).width, 20);
}

// Where every value has a fixed-point text that fits, the field stays N(20, d) with the decimals
// the values need, so that any dBase program reads it.
TEST_F(Dbf, FixedPointNumbersKeepAnNFieldWithTheDecimalsTheyNeed) {
    const QList<double> values{0.5, 12345.678901234567, 1e-7, -70000, 0.1};
    ASSERT_TRUE(FnWriteArrFile(column(values), path("fixed.dbf"), "", {"v"}));
    const FieldInfo f = firstField(path("fixed.dbf"));
    EXPECT_EQ(f.type, 'N');
    EXPECT_EQ(f.width, 20);
    EXPECT_EQ(f.decimals, 12);
    const CellArray back = FnReadArrFile(path("fixed.dbf"), "");
    ASSERT_EQ(back.count(), static_cast<std::size_t>(values.size()));
    for (int k = 0; k < values.size(); ++k)
        EXPECT_EQ(back(k, 0).toDouble(), values[k]) << k;
}

// The five values of the report: each alone and all together give themselves back.
TEST_F(Dbf, TheReportedNumbersComeBack) {
    const QList<double> values{0.5, 1e25, 12345.678901234567, 1e-7, -1e300};
    ASSERT_TRUE(FnWriteArrFile(column(values), path("d.dbf"), "", {"v"}));
    const CellArray back = FnReadArrFile(path("d.dbf"), "");
    ASSERT_EQ(back.count(), 5u);
    for (int k = 0; k < values.size(); ++k)
        EXPECT_EQ(back(k, 0).toDouble(), values[k]) << k;
}

// Another dBase reader reads the same numbers from the file.
TEST_F(Dbf, AnotherReaderReadsTheSameNumbers) {
    ASSERT_TRUE(FnWriteArrFile(column(kScales), path("other.dbf"), "", {"v"}));
    DBFHandle h = DBFOpen(QFile::encodeName(path("other.dbf")).constData(), "rb");
    ASSERT_NE(h, nullptr);
    ASSERT_EQ(DBFGetRecordCount(h), kScales.size());
    for (int k = 0; k < kScales.size(); ++k)
        EXPECT_TRUE(comesBack(Cell(DBFReadDoubleAttribute(h, k, 0)), kScales[k])) << k;
    DBFClose(h);
}

// A number that no text of 20 characters brings back to within 1e-15 is refused by name, and no
// file is left behind.
TEST_F(Dbf, ANumberTheFieldCannotHoldIsRefusedByName) {
    const struct {
        double value;
        const char* named;
    } cases[] = {{-1.2345678901234568e-300, "-1.2345678901234568e-300"},
                 {1.7976931348623157e308, "1.7976931348623157e+308"},
                 {-9.876543210987654e-123, "-9.876543210987654e-123"}};
    for (const auto& c : cases) {
        const QString file = path("refused.dbf");
        EXPECT_FALSE(FnWriteArrFile(column(QList<double>{1.5, c.value}), file, "", {"Rate"})) << c.named;
        EXPECT_TRUE(lastForeignError().words.contains(QLatin1String(c.named)))
            << lastForeignError().words.toStdString();
        EXPECT_TRUE(lastForeignError().words.contains(QLatin1String("Rate")))
            << lastForeignError().words.toStdString();
        EXPECT_FALSE(QFile::exists(file)) << c.named;
    }
}

// A column declared whole that holds a fraction keeps the fraction.
TEST_F(Dbf, AWholeNumberFieldGivenAFractionKeepsIt) {
    for (const char* type : {"Integer", "Long"}) {
        CellArray types{2, 1};
        types(0, 0) = Cell(type);
        const QString file = path(QStringLiteral("%1.dbf").arg(type));
        ASSERT_TRUE(FnWriteArrFile(column(QList<double>{2.5, 40000.0, -1e25}), file, "", {"a"}, &types))
            << type;
        const CellArray back = FnReadArrFile(file, "");
        EXPECT_EQ(back, column(QList<double>{2.5, 40000.0, -1e25})) << type << dump(back);
    }
}

// Once one text needs UTF-8, a field still holds 254 characters, however many bytes they take.
TEST_F(Dbf, AUtf8TableCutsTextAt254CharactersNotBytes) {
    const QString fits = QString(200, u'é') + QStringLiteral("中");
    const QString tooLong = QString(300, u'é') + QStringLiteral("中");
    ASSERT_TRUE(FnWriteArrFile(column(QList<Cell>{Cell(fits), Cell(tooLong)}), path("u.dbf"), "", {"t"}))
        << lastForeignError().words.toStdString();
    const CellArray back = FnReadArrFile(path("u.dbf"), "");
    ASSERT_EQ(back.count(), 2u);
    EXPECT_EQ(back(0, 0).toString(), fits);
    EXPECT_EQ(back(1, 0).toString(), QString(254, u'é'));
}

TEST_F(Dbf, LeadingBlanksOfATextAreKept) {
    const QList<Cell> texts{Cell("  padded"), Cell(" 007"), Cell("\tTab"), Cell("  Zoë — 中文")};
    ASSERT_TRUE(FnWriteArrFile(column(texts), path("blanks.dbf"), "", {"t"}));
    EXPECT_EQ(FnReadArrFile(path("blanks.dbf"), ""), column(texts));
}

// A dBase date is eight digits, the year in four: the years 100 to 999 too.
TEST_F(Dbf, DatesOfEveryCenturyComeBack) {
    QList<Cell> days;
    for (int century = 1; century <= 99; ++century)
        days << Cell::date(
            dateSerial(QDate(century * 100 + (century * 37) % 100, 1 + century % 12, 1 + century % 28)));
    days << Cell::date(dateSerial(QDate(100, 1, 1))) << Cell::date(dateSerial(QDate(999, 12, 31)))
         << Cell::date(dateSerial(QDate(9999, 12, 31)));
    ASSERT_TRUE(FnWriteArrFile(column(days), path("days.dbf"), "", {"Day"}))
        << lastForeignError().words.toStdString();
    const CellArray back = FnReadArrFile(path("days.dbf"), "");
    EXPECT_EQ(back, column(days)) << dump(back);
}

// Before the year 100 or after 9999 a date has no eight digits: the write is refused, naming it.
TEST_F(Dbf, ADateOutsideTheYears100To9999IsRefusedByName) {
    const struct {
        Cell day;
        const char* named;
    } cases[] = {{Cell::date(dateSerial(QDate(99, 12, 31))), "0099-12-31"},
                 {Cell::date(dateSerial(QDate(10000, 1, 1))), "10000-01-01"}};
    for (const auto& c : cases) {
        EXPECT_FALSE(
            FnWriteArrFile(column(QList<Cell>{Cell::date(1.0), c.day}), path("far.dbf"), "", {"Day"}))
            << c.named;
        EXPECT_TRUE(lastForeignError().words.contains(QLatin1String(c.named)))
            << lastForeignError().words.toStdString();
        EXPECT_FALSE(QFile::exists(path("far.dbf")));
    }
}

namespace {

// A small table on disk, its bytes changed by `damage`, then read: the reader must refuse it with
// the file's name in its message.
class DamagedDbf : public Dbf {
protected:
    QString damaged(const std::function<void(QByteArray&)>& damage) {
        const QString file = path("damaged.dbf");
        QFile::remove(file);
        EXPECT_TRUE(FnWriteArrFile(table({{Cell("A01"), Cell(1.5)}, {Cell("A02"), Cell(2.5)}}), file, "",
                                   {"Code", "Rate"}));
        QFile f(file);
        EXPECT_TRUE(f.open(QIODevice::ReadWrite));
        QByteArray bytes = f.readAll();
        damage(bytes);
        f.resize(0);
        f.seek(0);
        f.write(bytes);
        return file;
    }
    void expectRefused(const QString& file, const char* what) {
        QStringList names{"stale"};
        const CellArray back = FnReadArrFile(file, "", &names);
        EXPECT_TRUE(back.isEmpty()) << what << dump(back);
        EXPECT_TRUE(names.isEmpty()) << what;
        EXPECT_NE(lastForeignError().number, 0) << what;
        EXPECT_TRUE(lastForeignError().words.contains(file))
            << what << ": " << lastForeignError().words.toStdString();
    }
};

void putLe32(QByteArray& b, int at, quint32 v) {
    for (int k = 0; k < 4; ++k)
        b[at + k] = static_cast<char>(v >> (8 * k) & 0xFF);
}

void putLe16(QByteArray& b, int at, quint16 v) {
    b[at] = static_cast<char>(v & 0xFF);
    b[at + 1] = static_cast<char>(v >> 8);
}

} // namespace

TEST_F(DamagedDbf, TheUndamagedTableReads) {
    const QString file = damaged([](QByteArray&) {});
    EXPECT_EQ(FnReadArrFile(file, ""), table({{Cell("A01"), Cell(1.5)}, {Cell("A02"), Cell(2.5)}}));
}

// 2^31 records, or any count whose records the file does not hold, ends the reading at once.
TEST_F(DamagedDbf, ARecordCountBeyondTheFileIsRefused) {
    for (const quint32 claimed : {3u, 1000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        const QString file = damaged([claimed](QByteArray& b) { putLe32(b, 4, claimed); });
        expectRefused(file, qPrintable(QString::number(claimed)));
    }
}

TEST_F(DamagedDbf, AHeaderLengthBeyondTheFileIsRefused) {
    for (const quint16 claimed : {quint16(0xFFFF), quint16(4096), quint16(20)}) {
        const QString file = damaged([claimed](QByteArray& b) { putLe16(b, 8, claimed); });
        expectRefused(file, qPrintable(QString::number(claimed)));
    }
}

TEST_F(DamagedDbf, ARecordShorterThanItsFieldsIsRefused) {
    const QString file = damaged([](QByteArray& b) { putLe16(b, 10, 3); });
    expectRefused(file, "record length 3");
}

TEST_F(DamagedDbf, AFileCutShortIsRefused) {
    for (const int keep : {0, 1, 31, 40, 97, 100}) {
        const QString file = damaged([keep](QByteArray& b) { b.truncate(keep); });
        expectRefused(file, qPrintable(QStringLiteral("%1 bytes kept").arg(keep)));
    }
}

TEST_F(DamagedDbf, AHeaderWithoutTheEndOfItsFieldsIsRefused) {
    const QString file = damaged([](QByteArray& b) {
        for (int at = 32; at < b.size(); ++at)
            if (b[at] == '\r')
                b[at] = 'C';
        putLe16(b, 8, static_cast<quint16>(b.size()));
        putLe32(b, 4, 0);
    });
    expectRefused(file, "no 0x0D");
}

// Bytes changed at random, a thousand times over: each file is read or refused by name, never a
// crash or a hang.
TEST_F(DamagedDbf, RandomDamageIsReadOrRefused) {
    std::mt19937 random(12);
    for (int round = 0; round < 1000; ++round) {
        const QString file = damaged([&random](QByteArray& b) {
            const int changes = 1 + static_cast<int>(random() % 8);
            for (int k = 0; k < changes; ++k)
                b[static_cast<int>(random() % b.size())] = static_cast<char>(random() & 0xFF);
            if (random() % 4 == 0)
                b.truncate(static_cast<int>(random() % b.size()));
        });
        QStringList names;
        const CellArray back = FnReadArrFile(file, "", &names);
        if (back.isEmpty() && names.isEmpty())
            EXPECT_TRUE(lastForeignError().words.contains(file))
                << round << ": " << lastForeignError().words.toStdString();
        else
            EXPECT_LE(back.count(), 2u * 2u) << round;
    }
}
