// Each declared type refuses what it cannot hold, with the old runtime's words and number: a value
// of the wrong kind is a "Type mismatch" (13), a number beyond the type's range an "Overflow" (6).

#include "database/db_connection.h"
#include "database/db_create.h"
#include "db_test_support.h"
#include "foundation/runtime_error.h"

#include <QSqlError>
#include <cfloat>

using namespace vesk;
using vesk::test::DbTest;

namespace {

struct Refusal {
    int number = 0; // 0 when the statement was taken
    QString words;
};

bool operator==(const Refusal& a, const Refusal& b) {
    return a.number == b.number && a.words == b.words;
}
void PrintTo(const Refusal& r, std::ostream* os) {
    *os << r.number << " " << r.words.toStdString();
}

class TypeRulesTest : public DbTest {
protected:
    void SetUp() override {
        DbTest::SetUp();
        db = openDb(newStudyFile());
        ASSERT_TRUE(db);
        exec(*db, "PRAGMA foreign_keys = OFF");
    }
    void TearDown() override {
        db.reset();
        DbTest::TearDown();
    }

    // Sets `field` of a fresh row of `table` (whose other required fields get plain values).
    Refusal put(const QString& table, const QString& field, const QVariant& value) {
        exec(*db, QStringLiteral("DELETE FROM \"%1\"").arg(table));
        QSqlError e;
        const QString sql = QStringLiteral("INSERT INTO \"%1\" (%2) VALUES (%3)");
        const auto [names, marks, values] = rowOf(table, field, value);
        if (db->exec(sql.arg(table, names, marks), values, &e))
            return {};
        return {engineErrorNumber(e), engineDescription(e)};
    }
    // The keys each table needs, then the field under test.
    static std::tuple<QString, QString, QVariantList> rowOf(const QString& table, const QString& field,
                                                            const QVariant& value) {
        QStringList names;
        QVariantList values;
        auto add = [&](const QString& n, const QVariant& v) {
            if (n.compare(field, Qt::CaseInsensitive) != 0) {
                names << n;
                values << v;
            }
        };
        if (table == u"DatPOP" || table == u"DatASDR") {
            add("BPUID", "U1");
            add("YEAR", 2000);
            add("Bai", 5);
        } else if (table == u"_DctBDS") {
            add("BDSId", "S1");
            add("Year", 2000);
        } else if (table == u"_DctDAP") {
            add("DAPID", 1);
        } else if (table == u"DatADW") {
            add("BPUID", "U1");
            add("YEAR", 2000);
            add("COBCd", "A01");
            add("ASG", "M0");
        }
        names << field;
        values << value;
        QStringList marks;
        for (int i = 0; i < values.size(); ++i)
            marks << "?";
        return {names.join(", "), marks.join(", "), values};
    }

    static Refusal typeMismatch() { return {13, "Type mismatch"}; }
    static Refusal overflow() { return {6, "Overflow"}; }
    static Refusal taken() { return {}; }

    std::shared_ptr<DbConnection> db;
};

TEST_F(TypeRulesTest, TheReproductionsAreAllRefused) {
    EXPECT_EQ(put("DatPOP", "YEAR", 70000), overflow());
    EXPECT_EQ(put("DatPOP", "Bai", 300), overflow());
    EXPECT_EQ(put("DatASDR", "M", "lots"), typeMismatch());
    EXPECT_EQ(put("DatPOP", "F", qint64(5000000000)), overflow());
    EXPECT_EQ(put("_DctBDS", "Slct", 7), overflow());
    EXPECT_EQ(put("DatPOP", "YEAR", 1999.5), typeMismatch());
}

TEST_F(TypeRulesTest, TheWordsComeFromTheRuntimesTable) {
    EXPECT_EQ(typeMismatch().words, runtimeWords(runtime_error::kTypeMismatch));
    EXPECT_EQ(overflow().words, runtimeWords(runtime_error::kOverflow));
}

TEST_F(TypeRulesTest, IntegerTypesHoldTheirWholeRangeAndNoMore) {
    // BYTE (DatPOP.Bai), SMALLINT (DatPOP.YEAR), LONG (DatPOP.M): the bounds and one past them.
    EXPECT_EQ(put("DatPOP", "Bai", 0), taken());
    EXPECT_EQ(put("DatPOP", "Bai", 255), taken());
    EXPECT_EQ(put("DatPOP", "Bai", 256), overflow());
    EXPECT_EQ(put("DatPOP", "Bai", -1), overflow());
    EXPECT_EQ(put("DatPOP", "YEAR", -32768), taken());
    EXPECT_EQ(put("DatPOP", "YEAR", 32767), taken());
    EXPECT_EQ(put("DatPOP", "YEAR", 32768), overflow());
    EXPECT_EQ(put("DatPOP", "YEAR", -32769), overflow());
    EXPECT_EQ(put("DatPOP", "M", qint64(2147483647)), taken());
    EXPECT_EQ(put("DatPOP", "M", qint64(-2147483648LL)), taken());
    EXPECT_EQ(put("DatPOP", "M", qint64(2147483648LL)), overflow());
    EXPECT_EQ(put("DatPOP", "M", qint64(9007199254740993LL)), overflow());
    EXPECT_EQ(put("DatPOP", "M", 0.1), typeMismatch());
    EXPECT_EQ(put("DatPOP", "M", QByteArray("\x01\x02", 2)), typeMismatch());
    EXPECT_EQ(put("DatPOP", "M", QString::fromUtf8("一二三")), typeMismatch());
    // A whole number given as a text or a double is the number.
    EXPECT_EQ(put("DatPOP", "M", "12345"), taken());
    EXPECT_EQ(put("DatPOP", "M", 2000.0), taken());
    EXPECT_EQ(put("DatPOP", "M", QVariant()), taken());
}

TEST_F(TypeRulesTest, YesNoHoldsTrueAndFalse) {
    EXPECT_EQ(put("_DctBDS", "Slct", 1), taken());
    EXPECT_EQ(put("_DctBDS", "Slct", 0), taken());
    EXPECT_EQ(put("_DctBDS", "Slct", true), taken());
    EXPECT_EQ(put("_DctBDS", "Slct", -1), taken()); // the old engine's True
    EXPECT_EQ(put("_DctBDS", "Slct", 2), overflow());
    EXPECT_EQ(put("_DctBDS", "Slct", -2), overflow());
    EXPECT_EQ(put("_DctBDS", "Slct", "yes"), typeMismatch());
    EXPECT_EQ(put("_DctBDS", "Slct", 0.5), typeMismatch());
}

TEST_F(TypeRulesTest, SingleAndDoubleHoldNumbersOfEveryScale) {
    for (const double v :
         {1e-300, 1e300, -1e300, 0.1, 12345.678901234567, 9007199254740993.0, DBL_MAX, -DBL_MAX, DBL_MIN})
        EXPECT_EQ(put("DatASDR", "M", v), taken()) << v;
    EXPECT_EQ(put("DatASDR", "M", qint64(9007199254740993LL)), taken());
    EXPECT_EQ(put("DatASDR", "M", std::numeric_limits<double>::infinity()), overflow());
    EXPECT_EQ(put("DatASDR", "M", -std::numeric_limits<double>::infinity()), overflow());
    EXPECT_EQ(put("DatASDR", "M", " 1;2 "), typeMismatch());
    EXPECT_EQ(put("_DctDAP", "r", 0.03), taken());
    EXPECT_EQ(put("_DctDAP", "r", double(FLT_MAX)), taken());
    EXPECT_EQ(put("_DctDAP", "r", 1e39), overflow());
    EXPECT_EQ(put("_DctDAP", "r", -1e300), overflow());
    EXPECT_EQ(put("_DctDAP", "r", "lots"), typeMismatch());
}

TEST_F(TypeRulesTest, DatesOfEveryCenturyFrom100To9999) {
    for (const char* when : {"0100-01-01", "0999-12-31", "1899-12-30 10:00:00", "1999-02-28", "2000-02-29",
                             "9999-12-31 23:59:59"})
        EXPECT_EQ(put("DatPOP", "UpdDt", when), taken()) << when;
    EXPECT_EQ(put("DatPOP", "UpdDt", "0099-12-31"), overflow());
    EXPECT_EQ(put("DatPOP", "UpdDt", "1999-02-29"), typeMismatch());
    EXPECT_EQ(put("DatPOP", "UpdDt", "2000-13-01"), typeMismatch());
    EXPECT_EQ(put("DatPOP", "UpdDt", "now"), typeMismatch());
    EXPECT_EQ(put("DatPOP", "UpdDt", "yesterday"), typeMismatch());
    EXPECT_EQ(put("DatPOP", "UpdDt", 36526), typeMismatch());
    EXPECT_EQ(put("DatPOP", "UpdDt", QVariant()), taken());
}

TEST_F(TypeRulesTest, TextAndMemoHoldTextAndNothingElse) {
    EXPECT_EQ(put("_DctBDS", "BDSTi", QString::fromUtf8(" Лагос; \"порт\"\nمدينة 😀 ")), taken());
    EXPECT_EQ(put("_DctBDS", "BDSTi", 12345), taken()); // a number given to text is its text
    EXPECT_EQ(put("_DctBDS", "BDSTi", QByteArray("\x00\x01", 2)), typeMismatch());
    exec(*db, "DELETE FROM UserComments");
    QSqlError e;
    EXPECT_FALSE(db->exec("INSERT INTO UserComments (Comment) VALUES (?)", {QByteArray("\xff", 1)}, &e));
    EXPECT_EQ(engineErrorNumber(e), 13);
    EXPECT_TRUE(db->exec("INSERT INTO UserComments (Comment) VALUES (?)", {QString(5000, u'é')}));
}

TEST_F(TypeRulesTest, AValueTakenComesBackAsItWent) {
    for (const double v : {1e-300, 1e300, 0.1, 12345.678901234567}) {
        ASSERT_EQ(put("DatASDR", "M", v), taken());
        auto q = db->query("SELECT M FROM DatASDR");
        ASSERT_TRUE(q && q->next());
        EXPECT_EQ(q->value(0).toDouble(), v);
    }
}

TEST_F(TypeRulesTest, EveryFieldOfTheDefinitionCarriesItsTypeRules) {
    QString error;
    const auto statements = createTableStatements(&error);
    ASSERT_TRUE(statements) << error.toStdString();
    for (const QString& s : *statements) {
        const int columns = s.count(QStringLiteral("\n    \""));
        const int kinds = s.count(QStringLiteral("CONSTRAINT \"Type mismatch\" CHECK"));
        EXPECT_EQ(kinds, columns) << s.toStdString();
    }
}

} // namespace
