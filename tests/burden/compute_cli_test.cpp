// vesk-cli compute, run as a user would run it, and killed in the middle of storing.

#include "cli_process.h"
#include "database/chk_db_stru.h"
#include "platform/csv.h"
#include "small_study.h"
#include "study_db_gtest.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

using namespace vesk;
using namespace vesk::test;

namespace {

const QString kSettings = QStringLiteral(VESK_BIN_DIR "/Vesk.stp");

class ComputeCli : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        for (const auto& [sql, values] : smallStudySql())
            exec(sql, values);
    }
    // More units like U1, so that storing takes a while: U0003 onwards.
    void moreUnits(int count) {
        exec("BEGIN");
        for (int k = 3; k < 3 + count; ++k) {
            const QString id = QStringLiteral("U%1").arg(k, 4, 10, QChar('0'));
            exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S1', ?, ?, ?, 'R1')",
                 {id, id, k});
            for (const char* table : {"DatPOP", "DatASDR", "DatCSM", "DatADW", "DatADWSqla", "DatDmgphyPrmtrs"}) {
                const QStringList fields = rows(QStringLiteral("SELECT name FROM pragma_table_info('%1') WHERE name <> "
                                                               "'BPUID'")
                                                    .arg(QLatin1String(table)));
                exec(QStringLiteral("INSERT INTO %1 (BPUID, %2) SELECT ?, %2 FROM %1 WHERE BPUID = 'U1'")
                         .arg(QLatin1String(table), fields.join(", ")),
                     {id});
            }
        }
        exec("COMMIT");
    }
    // The number of rows of each (year, unit, set) of a result table.
    QStringList rowsByUnit(const char* table) {
        return rows(QStringLiteral("SELECT count(*) FROM %1 GROUP BY YEAR, BPUID, DAPID").arg(QLatin1String(table)));
    }
};

} // namespace

TEST_F(ComputeCli, StoresTheResultsAndPrintsTheTimes) {
    db.reset();
    const CliRun r = runCli({"compute", file, "--dap", "0,3", "--sensitivity", "--settings", kSettings});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QStringList lines = r.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 8) << r.out.toStdString();
    EXPECT_TRUE(lines[0].startsWith("Start Application  = [Date: "));
    EXPECT_TRUE(lines[4].startsWith("Computing YLD,YLL,DALY... =  "));
    EXPECT_TRUE(r.err.endsWith("Calculation of DALY is complete.  Results are stored in tables \n"))
        << r.err.toStdString();
    QString error;
    db = DbConnection::open(file, &error);
    ASSERT_TRUE(db);
    EXPECT_EQ(value("SELECT count(*) FROM RsltYLD"), "160"); // 2 units x 2 sets x 40
    EXPECT_EQ(value("SELECT count(*) FROM RsltYLL"), "48");
    EXPECT_EQ(value("SELECT count(*) FROM RsltDALY"), "48");
}

TEST_F(ComputeCli, RefusesWhatItCannotRunAndSaysWhyARunStops) {
    EXPECT_EQ(runCli({"compute", file, "--dap", "0,1"}).exitCode, 2); // two sets need --sensitivity
    EXPECT_EQ(runCli({"compute", file, "--dap", "7"}).exitCode, 2);
    EXPECT_EQ(runCli({"compute"}).exitCode, 2);
    EXPECT_EQ(runCli({"compute", path("none.vdb")}).exitCode, 1);
    exec("DELETE FROM DatASDR");
    db.reset();
    const CliRun r = runCli({"compute", file, "--dap", "0", "--settings", kSettings});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("Demographic Inputs could not be built as data for Population Or ASDR(Mortality Rate) "
                               "may not be present. Computation of DALY cannot proceed further"))
        << r.err.toStdString();
    EXPECT_EQ(r.out.split('\n', Qt::SkipEmptyParts).size(), 1); // the start line of Time.stp only
}

TEST_F(ComputeCli, AKillWhileStoringLeavesWholeUnitsAndASoundFile) {
    moreUnits(250);
    db.reset();
    QProcess p;
    p.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"),
            {"compute", file, "--dap", "0,1,2,3", "--sensitivity", "--settings", kSettings});
    ASSERT_TRUE(p.waitForStarted());
    // Watch the file from another connection until the first units are stored, then kill.
    QString error;
    auto watcher = DbConnection::open(file, &error);
    ASSERT_TRUE(watcher);
    QElapsedTimer clock;
    clock.start();
    bool storing = false;
    while (!storing && p.state() == QProcess::Running && clock.elapsed() < 120000) {
        const QStringList n = queryRows(*watcher, "SELECT count(*) FROM RsltYLD");
        storing = !n.isEmpty() && n.first().toInt() > 0;
        if (!storing)
            QThread::msleep(2);
    }
    watcher.reset();
    ASSERT_TRUE(storing) << "the run ended before it stored anything";
    p.kill(); // SIGKILL
    p.waitForFinished();
    ASSERT_EQ(p.exitStatus(), QProcess::CrashExit) << "the run had ended before the kill: make the study larger";

    const StructureReport report = checkDatabaseStructure(file);
    EXPECT_TRUE(report.passed());
    db = DbConnection::open(file, &error);
    ASSERT_TRUE(db);
    // 252 units x 4 sets: each (year, unit, set) has all of its rows or none.
    const QStringList yld = rowsByUnit("RsltYLD");
    EXPECT_FALSE(yld.isEmpty());
    for (const QString& n : yld)
        EXPECT_EQ(n, "40");
    for (const char* t : {"RsltYLL", "RsltDALY"})
        for (const QString& n : rowsByUnit(t))
            EXPECT_EQ(n, "12") << t;
    const int stored = int(yld.size() + rowsByUnit("RsltYLL").size() + rowsByUnit("RsltDALY").size());
    EXPECT_LT(stored, 3 * 252 * 4) << "the kill came after the last unit";
}

TEST(BenchCli, TheTinyStudyRunsAndEveryMeasureIsReported) {
    // No time is asserted: the bench's figures are read by people, not by tests.
    QTemporaryDir work;
    ASSERT_TRUE(work.isValid());
    QProcess p;
    p.setWorkingDirectory(work.path());
    p.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"),
            {"bench", "--study", "tiny", "--settings", kSettings, "--keep", work.filePath("tiny.vdb")});
    ASSERT_TRUE(p.waitForFinished(120000));
    const QString out = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    QString error;
    const auto csv = parseCsv(out, &error);
    ASSERT_TRUE(csv) << error.toStdString();
    QStringList measures{csv->header.value(0)};
    for (const QStringList& row : csv->rows)
        measures << row.value(0);
    EXPECT_EQ(measures, QStringList({"study",
                                     "units",
                                     "causes",
                                     "parameter sets",
                                     "generated in (s)",
                                     "Loading population and Mortality data to Memory... (s)",
                                     "Loading Cause of Death data into Memory... (s)",
                                     "Loading Epidemiological Data into Memory... (s)",
                                     "Computing YLD,YLL,DALY... (s)",
                                     "Storing YLD Results into Table... (s)",
                                     "Storing YLL Results into Table... (s)",
                                     "Storing DALY Results into Table... (s)",
                                     "whole computation (s)",
                                     "rows stored",
                                     "rows a second",
                                     "result cells",
                                     "kernel cells a second",
                                     "peak memory (MB)",
                                     "memory before the run (MB)",
                                     "bytes a result cell",
                                     "SQLite floor (s)",
                                     "whole / floor"}));
    EXPECT_TRUE(out.contains("units,3\n")) << out.toStdString();
    // The kept study holds the rows the bench counted: 3 units x 4 sets of each table.
    auto db = DbConnection::open(work.filePath("tiny.vdb"), &error);
    ASSERT_TRUE(db);
    const QString stored = QString::number(queryRows(*db, "SELECT count(*) FROM RsltYLD").value(0).toLongLong() +
                                           queryRows(*db, "SELECT count(*) FROM RsltYLL").value(0).toLongLong() +
                                           queryRows(*db, "SELECT count(*) FROM RsltDALY").value(0).toLongLong());
    EXPECT_TRUE(out.contains("rows stored," + stored + "\n")) << out.toStdString();
    EXPECT_EQ(queryRows(*db, "SELECT count(DISTINCT BPUID || '/' || DAPID) FROM RsltYLL").value(0), "12");
    // No scratch folder is left behind.
    EXPECT_TRUE(QDir(work.path()).entryList({"vesk-bench-*"}, QDir::Dirs).isEmpty());
}
