// vesk-cli leading and vesk-cli dale on the small study, as a user runs them: the first call computes
// and stores, the next ones read the stored results; the ranking against the stored rows sorted here.

#include "cli_process.h"
#include "database/db_connection.h"
#include "query_rows.h"
#include "small_study.h"
#include "study_db_gtest.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>

using namespace vesk;
using namespace vesk::test;

namespace {

const QString kSettings = QStringLiteral(VESK_BIN_DIR "/Vesk.stp");

class RankingCli : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        for (const auto& [sql, values] : smallStudySql())
            exec(sql, values);
        exec(kSmallPersonsRates);
    }
    CliRun cli(QStringList args) {
        args << db->path() << "--settings" << kSettings;
        return runCli(args);
    }
};

} // namespace

TEST_F(RankingCli, TheRankingIsTheStoredRowsSortedAndAllCausesWhenNExceedsThem) {
    const CliRun run = cli({"leading", "--measure", "IDALY", "--n", "10", "--unit", "U1"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.takeFirst(), QString("Rank,COBCd,Cause,Total,Percent"));
    // The stored rows of U1 and set 1 summed by cause and sorted here, largest first.
    struct Row {
        QString code;
        double total;
    };
    std::vector<Row> stored;
    double all = 0;
    for (const QString& r : rows("SELECT COBCd, SUM(IDALY) FROM RsltDALY WHERE BPUID = 'U1' AND DAPID = 1 GROUP BY COBCd")) {
        stored.push_back({r.section('|', 0, 0), r.section('|', 1, 1).toDouble()});
        all += stored.back().total;
    }
    std::stable_sort(stored.begin(), stored.end(), [](const Row& a, const Row& b) { return a.total > b.total; });
    ASSERT_EQ(lines.size(), 3); // three causes, N 10
    for (int k = 0; k < 3; ++k) {
        const QStringList f = lines[k].split(',');
        ASSERT_EQ(f.size(), 5);
        EXPECT_EQ(f[0], QString::number(k + 1));
        EXPECT_EQ(f[1], stored[std::size_t(k)].code);
        EXPECT_NEAR(f[3].toDouble(), stored[std::size_t(k)].total, 1e-9 * std::max(1.0, stored[std::size_t(k)].total));
        EXPECT_EQ(f[4], QString::number(100 * f[3].toDouble() / all, 'f', 3));
    }
    EXPECT_EQ(lines[0].split(',')[2], QString("Plain cause"));
    // A second run reads what the first stored: the same ranking, no row added.
    const QString count = value("SELECT COUNT(*) FROM RsltDALY");
    const CliRun again = cli({"leading", "--measure", "IDALY", "--n", "10", "--unit", "U1"});
    EXPECT_EQ(again.out, run.out);
    EXPECT_EQ(value("SELECT COUNT(*) FROM RsltDALY"), count);
}

TEST_F(RankingCli, AggregatesAndTheirListAndTheCommandsRefusals) {
    const CliRun list = cli({"leading", "--level", "PAG1", "--list"});
    ASSERT_EQ(list.exitCode, 0) << list.err.toStdString();
    EXPECT_EQ(list.out, QString("ID,Name\nR1,Region\n"));
    const CliRun region = cli({"leading", "--measure", "YLL", "--level", "PAG2", "--n", "2"});
    ASSERT_EQ(region.exitCode, 0) << region.err.toStdString();
    EXPECT_EQ(region.out.split('\n', Qt::SkipEmptyParts).size(), 3);
    EXPECT_EQ(cli({"leading", "--measure", "DALY"}).exitCode, 2);
    EXPECT_EQ(cli({"leading", "--level", "PAG3"}).exitCode, 2);
    EXPECT_EQ(cli({"leading", "--n", "0"}).exitCode, 2);
    EXPECT_EQ(cli({"leading", "--unit", "U9"}).exitCode, 2);
}

TEST_F(RankingCli, DaleTableHasItsHeadAndARowForEachUnitAndSet) {
    const CliRun run = cli({"dale", "--dap", "1,2"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 1 + 2 * 2);
    EXPECT_EQ(lines[0], QString("Year,Region ID,DAPID,E0_F,DALE_F,E0_M,DALE_M,E0_P,DALE_P,HE_F,HE_M,HE_P"));
    EXPECT_TRUE(lines[1].startsWith("2000,U1,1,"));
    EXPECT_TRUE(lines[2].startsWith("2000,U1,2,"));
    EXPECT_TRUE(lines[3].startsWith("2000,U2,1,"));
    for (int k = 1; k < lines.size(); ++k) {
        const QStringList f = lines[k].split(',');
        ASSERT_EQ(f.size(), 12);
        for (int c = 3; c < 12; ++c) {
            bool ok = false;
            f[c].toDouble(&ok);
            EXPECT_TRUE(ok) << lines[k].toStdString();
        }
        // Disability only takes years away; U2 has no population and so none.
        EXPECT_LE(f[4].toDouble(), f[3].toDouble());
        EXPECT_LE(f[9].toDouble(), f[3].toDouble() * (1 + 1e-12));
    }
    const QStringList u1 = lines[1].split(','), u2 = lines[3].split(',');
    EXPECT_LT(u1[9].toDouble(), u1[3].toDouble());
    EXPECT_NEAR(u2[9].toDouble(), u2[3].toDouble(), 1e-12 * u2[3].toDouble()); // the sums in another order
    EXPECT_EQ(u2[4], u2[3]);
    // The fractions of U2 divide by 0: the stored errors go to standard error.
    EXPECT_TRUE(run.err.contains("FnDaleFractions"));
}

namespace {

// A copy of the demonstration study built beside the programs.
class DemoRanking : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        path = dir.filePath("demo.vdb");
        ASSERT_TRUE(QFile::copy(QStringLiteral(VESK_BIN_DIR "/demo.vdb"), path));
        QFile(path).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    }
    QTemporaryDir dir;
    QString path;
};

} // namespace

TEST_F(DemoRanking, TheRankingOfARegionIsItsStoredRowsSortedHere) {
    const CliRun run = runCli({"leading", path, "--measure", "IDALY", "--n", "10", "--level", "PAG1", "--unit", "CEN",
                               "--settings", kSettings});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.takeFirst(), QString("Rank,COBCd,Cause,Total,Percent"));
    ASSERT_EQ(lines.size(), 10);
    // The rows the run stored, summed over the districts of the region and the age-sex groups, sorted
    // here; the shares are of all causes, not of the ten.
    QString error;
    auto db = DbConnection::open(path, &error);
    ASSERT_TRUE(db) << error.toStdString();
    const QStringList sums = queryRows(*db,
                                       "SELECT r.COBCd, d.Disease, SUM(r.IDALY) FROM RsltDALY r JOIN _DctBPU b ON "
                                       "b.BPUID = r.BPUID JOIN _DctBDM d ON d.CobCd = r.COBCd WHERE b.PAG1Id = 'CEN' "
                                       "AND r.DAPID = 1 GROUP BY r.COBCd",
                                       {}, &error);
    ASSERT_GT(sums.size(), 10);
    std::vector<std::pair<double, QStringList>> sorted;
    double all = 0;
    for (const QString& s : sums) {
        const QStringList f = s.split('|');
        sorted.push_back({f[2].toDouble(), f});
        all += f[2].toDouble();
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    for (int k = 0; k < 10; ++k) {
        const QStringList f = lines[k].split(',');
        ASSERT_EQ(f.size(), 5) << lines[k].toStdString();
        EXPECT_EQ(f[1], sorted[std::size_t(k)].second[0]);
        EXPECT_EQ(f[2], sorted[std::size_t(k)].second[1]);
        // The stored values are the doubles the run summed in another order.
        EXPECT_NEAR(f[3].toDouble(), sorted[std::size_t(k)].first, 1e-9 * sorted[std::size_t(k)].first);
        EXPECT_EQ(f[4], QString::number(100 * f[3].toDouble() / all, 'f', 3));
    }
}

TEST(DemoScript, PrintsTheLeadingCausesOfEachRegionAndTheDaleTable) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    p.setProcessEnvironment(env);
    p.start("bash", {QStringLiteral(VESK_SOURCE_DIR "/scripts/demo"), QStringLiteral(VESK_BIN_DIR "/..")});
    ASSERT_TRUE(p.waitForFinished(120000));
    const QString out = QString::fromUtf8(p.readAllStandardOutput());
    ASSERT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    EXPECT_EQ(out.count("Rank,COBCd,Cause,Total,Percent"), 3); // three regions
    EXPECT_TRUE(out.contains("== The ten leading causes by IDALY in Coast (CST)"));
    const int head = int(out.indexOf("Year,Region ID,DAPID,E0_F,DALE_F,E0_M,DALE_M,E0_P,DALE_P,HE_F,HE_M,HE_P"));
    ASSERT_GE(head, 0);
    EXPECT_EQ(out.mid(head).split('\n', Qt::SkipEmptyParts).size(), 1 + 8); // eight districts
}
