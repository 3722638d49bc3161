// The demonstration study that vesk-studygen writes: its units and causes, shares of death that add
// to 1, people and death rates above 0, a disability small enough for a valid life table in every
// group, figures that follow the age and sex of each cause, and the same file on every run. The
// benchmark recipes still write.

#include "database/db_connection.h"
#include "query_rows.h"
#include "study/asg_labels.h"
#include "study_recipe.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <map>
#include <memory>

using namespace vesk;
using namespace vesk::studygen;

namespace {

// Writes the recipe `name` to `file` in `dir`; the path, or empty after a failure of the test.
QString written(const QTemporaryDir& dir, const QString& name, const QString& file) {
    StudyRecipe recipe;
    if (!recipeNamed(name, recipe)) {
        ADD_FAILURE() << "no recipe " << name.toStdString();
        return {};
    }
    const QString path = dir.filePath(file);
    QString error;
    if (!writeStudy(recipe, path, &error)) {
        ADD_FAILURE() << error.toStdString();
        return {};
    }
    return path;
}

QByteArray bytesOf(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// The demonstration study, written once for all the tests of this file.
class DemoStudy : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        dir_ = std::make_unique<QTemporaryDir>();
        ASSERT_TRUE(dir_->isValid());
        const QString path = written(*dir_, QStringLiteral("demo"), QStringLiteral("demo.vdb"));
        ASSERT_FALSE(path.isEmpty());
        QString error;
        db_ = DbConnection::open(path, &error);
        ASSERT_TRUE(db_) << error.toStdString();
    }
    static void TearDownTestSuite() {
        db_.reset();
        dir_.reset();
    }

    void SetUp() override { ASSERT_TRUE(db_); }

    static QStringList rows(const QString& sql, const QVariantList& values = {}) {
        QString error;
        const QStringList out = test::queryRows(*db_, sql, values, &error);
        EXPECT_TRUE(error.isEmpty()) << error.toStdString();
        return out;
    }
    static QString value(const QString& sql, const QVariantList& values = {}) {
        const QStringList r = rows(sql, values);
        return r.isEmpty() ? QString() : r.first();
    }
    static int count(const QString& sql, const QVariantList& values = {}) {
        return value(sql, values).toInt();
    }

    static std::unique_ptr<QTemporaryDir> dir_;
    static std::shared_ptr<DbConnection> db_;
};

std::unique_ptr<QTemporaryDir> DemoStudy::dir_;
std::shared_ptr<DbConnection> DemoStudy::db_;

constexpr int kUnits = 8;
constexpr int kCauses = 25;
constexpr int kCausesWithSequelae = 5;
constexpr int kSequelae = 13;
constexpr int kGroups = 38; // 19 age groups a sex

TEST_F(DemoStudy, StudySchemeAndNation) {
    EXPECT_EQ(rows(QStringLiteral("SELECT BDSId, Year, BDSTi, Slct FROM _DctBDS")),
              QStringList{QStringLiteral("DEM|2020|Demonstration nation 2020|1")});
    EXPECT_EQ(rows(QStringLiteral("SELECT BPU, PAG1, PAG2 FROM _DfnBPUPAGDscrptrs d JOIN _DctBDS s ON "
                                  "s.PAGSch = d.PAGSch")),
              QStringList{QStringLiteral("District|Region|Nation")});
    EXPECT_EQ(rows(QStringLiteral("SELECT BDSId, PAG2Id, PAG2Name FROM _DctPAG2")),
              QStringList{QStringLiteral("DEM|N1|Demonstration nation")});
}

TEST_F(DemoStudy, ThreeRegionsOfTheNationAndTheirDistricts) {
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctPAG1 WHERE BDSId = 'DEM' AND PAG2Id = 'N1'")),
              3);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBPU WHERE BDSId = 'DEM'")), kUnits);
    // Every district in a region of the study.
    EXPECT_EQ(
        count(QStringLiteral("SELECT count(*) FROM _DctBPU b LEFT JOIN _DctPAG1 p ON p.BDSId = b.BDSId AND "
                             "p.PAG1Id = b.PAG1Id WHERE p.PAG1Id IS NULL")),
        0);
    // Every region holds a district, and exactly one holds a single district.
    EXPECT_EQ(
        count(QStringLiteral("SELECT count(*) FROM _DctPAG1 p WHERE NOT EXISTS (SELECT 1 FROM _DctBPU b "
                             "WHERE b.PAG1Id = p.PAG1Id)")),
        0);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM (SELECT PAG1Id FROM _DctBPU GROUP BY PAG1Id "
                                   "HAVING count(*) = 1)")),
              1);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBPU WHERE length(BPUID) > 5")), 0);
    EXPECT_EQ(rows(QStringLiteral("SELECT Prty FROM _DctBPU ORDER BY Prty")),
              (QStringList{"1", "2", "3", "4", "5", "6", "7", "8"}));
}

TEST_F(DemoStudy, AccentedNameReadsBackWhole) {
    const QString name = QStringLiteral("S\u00e3o Louren\u00e7o");
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBPU WHERE BPUName = ?"), {name}), 1);
    EXPECT_EQ(value(QStringLiteral("SELECT length(BPUName) FROM _DctBPU WHERE BPUName = ?"), {name}), "12");
}

TEST_F(DemoStudy, CauseTreeFlaggedForTheStudy) {
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBDMGrps")), 3);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBDM")), kCauses);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBDM WHERE DEM <> 0")), kCauses);
    // Each cause under its cluster (its first four characters), subgroup and group.
    EXPECT_EQ(
        count(QStringLiteral("SELECT count(*) FROM _DctBDM d JOIN _DctBDMClstr c ON c.ClstrCd = d.ClstrCd "
                             "JOIN _DctBDMSGrps s ON s.SGrpCd = c.SGrpCd JOIN _DctBDMGrps g ON g.GrpCd = "
                             "s.GrpCd WHERE length(d.CobCd) = 5 AND substr(d.CobCd, 1, 4) = d.ClstrCd AND "
                             "substr(c.ClstrCd, 1, 2) = c.SGrpCd AND substr(s.SGrpCd, 1, 1) = s.GrpCd")),
        kCauses);
    EXPECT_EQ(value(QStringLiteral("SELECT Disease FROM _DctBDM WHERE CobCd = '22011'")),
              "Diabetes mellitus");
}

TEST_F(DemoStudy, SequelaeMappedToTheirCauses) {
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBDMSqla")), kSequelae);
    EXPECT_EQ(
        count(QStringLiteral("SELECT count(*) FROM _MapBDMSqla m JOIN _DctBDMSqla s ON s.SqlaCd = m.SqlaCd "
                             "JOIN _DctBDM d ON d.CobCd = m.cobcd WHERE d.Sqla = -1")),
        kSequelae);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBDM WHERE Sqla = -1")), kCausesWithSequelae);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBDM d WHERE Sqla = -1 AND (SELECT count(*) FROM "
                                   "_MapBDMSqla m WHERE m.cobcd = d.CobCd) NOT BETWEEN 2 AND 4")),
              0);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBDM d WHERE Sqla = 0 AND EXISTS (SELECT 1 FROM "
                                   "_MapBDMSqla m WHERE m.cobcd = d.CobCd)")),
              0);
    // A sequela's code stands in DatDwt's cause field, of 7 characters.
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM _DctBDMSqla WHERE length(SqlaCd) > 7")), 0);
}

TEST_F(DemoStudy, SharesOfDeathAddToExactlyOne) {
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatCSM")), kUnits * kCauses * kGroups);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatCSM WHERE CSMP < 0")), 0);
    const QStringList sums =
        rows(QStringLiteral("SELECT BPUID, ASG, sum(CSMP) FROM DatCSM GROUP BY BPUID, ASG"));
    ASSERT_EQ(sums.size(), kUnits * kGroups);
    for (const QString& s : sums) {
        auto q = db_->query(QStringLiteral("SELECT CSMP FROM DatCSM WHERE BPUID = ? AND ASG = ?"),
                            {s.section(u'|', 0, 0), s.section(u'|', 1, 1)});
        ASSERT_TRUE(q);
        double total = 0;
        while (q->next())
            total += q->value(0).toDouble();
        EXPECT_EQ(total, 1.0) << s.toStdString();
    }
}

// The share of the causes of one broad group (the first digit of the code) in a unit's group.
double groupShare(const DbConnection& db, const QString& unit, const QString& asg, const QString& group) {
    auto q = db.query(QStringLiteral("SELECT sum(CSMP) FROM DatCSM WHERE BPUID = ? AND ASG = ? AND "
                                     "substr(COBCd, 1, 1) = ?"),
                      {unit, asg, group});
    return q && q->next() ? q->value(0).toDouble() : -1;
}

TEST_F(DemoStudy, SharesFollowTheAgeOfEachKindOfCause) {
    for (const QString& unit : rows(QStringLiteral("SELECT BPUID FROM _DctBPU"))) {
        for (const QString& infants : {QStringLiteral("F0"), QStringLiteral("M0")})
            EXPECT_GT(groupShare(*db_, unit, infants, "1"), 0.5) << unit.toStdString();
        const double injuries = groupShare(*db_, unit, "M15-19", "3");
        EXPECT_GT(injuries, groupShare(*db_, unit, "M15-19", "1")) << unit.toStdString();
        EXPECT_GT(injuries, groupShare(*db_, unit, "M15-19", "2")) << unit.toStdString();
        for (const QString& old :
             {QStringLiteral("F65-69"), QStringLiteral("M75-79"), QStringLiteral("F85-w")})
            EXPECT_GT(groupShare(*db_, unit, old, "2"), 0.5) << unit.toStdString();
    }
    // No man dies of a maternal condition, nor a woman outside the ages of childbearing.
    EXPECT_EQ(
        count(QStringLiteral("SELECT count(*) FROM DatCSM WHERE COBCd = '13011' AND CSMP > 0 AND (ASG LIKE "
                             "'M%' OR ASG IN ('F0', 'F01-4', 'F10-14', 'F50-54', 'F85-w'))")),
        0);
}

TEST_F(DemoStudy, PeopleAndDeathRatesOfEveryGroup) {
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatPOP")), kUnits * 19);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatASDR")), kUnits * 19);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatPOP WHERE NOT (M > 0 AND F > 0)")), 0);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatASDR WHERE NOT (M > 0 AND F > 0 AND P > 0)")), 0);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatASDR WHERE Bai = 85 AND M > 0 AND F > 0")),
              kUnits);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatASDR WHERE F >= M")), 0);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatASDR WHERE Bai = 0 AND (M < 0.02 OR M > 0.03)")),
              0);
    EXPECT_EQ(
        count(QStringLiteral("SELECT count(*) FROM (SELECT BPUID, sum(M + F) n FROM DatPOP GROUP BY BPUID) "
                             "WHERE n < 80000 OR n > 900000")),
        0);
    EXPECT_EQ(
        count(QStringLiteral("SELECT count(*) FROM DatDmgphyPrmtrs WHERE PGR BETWEEN 0.01 AND 0.02 AND IMR "
                             "BETWEEN 15 AND 40 AND Cdmdl IN ('West', 'North', 'East', 'South')")),
        kUnits);
}

TEST_F(DemoStudy, EpidemiologyOfEveryCauseAndSequela) {
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatADW")),
              kUnits * (kCauses - kCausesWithSequelae) * kGroups);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatADWSqla")), kUnits * kSequelae * kGroups);
    EXPECT_EQ(
        count(QStringLiteral("SELECT count(*) FROM DatADW a JOIN _DctBDM d ON d.CobCd = a.COBCd WHERE d.Sqla "
                             "<> 0")),
        0);
    EXPECT_EQ(count(QStringLiteral(
                  "SELECT count(*) FROM DatADWSqla a JOIN _MapBDMSqla m ON m.SqlaCd = a.SqlaCd AND "
                  "m.cobcd = a.COBCd")),
              kUnits * kSequelae * kGroups);
    for (const QString& table : {QStringLiteral("DatADW"), QStringLiteral("DatADWSqla")})
        for (const QString& row :
             rows(QStringLiteral("SELECT ASG, ago, agp, DURN, i, P FROM %1").arg(table))) {
            const QStringList f = row.split(u'|');
            const double start = FnAsgStart(f[0]);
            const Cell end = FnAsgEnd(f[0]);
            const double below = end.isNumber() ? end.toDouble() : 200;
            EXPECT_TRUE(f[1].toDouble() >= start && f[1].toDouble() < below) << row.toStdString();
            EXPECT_TRUE(f[2].toDouble() >= start && f[2].toDouble() < below) << row.toStdString();
            EXPECT_GT(f[3].toDouble(), 0) << row.toStdString();
            EXPECT_GE(f[4].toDouble(), 0) << row.toStdString();
            EXPECT_TRUE(f[5].toDouble() >= 0 && f[5].toDouble() < 1) << row.toStdString();
        }
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM DatDwt WHERE NOT (Dwt > 0 AND Dwt < 1)")), 0);
}

// For each unit and YLD group: the incident cases (i x the people of the group) of every cause and
// sequela, times their weight (by code and unisex label) and duration, over the people of the group.
// The life table of health-adjusted life expectancy stays valid only well below 1.
TEST_F(DemoStudy, DisabilityOfEveryGroupWellBelowItsPeople) {
    std::map<QString, double> weight; // code|unisex label
    for (const QString& row : rows(QStringLiteral("SELECT COBCd, ASG, Dwt FROM DatDwt WHERE BDSId = 'DEM'")))
        weight[row.section(u'|', 0, 1)] = row.section(u'|', 2, 2).toDouble();
    std::map<QString, double> people; // unit|sex letter|lower age
    for (const QString& row : rows(QStringLiteral("SELECT BPUID, Bai, M, F FROM DatPOP"))) {
        const QStringList f = row.split(u'|');
        people[f[0] + QStringLiteral("|M|") + f[1]] = f[2].toDouble();
        people[f[0] + QStringLiteral("|F|") + f[1]] = f[3].toDouble();
    }
    std::map<QString, double> disabled; // unit|sex letter|lower age: cases x weight x duration
    const QString sql = QStringLiteral("SELECT BPUID, ASG, %1, i, DURN FROM %2");
    for (const auto& [code, table] : {std::pair{"COBCd", "DatADW"}, std::pair{"SqlaCd", "DatADWSqla"}})
        for (const QString& row : rows(sql.arg(QLatin1String(code), QLatin1String(table)))) {
            const QStringList f = row.split(u'|');
            const QString key = f[0] + u'|' + f[1].left(1) + u'|' + QString::number(FnAsgStart(f[1]));
            const QString unisex = f[2] + QStringLiteral("|U") + f[1].mid(1);
            ASSERT_TRUE(weight.count(unisex)) << row.toStdString();
            ASSERT_TRUE(people.count(key)) << row.toStdString();
            const double cases = f[3].toDouble() * people[key];
            disabled[key] += cases * weight[unisex] * f[4].toDouble();
        }
    ASSERT_EQ(int(disabled.size()), kUnits * kGroups);
    for (const auto& [key, years] : disabled) {
        ASSERT_GT(people[key], 0) << key.toStdString();
        const double share = years / people[key];
        EXPECT_GT(share, 0) << key.toStdString();
        EXPECT_LT(share, 0.3) << key.toStdString();
    }
}

TEST(DemoStudyFile, TheSameFileOnEveryRun) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString a = written(dir, QStringLiteral("demo"), QStringLiteral("a.vdb"));
    const QString b = written(dir, QStringLiteral("demo"), QStringLiteral("b.vdb"));
    ASSERT_FALSE(a.isEmpty());
    ASSERT_FALSE(b.isEmpty());
    const QByteArray first = bytesOf(a);
    EXPECT_GT(first.size(), 0);
    EXPECT_TRUE(first == bytesOf(b));
}

TEST(DemoStudyFile, RefusedOverAnExistingFile) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    ASSERT_FALSE(written(dir, QStringLiteral("demo"), QStringLiteral("a.vdb")).isEmpty());
    StudyRecipe recipe;
    ASSERT_TRUE(recipeNamed(QStringLiteral("demo"), recipe));
    QString error;
    EXPECT_FALSE(writeStudy(recipe, dir.filePath(QStringLiteral("a.vdb")), &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST(BenchmarkRecipes, AllNamedAndTheTinyOneWrites) {
    StudyRecipe recipe;
    for (const char* name : {"nation", "districts", "tiny", "demo"})
        EXPECT_TRUE(recipeNamed(QString::fromLatin1(name), recipe)) << name;
    EXPECT_FALSE(recipeNamed(QStringLiteral("Demo"), recipe));
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = written(dir, QStringLiteral("tiny"), QStringLiteral("tiny.vdb"));
    ASSERT_FALSE(path.isEmpty());
    QString error;
    auto db = DbConnection::open(path, &error);
    ASSERT_TRUE(db) << error.toStdString();
    EXPECT_EQ(test::queryRows(*db, QStringLiteral("SELECT BDSId, BDSTi FROM _DctBDS")),
              QStringList{QStringLiteral("TNY|Tiny benchmark")});
    EXPECT_EQ(test::queryRows(*db, QStringLiteral("SELECT count(*) FROM _DctBPU")), QStringList{"3"});
    EXPECT_EQ(test::queryRows(*db, QStringLiteral("SELECT count(*) FROM _DctBDM WHERE TNY <> 0")),
              QStringList{"12"});
    EXPECT_GT(test::queryRows(*db, QStringLiteral("SELECT count(*) FROM _MapBDMSqla")).value(0).toInt(), 0);
}

} // namespace
