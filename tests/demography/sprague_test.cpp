// Sprague's subdivision against the published worked example and against the multipliers applied
// by hand, with its edges; even spreading.

#include "demography/sprague.h"
#include "foundation/settings.h"
#include "platform/csv.h"
#include "platform/program_end.h"
#include "platform/prompts.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vesk;

namespace {

const QString kDeliveredStp = QStringLiteral(VESK_BIN_DIR "/Vesk.stp");
const QString kRefdata = QStringLiteral(VESK_SOURCE_DIR "/data/refdata/");

CsvTable csv(const QString& name) {
    QFile f(kRefdata + name);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << name.toStdString();
    return parseCsv(QString::fromUtf8(f.readAll())).value_or(CsvTable{});
}

// The multipliers as published, read from the reference table, not from the settings file.
SpraguePanels publishedPanels() {
    SpraguePanels p{};
    const CsvTable t = csv("sprague_panels.csv");
    for (const QStringList& row : t.rows)
        for (int c = 0; c < 5; ++c)
            p.panel[row[2].mid(7, 1).toInt()][row[3].toInt()][c] = row[4 + c].toDouble(); // by its block
    return p;
}

CellArray vector(const std::vector<double>& v) {
    CellArray a({int(v.size())});
    for (int i = 0; i < int(v.size()); ++i)
        a(i) = Cell(v[i]);
    return a;
}

class Sprague : public testing::Test {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
};

TEST_F(Sprague, DeliveredPanelsAreThePublishedMultipliers) {
    const auto panels = ProcLoadPanels(kDeliveredStp);
    ASSERT_TRUE(panels);
    const SpraguePanels published = publishedPanels();
    for (int n = 0; n < 5; ++n)
        for (int r = 0; r < 5; ++r)
            for (int c = 0; c < 5; ++c)
                EXPECT_EQ(panels->panel[n][r][c], published.panel[n][r][c]) << n << r << c;
}

// 21 groups (20 closed and 100+) to 101 single years, as published, within 1e-6: the published
// values carry four decimals of sums of products of five-decimal multipliers and whole numbers,
// which are exact to 1e-9 in double precision.
TEST_F(Sprague, PublishedExampleTwentyOneGroups) {
    const CsvTable in = csv("sprague_test_demotools_input.csv");
    std::vector<double> groups;
    for (const QStringList& row : in.rows)
        groups.push_back(row[3].toDouble());
    ASSERT_EQ(groups.size(), 21u);
    CellArray single;
    const Cell r = FnSprague(vector(groups), 1, single, *ProcLoadPanels(kDeliveredStp));
    ASSERT_TRUE(r.isArray());
    const CsvTable expected = csv("sprague_test_demotools_expected.csv");
    ASSERT_EQ(single.size(0), 101);
    for (const QStringList& row : expected.rows)
        EXPECT_NEAR(single(row[0].toInt()).toDouble(), row[1].toDouble(), 1e-6) << row[0].toStdString();
}

TEST_F(Sprague, ExactlyFiveClosedGroupsUsesEachPanel) {
    const std::vector<double> g{1000, 900, 850, 800, 700, 1500};
    const SpraguePanels P = publishedPanels();
    CellArray single;
    const Cell r = FnSprague(vector(g), 1, single, P);
    ASSERT_TRUE(r.isArray());
    ASSERT_EQ(single.size(0), 26); // N = 25 and the open group
    const auto& p = P.panel;
    for (int j = 0; j < 5; ++j) {
        double first = 0, second = 0, middle = 0, beforeLast = 0, last = 0;
        for (int k = 0; k < 5; ++k) {
            first += g[k] * p[0][j][k];
            second += g[k] * p[1][j][k];
            middle += g[k] * p[2][j][k]; // block 2: groups g-2 .. g+2 = 0 .. 4
        }
        for (int k = 1; k < 5; ++k) {
            beforeLast += g[k] * p[4][j][k]; // groups U-4 .. U-1 = 1 .. 4
            last += g[k] * p[3][j][k];
        }
        EXPECT_DOUBLE_EQ(single(j).toDouble(), first);
        EXPECT_DOUBLE_EQ(single(5 + j).toDouble(), second);
        EXPECT_DOUBLE_EQ(single(10 + j).toDouble(), middle);
        EXPECT_DOUBLE_EQ(single(15 + j).toDouble(), beforeLast);
        EXPECT_DOUBLE_EQ(single(20 + j).toDouble(), last);
    }
    EXPECT_EQ(single(25).toDouble(), 1500.0);
    // Each group's five years add up to the group (the panels' rows sum to the unit vector).
    for (int g5 = 0; g5 < 5; ++g5) {
        double sum = 0;
        for (int j = 0; j < 5; ++j)
            sum += single(5 * g5 + j).toDouble();
        EXPECT_NEAR(sum, g[g5], 1e-9);
    }
}

TEST_F(Sprague, FourClosedGroupsAreNotInterpolated) {
    CellArray single({3});
    single(0) = Cell(QStringLiteral("untouched"));
    const Cell r = FnSprague(vector({1, 2, 3, 4, 5}), 1, single, publishedPanels());
    EXPECT_TRUE(r.isNumber());
    EXPECT_EQ(r.toDouble(), 0.0);
    EXPECT_EQ(single.size(0), 3);
    EXPECT_EQ(single(0).toString(), QStringLiteral("untouched"));
}

TEST_F(Sprague, ZeroPassesNegativeStops) {
    CellArray single;
    EXPECT_TRUE(FnSprague(vector({0, 0, 0, 0, 0, 0, 0}), 1, single, publishedPanels()).isArray());
    // A sharp jump: 10000 people in 0-4, none after, overshoots below 0 in the first panel's
    // year 2 (0.1840·10000 ... ) or later; the run stops there with 1.
    const Cell r = FnSprague(vector({10000, 0, 0, 0, 0, 0, 5}), 1, single, publishedPanels());
    ASSERT_TRUE(r.isNumber());
    EXPECT_EQ(r.toDouble(), 1.0);
    int done = 0;
    while (done < single.size(0) && single(done).isNumber())
        ++done;
    ASSERT_LT(done, single.size(0));
    for (int y = 0; y < done; ++y)
        EXPECT_GE(single(y).toDouble(), 0.0);
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(Sprague, KeepOpenZeroDropsTheOpenGroup) {
    CellArray single;
    ASSERT_TRUE(FnSprague(vector({1000, 900, 850, 800, 700, 1500}), 0, single, publishedPanels()).isArray());
    EXPECT_EQ(single.size(0), 25);
}

TEST_F(Sprague, TextsOfNumbersAreNumbers) {
    CellArray g({6});
    const char* t[] = {"1000", " 900", "850 ", "800", "700", "1500"};
    for (int i = 0; i < 6; ++i)
        g(i) = Cell(QString::fromLatin1(t[i]));
    CellArray a, b;
    ASSERT_TRUE(FnSprague(g, 1, a, publishedPanels()).isArray());
    ASSERT_TRUE(FnSprague(vector({1000, 900, 850, 800, 700, 1500}), 1, b, publishedPanels()).isArray());
    EXPECT_EQ(a, b);
    g(2) = Cell(QStringLiteral("many"));
    EXPECT_TRUE(FnSprague(g, 1, a, publishedPanels()).isEmpty());
    EXPECT_EQ(prompts_.messages(), QStringList{"Error from Sprague Interpolator Type mismatch"});
}

TEST_F(Sprague, MissingPanelsEndTheProgram) {
    QTemporaryDir dir;
    const QString stp = dir.filePath("Vesk.stp");
    QFile f(stp);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[PANELS]\n---------------------------\n[PANEL 0]\n1|2|3|4|5\n");
    f.close();
    EXPECT_FALSE(ProcLoadPanels(stp));
    EXPECT_FALSE(ProcLoadPanels(dir.filePath("none.stp")));
}

TEST_F(Sprague, SettingsVariantReadsTheProgramsFileAndEndsWithoutPanels) {
    CountingProgramEnd ends;
    setProgramEnd(&ends);
    const QString kept = settings().AppPath;
    CellArray single;
    settings().AppPath = QStringLiteral(VESK_BIN_DIR); // the delivered file
    EXPECT_TRUE(FnSprague(vector({1000, 900, 850, 800, 700, 1500}), 1, single).isArray());
    EXPECT_EQ(ends.requests, 0);
    QTemporaryDir dir;
    QFile f(dir.filePath("Vesk.stp"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[PANELS]\n");
    f.close();
    settings().AppPath = dir.path();
    EXPECT_TRUE(FnSprague(vector({1000, 900, 850, 800, 700, 1500}), 1, single).isEmpty());
    EXPECT_EQ(ends.requests, 1);
    EXPECT_EQ(prompts_.messages(), QStringList{"Some Values are missing in the STP file,Interpolator coefficients are "
                                               "not loaded.You can use the copy of VESK.STP  "});
    settings().AppPath = kept;
    setProgramEnd(nullptr);
}

TEST(SpreadUniform, EvenlyOverEachGroupsYears) {
    CellArray breaks({4});
    const int b[] = {0, 1, 5, 10};
    for (int i = 0; i < 4; ++i)
        breaks(i) = Cell(b[i]);
    const Cell r = FnSpreadUniform(Cell(vector({10, 40, 25, 7})), 1, breaks);
    ASSERT_TRUE(r.isArray());
    const CellArray& a = r.array();
    ASSERT_EQ(a.size(0), 11);
    EXPECT_EQ(a(0).toDouble(), 10.0);
    for (int y = 1; y < 5; ++y)
        EXPECT_EQ(a(y).toDouble(), 10.0);
    for (int y = 5; y < 10; ++y)
        EXPECT_EQ(a(y).toDouble(), 5.0);
    EXPECT_EQ(a(10).toDouble(), 7.0);
    EXPECT_EQ(FnSpreadUniform(Cell(vector({10, 40, 25, 7})), 0, breaks).array().size(0), 10);
    EXPECT_EQ(FnSpreadUniform(Cell(vector({10, 40, 25})), 1, breaks), Cell(0));
    EXPECT_EQ(FnSpreadUniform(Cell(3.0), 1, breaks), Cell(0));
}

} // namespace
