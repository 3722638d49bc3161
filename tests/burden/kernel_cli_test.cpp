// vesk-cli yll, iyld and pyld, run as a user would run them.

#include "burden/calculator.h"
#include "burden/kernel.h"
#include "foundation/settings_file.h"
#include "cli_process.h"
#include "kernel_fixture.h"
#include "platform/csv.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cmath>

using namespace vesk;
using vesk::test::CliRun;
using vesk::test::runCli;

namespace {

QString writeFile(const QTemporaryDir& dir, const QString& name, const QString& text) {
    const QString path = dir.filePath(name);
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(text.toUtf8());
    return path;
}

class KernelCli : public vesk::test::KernelTest {
protected:
    QTemporaryDir dir;
};

} // namespace

TEST_F(KernelCli, YllOfEachRowFromAFile) {
    const QString path = writeFile(dir, "deaths.csv",
                                   "label,A,l,R,k,beta,C\r\n"
                                   "F00,0,82.5,0.03,1,0.04,0.1658\r\n"
                                   "M30,30,50.5,0,0,,\r\n"
                                   "F45,45.5,38.25,0.03,0,,\r\n");
    const CliRun r = runCli({"yll", path});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.err.isEmpty()) << r.err.toStdString();
    const auto t = parseCsv(r.out);
    ASSERT_TRUE(t);
    EXPECT_EQ(t->header, (QStringList{"label", "A", "l", "R", "k", "beta", "C", "yll"}));
    ASSERT_EQ(t->rows.size(), 3);
    EXPECT_EQ(t->rows[1].mid(0, 7), (QStringList{"M30", "30", "50.5", "0", "0", "", ""}));
    EXPECT_EQ(t->rows[0][7], csvNumber(FnYLLF(0, 82.5f, 0.03f, 1, Cell(0.04), Cell(0.1658))));
    EXPECT_NEAR(t->rows[0][7].toDouble(), 33.13, 0.005);
    EXPECT_EQ(t->rows[1][7], "50.5");
    EXPECT_EQ(t->rows[2][7], csvNumber(FnYLLF(45.5f, 38.25f, 0.03f, 0, Cell(""), Cell(""))));
}

TEST_F(KernelCli, IyldAndPyldFromStandardInput) {
    const CliRun i =
        runCli({"iyld"}, "a,L,D,r,K,Beta,C,N\n30,10,0.2,0,0,,,3\n30,0,0.2,0.03,0.5,0.04,0.1658,3\n");
    EXPECT_EQ(i.exitCode, 0) << i.err.toStdString();
    const auto ti = parseCsv(i.out);
    ASSERT_TRUE(ti);
    ASSERT_EQ(ti->rows.size(), 2);
    EXPECT_EQ(ti->header.last(), "iyld");
    EXPECT_EQ(ti->rows[0].last(), csvNumber(0.2f * 10.0f * 3.0f));
    EXPECT_EQ(ti->rows[1].last(), csvNumber(FnlYLD(30, 0, 0.2f, 0.03f, 0.5f, Cell(0.04), Cell(0.1658), 3)));
    EXPECT_NEAR(ti->rows[1].last().toDouble(), 10.0, 1e-5);

    const CliRun p =
        runCli({"pyld", "-"}, "a,D,K,Beta,C,N\n45,0.35,1,0.04,0.1658,12\n45,0.35,0.5,0.04,0.1658,12\n");
    EXPECT_EQ(p.exitCode, 0) << p.err.toStdString();
    const auto tp = parseCsv(p.out);
    ASSERT_TRUE(tp);
    ASSERT_EQ(tp->rows.size(), 2);
    EXPECT_EQ(tp->rows[0].last(), csvNumber(FnPYLD(45, 0.35f, 1, Cell(0.04), Cell(0.1658), 12)));
    EXPECT_EQ(tp->rows[1].last(), "0");
}

TEST_F(KernelCli, StoredErrorsGoToStandardErrorRowByRow) {
    QTemporaryDir work;
    const CliRun r =
        runCli({"yll"}, "a,L,r,K,Beta,C\n30,50,0.03,1,0.04,0.1658\n30,50,1,0,0.04,0\n30,50,0,1,0,0.1658\n",
               work.path());
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "row 2: error -10: Invalid parameter value, r must be >=0 and <1 (FnYLLF)\n"
                     "row 2: error -14: Invalid parameter value, C should be <= 0  (FnYLLF)\n"
                     "row 3: error 11: Division by zero (FnYLLF)\n");
    const auto t = parseCsv(r.out);
    ASSERT_TRUE(t);
    ASSERT_EQ(t->rows.size(), 3); // every row is written
    EXPECT_EQ(t->rows[1].last(), csvNumber(1 - std::exp(-50.0)));
    EXPECT_EQ(t->rows[2].last(), "0");
    // The tool leaves no log file where it was run.
    EXPECT_TRUE(QDir(work.path()).entryList(QDir::Files).isEmpty());
}

TEST_F(KernelCli, AMissingColumnIsAClearError) {
    const CliRun r = runCli({"iyld"}, "a,L,D,r,K,Beta,N\n30,10,0.2,0,0,,3\n");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_TRUE(r.err.contains("no column 'C'")) << r.err.toStdString();
}

TEST_F(KernelCli, AFieldThatIsNoNumberIsAClearError) {
    const CliRun r =
        runCli({"pyld"}, "a,D,K,Beta,C,N\n45,0.35,1,0.04,0.1658,12\n45,heavy,1,0.04,0.1658,12\n");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_TRUE(r.err.contains("row 2, column 'D': 'heavy' is not a number")) << r.err.toStdString();
}

TEST_F(KernelCli, HelpNamesTheColumns) {
    const CliRun r = runCli({"iyld", "--help"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.out.contains("a, L, D, r, K, Beta,")) << r.out.toStdString();
    const CliRun all = runCli({"--help"});
    EXPECT_TRUE(all.out.contains("yll")) << all.out.toStdString();
    EXPECT_TRUE(all.out.contains("pyld"));
}

namespace {

// A settings file with the two fixed standard tables: KRO female 82.5 - 0.8x, male 80 - 0.78x; WHO
// female 86 - 0.85x, male 84 - 0.83x, ages 0 to 100.
QString settingsWithTables(int type) {
    QStringList bai, kf, km, wf, wm;
    for (int x = 0; x <= 100; ++x) {
        bai << QString::number(x);
        kf << QString::number(82.5 - 0.8 * x);
        km << QString::number(80 - 0.78 * x);
        wf << QString::number(86 - 0.85 * x);
        wm << QString::number(84 - 0.83 * x);
    }
    return QStringLiteral("[LIFE TABLE]\r\n[LIFE TABLE TYPE]=%1\r\n[LTS]\r\n"
                          "[Standard Life Table-KRO]\r\n[BAI]:%2\r\n[EXM]:%3\r\n[EXF]:%4\r\n"
                          "[Standard Life Table-WHO]\r\n[BAI]:%2\r\n[EXM]:%5\r\n[EXF]:%6\r\n")
        .arg(type)
        .arg(bai.join('|'), km.join('|'), kf.join('|'), wm.join('|'), wf.join('|'));
}

} // namespace

TEST_F(KernelCli, YllTakesLFromTheStandardLifeTableOfTheSettings) {
    const QString kro = writeFile(dir, "kro.stp", settingsWithTables(1));
    const CliRun f =
        runCli({"yll", "--sex", "F", "--settings", kro}, "a,r,K,Beta,C\n0,0.03,1,0.04,0.1658\n30.5,0,0,,\n");
    EXPECT_EQ(f.exitCode, 0) << f.err.toStdString();
    const auto t = parseCsv(f.out);
    ASSERT_TRUE(t);
    EXPECT_EQ(t->header, (QStringList{"a", "r", "K", "Beta", "C", "L", "yll"}));
    ASSERT_EQ(t->rows.size(), 2);
    EXPECT_EQ(t->rows[0][5], "82.5");
    EXPECT_NEAR(t->rows[0][6].toDouble(), 33.13, 0.005);
    const float L = static_cast<float>((82.5 - 0.8 * 30) + 0.5 * -0.8);
    EXPECT_NEAR(t->rows[1][5].toDouble(), L, 1e-4);
    EXPECT_EQ(t->rows[1][6], t->rows[1][5]); // r = 0, K = 0: the life expectancy itself

    // The WHO table when the settings choose it, and the sex of each row from a column.
    const QString who = writeFile(dir, "who.stp", settingsWithTables(3));
    const CliRun w = runCli({"yll", "--settings", who}, "sex,a,r,K,Beta,C\nM30-44,30,0,0,,\nf,30,0,0,,\n");
    EXPECT_EQ(w.exitCode, 0) << w.err.toStdString();
    const auto tw = parseCsv(w.out);
    ASSERT_TRUE(tw);
    ASSERT_EQ(tw->rows.size(), 2);
    EXPECT_NEAR(tw->rows[0].last().toDouble(), 84 - 0.83 * 30, 1e-4);
    EXPECT_NEAR(tw->rows[1].last().toDouble(), 86 - 0.85 * 30, 1e-4);
}

TEST_F(KernelCli, LifeTableLookUpFailuresAreClear) {
    const QString kro = writeFile(dir, "kro.stp", settingsWithTables(1));
    // No L, no sex.
    CliRun r = runCli({"yll", "--settings", kro}, "a,r,K,Beta,C\n0,0,0,,\n");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.err.contains("no column 'L'")) << r.err.toStdString();
    // A settings file without the chosen table.
    const QString user = writeFile(dir, "user.stp", settingsWithTables(2));
    r = runCli({"yll", "--sex", "M", "--settings", user}, "a,r,K,Beta,C\n0,0,0,,\n");
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.err.contains("[User Defined Life Table]")) << r.err.toStdString();
    r = runCli({"yll", "--sex", "X", "--settings", kro}, "a,r,K,Beta,C\n0,0,0,,\n");
    EXPECT_EQ(r.exitCode, 2);
    // A persons letter reads a fourth column the table does not have: a subscript error for that row.
    r = runCli({"yll", "--settings", kro}, "sex,a,r,K,Beta,C\nP,30,0,0,,\nF,30,0,0,,\n");
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("row 1: error 9: Subscript out of range")) << r.err.toStdString();
    const auto t = parseCsv(r.out);
    ASSERT_TRUE(t);
    ASSERT_EQ(t->rows.size(), 2);
    EXPECT_EQ(t->rows[0].last(), "");
    EXPECT_NEAR(t->rows[1].last().toDouble(), 82.5 - 0.8 * 30, 1e-4);
    // --sex belongs to yll.
    r = runCli({"iyld", "--sex", "F"}, "a,L,D,r,K,Beta,C,N\n");
    EXPECT_EQ(r.exitCode, 2);
}

TEST_F(KernelCli, WithoutSettingsOptionTheFileBesideTheToolIsRead) {
    const CliRun r = runCli({"yll", "--sex", "F"}, "a,r,K,Beta,C\n30,0,0,,\n");
    if (r.exitCode == 0) {
        const auto t = parseCsv(r.out);
        ASSERT_TRUE(t);
        EXPECT_EQ(t->header.value(5), "L");
    } else {
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_TRUE(r.err.contains(QStringLiteral(VESK_BIN_DIR "/Vesk.stp"))) << r.err.toStdString();
    }
}

TEST_F(KernelCli, TheToolAndTheCalculatorTakeTheSameUserTable) {
    // The user table: female 90 - 0.9x, male 88 - 0.88x, in the block the settings writer names.
    QStringList bai, uf, um;
    for (int x = 0; x <= 100; ++x) {
        bai << QString::number(x);
        uf << QString::number(90 - 0.9 * x);
        um << QString::number(88 - 0.88 * x);
    }
    const QString path = writeFile(dir, "user.stp",
                                   settingsWithTables(2) +
                                       QStringLiteral("[User Defined Life Table]\r\n[BAI]:%1\r\n[EXM]:%2\r\n"
                                                      "[EXF]:%3\r\n")
                                           .arg(bai.join('|'), um.join('|'), uf.join('|')));
    const CliRun r = runCli({"yll", "--sex", "F", "--settings", path}, "a,r,K,Beta,C\n30.5,0,0,,\n");
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const auto t = parseCsv(r.out);
    ASSERT_TRUE(t);
    ASSERT_EQ(t->rows.size(), 1);

    // The calculator, with the user table as the settings reader loads it.
    const VeskSettings saved = settings();
    const PreferencesControls savedPreferences = preferences();
    settings().LifeTblType = 2;
    ASSERT_TRUE(FnReadLTS(QStringLiteral("[User Defined Life Table]"), preferences().userLifeTable, path));
    preferences().userLifeTableLoaded = true;
    const CellArray* table = calculatorLifeTable();
    ASSERT_NE(table, nullptr);
    const float L = FnLifeExpAt(*table, 30.5f, "F");
    settings() = saved;
    preferences() = savedPreferences;

    EXPECT_NEAR(L, 90 - 0.9 * 30.5, 1e-4);
    EXPECT_EQ(t->rows[0][5], csvNumber(L));
}
