// vesk-cli asg labels / asg map, run as a script would.

#include "asg_test_support.h"
#include "cli_process.h"

#include <QProcess>

using vesk::test::CliRun;
using vesk::test::runCli;

namespace {

CliRun cli(const QStringList& args) {
    return runCli(args);
}

} // namespace

TEST(AsgCli, LabelsOneALineSorted) {
    const CliRun r = cli({"asg", "labels", "--boundaries", "0,1,5,15,45,60"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, "F0\nF01-4\nF05-14\nF15-44\nF45-59\nF60-w\nM0\nM01-4\nM05-14\nM15-44\nM45-59\nM60-w\n");
}

TEST(AsgCli, PersonsLabels) {
    const CliRun r = cli({"asg", "labels", "--boundaries", "0,5", "--persons"});
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, "P0-4\nP5-w\n");
}

TEST(AsgCli, BadBoundaryIsRefused) {
    const CliRun r = cli({"asg", "labels", "--boundaries", "0,x"});
    EXPECT_NE(r.exitCode, 0);
    EXPECT_TRUE(r.err.contains("'x' is not an age")) << r.err.toStdString();
    EXPECT_TRUE(r.out.isEmpty());
}

TEST(AsgCli, MapFeasiblePrintsTheFourCells) {
    const CliRun r = cli({"asg", "map", "--first", "F0-w,M0-w", "--second", "F0-4,F5-w,M0-4,M5-w"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, "feasible,true\ncell1,0\ncell2,1\nindex,label,group,group_index\n"
                     "0,F0-4,F0-w,0\n1,F5-w,F0-w,0\n2,M0-4,M0-w,1\n3,M5-w,M0-w,1\n");
}

TEST(AsgCli, MapInfeasible) {
    const CliRun r = cli({"asg", "map", "--first", "F0-4,F5-w,M0-4,M5-w", "--second", "F0-2,F3-w,M0-2,M3-w"});
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, "feasible,false\n");
}

TEST(AsgCli, MapNeedsBothSets) {
    const CliRun r = cli({"asg", "map", "--first", "F0-w"});
    EXPECT_NE(r.exitCode, 0);
    EXPECT_FALSE(r.err.isEmpty());
}
