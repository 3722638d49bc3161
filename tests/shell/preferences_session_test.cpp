// The preferences form's session without its window: what Apply keeps and writes by the open tab,
// the fields that are the settings' own, the checks on leaving, the chain armed again, the method's
// values, the names, the chart export, the sounds, and Close.

#include "foundation/chart_export_settings.h"
#include "platform/program_end.h"
#include "platform/sound.h"
#include "settings_test_support.h"
#include "shell/loading_chain.h"
#include "shell/preferences_session.h"

namespace vesk::test {
namespace {

struct CountingHost : FrameHost {
    int armed = 0, ended = 0;
    void setTimerEnabled(bool enabled) override { armed += enabled ? 1 : 0; }
    bool isTimerEnabled() const override { return armed > 0; }
    void showErrorViewer() override {}
    void showStudySetup(bool) override {}
    void endProgram() override { ++ended; }
};

class PreferencesSessionTest : public StpTest {
protected:
    void SetUp() override {
        StpTest::SetUp();
        install(completeFile());
        ASSERT_EQ(openfile().outcome, SettingsOutcome::Ok);
        setFrameHost(&host_);
        setSoundService(&sounds_);
        chartExportSettings() = ChartExportSettings{};
        session_.load();
        prompts_.clear();
    }
    void TearDown() override {
        setFrameHost(nullptr);
        setSoundService(nullptr);
        chartExportSettings() = ChartExportSettings{};
        StpTest::TearDown();
    }
    // The lines of the settings file as it stands.
    QStringList lines() const { return QString::fromUtf8(installed()).split(QStringLiteral("\r\n")); }
    bool hasLine(const QString& line) const { return lines().contains(line); }
    QString lineAfter(const QString& heading, int n = 1) const {
        const QStringList l = lines();
        const qsizetype at = l.indexOf(heading);
        return at < 0 ? QStringLiteral("<no %1>").arg(heading) : l.value(at + n);
    }

    CountingHost host_;
    RecordingSound sounds_;
    PreferencesSession session_;
};

TEST_F(PreferencesSessionTest, TheFormShowsTheSettings) {
    EXPECT_EQ(session_.field(QStringLiteral("txtwklocation")), root() + QStringLiteral("/Work"));
    EXPECT_EQ(session_.field(QStringLiteral("txtVESKObj")), QStringLiteral("study.vdb"));
    EXPECT_EQ(session_.field(QStringLiteral("cmbVESKPSYr")), QStringLiteral("IntPopSnglYr"));
    EXPECT_EQ(session_.field(QStringLiteral("Txtradix1")), QStringLiteral("100000"));
    EXPECT_EQ(session_.method(), 1);
    EXPECT_EQ(session_.field(QStringLiteral("txtKFlwrlmt1")), QStringLiteral("10"));
    EXPECT_EQ(session_.field(QStringLiteral("txtKFupprlmt1")), QStringLiteral("60"));
    EXPECT_EQ(session_.field(QStringLiteral("TxtMinMaxage")), QStringLiteral("50"));
    EXPECT_EQ(session_.field(QStringLiteral("TxtMaxMaxage")), QStringLiteral("80"));
    EXPECT_EQ(session_.field(QStringLiteral("txtNLdCuss")), QStringLiteral("12"));
    EXPECT_EQ(session_.field(QStringLiteral("txtGrpDctTblNm")), QStringLiteral("Groups"));
    EXPECT_EQ(session_.field(QStringLiteral("txtPAG2DctTblNm")), QStringLiteral("Zones"));
    EXPECT_EQ(session_.field(QStringLiteral("txtIntpltrBOTHTblNm")), QStringLiteral("Both5"));
    EXPECT_EQ(session_.field(QStringLiteral("txtUsrDefLTS")), QStringLiteral("MyLifeTable"));
    EXPECT_EQ(session_.field(QStringLiteral("txtFlname")), QStringLiteral("GraphData"));
    EXPECT_EQ(session_.field(QStringLiteral("txtShtName")), QStringLiteral("SheetNo1"));
    EXPECT_EQ(session_.field(QStringLiteral("txtstrowno")), QStringLiteral("1"));
    EXPECT_EQ(session_.lifeTable().choice(), 3);
    EXPECT_EQ(session_.widthGrids()[kViewTab].textMatrix(1, 1), QStringLiteral("901"));
    EXPECT_EQ(session_.decimalGrids()[kToolsTab].textMatrix(1, 1), QStringLiteral("5"));
    EXPECT_EQ(session_.exportCharts().size(), kExportChartCount);
    EXPECT_FALSE(session_.setField(QStringLiteral("txtNoSuchField"), QStringLiteral("x")));
}

TEST_F(PreferencesSessionTest, APathTypedIsTheSettingsPathAtOnceAndMarksAChange) {
    preferences().changed = false;
    ASSERT_TRUE(session_.setField(QStringLiteral("txtStatOut"), root() + QStringLiteral("/Temp")));
    EXPECT_EQ(preferences().txtStatOut, root() + QStringLiteral("/Temp"));
    EXPECT_TRUE(preferences().changed);
    session_.Apply();
    EXPECT_EQ(lineAfter(QStringLiteral("[Statistical Output Path]")),
              QStringLiteral("PATH  =") + root() + "/Temp");
    EXPECT_EQ(host_.armed, 1); // the chain runs again
    EXPECT_TRUE(prompts_.shown().isEmpty()) << prompts_.messages().join(u'|').toStdString();
}

TEST_F(PreferencesSessionTest, ApplyFixesTheRecordsetsAndNamesTheDatabase) {
    session_.setField(QStringLiteral("cmbVESKADW"), QStringLiteral("Other"));
    session_.setField(QStringLiteral("cmbVESKPSYr"), QStringLiteral("Mine"));
    session_.setField(QStringLiteral("txtVESKObj"), QStringLiteral("other.vdb"));
    session_.Apply();
    EXPECT_EQ(lines().value(3), QStringLiteral("ADW   =DatADW"));
    EXPECT_EQ(lines().value(4), QStringLiteral("CSM   =DatCSM"));
    EXPECT_EQ(lines().value(2), QStringLiteral("OBJECT=other.vdb"));
    EXPECT_EQ(session_.field(QStringLiteral("cmbVESKPSYr")), QStringLiteral("IntPopSnglYr"));
    EXPECT_FALSE(installed().contains("Mine")); // it goes nowhere in the file
    EXPECT_EQ(settings().DBFullPath, root() + QStringLiteral("/Work/other.vdb"));
}

TEST_F(PreferencesSessionTest, ApplyWithAPathMissingWritesNothingButArmsTheChain) {
    const QByteArray before = installed();
    session_.setField(QStringLiteral("txtTempArea"), QString());
    session_.Apply();
    EXPECT_EQ(installed(), before);
    EXPECT_TRUE(prompts_.shown().isEmpty()); // step 3 does not call the writer at all
    EXPECT_EQ(host_.armed, 1);
    // On a tab that writes, the writer says why it does not.
    session_.page = PreferencesPage::TableNames;
    session_.Apply();
    EXPECT_EQ(prompts_.messages().size(), 1);
    EXPECT_TRUE(
        prompts_.messages().value(0).startsWith(QStringLiteral("Please fill in the VESK Database Path")));
    EXPECT_EQ(installed(), before);
}

TEST_F(PreferencesSessionTest, TheWidthsAreKeptOnlyFromTheirTab) {
    session_.widthGrids()[kResultsTab].setTextMatrix(2, 2, QStringLiteral("3333"));
    session_.Apply(); // the file locations' tab is open
    EXPECT_TRUE(hasLine(QStringLiteral("RSC2=4004")));
    session_.page = PreferencesPage::ColumnWidths;
    session_.Apply();
    EXPECT_TRUE(hasLine(QStringLiteral("RSC2=3333")));
    EXPECT_EQ(settings().ColWdth[ColWdthIndex(QStringLiteral("RSC2"))], 3333);
}

TEST_F(PreferencesSessionTest, AWidthThatOverflowsIsToldAndNothingIsApplied) {
    const QByteArray before = installed();
    session_.page = PreferencesPage::ColumnWidths;
    session_.widthGrids()[kViewTab].setTextMatrix(1, 1, QStringLiteral("99999999999"));
    session_.Apply();
    EXPECT_EQ(prompts_.messages(), QStringList{QStringLiteral("Overflow")});
    EXPECT_EQ(installed(), before);
    EXPECT_EQ(host_.armed, 0);
}

TEST_F(PreferencesSessionTest, TheDecimalsFromTheirTab) {
    session_.page = PreferencesPage::DecimalPlaces;
    session_.decimalGrids()[kResultsTab].setTextMatrix(3, 1, QStringLiteral("4")); // DALE
    session_.decimalGrids()[kToolsTab].setTextMatrix(2, 1, QStringLiteral("6"));   // Tools
    session_.Apply();
    EXPECT_EQ(lineAfter(QStringLiteral("[Prefer]"), 8), QStringLiteral("LDaleDecPlcs =4"));
    EXPECT_EQ(lineAfter(QStringLiteral("[Prefer]"), 2), QStringLiteral("ToolDecPlcs =6"));
}

TEST_F(PreferencesSessionTest, TheStandardTableFromItsTab) {
    session_.page = PreferencesPage::LifeTables;
    session_.chooseLifeTable(1);
    session_.lifeTable().grid().setTextMatrix(4, 2, QStringLiteral("73")); // KRO female at 10
    session_.Apply();
    EXPECT_TRUE(hasLine(QStringLiteral("[LIFE TABLE TYPE]=1")));
    EXPECT_EQ(lineAfter(QStringLiteral("[Standard Life Table-KRO]"), 3),
              QStringLiteral("[EXF]:82.5|81.84|77.95|73"));
    // The method's tab of the same tab does not take the table.
    session_.lifeTablesPage = LifeTablesPage::Method;
    session_.chooseLifeTable(3);
    session_.Apply();
    EXPECT_TRUE(hasLine(QStringLiteral("[LIFE TABLE TYPE]=1")));
}

TEST_F(PreferencesSessionTest, TheMethodAndItsValuesFromTheirTab) {
    session_.page = PreferencesPage::LifeTables;
    session_.lifeTablesPage = LifeTablesPage::Method;
    session_.setField(QStringLiteral("rngval1"), QString());
    session_.chooseMethod(3);
    EXPECT_EQ(session_.field(QStringLiteral("rngval1")), QStringLiteral("1.099658856"));
    session_.stepGreville(2);
    EXPECT_EQ(session_.field(QStringLiteral("rngval1")), QStringLiteral("1.101658856"));
    session_.setField(QStringLiteral("Txtradix1"), QStringLiteral("1000"));
    session_.Apply();
    EXPECT_EQ(lineAfter(QStringLiteral("[ABGLTBL]"), 1), QStringLiteral("Radix =1000"));
    EXPECT_EQ(lineAfter(QStringLiteral("[ABGLTBL]"), 2), QStringLiteral("Method=3"));
    EXPECT_EQ(lineAfter(QStringLiteral("[ABGLTBL]"), 3), QStringLiteral("Greval=1.101658856"));
    EXPECT_EQ(lineAfter(QStringLiteral("[ABGLTBL]"), 4), QStringLiteral("[OPNCLSAGEINTVL]"));
    // Keyfitz without its limits: the file has no lines for them.
    session_.chooseMethod(1);
    session_.setField(QStringLiteral("txtKFlwrlmt1"), QString());
    session_.setField(QStringLiteral("Txtradix1"), QString()); // an empty radix is 1
    session_.Apply();
    EXPECT_EQ(lineAfter(QStringLiteral("[ABGLTBL]"), 1), QStringLiteral("Radix =1"));
    EXPECT_EQ(lineAfter(QStringLiteral("[ABGLTBL]"), 2), QStringLiteral("Method=1"));
    EXPECT_EQ(lineAfter(QStringLiteral("[ABGLTBL]"), 3), QStringLiteral("[OPNCLSAGEINTVL]"));
}

TEST_F(PreferencesSessionTest, TheNamesFromTheirTab) {
    session_.setField(QStringLiteral("txtCOBDctTblNm"), QStringLiteral("MyCauses"));
    session_.setField(QStringLiteral("txtBPUDctTblNm"), QString()); // empty: its default
    session_.setField(QStringLiteral("txtIntpltrDTHSTblNm"), QStringLiteral("Dths"));
    session_.setField(QStringLiteral("txtUsrDefLTS"), QStringLiteral("LTS2"));
    session_.Apply();
    EXPECT_TRUE(hasLine(QStringLiteral("COBDctTblNm=Causes")));
    session_.page = PreferencesPage::TableNames;
    session_.Apply();
    EXPECT_EQ(lineAfter(QStringLiteral("[DCTTBLNM]"), 4), QStringLiteral("COBDctTblNm=MyCauses"));
    EXPECT_EQ(lineAfter(QStringLiteral("[POPDCTTBLNM]"), 1), QStringLiteral("BPUTblNm=_DctBPU"));
    EXPECT_EQ(lineAfter(QStringLiteral("[INTPLTRTBLNM]"), 2), QStringLiteral("DTHSTblNm=Dths"));
    EXPECT_EQ(lineAfter(QStringLiteral("[USRLTS]"), 1), QStringLiteral("UsrLTSTblNm=LTS2"));
}

TEST_F(PreferencesSessionTest, TheUpperAgeRangeAndLeadingCausesWhenLeft) {
    session_.setField(QStringLiteral("TxtMinMaxage"), QStringLiteral("40"));
    EXPECT_FALSE(session_.leaveField(QStringLiteral("TxtMinMaxage")));
    session_.setField(QStringLiteral("TxtMinMaxage"), QStringLiteral("60"));
    EXPECT_TRUE(session_.leaveField(QStringLiteral("TxtMinMaxage")));
    session_.setField(QStringLiteral("TxtMaxMaxage"), QStringLiteral("60"));
    EXPECT_FALSE(session_.leaveField(QStringLiteral("TxtMaxMaxage")));
    session_.setField(QStringLiteral("TxtMaxMaxage"), QStringLiteral("75"));
    EXPECT_TRUE(session_.leaveField(QStringLiteral("TxtMaxMaxage")));
    session_.setField(QStringLiteral("txtNLdCuss"), QStringLiteral("7"));
    session_.leaveField(QStringLiteral("txtNLdCuss"));
    EXPECT_EQ(prompts_.messages(),
              (QStringList{QStringLiteral("MinMaxAge should be  greater than 45 and Less than 85"),
                           QStringLiteral("MaxMaxAge should be greater than60and Less than 85")}));
    session_.Apply();
    EXPECT_EQ(lineAfter(QStringLiteral("[MINMAX]"), 1), QStringLiteral("[IMINMAXAGE] =60"));
    EXPECT_EQ(lineAfter(QStringLiteral("[MINMAX]"), 2), QStringLiteral("[IMAXMAXAGE] =75"));
    EXPECT_EQ(lineAfter(QStringLiteral("[Prefer]"), 1), QStringLiteral("NleadingCauses =7"));
}

TEST_F(PreferencesSessionTest, TheChartExportKeepsWhatIsTypedForEachChart) {
    EXPECT_EQ(session_.exportCharts().value(4), QStringLiteral("YLD & YLL Rates by Region"));
    session_.setField(QStringLiteral("txtShtName"), QStringLiteral("Iyld"));
    session_.setField(QStringLiteral("txtstrowno"), QStringLiteral("5"));
    session_.chooseExportChart(8);
    EXPECT_EQ(session_.field(QStringLiteral("txtShtName")), QStringLiteral("SheetNo9"));
    session_.setField(QStringLiteral("txtstcolno"), QStringLiteral("3"));
    session_.setField(QStringLiteral("txtFlname"), QStringLiteral("Charts"));
    session_.chooseExportChart(0);
    EXPECT_EQ(session_.field(QStringLiteral("txtShtName")), QStringLiteral("Iyld"));
    EXPECT_EQ(session_.field(QStringLiteral("txtstrowno")), QStringLiteral("5"));
    session_.Apply();
    EXPECT_TRUE(chartExportSettings().sheetNames[0].isEmpty()); // kept from its own tab only
    session_.page = PreferencesPage::GraphExport;
    session_.Apply();
    const ChartExportSettings& kept = chartExportSettings();
    EXPECT_EQ(kept.fileName, QStringLiteral("Charts"));
    EXPECT_EQ(kept.sheetNames[0], QStringLiteral("Iyld"));
    EXPECT_EQ(kept.startRows[0], 5);
    EXPECT_EQ(kept.sheetNames[8], QStringLiteral("SheetNo9"));
    EXPECT_EQ(kept.startCols[8], 3);
    EXPECT_EQ(kept.startCols[1], 1);
    session_.load(QStringLiteral("District"));
    EXPECT_EQ(session_.exportCharts().value(4), QStringLiteral("YLD & YLL Rates by District"));
    EXPECT_EQ(session_.exportCharts().value(0), QStringLiteral("Percentage Distribution of IYLD"));
    EXPECT_EQ(session_.field(QStringLiteral("txtShtName")), QStringLiteral("Iyld"));
}

TEST_F(PreferencesSessionTest, ASoundChosenIsKeptPlayedAndWritten) {
    const QString wave = root() + QStringLiteral("/sounds/new.wav");
    session_.chooseSound(EventSound::Busy, wave);
    EXPECT_EQ(sounds_.played, QStringList{wave});
    EXPECT_EQ(session_.soundPath(EventSound::Busy), wave);
    session_.Apply();
    EXPECT_TRUE(hasLine(QStringLiteral("sLBussy =") + wave));
}

TEST_F(PreferencesSessionTest, EmptySoundsTakeTheirDefaultsWhenTheFormLoads) {
    settings().sLFailure.clear();
    session_.load();
    EXPECT_EQ(settings().sLFailure, QStringLiteral("C:\\WINDOWS\\MEDIA\\Office97\\Camera.wav"));
    EXPECT_EQ(session_.soundPath(EventSound::Failure), settings().sLFailure);
}

TEST_F(PreferencesSessionTest, CloseDropsWhatWasNotApplied) {
    session_.setField(QStringLiteral("txtNLdCuss"), QStringLiteral("3"));
    session_.widthGrids()[kViewTab].setTextMatrix(1, 1, QStringLiteral("1"));
    EXPECT_EQ(session_.Close(), CloseOutcome::Hide);
    EXPECT_EQ(session_.field(QStringLiteral("txtNLdCuss")), QStringLiteral("12"));
    EXPECT_EQ(session_.widthGrids()[kViewTab].textMatrix(1, 1), QStringLiteral("901"));
    EXPECT_EQ(host_.ended, 0);
}

TEST_F(PreferencesSessionTest, CloseWithAPathEmptiedAndNoEndsTheProgramThroughTheFrame) {
    session_.setField(QStringLiteral("txtImpLoc"), QString());
    prompts_.answer(Answer::Yes);
    EXPECT_EQ(session_.Close(), CloseOutcome::Stay);
    EXPECT_EQ(host_.ended, 0);
    prompts_.answer(Answer::No);
    EXPECT_EQ(session_.Close(), CloseOutcome::EndProgram);
    EXPECT_EQ(host_.ended, 1);
    // Without a frame, through the program's end.
    setFrameHost(nullptr);
    CountingProgramEnd end;
    setProgramEnd(&end);
    prompts_.answer(Answer::No);
    EXPECT_EQ(session_.Close(), CloseOutcome::EndProgram);
    EXPECT_EQ(end.requests, 1);
    setProgramEnd(nullptr);
}

TEST_F(PreferencesSessionTest, TheSampleFollowsTheRowAndThePercent) {
    session_.showSample(true, kViewTab, 1); // VWC: 901, 4001, 4006
    EXPECT_EQ(session_.samplePixels(), (std::array<int, 3>{60, 267, 267}));
    session_.setField(QStringLiteral("txtSampPct"), QStringLiteral("50"));
    session_.showSample(true, kViewTab, 1);
    EXPECT_EQ(session_.samplePixels(), (std::array<int, 3>{30, 133, 134}));
    session_.showSample(false, kToolsTab, 1); // LfTbDecPlcs 5
    EXPECT_EQ(session_.sample().textMatrix(2, 2), QStringLiteral("0.50000"));
    session_.Apply();
    EXPECT_EQ(settings().SampPct, 50);
}

} // namespace
} // namespace vesk::test
