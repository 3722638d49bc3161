// Stored results loaded back into the arrays, on the small study of tests/support/small_study.h.

#include "burden/calculator_models.h"
#include "burden/computation_arrays.h"
#include "burden/compute_run.h"
#include "burden/stored_results.h"
#include "small_study_fixture.h"
#include "straight_life_table.h"

using namespace vesk;
using namespace vesk::test;

namespace {

class StoredResults : public SmallStudyTest {
protected:
    void SetUp() override {
        SmallStudyTest::SetUp();
        settings().StatOutPath = dir.path() + u'/';
    }
    Cell sets(std::initializer_list<int> rows) {
        DapGridModel grid(DapRowTexts::Computation);
        for (int r : rows)
            grid.chooseRow(r, kCompModeSensitivity);
        return grid.chosenDaps();
    }
    void compute(const Cell& daps) {
        computation() = Computation{};
        computation().MtxDAP = daps;
        TimeLog log;
        runComputation(studyContext(), computation(), table, nullptr, log, QStringLiteral(VESK_BIN_DIR "/Vesk.stp"));
    }
    ResultStudy resultStudy() const {
        return computationStudy(studyContext());
    }
    LoadEnd load(const Cell& daps, LoadedResults& out) {
        list.clear();
        return LoadStroedResults(resultStudy(), daps, [this](const QString& s) { list << s; }, &bar, out);
    }

    CellArray table = straightLifeTable();
    RecordingProgress bar;
    QStringList list;
};

} // namespace

TEST_F(StoredResults, WhatWasStoredComesBackIntoTheArrays) {
    compute(sets({0, 1}));
    const Computation computed = computation();
    LoadedResults back;
    ASSERT_EQ(load(sets({0, 1}), back), LoadEnd::Loaded);
    EXPECT_TRUE(prompts.messages().isEmpty()) << prompts.messages().join('\n').toStdString();
    EXPECT_EQ(list, QStringList({"YLD results Loaded ", "YLL results Loaded ", "DALY results Loaded "}));
    EXPECT_EQ(bar.text, QString("DALY stored results are loaded"));
    ASSERT_TRUE(back.ArrYld.isArray() && back.ArrYll.isArray() && back.ArrDaly.isArray());
    // YLL: every stored figure is the computed double, a Null stays Null.
    const CellArray &yll = back.ArrYll.array(), &yllComputed = computed.ArrYll.array();
    ASSERT_EQ(yll.bounds(), yllComputed.bounds());
    for (int b = 0; b < 2; ++b)
        for (int d = 0; d < 2; ++d)
            for (int c = 0; c < 2; ++c)
                for (int m = 0; m < 4; ++m) {
                    const Cell &was = yllComputed(0, b, d, c, m, kYllYLL), &is = yll(0, b, d, c, m, kYllYLL);
                    EXPECT_EQ(is.isNull(), was.isNull()) << b << d << c << m;
                    if (was.isNumber()) {
                        EXPECT_EQ(is.toDouble(), was.toDouble()) << b << d << c << m;
                    }
                    // A group without a label (B0001 on U2 has no shares) was stored under the
                    // group's own label.
                    const Cell& label = yllComputed(0, b, d, c, m, kYllAsg);
                    EXPECT_EQ(yll(0, b, d, c, m, kYllAsg).toString(),
                              label.isEmpty() ? kSmallYllLabels[m] : label.toString());
                }
    // YLD of the cause with sequelae: the nested rows and their sum at cause level (SQ2 adds 0).
    const CellArray& yld = back.ArrYld.array();
    const Cell& nested = yld(0, 0, 1, 1, kSequelaHolderAsg, kSequelaHolderSlot);
    ASSERT_TRUE(nested.isArray());
    EXPECT_EQ(nested.array()(0, kSqlaCodeAsg, kSqlaCodeSlot).toString(), QString("SQ1"));
    for (int m = 0; m < 10; ++m) {
        EXPECT_EQ(yld(0, 0, 1, 1, m, kYldIYLD).toDouble(), computed.ArrYld.array()(0, 0, 1, 1, m, kYldIYLD).toDouble());
        EXPECT_EQ(yld(0, 0, 1, 0, m, kYldPYLD).toDouble(), computed.ArrYld.array()(0, 0, 1, 0, m, kYldPYLD).toDouble());
    }
    // DALY comes back on the YLD groups, whatever it was computed on: the four YLL groups' rows in
    // the first four places.
    ASSERT_EQ(back.ArrDaly.array().size(kDimAsg), 10);
    for (int m = 0; m < 4; ++m)
        EXPECT_EQ(back.ArrDaly.array()(0, 0, 1, 0, m, kDalyIDALY).toDouble(),
                  computed.ArrDaly.array()(0, 0, 1, 0, m, kDalyIDALY).toDouble());
    EXPECT_TRUE(back.ArrDaly.array()(0, 0, 1, 0, 4, kDalyAsg).isEmpty());
}

TEST_F(StoredResults, MissingDalyRowsAskOnceAndNoEndsTheLoad) {
    compute(sets({0}));
    exec("DELETE FROM RsltDALY");
    LoadedResults back;
    prompts.answer(Answer::No);
    EXPECT_EQ(load(sets({0, 3}), back), LoadEnd::Ended);
    EXPECT_EQ(prompts.messages(),
              QStringList{"There is no data existing for some or all the Bpu or Dap Or year. Do you still want to "
                          "continue loading the Data? "});
    EXPECT_FALSE(back.ArrYld.isArray());
    prompts.clear();
    prompts.answer(Answer::Yes);
    EXPECT_EQ(load(sets({0}), back), LoadEnd::Loaded);
    EXPECT_EQ(prompts.messages().size(), 1); // once, not once a unit
    EXPECT_TRUE(back.ArrYld.isArray());
    EXPECT_FALSE(back.ArrDaly.isArray());
    EXPECT_EQ(list, QStringList({"YLD results Loaded ", "YLL results Loaded ",
                                 "No DALY results present in the Table for the study S1",
                                 "DALY results are not calculated for S1"}));
    EXPECT_EQ(bar.text, QString("DALY stored results are not loaded"));
}

TEST_F(StoredResults, SequelaeSumToTheCauseWithNullCountedAsZero) {
    // B0001 with SQ1 alone, whose F0-14 row has no duration: the computed IYLD of the one sequela is
    // Null and so is the cause's; stored as NULL under its label, it loads back as 0 at cause level.
    exec("DELETE FROM _MapBDMSqla WHERE SqlaCd = 'SQ2'");
    exec("UPDATE DatADWSqla SET DURN = NULL WHERE ASG = 'F0-14'");
    ASSERT_TRUE(openComputationStudy(studyContext()));
    compute(sets({0}));
    EXPECT_TRUE(computation().ArrYld.array()(0, 0, 0, 1, 0, kYldIYLD).isNull());
    EXPECT_EQ(value("SELECT IYLD FROM RsltYLD WHERE BPUID = 'U1' AND SqlaCd = 'SQ1' AND ASG = 'F0-14'"), "<null>");
    LoadedResults back;
    ASSERT_EQ(load(sets({0}), back), LoadEnd::Loaded);
    const CellArray& yld = back.ArrYld.array();
    EXPECT_EQ(yld(0, 0, 0, 1, 0, kYldIYLD).toDouble(), 0);
    EXPECT_TRUE(yld(0, 0, 0, 1, 0, kYldIYLD).isNumber());
    EXPECT_TRUE(yld(0, 0, 0, 1, kSequelaHolderAsg, kSequelaHolderSlot).array()(0, 0, kYldIYLD).isNull());
}

TEST_F(StoredResults, AnErrorInTheLoadIsShownAndEndsIt) {
    compute(sets({0}));
    // More rows for a cause than the groups: record n goes into group n, and the eleventh has no place.
    exec("INSERT INTO RsltYLD (BPUID, YEAR, DAPID, COBCd, SqlaCd, ASG, IYLD, PYLD) "
         "VALUES ('U1', 2000, 0, 'A0001', 'xxxxxxx', 'Z9', 1, 1)");
    LoadedResults back;
    EXPECT_EQ(load(sets({0}), back), LoadEnd::Failed);
    EXPECT_EQ(prompts.messages(),
              QStringList{"There is an error in loading the stored Results. The error is: Subscript out of range"});
}
