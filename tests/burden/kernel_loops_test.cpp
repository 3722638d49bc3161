// The kernel loops on arrays small enough to work by hand, with r = 0 and K = 0 so that the kernel's
// closed forms reduce to plain products: IYLD = D·L·N, PYLD = D·N, and the YLL of one death = the
// standard expectancy at its age (the straight-line table of the tests: e(x) = 82.5 - 0.8x for
// females, 80 - 0.78x for males). Every number below is that arithmetic.

#include "burden/computation_arrays.h"
#include "burden/kernel.h"
#include "burden/kernel_loops.h"
#include "foundation/error_store.h"
#include "platform/prompts.h"
#include "straight_life_table.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

// One parameter set: id, r, K, Beta, C as the grid gives them (texts).
Cell oneDap(const char* r = "0", const char* K = "0") {
    CellArray d({1, kDapLastColumn + 1});
    d(0, kDapId) = Cell("1");
    d(0, kDapR) = Cell(r);
    d(0, kDapK) = Cell(K);
    d(0, kDapBeta) = Cell("0.04");
    d(0, kDapC) = Cell("0.1658");
    return Cell(std::move(d));
}

const char* kYldGroups[] = {"F0-14", "F15-w", "M0-14", "M15-w"};

// ArrADWIP of one year and unit, causes as given by `fill(cause, group, slots)`.
struct AdwipRow {
    Cell ago, durn, dwt, inc, agp, prev;
};

CellArray adwip(int causes) {
    return CellArray({1, 1, 1, causes, 4, kAdwipLastSlot + 1});
}

void put(CellArray& a, int c, int m, const AdwipRow& r) {
    a(0, 0, 0, c, m, kAdwipAsg) = Cell(kYldGroups[m]);
    a(0, 0, 0, c, m, kAdwipAgo) = r.ago;
    a(0, 0, 0, c, m, kAdwipDurn) = r.durn;
    a(0, 0, 0, c, m, kAdwipDwt) = r.dwt;
    a(0, 0, 0, c, m, kAdwipIncident) = r.inc;
    a(0, 0, 0, c, m, kAdwipAgp) = r.agp;
    a(0, 0, 0, c, m, kAdwipPrevalent) = r.prev;
}

CellArray sequelae(int n, const std::vector<AdwipRow>& rows) {
    CellArray s({n, 4, kAdwipLastSlot + 1});
    for (int i = 0; i < n; ++i) {
        s(i, kSqlaCodeAsg, kSqlaCodeSlot) = Cell(QStringLiteral("S%1").arg(i));
        for (int m = 0; m < 4; ++m) {
            s(i, m, kAdwipAsg) = Cell(kYldGroups[m]);
            if (i < int(rows.size())) {
                s(i, m, kAdwipAgo) = rows[i].ago;
                s(i, m, kAdwipDurn) = rows[i].durn;
                s(i, m, kAdwipDwt) = rows[i].dwt;
                s(i, m, kAdwipIncident) = rows[i].inc;
                s(i, m, kAdwipAgp) = rows[i].agp;
                s(i, m, kAdwipPrevalent) = rows[i].prev;
            }
        }
    }
    return s;
}

class KernelLoops : public testing::Test {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
    void SetUp() override { clearErrorStore(); }
};

TEST_F(KernelLoops, YldByHand) {
    CellArray a = adwip(5);
    // Cause 0: onset 30, 2 years, weight 0.25, 1000 cases -> IYLD 0.25·2·1000 = 500;
    // prevalent at 40, 300 cases -> PYLD 0.25·300 = 75.
    for (int m = 0; m < 4; ++m)
        put(a, 0, m, {Cell(30.0), Cell(2.0), Cell(0.25), Cell(1000.0), Cell(40.0), Cell(300.0)});
    // Cause 1: no epidemiological rows at all: labels only, 0 in both measures.
    for (int m = 0; m < 4; ++m)
        a(0, 0, 0, 1, m, kAdwipAsg) = Cell(kYldGroups[m]);
    // Cause 2: one sequela without data: Null at the cause level.
    a(0, 0, 0, 2, 0, 0) = Cell(sequelae(1, {}));
    // Cause 3: two sequelae without data: 0 at the cause level.
    a(0, 0, 0, 3, 0, 0) = Cell(sequelae(2, {}));
    // Cause 4: two sequelae, the second with weight 0.5, 2 years, 100 cases -> IYLD 100; 40 prevalent
    // -> PYLD 20; the first has none: nested Null, cause 0 + 100 = 100 and 20.
    a(0, 0, 0, 4, 0, 0) =
        Cell(sequelae(2, {AdwipRow{}, AdwipRow{Cell(50.0), Cell(2.0), Cell(0.5), Cell(100.0), Cell(55.0), Cell(40.0)}}));
    const Cell r = BldYLDArray(Cell(a), oneDap());
    ASSERT_TRUE(r.isArray());
    const CellArray& y = r.array();
    EXPECT_EQ(y.ubound(kDimDAP), 0); // one parameter set
    for (int m = 0; m < 4; ++m) {
        EXPECT_EQ(y(0, 0, 0, 0, m, kYldAsg).toString(), QString::fromLatin1(kYldGroups[m]));
        EXPECT_FLOAT_EQ(y(0, 0, 0, 0, m, kYldIYLD).toDouble(), 500);
        EXPECT_FLOAT_EQ(y(0, 0, 0, 0, m, kYldPYLD).toDouble(), 75);
        EXPECT_EQ(y(0, 0, 0, 1, m, kYldIYLD).toDouble(), 0.0);
        EXPECT_EQ(y(0, 0, 0, 1, m, kYldPYLD).toDouble(), 0.0);
        EXPECT_TRUE(y(0, 0, 0, 2, m, kYldIYLD).isNull());
        EXPECT_TRUE(y(0, 0, 0, 2, m, kYldPYLD).isNull());
        EXPECT_TRUE(y(0, 0, 0, 3, m, kYldIYLD).isNumber());
        EXPECT_EQ(y(0, 0, 0, 3, m, kYldIYLD).toDouble(), 0.0);
        EXPECT_FLOAT_EQ(y(0, 0, 0, 4, m, kYldIYLD).toDouble(), 100);
        EXPECT_FLOAT_EQ(y(0, 0, 0, 4, m, kYldPYLD).toDouble(), 20);
    }
    const CellArray& nested = y(0, 0, 0, 4, 0, 0).array();
    EXPECT_EQ(nested(1, 0, 0).toString(), QStringLiteral("S1"));
    EXPECT_TRUE(nested(0, 2, kYldIYLD).isNull());
    EXPECT_FLOAT_EQ(nested(1, 2, kYldIYLD).toDouble(), 100);
    EXPECT_EQ(errorStoreCount(), 0);
}

} // namespace

namespace {

const char* kYllGroups[] = {"F0-14", "F15-w", "M0-14", "M15-w"};

// ArrAGD of one year and unit: the ages at death of the four YLL groups (Null for none).
Cell agd(const std::vector<Cell>& ages) {
    CellArray a({1, 1, 1, 1, 4, kAgdLastSlot + 1});
    for (int m = 0; m < 4; ++m) {
        a(0, 0, 0, 0, m, kAgdAsg) = Cell(kYllGroups[m]);
        a(0, 0, 0, 0, m, kAgdAge) = ages[m];
    }
    return Cell(std::move(a));
}

// ArrDBC of one year and unit with two causes: deaths by group.
Cell dbc(const std::vector<std::vector<Cell>>& deaths) {
    CellArray a({1, 1, 1, int(deaths.size()), 4, kDbcLastSlot + 1});
    for (int c = 0; c < int(deaths.size()); ++c)
        for (int m = 0; m < 4; ++m) {
            a(0, 0, 0, c, m, kDbcAsg) = Cell(kYllGroups[m]);
            a(0, 0, 0, c, m, kDbcDeaths) = deaths[c][m];
        }
    return Cell(std::move(a));
}

} // namespace

TEST_F(KernelLoops, YllByHand) {
    // r = 0, K = 0: the YLL of one death at age a is the standard expectancy there:
    //   F at 10: 82.5 - 0.8·10 = 74.5; F at 60: 82.5 - 48 = 34.5; M at 10: 80 - 7.8 = 72.2; M: Null.
    const Cell per = BldYLLPerDeath(agd({Cell(10.0), Cell(60.0), Cell(10.0), Cell::null()}), oneDap(),
                                    test::straightLifeTable());
    ASSERT_TRUE(per.isArray());
    EXPECT_FLOAT_EQ(per.array()(0, 0, 0, 0, 0, kYllPerDeathValue).toDouble(), 74.5);
    EXPECT_FLOAT_EQ(per.array()(0, 0, 0, 0, 1, kYllPerDeathValue).toDouble(), 34.5);
    EXPECT_FLOAT_EQ(per.array()(0, 0, 0, 0, 2, kYllPerDeathValue).toDouble(), 72.2);
    EXPECT_TRUE(per.array()(0, 0, 0, 0, 3, kYllPerDeathValue).isNull());
    // Cause 0: 2, 10, 4 and 3 deaths: 149, 345, 288.8 and Null (no age at death for M15-w);
    // cause 1: Null deaths in F0-14: Null there, 1 death elsewhere.
    const Cell yll = BldYLLArray(dbc({{Cell(2.0), Cell(10.0), Cell(4.0), Cell(3.0)},
                                      {Cell::null(), Cell(1.0), Cell(1.0), Cell(1.0)}}),
                                 per);
    ASSERT_TRUE(yll.isArray());
    const CellArray& y = yll.array();
    EXPECT_EQ(y(0, 0, 0, 0, 0, kYllAsg).toString(), QStringLiteral("F0-14"));
    EXPECT_NEAR(y(0, 0, 0, 0, 0, kYllYLL).toDouble(), 149, 1e-4);
    EXPECT_NEAR(y(0, 0, 0, 0, 1, kYllYLL).toDouble(), 345, 1e-4);
    EXPECT_NEAR(y(0, 0, 0, 0, 2, kYllYLL).toDouble(), 288.8, 1e-4);
    EXPECT_TRUE(y(0, 0, 0, 0, 3, kYllYLL).isNull()); // a Null age at death: Null in every cause
    EXPECT_TRUE(y(0, 0, 0, 1, 3, kYllYLL).isNull());
    EXPECT_TRUE(y(0, 0, 0, 1, 0, kYllYLL).isNull());
    EXPECT_NEAR(y(0, 0, 0, 1, 1, kYllYLL).toDouble(), 34.5, 1e-5);
}

TEST_F(KernelLoops, DalyAddsYllToYldOnTheSameGroups) {
    CellArray a = adwip(2);
    for (int c = 0; c < 2; ++c)
        for (int m = 0; m < 4; ++m)
            put(a, c, m, {Cell(30.0), Cell(2.0), Cell(0.25), Cell(1000.0), Cell(40.0), Cell(300.0)});
    const Cell yld = BldYLDArray(Cell(a), oneDap());
    const Cell per = BldYLLPerDeath(agd({Cell(10.0), Cell(60.0), Cell(10.0), Cell::null()}), oneDap(),
                                    test::straightLifeTable());
    const Cell yll = BldYLLArray(dbc({{Cell(2.0), Cell(10.0), Cell(4.0), Cell(3.0)}, {Cell(0.0), Cell(0.0), Cell(0.0), Cell(0.0)}}), per);
    CellArray labels({4});
    for (int m = 0; m < 4; ++m)
        labels(m) = Cell(kYllGroups[m]);
    const Cell daly = BldDALYArray(yld, yll, Cell(labels), Cell(labels));
    ASSERT_TRUE(daly.isArray());
    const CellArray& d = daly.array();
    // IDALY = YLL + 500, PDALY = YLL + 75; a Null YLL (M15-w) leaves the YLD: 500 and 75.
    EXPECT_NEAR(d(0, 0, 0, 0, 0, kDalyIDALY).toDouble(), 149 + 500, 1e-3);
    EXPECT_NEAR(d(0, 0, 0, 0, 0, kDalyPDALY).toDouble(), 149 + 75, 1e-3);
    EXPECT_NEAR(d(0, 0, 0, 0, 3, kDalyIDALY).toDouble(), 500, 1e-3);
    EXPECT_NEAR(d(0, 0, 0, 0, 3, kDalyPDALY).toDouble(), 75, 1e-3);
    EXPECT_EQ(d(0, 0, 0, 0, 2, kDalyAsg).toString(), QStringLiteral("M0-14"));
}

TEST_F(KernelLoops, UnmatchedGroupsLeaveDalyEmpty) {
    CellArray a = adwip(1);
    for (int m = 0; m < 4; ++m)
        put(a, 0, m, {Cell(30.0), Cell(2.0), Cell(0.25), Cell(1000.0), Cell(40.0), Cell(300.0)});
    const Cell yld = BldYLDArray(Cell(a), oneDap());
    // YLL groups whose breaks do not meet the YLD ones: 0-9 and 10-w.
    CellArray g({1, 1, 1, 1, 4, kAgdLastSlot + 1});
    const char* other[] = {"F0-9", "F10-w", "M0-9", "M10-w"};
    for (int m = 0; m < 4; ++m) {
        g(0, 0, 0, 0, m, kAgdAsg) = Cell(other[m]);
        g(0, 0, 0, 0, m, kAgdAge) = Cell(5.0);
    }
    CellArray deaths({1, 1, 1, 1, 4, kDbcLastSlot + 1});
    for (int m = 0; m < 4; ++m) {
        deaths(0, 0, 0, 0, m, kDbcAsg) = Cell(other[m]);
        deaths(0, 0, 0, 0, m, kDbcDeaths) = Cell(1.0);
    }
    const Cell yll = BldYLLArray(Cell(deaths), BldYLLPerDeath(Cell(g), oneDap(), test::straightLifeTable()));
    ASSERT_TRUE(yld.isArray());
    ASSERT_TRUE(yll.isArray());
    EXPECT_TRUE(BldDALYArray(yld, yll, Cell(), Cell()).isEmpty());
    EXPECT_NEAR(yll.array()(0, 0, 0, 0, 0, kYllYLL).toDouble(), 82.5 - 4, 1e-4); // YLL complete
}

TEST_F(KernelLoops, KernelArgumentsFromTheParameterSet) {
    // With r 0.03 and K 1 each cell is the kernel's own value for the same arguments.
    CellArray a = adwip(1);
    for (int m = 0; m < 4; ++m)
        put(a, 0, m, {Cell(30.0), Cell(2.0), Cell(0.25), Cell(1000.0), Cell(40.0), Cell(300.0)});
    const Cell yld = BldYLDArray(Cell(a), oneDap("0.03", "1"));
    const Cell beta("0.04"), C("0.1658");
    EXPECT_EQ(yld.array()(0, 0, 0, 0, 1, kYldIYLD).toDouble(), double(FnlYLD(30, 2, 0.25f, 0.03f, 1, beta, C, 1000)));
    EXPECT_EQ(yld.array()(0, 0, 0, 0, 1, kYldPYLD).toDouble(), double(FnPYLD(40, 0.25f, 1, beta, C, 300)));
}

TEST_F(KernelLoops, AsgVectorOfAResult) {
    EXPECT_TRUE(FnAsgVctr(Cell(CellArray({2, 2}))).isEmpty());
    EXPECT_EQ(prompts_.messages(), QStringList{"Invalid input. Not enough dimensions or not an array."});
}
