// A study file made from the definition: tables, columns, keys, relations, and the refusals that the
// old engine made, each with its text.

#include "database/db_create.h"
#include "database/db_schema.h"
#include "db_test_support.h"

#include <QFile>

using namespace vesk;
using vesk::test::DbTest;

namespace {

class CreateTest : public DbTest {
protected:
    void SetUp() override {
        DbTest::SetUp();
        file = newStudyFile();
        db = openDb(file);
        ASSERT_TRUE(db);
    }
    void TearDown() override {
        db.reset();
        DbTest::TearDown();
    }

    struct Column {
        QString name, type;
        bool notNull = false;
        QVariant dflt;
        int pk = 0;
    };
    QList<Column> columns(const QString& table) {
        QList<Column> out;
        auto q =
            db->query("SELECT name, type, \"notnull\", dflt_value, pk FROM pragma_table_info(?)", {table});
        while (q && q->next())
            out.push_back({q->value(0).toString(), q->value(1).toString(), q->value(2).toInt() != 0,
                           q->value(3), q->value(4).toInt()});
        return out;
    }
    // The engine's description of a refused statement ("" when it was taken).
    QString refusal(const QString& sql, const QVariantList& values) {
        QSqlError e;
        return db->exec(sql, values, &e) ? QString() : engineDescription(e);
    }
    QString scalar(const QString& sql, const QVariantList& values = {}) {
        auto q = db->query(sql, values);
        return q && q->next() ? q->value(0).toString() : QStringLiteral("<none>");
    }

    QString file;
    std::shared_ptr<DbConnection> db;
};

TEST_F(CreateTest, AllTablesWithTheirFieldsAndNoRows) {
    InitDBStruArr();
    const auto tables = db->tables();
    ASSERT_EQ(tables.size(), kDbTableCount);
    for (int t = 0; t < kDbTableCount; ++t) {
        EXPECT_EQ(tables[t].name, dbTableName(t));
        const auto cols = columns(dbTableName(t));
        ASSERT_EQ(cols.size(), dbFieldCount(t)) << dbTableName(t).toStdString();
        for (int s = 1; s <= dbFieldCount(t); ++s)
            EXPECT_EQ(cols[s - 1].name, dbAttr(t, s, AttrName));
        EXPECT_EQ(scalar(QStringLiteral("SELECT count(*) FROM \"%1\"").arg(dbTableName(t))), "0");
    }
}

TEST_F(CreateTest, DeclaredTypesNameTheOldTypeAndSize) {
    const auto bdm = columns("_DctBDM");
    EXPECT_EQ(bdm[0].type, "VARCHAR(5)");
    EXPECT_EQ(bdm[1].type, "VARCHAR(255)");
    EXPECT_EQ(bdm[3].type, "BOOLEAN");
    EXPECT_EQ(columns("DatDwt")[2].type, "VARCHAR(7)");
    EXPECT_EQ(columns("_DctBDMClstr")[2].type, "VARCHAR(240)");
    EXPECT_EQ(columns("_DctBDMGrps")[0].type, "SMALLINT");
    EXPECT_EQ(columns("DatASDR")[2].type, "BYTE");
    EXPECT_EQ(columns("DatPOP")[3].type, "LONG");
    EXPECT_EQ(columns("_DctDAP")[1].type, "SINGLE");
    EXPECT_EQ(columns("DatADW")[4].type, "DOUBLE");
    EXPECT_EQ(columns("RsltYLL")[0].type, "DATETIME");
    EXPECT_EQ(columns("UserComments")[3].type, "LONGTEXT");
}

TEST_F(CreateTest, DefaultsAndRequired) {
    const auto pop = columns("DatPOP");
    EXPECT_EQ(pop[1].dflt.toString(), "0");
    EXPECT_TRUE(pop[3].dflt.isNull());
    EXPECT_TRUE(pop[2].notNull);
    EXPECT_FALSE(pop[0].notNull);
    EXPECT_TRUE(columns("RsltYLL")[6].dflt.isNull()); // IYLL: the Null default sets none
    exec(*db, "INSERT INTO DatPOP (BPUID) VALUES (?)", {"U1"});
    EXPECT_EQ(scalar("SELECT YEAR || '/' || Bai || '/' || F || '/' || ifnull(M, 'null') FROM DatPOP"),
              "0/0/0/null");
}

TEST_F(CreateTest, PrimaryKeysAreTheNumIndexMembersInFieldOrder) {
    auto pk = [&](const QString& table) {
        QStringList keys;
        for (const auto& c : columns(table))
            if (c.pk)
                keys << QStringLiteral("%1:%2").arg(c.pk).arg(c.name);
        return keys;
    };
    EXPECT_EQ(pk("_DctBDS"), QStringList({"1:BDSId", "2:Year"}));
    EXPECT_EQ(pk("RsltYLD"), QStringList({"1:BPUID", "2:YEAR", "3:DAPID", "4:COBCd", "5:SqlaCd", "6:ASG"}));
    EXPECT_EQ(pk("RsltYLL"), QStringList({"1:BPUID", "2:YEAR", "3:DAPID", "4:COBCd", "5:ASG"}));
    for (const char* none : {"_DctBDMSqla", "_DctBDMSyn", "_DfnAgeGrps", "UserComments"})
        EXPECT_TRUE(pk(none).isEmpty()) << none;
    EXPECT_TRUE(db->tables()[6].sql.contains("CONSTRAINT \"NumIndex\" PRIMARY KEY (\"BDSId\", \"Year\")"));
}

TEST_F(CreateTest, OnlyTheFourRelationsWithAUniquePrimaryFieldExist) {
    QStringList found;
    InitDBStruArr();
    for (int t = 0; t < kDbTableCount; ++t) {
        auto q =
            db->query("SELECT \"table\", \"from\", \"to\" FROM pragma_foreign_key_list(?)", {dbTableName(t)});
        while (q && q->next())
            found << QStringLiteral("%1.%2->%3.%4")
                         .arg(dbTableName(t), q->value(1).toString(), q->value(0).toString(),
                              q->value(2).toString());
    }
    EXPECT_EQ(found, QStringList(
                         {"_DctBDM.ClstrCd->_DctBDMClstr.ClstrCd", "_DctBDMClstr.SGrpCd->_DctBDMSGrps.SGrpCd",
                          "_DctBDMSGrps.GrpCd->_DctBDMGrps.GrpCd", "_DctBDMSyn.COBCd->_DctBDM.COBCd"}));
    const QString sql = db->tables()[0].sql;
    EXPECT_TRUE(sql.contains("CONSTRAINT \"ClstrCd\" FOREIGN KEY")) << sql.toStdString();
}

TEST_F(CreateTest, RelationsAreEnforcedOnEveryConnection) {
    EXPECT_EQ(scalar("PRAGMA foreign_keys"), "1");
    EXPECT_FALSE(refusal("INSERT INTO _DctBDM (CobCd, ClstrCd) VALUES (?, ?)", {"A01", "C1"}).isEmpty());
    exec(*db, "INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (?, ?)", {1, "Communicable"});
    exec(*db, "INSERT INTO _DctBDMSGrps (SGrpCd, GrpCd) VALUES (?, ?)", {"A", 1});
    exec(*db, "INSERT INTO _DctBDMClstr (ClstrCd, SGrpCd) VALUES (?, ?)", {"C1", "A"});
    EXPECT_EQ(refusal("INSERT INTO _DctBDM (CobCd, ClstrCd) VALUES (?, ?)", {"A01", "C1"}), "");
    // Units and age definitions are not tied to _DctBDS: those relations were refused at creation.
    EXPECT_EQ(refusal("INSERT INTO _DctBPU (BDSId, BPUID) VALUES (?, ?)", {"NOSTU", "U1"}), "");
    EXPECT_EQ(refusal("INSERT INTO _DfnAgeGrps (BDSId, YLL) VALUES (?, ?)", {"NOSTU", 5}), "");
}

TEST_F(CreateTest, ARefusedValidationRuleShowsItsValidationText) {
    EXPECT_EQ(
        refusal("INSERT INTO _DctBDMGrps (GrpCd) VALUES (?)", {10}),
        "The Burden groups should be single Digit Integers, you are trying to enter an invalid code for the "
        "group");
    EXPECT_EQ(
        refusal("INSERT INTO _DctBDMGrps (GrpCd) VALUES (?)", {0}),
        "The Burden groups should be single Digit Integers, you are trying to enter an invalid code for the "
        "group");
    EXPECT_EQ(refusal("INSERT INTO _DctBDMGrps (GrpCd) VALUES (?)", {9}), "");
    exec(*db, "INSERT INTO _DctBDMSGrps (SGrpCd) VALUES (?)", {"B"});
    EXPECT_EQ(refusal("UPDATE _DctBDMSGrps SET GrpCd = ?", {-1}),
              "The Burden groups should be single Digit Integers");
    // K has a rule and no text: the refusal names the rule in the old engine's words.
    EXPECT_EQ(
        refusal("INSERT INTO _DctDAP (DAPID, K) VALUES (?, ?)", {1, 1.5}),
        "One or more values are prohibited by the validation rule '>=0 And <=1' set for '_DctDAP.K'. Enter a "
        "value that the expression for this field can accept.");
    EXPECT_EQ(refusal("INSERT INTO _DctDAP (DAPID, K) VALUES (?, ?)", {1, 0.5}), "");
}

TEST_F(CreateTest, NoZeroLengthTextNoTooLongTextNoNullKeys) {
    EXPECT_EQ(refusal("INSERT INTO _DctBDS (BDSId, Year) VALUES (?, ?)", {"", 2000}),
              "Field '_DctBDS.BDSId' cannot be a zero-length string.");
    EXPECT_EQ(
        refusal("INSERT INTO _DctBDS (BDSId, Year) VALUES (?, ?)", {"TOOLONG", 2000}),
        "The field '_DctBDS.BDSId' is too small to accept the amount of data you attempted to add.  Try "
        "inserting or pasting less data.");
    EXPECT_EQ(refusal("INSERT INTO _DctBDS (BDSId, Year) VALUES (?, ?)", {QVariant(), 2000}),
              "Index or primary key cannot contain a Null value.");
    EXPECT_EQ(
        refusal("INSERT INTO _DctBDMSyn (COBCd) VALUES (?)", {QVariant()}),
        "The field '_DctBDMSyn.COBCd' cannot contain a Null value because the Required property for this "
        "field is set to True.  Enter a value in this field.");
    // The cause of a disability weight may take seven characters, the others five.
    EXPECT_EQ(refusal("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG) VALUES (?, ?, ?, ?)",
                      {"S", 1, "A123456", "M0-4"}),
              "");
    EXPECT_FALSE(refusal("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG) VALUES (?, ?, ?, ?)",
                         {"U", 1, "A12345", "M0-4"})
                     .isEmpty());
    // A Null text is not a zero-length one.
    EXPECT_EQ(refusal("INSERT INTO _DctBDS (BDSId, Year, BDSTi) VALUES (?, ?, ?)", {"S1", 2000, QVariant()}),
              "");
}

TEST_F(CreateTest, TextComparesWithoutRegardToCase) {
    exec(*db, "INSERT INTO _DctBDS (BDSId, Year) VALUES (?, ?)", {"ABC", 2000});
    EXPECT_TRUE(
        refusal("INSERT INTO _DctBDS (BDSId, Year) VALUES (?, ?)", {"abc", 2000}).startsWith("The changes"));
    EXPECT_EQ(scalar("SELECT Year FROM _DctBDS WHERE BDSId = ?", {"abc"}), "2000");
}

TEST_F(CreateTest, AnExistingFileIsNotOverwritten) {
    QString error;
    EXPECT_FALSE(createStudyFile(file, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(db->tables().size(), kDbTableCount);
}

TEST_F(CreateTest, OpeningAMissingOrForeignFileFails) {
    QString error;
    EXPECT_FALSE(DbConnection::open(path("none.vdb"), &error));
    EXPECT_EQ(error, "Could not find file '" + path("none.vdb") + "'.");
    EXPECT_FALSE(QFile::exists(path("none.vdb")));
    QFile text(path("text.vdb"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(2048, 'x'));
    text.close();
    EXPECT_FALSE(DbConnection::open(path("text.vdb"), &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST_F(CreateTest, CreationFillsTheDefinitionItself) {
    ArrDBStru() = CellArray{kDbTableCount, kDbSlotCount, kDbAttributeCount};
    QString error;
    EXPECT_FALSE(createTableStatements(&error).has_value());
    EXPECT_FALSE(error.isEmpty());
    ASSERT_TRUE(createStudyFile(path("second.vdb"), &error)) << error.toStdString();
    EXPECT_EQ(openDb(path("second.vdb"))->tables().size(), kDbTableCount);
}

TEST_F(CreateTest, OpenFilesAreKnown) {
    EXPECT_TRUE(isDatabaseFileOpen(file));
    db.reset();
    EXPECT_FALSE(isDatabaseFileOpen(file));
}

} // namespace
