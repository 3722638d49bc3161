// The structure check against files changed by hand: every message, every log line, in order.

#include "database/chk_db_stru.h"
#include "database/db_schema.h"
#include "database/db_texts.h"
#include "db_test_support.h"
#include "foundation/settings.h"

#include <QDir>
#include <QFile>

using namespace vesk;
using vesk::test::DbTest;

namespace {

const QString kClose =
    ". Please open a valid VESK Database or use File->New menu to create a valid database. Click OK "
    "to continue";

class ChkDBStruTest : public DbTest {
protected:
    void SetUp() override {
        DbTest::SetUp();
        file = newStudyFile();
    }
    // Rewrites a table's CREATE TABLE text, replacing `from` by `to`, as a hand in another tool would.
    void alter(const QString& table, const QString& from, const QString& to) {
        auto db = openDb(file);
        auto q = db->query("SELECT sql FROM sqlite_master WHERE name = ?", {table});
        ASSERT_TRUE(q && q->next());
        const QString original = q->value(0).toString();
        q.reset();
        ASSERT_TRUE(original.contains(from)) << original.toStdString();
        QString changed = original;
        changed.replace(from, to);
        exec(*db, "PRAGMA foreign_keys = OFF");
        exec(*db, QStringLiteral("DROP TABLE \"%1\"").arg(table));
        exec(*db, changed);
    }
    void run(const QString& statement) {
        auto db = openDb(file);
        exec(*db, "PRAGMA foreign_keys = OFF");
        exec(*db, statement);
    }
    QString log() const { return readText(path("vskstru.log")); }
    QStringList logLines() const { return log().split("\r\n", Qt::SkipEmptyParts); }
    static QString attributeMessage(const QString& field, const QString& table, int order,
                                    const QString& expected) {
        return "The field " + field + ", present in the table " + table + dbtext::AttributeMiddle[order] +
               expected + kClose;
    }

    QString file;
};

TEST_F(ChkDBStruTest, ANewDatabasePassesSilently) {
    QFile old(path("vskstru.log"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("an old line\r\n");
    old.close();
    EXPECT_TRUE(ChkDBStru(file));
    EXPECT_TRUE(prompts.shown().isEmpty());
    EXPECT_TRUE(QFile::exists(path("vskstru.log")));
    EXPECT_EQ(log(), ""); // rewritten on every run
}

TEST_F(ChkDBStruTest, AMissingFileIsToldAndTheLogStaysEmpty) {
    EXPECT_FALSE(ChkDBStru(path("elsewhere.vdb")));
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(
        prompts.shown()[0].text,
        "Database not present in the location specified,please check the database path in the File - Setup.");
    EXPECT_EQ(prompts.shown()[0].icon, Icon::Warning);
    EXPECT_TRUE(QFile::exists(path("vskstru.log")));
    EXPECT_EQ(log(), "");
    EXPECT_FALSE(QFile::exists(path("elsewhere.vdb")));
}

TEST_F(ChkDBStruTest, WrongTypeAndWrongSizeGiveTwoMessagesAndTwoLines) {
    alter("_DctBDS", "\"BDSId\" VARCHAR(5)", "\"BDSId\" SMALLINT");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(prompts.messages(), QStringList({attributeMessage("BDSId", "_DctBDS", 0, "10"),
                                               attributeMessage("BDSId", "_DctBDS", 1, "5")}));
    EXPECT_EQ(prompts.shown()[0].icon, Icon::Warning);
    EXPECT_EQ(log(), "Array Properties:   BDSId|_DctBDS|10     Table Properties   :BDSId|_DctBDS|3\r\n"
                     "Array Properties:   BDSId|_DctBDS|5     Table Properties   :BDSId|_DctBDS|2\r\n");
}

TEST_F(ChkDBStruTest, TheOddSizesAreHeldExactly) {
    alter("DatDwt", "\"COBCd\" VARCHAR(7)", "\"COBCd\" VARCHAR(5)");
    alter("_DctBDMClstr", "\"SGrpCd\" VARCHAR(240)", "\"SGrpCd\" VARCHAR(2)");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(logLines(),
              QStringList({"Array Properties:   SGrpCd|_DctBDMClstr|240     Table Properties   "
                           ":SGrpCd|_DctBDMClstr|2",
                           "Array Properties:   COBCd|DatDwt|7     Table Properties   :COBCd|DatDwt|5"}));
}

TEST_F(ChkDBStruTest, AMissingTableEndsTheCheckAtOnce) {
    alter("_DctBDS", "\"BDSTi\" VARCHAR(75)", "\"BDSTi\" VARCHAR(70)");
    alter("DatDwt", "\"Dwt\" SINGLE", "\"Dwt\" DOUBLE"); // after the missing table: never reached
    run("DROP TABLE UserComments");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(
        prompts.messages(),
        QStringList({attributeMessage("BDSTi", "_DctBDS", 1, "75"),
                     "The table UserComments is not present in the VESK Database. Please update the VESK "
                     "Database and run the application."}));
    EXPECT_EQ(prompts.shown().last().icon, Icon::Warning);
    EXPECT_EQ(logLines(),
              QStringList({"Array Properties:   BDSTi|_DctBDS|75     Table Properties   :BDSTi|_DctBDS|70"}));
}

TEST_F(ChkDBStruTest, WithoutUserCommentsAloneTheResultIsFalse) {
    run("DROP TABLE UserComments");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(prompts.messages().size(), 1);
    EXPECT_EQ(log(), "");
}

TEST_F(ChkDBStruTest, AMissingFieldIsToldAndTheCheckGoesOn) {
    alter("_DctBDS",
          ",\n    \"Slct\" BOOLEAN CONSTRAINT \"Type mismatch\" CHECK (typeof(\"Slct\") IN ('integer', "
          "'null')) "
          "CONSTRAINT \"Overflow\" CHECK (\"Slct\" IN (-1, 0, 1))",
          "");
    alter("_MapBDMSqla", "\"cobcd\" VARCHAR(5)", "\"cobcd\" VARCHAR(9)");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(
        prompts.messages(),
        QStringList(
            {"The field Slct is not present in the table _DctBDS of the VESK Database. Please update the "
             "VESK Database and run the application.",
             attributeMessage("cobcd", "_MapBDMSqla", 1, "5")}));
    EXPECT_EQ(
        logLines(),
        QStringList({"The field Slct present in table _DctBDS is either misspelt or missing.",
                     "Array Properties:   cobcd|_MapBDMSqla|5     Table Properties   :cobcd|_MapBDMSqla|9"}));
}

TEST_F(ChkDBStruTest, ExtraTablesAndFieldsAreNotNoticed) {
    run("CREATE TABLE Extra (A INTEGER)");
    run("ALTER TABLE _DctBDM ADD COLUMN STU1 BOOLEAN");
    run("ALTER TABLE DatPOP ADD COLUMN Note TEXT");
    EXPECT_TRUE(ChkDBStru(file));
    EXPECT_TRUE(prompts.shown().isEmpty());
}

TEST_F(ChkDBStruTest, TableAndFieldNamesCompareWithoutCase) {
    run("ALTER TABLE _DctBDM RENAME TO tmp_bdm");
    run("ALTER TABLE tmp_bdm RENAME TO _DCTBDM");
    run("ALTER TABLE _DCTBDM RENAME COLUMN CobCd TO tmp_cobcd");
    run("ALTER TABLE _DCTBDM RENAME COLUMN tmp_cobcd TO COBCD");
    EXPECT_TRUE(ChkDBStru(file)) << prompts.messages().join("\n").toStdString();
    // A difference found there is logged under the names as the file spells them.
    alter("_DCTBDM", "\"Disease\" VARCHAR(255)", "\"Disease\" VARCHAR(254)");
    run("ALTER TABLE _DCTBDM RENAME COLUMN Disease TO tmp_d");
    run("ALTER TABLE _DCTBDM RENAME COLUMN tmp_d TO DISEASE");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(log(),
              "Array Properties:   Disease|_DctBDM|255     Table Properties   :DISEASE|_DCTBDM|254\r\n");
}

TEST_F(ChkDBStruTest, AnAttributeTheDefinitionLeavesEmptyIsNeverCompared) {
    alter("_DctBDMSqla", "\"SqlaCd\" VARCHAR(12) COLLATE NOCASE",
          "\"SqlaCd\" VARCHAR(12) COLLATE NOCASE DEFAULT 'X'");
    alter("_DctDAP", "\"C\" SINGLE", "\"C\" SINGLE DEFAULT 7");
    EXPECT_TRUE(ChkDBStru(file)) << prompts.messages().join("\n").toStdString();
}

TEST_F(ChkDBStruTest, ADefaultOfZeroIsComparedAsText) {
    alter("_DctBDMGrps", "DEFAULT 0", "DEFAULT  0 ");
    EXPECT_TRUE(ChkDBStru(file)) << prompts.messages().join("\n").toStdString();
    alter("_DctBDMGrps", "DEFAULT  0", "DEFAULT 1");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(prompts.messages().last(), attributeMessage("GrpCd", "_DctBDMGrps", 2, "0"));
    EXPECT_EQ(log(),
              "Array Properties:   GrpCd|_DctBDMGrps|0     Table Properties   :GrpCd|_DctBDMGrps|1\r\n");
}

TEST_F(ChkDBStruTest, RequiredAndZeroLengthCompareAsTheWordsTrueAndFalse) {
    alter("_DctBDMSyn", "\"COBCd\" VARCHAR(5) COLLATE NOCASE NOT NULL",
          "\"COBCd\" VARCHAR(5) COLLATE NOCASE");
    alter("_DctBDMSyn", "CHECK (\"Synonym\" <> '')", "CHECK (length(\"Synonym\") <= 255)");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(prompts.messages(), QStringList({attributeMessage("COBCd", "_DctBDMSyn", 5, "True"),
                                               attributeMessage("Synonym", "_DctBDMSyn", 6, "False")}));
    EXPECT_EQ(logLines(), QStringList({"Array Properties:   COBCd|_DctBDMSyn|True     Table Properties   "
                                       ":COBCd|_DctBDMSyn|False",
                                       "Array Properties:   Synonym|_DctBDMSyn|False     Table Properties   "
                                       ":Synonym|_DctBDMSyn|True"}));
}

TEST_F(ChkDBStruTest, ValidationRuleAndTextAreReadFromTheFile) {
    alter("_DctBDMSGrps",
          "CONSTRAINT \"The Burden groups should be single Digit Integers\" CHECK (\"GrpCd\" > 0 AND "
          "\"GrpCd\" <= 9)",
          "CONSTRAINT \"Groups are digits\" CHECK (GrpCd>0 AND GrpCd<=99)");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(prompts.messages(),
              QStringList({attributeMessage("GrpCd", "_DctBDMSGrps", 3, ">0 And <=9"),
                           attributeMessage("GrpCd", "_DctBDMSGrps", 4,
                                            "The Burden groups should be single Digit Integers")}));
    EXPECT_EQ(logLines(),
              QStringList(
                  {"Array Properties:   GrpCd|_DctBDMSGrps|>0 And <=9     Table Properties   "
                   ":GrpCd|_DctBDMSGrps|>0 And <=99",
                   "Array Properties:   GrpCd|_DctBDMSGrps|The Burden groups should be single Digit Integers"
                   "     Table Properties   :GrpCd|_DctBDMSGrps|Groups are digits"}));
}

TEST_F(ChkDBStruTest, ARuleDroppedByHandIsCaught) {
    alter("_DctDAP", "CHECK (\"K\" >= 0 AND \"K\" <= 1)", "CHECK (\"K\" IS NOT NULL OR \"K\" IS NULL)");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(logLines(), QStringList({"Array Properties:   K|_DctDAP|>=0 And <=1     Table Properties   "
                                       ":K|_DctDAP|Is Not Null Or Is Null"}));
}

TEST_F(ChkDBStruTest, ComparisonsRunInTheirOrderFieldByField) {
    alter("_DctBDMGrps", "\"GrpCd\" SMALLINT DEFAULT 0", "\"GrpCd\" VARCHAR(3) NOT NULL DEFAULT 2");
    EXPECT_FALSE(ChkDBStru(file));
    QStringList fields;
    for (const QString& line : logLines())
        fields << line.section('|', 2, 2).section(' ', 0, 0);
    // Type, default, Required, Allow Zero Length (a text field without the zero-length guard allows
    // it); the size is not compared, since the definition states none for this field.
    EXPECT_EQ(fields, QStringList({"3", "0", "False", "False"}));
}

TEST_F(ChkDBStruTest, AFileThatIsNotADatabaseLeavesTheCheckTrueForTheStudyLoaderToTell) {
    // The check stops where it cannot open the file, with its result as it stood: True, nothing
    // shown, an empty log. Loading the study then reports the engine's description.
    QFile text(path("notes.vdb"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(4096, 'n'));
    text.close();
    QFile noise(path("noise.vdb"));
    ASSERT_TRUE(noise.open(QIODevice::WriteOnly));
    QByteArray bytes(8192, '\0');
    quint32 x = 2463534242u;
    for (char& b : bytes) {
        x ^= x << 13, x ^= x >> 17, x ^= x << 5;
        b = static_cast<char>(x);
    }
    noise.write(bytes);
    noise.close();
    ASSERT_TRUE(QDir(path("")).mkdir("folder.vdb"));
    for (const char* name : {"notes.vdb", "noise.vdb", "folder.vdb"}) {
        EXPECT_TRUE(ChkDBStru(path(name))) << name;
        EXPECT_TRUE(prompts.shown().isEmpty()) << name;
        EXPECT_EQ(log(), "") << name;
        EXPECT_FALSE(checkDatabaseStructure(path(name)).unreadable.isEmpty()) << name;
    }
}

namespace {

// A CREATE TABLE text without the CHECKs named `name`, as a file made before the type rules has it.
QString withoutChecksNamed(QString sql, const QString& name) {
    const QString opening = " CONSTRAINT \"" + name + "\" CHECK (";
    for (int at = sql.indexOf(opening); at >= 0; at = sql.indexOf(opening)) {
        int depth = 1, end = at + opening.size();
        for (; end < sql.size() && depth > 0; ++end)
            depth += sql[end] == u'(' ? 1 : sql[end] == u')' ? -1 : 0;
        sql.remove(at, end - at);
    }
    return sql;
}

} // namespace

TEST_F(ChkDBStruTest, ATypeRuleDroppedByHandIsCaughtAsADifferenceOfType) {
    alter("DatPOP", " CONSTRAINT \"Overflow\" CHECK (\"YEAR\" BETWEEN -32768 AND 32767)", "");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(prompts.messages(), QStringList({attributeMessage("YEAR", "DatPOP", 0, "3")}));
    ASSERT_EQ(logLines().size(), 1);
    EXPECT_TRUE(
        logLines()[0].startsWith("Array Properties:   YEAR|DatPOP|3     Table Properties   :YEAR|DatPOP|3 "));
    EXPECT_TRUE(logLines()[0].contains("Type mismatch")) << logLines()[0].toStdString();
    EXPECT_FALSE(logLines()[0].contains("Overflow")) << logLines()[0].toStdString();
}

TEST_F(ChkDBStruTest, ATypeRuleWidenedByHandIsCaught) {
    alter("DatPOP", "\"Bai\" BETWEEN 0 AND 255", "\"Bai\" BETWEEN 0 AND 32767");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(prompts.messages(), QStringList({attributeMessage("Bai", "DatPOP", 0, "2")}));
    ASSERT_EQ(logLines().size(), 1);
    EXPECT_TRUE(logLines()[0].contains("32767")) << logLines()[0].toStdString();
}

TEST_F(ChkDBStruTest, AStudyMadeWithoutTypeRulesIsToldFieldByField) {
    {
        auto db = openDb(file);
        exec(*db, "PRAGMA foreign_keys = OFF");
        for (const auto& t : db->tables()) {
            const QString old = withoutChecksNamed(withoutChecksNamed(t.sql, "Type mismatch"), "Overflow");
            ASSERT_NE(old, t.sql);
            exec(*db, QStringLiteral("DROP TABLE \"%1\"").arg(t.name));
            exec(*db, old);
        }
    }
    EXPECT_FALSE(ChkDBStru(file));
    int fields = 0;
    for (int t = 0; t < kDbTableCount; ++t)
        fields += dbFieldCount(t);
    ASSERT_EQ(prompts.messages().size(), fields);
    EXPECT_EQ(prompts.messages()[0], attributeMessage("CobCd", "_DctBDM", 0, "10"));
    ASSERT_EQ(logLines().size(), fields);
    EXPECT_EQ(logLines()[0], "Array Properties:   CobCd|_DctBDM|10     Table Properties   :CobCd|_DctBDM|10 "
                             "without its rules of kind and range");
}

TEST_F(ChkDBStruTest, WithoutAnOutputFolderTheLogGoesBesideTheProgramFolder) {
    settings().StatOutPath.clear();
    settings().AppPath = path("prog");
    EXPECT_TRUE(ChkDBStru(file));
    EXPECT_EQ(settings().StatOutPath, path("prog"));
    EXPECT_TRUE(QFile::exists(path("progvskstru.log")));
}

TEST_F(ChkDBStruTest, ReportWithoutMessages) {
    alter("_DctBDS", "\"BDSId\" VARCHAR(5)", "\"BDSId\" SMALLINT");
    const StructureReport r = checkDatabaseStructure(file);
    EXPECT_FALSE(r.passed());
    EXPECT_EQ(r.findings.size(), 2);
    EXPECT_TRUE(prompts.shown().isEmpty());
}

} // namespace

TEST_F(ChkDBStruTest, ADefaultRemovedByHandIsCaught) {
    alter("_DctBDMGrps", "\"GrpCd\" SMALLINT DEFAULT 0", "\"GrpCd\" SMALLINT");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(prompts.messages(), QStringList({attributeMessage("GrpCd", "_DctBDMGrps", 2, "0")}));
    EXPECT_EQ(log(),
              "Array Properties:   GrpCd|_DctBDMGrps|0     Table Properties   :GrpCd|_DctBDMGrps|\r\n");
}

TEST_F(ChkDBStruTest, AFieldRenamedByHandIsTakenForAMissingOne) {
    run("ALTER TABLE _DctBDS RENAME COLUMN BDSTi TO BDSTitle");
    EXPECT_FALSE(ChkDBStru(file));
    EXPECT_EQ(prompts.messages(),
              QStringList({"The field BDSTi is not present in the table _DctBDS of the VESK Database. Please "
                           "update the VESK Database and run the application."}));
    EXPECT_EQ(logLines(),
              QStringList({"The field BDSTi present in table _DctBDS is either misspelt or missing."}));
}
