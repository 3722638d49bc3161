// The run logs: errorsrec.stp, block by block, and Time.stp of a computation.

#include "db_test_support.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/time_log.h"

#include <QFile>
#include <QRegularExpression>

using namespace vesk;
using vesk::test::DbTest;

namespace {

using RunLogTest = DbTest;

TEST_F(RunLogTest, ThreeErrorsGiveThreeBlocksOfOneTwoAndThreeLines) {
    ErrorStore(0, "The Cobcds are not declared in _DctBdm ", "InitCobcd ");
    ErrorStore(-2, "Invalid parameter value", "FnlYLD");
    ErrorStore(13, "Type mismatch", "procBDNKernel");
    const QStringList lines = readText(path("errorsrec.stp")).split("\r\n", Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 9);
    const QRegularExpression head(R"(^\[Date : \d\d/\d\d/\d{4}   Time : \d\d:\d\d:\d\d\]$)");
    for (int i : {0, 2, 5})
        EXPECT_TRUE(head.match(lines[i]).hasMatch()) << lines[i].toStdString();
    EXPECT_EQ(lines[1], "       0,The Cobcds are not declared in _DctBdm ,InitCobcd ");
    EXPECT_EQ(lines[3], lines[1]);
    EXPECT_EQ(lines[4], "       -2,Invalid parameter value,FnlYLD");
    EXPECT_EQ(lines[6], lines[1]);
    EXPECT_EQ(lines[7], lines[4]);
    EXPECT_EQ(lines[8], "       13,Type mismatch,procBDNKernel");
    EXPECT_EQ(errorStoreCount(), 3);
}

TEST_F(RunLogTest, TheLogsAreNeverTruncated) {
    for (const char* name : {"errorsrec.stp", "Time.stp"}) {
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("an earlier run\r\n");
    }
    ErrorStore(1, "x", "y");
    clearErrorStore();
    ErrorStore(2, "z", "w");
    TimeLog log;
    ASSERT_TRUE(log.start());
    log.phase(TimePhase::Compute);
    log.finish();
    TimeLog again;
    ASSERT_TRUE(again.start());
    again.finish();
    const QString errors = readText(path("errorsrec.stp"));
    EXPECT_TRUE(errors.startsWith("an earlier run\r\n"));
    EXPECT_TRUE(errors.contains("       1,x,y\r\n"));
    EXPECT_TRUE(errors.endsWith("       2,z,w\r\n"));
    const QString times = readText(path("Time.stp"));
    EXPECT_TRUE(times.startsWith("an earlier run\r\n"));
    EXPECT_EQ(times.count("Start Application  = [Date: "), 2);
}

TEST_F(RunLogTest, TimeStpHasTheStartLineAndEveryPhaseInSecondsToTwoDecimals) {
    QList<double> ticks = {1000.0, 1002.6, 1003.5, 1006.0, 1006.4, 1007.9, 1010.5, 1013.0};
    TimeLog log([&] { return ticks.takeFirst(); });
    ASSERT_TRUE(log.start());
    for (TimePhase p :
         {TimePhase::LoadPopulation, TimePhase::LoadCauseOfDeath, TimePhase::LoadEpidemiological,
          TimePhase::Compute, TimePhase::StoreYLD, TimePhase::StoreYLL, TimePhase::StoreDALY})
        log.phase(p);
    log.finish();
    const QStringList lines = readText(path("Time.stp")).split("\r\n", Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 8);
    EXPECT_TRUE(
        QRegularExpression(R"(^Start Application  = \[Date: \d\d/\d\d/\d{4} And Time: \d\d:\d\d:\d\d \]$)")
            .match(lines[0])
            .hasMatch())
        << lines[0].toStdString();
    EXPECT_EQ(lines[1], "Loading population and Mortality data to Memory...  =  2.6");
    EXPECT_EQ(lines[2], "Loading Cause of Death data into Memory... =  0.9");
    EXPECT_EQ(lines[3], "Loading Epidemiological Data into Memory...  =  2.5");
    EXPECT_EQ(lines[4], "Computing YLD,YLL,DALY... =  0.4");
    EXPECT_EQ(lines[5], "Storing YLD Results into Table... =  1.5");
    EXPECT_EQ(lines[6], "Storing YLL Results into Table... =  2.6");
    EXPECT_EQ(lines[7], "Storing DALY Results into Table... =  2.5");
    EXPECT_EQ(log.lines().mid(1), lines.mid(1));
}

TEST_F(RunLogTest, AStepIsTimedFromTheStampAtItsHead) {
    // 0.125 s between the start and the step's head are not the step's: 1.004 - 0.0 would be 1.00.
    QList<double> ticks = {0.0, 0.125, 1.004, 1.5, 2.25};
    TimeLog log([&] { return ticks.takeFirst(); });
    ASSERT_TRUE(log.start());
    log.mark();
    log.phase(TimePhase::LoadPopulation);
    log.mark();
    log.phase(TimePhase::Compute);
    log.finish();
    ASSERT_EQ(log.lines().size(), 3);
    EXPECT_EQ(log.lines()[1], "Loading population and Mortality data to Memory...  =  0.88");
    EXPECT_EQ(log.lines()[2], "Computing YLD,YLL,DALY... =  0.75");
}

TEST_F(RunLogTest, TimeStpLandsInTheOutputFolderByPlainAppending) {
    settings().StatOutPath = path("out");
    EXPECT_EQ(timeLogPath(), path("outTime.stp"));
}

} // namespace
