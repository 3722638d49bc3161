// Data held under age-sex group labels: canModifyAsg and its two counts, and the test whether a unit
// has any data. A SQLite file with the data tables of the study database, created here.

#include "asg_test_support.h"
#include "database/db_connection.h"
#include "database/study_context.h"
#include "foundation/array_helpers.h"
#include "foundation/settings.h"
#include "study/asg_data.h"
#include "study/asg_labels.h"

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>

using namespace vesk;

namespace {

const char* kTables[] = {
    "CREATE TABLE DatADW (BPUID VARCHAR(5), YEAR SMALLINT, COBCd VARCHAR(5), ASG VARCHAR(6) NOT NULL, "
    "i DOUBLE DEFAULT 0, P DOUBLE DEFAULT 0, ago SINGLE, DURN SINGLE DEFAULT 0, agp SINGLE, UpdDt DATETIME, "
    "PRIMARY KEY (BPUID, YEAR, COBCd, ASG))",
    "CREATE TABLE DatCSM (BPUID VARCHAR(5), YEAR SMALLINT DEFAULT 0, COBCd VARCHAR(5), ASG VARCHAR(6) NOT "
    "NULL, "
    "CSMP DOUBLE DEFAULT 0, UpdDt DATETIME, PRIMARY KEY (BPUID, YEAR, COBCd, ASG))",
    "CREATE TABLE DatASDR (BPUID VARCHAR(5), YEAR SMALLINT DEFAULT 0, Bai BYTE NOT NULL DEFAULT 0, "
    "F DOUBLE DEFAULT 0, M DOUBLE, P DOUBLE DEFAULT 0, UpdDt DATETIME, PRIMARY KEY (BPUID, YEAR, Bai))",
    "CREATE TABLE DatPOP (BPUID VARCHAR(5), YEAR SMALLINT DEFAULT 0, Bai BYTE NOT NULL DEFAULT 0, M LONG, "
    "F LONG DEFAULT 0, UpdDt DATETIME, PRIMARY KEY (BPUID, YEAR, Bai))",
    "CREATE TABLE DatDmgphyPrmtrs (BPUID VARCHAR(5), YEAR SMALLINT DEFAULT 0, Cdmdl VARCHAR(50), "
    "PGR DOUBLE NOT NULL DEFAULT 0, IMR DOUBLE DEFAULT 0, PRIMARY KEY (BPUID, YEAR))",
    "CREATE TABLE _DfnAgeGrps (BDSId VARCHAR(5), YLL SMALLINT, YLD SMALLINT, PND SMALLINT)",
};

class AsgDataTest : public vesk::test::PromptedTest {
protected:
    void SetUp() override {
        if (!QCoreApplication::instance()) {
            static int argc = 1;
            static char name[] = "test_study";
            static char* argv[] = {name, nullptr};
            new QCoreApplication(argc, argv);
        }
        ASSERT_TRUE(dir_.isValid());
        connection_ = QUuid::createUuid().toString();
        db_ = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection_);
        db_.setDatabaseName(dir_.filePath(QStringLiteral("study.vdb")));
        ASSERT_TRUE(db_.open()) << db_.lastError().text().toStdString();
        for (const char* ddl : kTables)
            exec(ddl);
        FlagDataADW() = false;
        FlagDataCSM() = false;
    }
    void TearDown() override {
        db_.close();
        db_ = QSqlDatabase();
        QSqlDatabase::removeDatabase(connection_);
    }

    void exec(const QString& sql, const QVariantList& values = {}) {
        QSqlQuery q(db_);
        ASSERT_TRUE(q.prepare(sql)) << q.lastError().text().toStdString();
        for (const QVariant& v : values)
            q.addBindValue(v);
        ASSERT_TRUE(q.exec()) << q.lastError().text().toStdString();
    }
    int count(const QString& table) {
        QSqlQuery q(db_);
        EXPECT_TRUE(q.exec(QStringLiteral("select count(*) from ") + table));
        return q.next() ? q.value(0).toInt() : -1;
    }
    void addAdw(const QString& bpu, const QString& asg) {
        exec("insert into DatADW (BPUID, YEAR, COBCd, ASG) values (?, 2001, 'A01', ?)", {bpu, asg});
    }
    void addCsm(const QString& bpu, const QString& asg) {
        exec("insert into DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) values (?, 2001, 'A01', ?, 0.1)",
             {bpu, asg});
    }

    // The rows of _DfnAgeGrps as ArrAgeDfn holds them: YLL 0, 5, 15; YLD 0, 1, 5, 15; PND as YLD.
    static CellArray ageDefinition() {
        CellArray a({4, 3});
        const double yll[] = {0, -1, 5, 15};
        const double yld[] = {0, 1, 5, 15};
        for (int i = 0; i < 4; ++i) {
            a(i, 0) = yll[i] < 0 ? Cell("") : Cell(yll[i]);
            a(i, 1) = Cell(yld[i]);
            a(i, 2) = Cell(yld[i]);
        }
        return a;
    }

    QTemporaryDir dir_;
    QString connection_;
    QSqlDatabase db_;
};

double countOf(const Cell& counts, const QString& label) {
    const CellArray& a = counts.array();
    for (int i = 0; i < a.size(0); ++i)
        if (a(i, 0).toString() == label)
            return a(i, 1).toDouble();
    return -1;
}

} // namespace

TEST_F(AsgDataTest, NoDataNoFlags) {
    const CellArray r = canModifyAsg(db_, ageDefinition(), {"B01", "B02"}, "DatADW", "DatCSM");
    EXPECT_EQ(r(0), Cell(0));
    EXPECT_EQ(r(1), Cell(0));
    ASSERT_TRUE(r(2).isArray());
    EXPECT_EQ(r(2).array().size(0), 8); // F and M of the four YLD groups
    EXPECT_EQ(countOf(r(2), "M01-4"), 0);
    ASSERT_TRUE(r(3).isArray());
    EXPECT_EQ(r(3).array().size(0), 6);
}

TEST_F(AsgDataTest, CountsUnderLabelsOfTheStudysUnitsOnly) {
    addAdw("B01", "M01-4");
    addAdw("B02", "M01-4");
    addAdw("B09", "F0");   // another study's unit
    addAdw("B01", "M0-4"); // a label of no current set
    const Cell yld = FnAsgDataYld(db_, ageDefinition(), {"B01", "B02"}, "DatADW");
    EXPECT_EQ(countOf(yld, "M01-4"), 2);
    EXPECT_EQ(countOf(yld, "F0"), 0);
    EXPECT_TRUE(FlagDataADW());
    EXPECT_FALSE(FlagDataCSM());
}

TEST_F(AsgDataTest, YllCountsSetTheCsmFlagOnly) {
    addCsm("B01", "F05-14");
    const CellArray r = canModifyAsg(db_, ageDefinition(), {"B01"}, "DatADW", "DatCSM");
    EXPECT_EQ(r(0), Cell(0));
    EXPECT_EQ(r(1), Cell(-1));
    EXPECT_EQ(countOf(r(3), "F05-14"), 1);
}

TEST_F(AsgDataTest, FlagsStaySetOnceRaised) {
    addAdw("B01", "F15-w");
    canModifyAsg(db_, ageDefinition(), {"B01"}, "DatADW", "DatCSM");
    EXPECT_TRUE(FlagDataADW());
    exec("delete from DatADW");
    const CellArray r = canModifyAsg(db_, ageDefinition(), {"B01"}, "DatADW", "DatCSM");
    EXPECT_EQ(r(0), Cell(-1)); // never cleared
    EXPECT_EQ(countOf(r(2), "F15-w"), 0);
}

TEST_F(AsgDataTest, NoUnitsLeaveArraysEmptyAndFlagsAsTheyWere) {
    addAdw("B01", "F15-w");
    FlagDataCSM() = true;
    const CellArray r = canModifyAsg(db_, ageDefinition(), {}, "DatADW", "DatCSM");
    EXPECT_TRUE(r(2).isEmpty());
    EXPECT_TRUE(r(3).isEmpty());
    EXPECT_EQ(r(0), Cell(0));
    EXPECT_EQ(r(1), Cell(-1));
}

TEST_F(AsgDataTest, ValuesAreBoundNotPasted) {
    // A unit id with a quote in it is a value like any other.
    addAdw("B'1", "M0");
    EXPECT_EQ(countOf(FnAsgDataYld(db_, ageDefinition(), {"B'1"}, "DatADW"), "M0"), 1);
    EXPECT_THROW(FnAsgDataYld(db_, ageDefinition(), {"B01"}, "DatADW; drop table DatCSM"), RuntimeError);
    EXPECT_EQ(count("DatCSM"), 0);
    EXPECT_THROW(FnAsgDataYld(db_, ageDefinition(), {"B01"}, "NoSuchTable"), RuntimeError);
}

TEST_F(AsgDataTest, TableNamesComeFromThePreferences) {
    preferences().cmbVESKADW = "  DatADW ";
    preferences().cmbVESKCSMP = "";
    EXPECT_EQ(asgAdwTableName(), "DatADW");
    EXPECT_EQ(asgCsmTableName(), "DatCSM");
}

TEST_F(AsgDataTest, RedefiningLeavesDataRowsInPlace) {
    addAdw("B01", "M01-4");
    addCsm("B01", "M05-14");
    exec("insert into DatPOP (BPUID, YEAR, Bai, M, F) values ('B01', 2001, 3, 100, 90)");
    exec("insert into DatASDR (BPUID, YEAR, Bai, F, M) values ('B01', 2001, 3, 0.01, 0.02)");
    exec("insert into _DfnAgeGrps (BDSId, YLL, YLD, PND) values ('S1', 0, 0, 0), ('S1', 5, 5, 5)");
    const CellArray before = canModifyAsg(db_, ageDefinition(), {"B01"}, "DatADW", "DatCSM");
    ASSERT_EQ(before(0), Cell(-1));
    // The user answers yes: the definition rows are replaced, as Apply on the Age Groups tab does.
    exec("delete from _DfnAgeGrps where bdsid = ?", {"S1"});
    exec("insert into _DfnAgeGrps (BDSId, YLL, YLD, PND) values ('S1', 0, 0, 0), ('S1', 10, 10, 10)");
    EXPECT_EQ(count("DatADW"), 1);
    EXPECT_EQ(count("DatCSM"), 1);
    EXPECT_EQ(count("DatPOP"), 1);
    EXPECT_EQ(count("DatASDR"), 1);
    // The old rows keep their old labels, which the new definition no longer has.
    CellArray fresh({2, 3});
    for (int c = 0; c < 3; ++c) {
        fresh(0, c) = Cell(0);
        fresh(1, c) = Cell(10);
    }
    const Cell yld = FnAsgDataYld(db_, fresh, {"B01"}, "DatADW");
    EXPECT_EQ(countOf(yld, "M0-9"), 0);
    EXPECT_EQ(countOf(yld, "M01-4"), -1);
}

TEST_F(AsgDataTest, UnitHasDataInAnyTable) {
    EXPECT_FALSE(FnBpuHasData(db_, "B01"));
    exec("insert into DatDmgphyPrmtrs (BPUID, YEAR, PGR) values ('B01', 2001, 0.02)");
    EXPECT_TRUE(FnBpuHasData(db_, "B01"));
    EXPECT_FALSE(FnBpuHasData(db_, "B02"));
    exec("insert into DatPOP (BPUID, YEAR, Bai, M, F) values ('b02', 2001, 0, 1, 1)");
    EXPECT_TRUE(FnBpuHasData(db_, "B02")); // ids compare case-blind
    EXPECT_FALSE(FnBpuHasData(db_, "B02", {"DatADW", "DatCSM"}));
}

TEST_F(AsgDataTest, CurrentStudyOfTheContext) {
    addAdw("B01", "M01-4");
    QString error;
    // A second connection to the same file, as the study context holds it.
    db_.close();
    StudyContext& c = studyContext();
    c.StudyDB = DbConnection::open(dir_.filePath(QStringLiteral("study.vdb")), &error);
    ASSERT_TRUE(c.StudyDB) << error.toStdString();
    c.ArrAgeDfn = Cell(ageDefinition());
    CellArray units({2});
    units(0) = Cell("B01");
    units(1) = Cell("B02");
    c.VctrBPULst = Cell(units);
    const CellArray r = canModifyAsg();
    EXPECT_EQ(r(0), Cell(-1));
    EXPECT_EQ(r(1), Cell(0));
    EXPECT_EQ(countOf(r(2), "M01-4"), 1);
    EXPECT_TRUE(FnBpuHasData("B01"));
    EXPECT_FALSE(FnBpuHasData("B02"));
    c.StudyDB.reset();
    c.ArrAgeDfn = Cell();
    c.VctrBPULst = Cell();
    EXPECT_FALSE(FnBpuHasData("B01"));
    const CellArray none = canModifyAsg();
    EXPECT_TRUE(none(2).isEmpty());
    EXPECT_EQ(none(0), Cell(-1)); // the flag as it stood
}
