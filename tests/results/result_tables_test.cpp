// The result tables on the small study computed: the entries of the menu, the entry checks, the
// summaries and detail tables against the arrays, the rounding, and vesk-cli report.

#include "burden/calculator_models.h"
#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "cli_process.h"
#include "foundation/error_store.h"
#include "inputs/foreign_file.h"
#include "platform/runtime.h"
#include "results/result_entries.h"
#include "results/result_tables.h"
#include "small_study_fixture.h"

#include <gtest/gtest.h>

using namespace vesk;
using namespace vesk::test;

TEST(ResultEntries, FortyEntriesWithTheirCodesAndHeads) {
    EXPECT_EQ(resultEntries().size(), 40u);
    int leading = 0, detail = 0;
    for (const ResultEntry& e : resultEntries()) {
        leading += e.kind == ResultKind::Leading;
        detail += e.kind == ResultKind::Detail;
        EXPECT_EQ(resultEntry(e.item), &e);
    }
    EXPECT_EQ(leading, 4);
    EXPECT_EQ(detail, 18);
    EXPECT_EQ(rptMeasure(*resultEntry("mnu_bpuPDYllSpcauses")), 0);
    EXPECT_EQ(rptMeasure(*resultEntry("mnu_Pg1YldSpCa")), 1);
    EXPECT_EQ(rptMeasure(*resultEntry("mnu_pag2DalySpCa")), 2);
    EXPECT_EQ(rptMeasure(*resultEntry("mnu_BpPYldPAgCa")), 3);
    EXPECT_EQ(rptMeasure(*resultEntry("mnu_BpPPdAgSx")), 4);
    EXPECT_EQ(rptMeasure(*resultEntry("mnu_nLdCauses")), 6);
    EXPECT_EQ(rptMeasure(*resultEntry("mnu_Pg2NLdCauses")), 8);
    EXPECT_EQ(detailMeasure(*resultEntry("mnu_idalyYldAgSxCu")), 3);
    EXPECT_EQ(detailMeasure(*resultEntry("mnu_pg2PYldAgSxCa")), 4);
    EXPECT_EQ(detailMeasure(*resultEntry("mnu_IdYllAgSxCa")), 5);
    EXPECT_EQ(detailMeasure(*resultEntry("mnu_Pg2DalyAgSxCa")), 6);
    EXPECT_EQ(detailMeasure(*resultEntry("mnu_Pg1PDalyAgSxCa")), 7);
    EXPECT_EQ(detailMeasure(*resultEntry("mnu_nLdCauses")), -1);
    for (const char* item : {"mnu_Pag2IdPdYll", "mnu_pg1YllSpCa", "mnu_pg1YllPSpCa"})
        EXPECT_EQ(summaryHeads(*resultEntry(item)), QStringList({"Cob Code", "Cob Description", "IYLL", "IYLL Percentage"}));
    EXPECT_EQ(summaryHeads(*resultEntry("mnu_BpuPYllPdSpCa")), QStringList({"Cob Code", "Cob Description", "YLL", "YLL Percentage"}));
    EXPECT_EQ(resultEntry("mnu_Daly"), nullptr);
}

TEST(ShownValue, HalfToEvenAboveZeroDecimalsAndAsComputedAtZero) {
    EXPECT_EQ(shownValue(Cell(2.345), 0).toDouble(), 2.345);
    EXPECT_EQ(shownValue(Cell(0.125), 2).toDouble(), 0.12);
    EXPECT_EQ(shownValue(Cell("12.375"), 2).toDouble(), 12.38);
    EXPECT_TRUE(shownValue(Cell::null(), 2).isEmpty());
}

namespace {

class ResultTables : public SmallStudyTest {
protected:
    void compute() {
        DapGridModel grid(DapRowTexts::Computation);
        grid.chooseRow(1, kCompModeSensitivity);
        grid.chooseRow(2, kCompModeSensitivity);
        comp.MtxDAP = grid.chosenDaps();
        TimeLog log;
        ASSERT_EQ(runComputation(studyContext(), comp, CellArray(), nullptr, log, QStringLiteral(VESK_BIN_DIR "/Vesk.stp")).end,
                  RunEnd::Stored);
        clearErrorStore();
        prompts.clear();
    }
    static QString name(const QString& code) { return QStringLiteral("Name of ") + code; }
    Computation comp;
};

} // namespace

TEST_F(ResultTables, BeforeAnyComputationEachEntrySaysSoAndGivesNothing) {
    EXPECT_FALSE(resultSource(*resultEntry("mnu_bpuiDalyPdDalyspcauses"), comp, studyContext()));
    EXPECT_FALSE(resultSource(*resultEntry("mnu_iDalyAgSxCa"), comp, studyContext()));
    EXPECT_FALSE(resultSource(*resultEntry("mnu_nLdCauses"), comp, studyContext()));
    EXPECT_EQ(prompts.messages(), QStringList({"The Report cannot be shown. Please Calculate The Daly Again ",
                                               "The Report cannot be shown. Please Calculate The Daly Again ",
                                               "The present result cannot be shown. Please Calculate the daly again"}));
    EXPECT_EQ(prompts.shown()[0].icon, Icon::Information);
}

TEST_F(ResultTables, ASummaryRanksEveryCauseWithItsShare) {
    compute();
    const auto source = resultSource(*resultEntry("mnu_BpPYldPAgCa"), comp, studyContext());
    ASSERT_TRUE(source);
    ASSERT_EQ(source->units.size(), 2u);
    EXPECT_EQ(source->units[0].id, QString("U1"));
    EXPECT_EQ(source->units[0].name, QString("Unit one"));
    const auto t = summaryTable(*source, 0, 0, 1, QString(), 0, name);
    ASSERT_TRUE(t);
    ASSERT_EQ(t->rows.size(0), 3); // every cause
    // The PYLD of each cause in U1, set 2, summed here.
    const CellArray& a = comp.ArrYld.array();
    double total = 0;
    std::vector<double> sums(3, 0.0);
    for (int c = 0; c < 3; ++c)
        for (int m = 0; m < a.size(kDimAsg); ++m)
            if (a(0, 0, 1, c, m, kYldPYLD).isNumber())
                sums[std::size_t(c)] += a(0, 0, 1, c, m, kYldPYLD).toDouble();
    for (double s : sums)
        total += s;
    ASSERT_GT(total, 0);
    for (int r = 0; r < 3; ++r) {
        const int c = int(kSmallCauses.indexOf(t->rows(r, 0).toString()));
        ASSERT_GE(c, 0);
        EXPECT_EQ(t->rows(r, 1).toString(), QString("Name of ") + kSmallCauses[c]);
        EXPECT_NEAR(t->rows(r, 2).toDouble(), sums[std::size_t(c)], 1e-12 * total);
        EXPECT_EQ(t->rows(r, 3).toString(), formatNumber(100 * t->rows(r, 2).toDouble() / total, "0.000"));
        if (r > 0) {
            EXPECT_GE(t->rows(r - 1, 2).toDouble(), t->rows(r, 2).toDouble());
        }
    }
}

TEST_F(ResultTables, NLeadingAsksForNAndTakesAllWhenNExceedsTheCauses) {
    compute();
    const auto source = resultSource(*resultEntry("mnu_nLdCauses"), comp, studyContext());
    ASSERT_TRUE(source);
    prompts.answer(Answer::Ok);
    const auto t = summaryTable(*source, 0, 0, 0, QString(), 0, name);
    ASSERT_TRUE(t);
    EXPECT_EQ(t->rows.size(0), 3);
    EXPECT_EQ(prompts.shown().size(), 1);
    prompts.answer(Answer::Cancel);
    EXPECT_FALSE(summaryTable(*source, 0, 0, 0, "0", 0, name));
    EXPECT_EQ(summaryTable(*source, 0, 0, 0, "2", 0, name)->rows.size(0), 2);
}

TEST_F(ResultTables, ADetailTableIsTheArrayOfAUnitCausesByGroups) {
    compute();
    const auto source = resultSource(*resultEntry("mnu_idalyYldAgSxCu"), comp, studyContext());
    ASSERT_TRUE(source);
    const auto t = detailTable(*source, 0, 0, 0, 0, name);
    ASSERT_TRUE(t);
    EXPECT_EQ(t->heads, QStringList({"CobCD", "Description"}) + kSmallYldLabels);
    const CellArray& a = comp.ArrYld.array();
    ASSERT_EQ(t->rows.size(0), 3);
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(t->rows(c, 0).toString(), kSmallCauses[c]);
        for (int m = 0; m < 10; ++m) {
            const Cell& v = a(0, 0, 0, c, m, kYldIYLD);
            if (v.isNumber())
                EXPECT_EQ(t->rows(c, 2 + m).toDouble(), v.toDouble());
            else
                EXPECT_TRUE(t->rows(c, 2 + m).isEmpty());
        }
    }
    // Rounded to two places, half to even.
    const auto r = detailTable(*source, 0, 0, 0, 2, name);
    EXPECT_EQ(r->rows(0, 2).toDouble(), roundHalfEven(a(0, 0, 0, 0, 0, kYldIYLD).toDouble(), 2));
}

TEST_F(ResultTables, AnAggregateSumsItsUnits) {
    compute();
    const auto source = resultSource(*resultEntry("mnu_pg1DalyAgSxCa"), comp, studyContext());
    ASSERT_TRUE(source);
    ASSERT_EQ(source->units.size(), 1u);
    EXPECT_EQ(source->units[0].id, QString("R1"));
    const auto t = detailTable(*source, 0, 0, 0, 0, name);
    const CellArray& a = comp.ArrDaly.array();
    const auto num = [](const Cell& c) { return c.isNumber() ? c.toDouble() : 0.0; };
    for (int m = 0; m < a.size(kDimAsg); ++m)
        EXPECT_EQ(num(t->rows(0, 2 + m)), num(a(0, 0, 0, 0, m, kDalyIDALY)) + num(a(0, 1, 0, 0, m, kDalyIDALY)));
}

TEST_F(ResultTables, ALevelWithoutAggregatesSaysSo) {
    compute();
    exec("DELETE FROM _DctPAG2");
    EXPECT_FALSE(resultSource(*resultEntry("mnu_Pg2DalyAgSxCa"), comp, studyContext()));
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_TRUE(prompts.messages()[0].endsWith(" is associated with this study"));
}

TEST_F(ResultTables, ReportWritesTheTableTheViewerShowsIntoEachKindOfFile) {
    const QString study = db->path();
    const CliRun csv = runCli({"report", study, "--level", "BPU", "--measure", "IDALY", "--detail", "--unit", "U1",
                               "--settings", QStringLiteral(VESK_BIN_DIR "/Vesk.stp")});
    ASSERT_EQ(csv.exitCode, 0) << csv.err.toStdString();
    const QStringList lines = csv.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    // IDALY stands on the shorter classification, the YLL groups.
    EXPECT_EQ(lines[0], QString("CobCD,Description,F0-59,F60-w,M0-59,M60-w"));
    for (const char* kind : {"r.txt", "r.dbf", "r.wk1", "r.xlsx"}) {
        const QString out = dir.filePath(QString::fromLatin1(kind));
        const CliRun run = runCli({"report", study, "--measure", "PDALY", "--out", out, "--settings",
                                   QStringLiteral(VESK_BIN_DIR "/Vesk.stp")});
        ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
        QStringList fields;
        const CellArray back = FnReadArrFile(out, QStringLiteral("Results"), &fields);
        EXPECT_EQ(back.size(0), 3) << kind;
        // A text file keeps no field names; a dBase field name holds ten characters.
        const QStringList names = {"Cob_Code", "Cob_Description", "PDALY", "PDALY_Percentage"};
        if (QString::fromLatin1(kind) == QLatin1String("r.dbf")) {
            for (int k = 0; k < names.size(); ++k)
                EXPECT_EQ(fields.value(k), names[k].left(10));
        } else if (QString::fromLatin1(kind) != QLatin1String("r.txt")) {
            EXPECT_EQ(fields, names) << kind;
        }
    }
    EXPECT_EQ(runCli({"report", study, "--level", "PAG3"}).exitCode, 2);
}
