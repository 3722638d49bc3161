// The writer of Vesk.stp: the round trip, the defaults it writes, its refusal, and a failed rewrite.

#include "settings_test_support.h"
#include "foundation/settings_texts.h"

#include <QFileInfo>
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace vesk::test {
namespace {

namespace t = settings_texts;

class SettingsWriter : public StpTest {};

TEST_F(SettingsWriter, GoldenRoundTripIsByteIdentical) {
    const QByteArray original = completeFile();
    install(original);
    ASSERT_EQ(openfile().outcome, SettingsOutcome::Ok);
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_TRUE(prompts_.shown().isEmpty()) << prompts_.messages().join(u'\n').toStdString();
    EXPECT_EQ(installed(), original);
    // The panels were loaded for the rewrite only.
    EXPECT_TRUE(settings().MtxPanel0.isEmpty());
    EXPECT_TRUE(settings().MtxPanel4.isEmpty());
}

// A panel that the reader refuses (one row far wider than the file could fill) cannot be passed on:
// the rewrite is refused with the reader's reason, and the file keeps every byte.
TEST_F(SettingsWriter, ARefusedBlockIsNotRewrittenEmpty) {
    QByteArray file = completeFile();
    ASSERT_EQ((install(file), openfile().outcome), SettingsOutcome::Ok);
    const QByteArray rows = QByteArray("1|").repeated(100000) + "1\r\n" + QByteArray("2\r\n").repeated(100000);
    const qsizetype at = file.indexOf("[PANEL 4]");
    ASSERT_GE(at, 0);
    file.insert(file.indexOf('\n', at) + 1, rows);
    install(file);
    prompts_.clear();
    EXPECT_EQ(Write_To_Vesk_Stp(), WriteResult::Failed);
    ASSERT_EQ(prompts_.messages().size(), 1);
    EXPECT_TRUE(prompts_.messages().at(0).contains(stpPath())) << prompts_.messages().at(0).toStdString();
    EXPECT_EQ(installed(), file);
    EXPECT_TRUE(settings().MtxPanel4.isEmpty());
}

TEST_F(SettingsWriter, DeliveredFileRoundTripsByteIdentically) {
    const QString delivered = QStringLiteral(VESK_BIN_DIR "/../delivered/Vesk.stp");
    CellArray oaigd;
    if (!QFileInfo::exists(delivered) || !FnReadOAIGD(oaigd, delivered))
        GTEST_SKIP() << "the built Vesk.stp has no [OAIGD] rows yet: the delivered numeric blocks are "
                        "not merged";
    const QByteArray original = readFile(delivered);
    install(original);
    // The delivered file names a database that a fresh build does not have: the path message may come.
    ASSERT_EQ(openfile().outcome, SettingsOutcome::Ok) << prompts_.messages().join(u'\n').toStdString();
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_EQ(installed(), original);
}

TEST_F(SettingsWriter, LinesEndInCarriageReturnLineFeed) {
    install(completeFile());
    openfile();
    Write_To_Vesk_Stp();
    const QByteArray out = installed();
    EXPECT_EQ(out.count("\r\n"), out.count('\n'));
    EXPECT_EQ(out.count('\r'), out.count('\n'));
    EXPECT_TRUE(out.endsWith("---------------------------\r\n"));
    EXPECT_TRUE(out.contains("\r\nRsltDecPlcs = 1\r\n"));
}

TEST_F(SettingsWriter, EmptySoundIsWrittenWithTheDefaultAtNextSave) {
    install(withLine(completeFile(), "sLBussy =" + root().toUtf8() + "/sounds/busy.wav", "sLBussy ="));
    openfile();
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_TRUE(installed().contains("\r\nsLBussy =C:\\WINDOWS\\MEDIA\\Office97\\Driveby.wav\r\n"));
}

TEST_F(SettingsWriter, EmptyValuesAreStoredAndWrittenAsDefaults) {
    install(completeFile());
    openfile();
    VeskSettings& s = settings();
    s.sLFailure.clear();
    s.COBDctTblNm.clear();
    s.ColWdth.fill(0);
    s.MinMaxAge = 0;
    s.MaxMaxAge = 0;
    s.ChoiceFiveYrs = Cell();
    s.UpperAgeIntvl = Cell::null();
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    const QByteArray out = installed();
    EXPECT_TRUE(out.contains("\r\nsLFailure =C:\\WINDOWS\\MEDIA\\Office97\\Camera.wav\r\n"));
    EXPECT_TRUE(out.contains("\r\nCOBDctTblNm=_DctBDM\r\n"));
    EXPECT_TRUE(out.contains("\r\n[IMINMAXAGE] =45\r\n[IMAXMAXAGE] =85\r\n"));
    EXPECT_TRUE(out.contains("\r\n[Choice For Five Years] =0\r\n[Upper Age Interval] =1\r\n"));
    EXPECT_TRUE(out.contains("\r\nVWC3=4000\r\nVDC3=900\r\n"));
    EXPECT_EQ(s.sLFailure, "C:\\WINDOWS\\MEDIA\\Office97\\Camera.wav");
    EXPECT_EQ(s.MinMaxAge, 45);
    EXPECT_EQ(s.MaxMaxAge, 85);
    for (int i = 0; i < kColumnWidthCount; ++i)
        EXPECT_EQ(s.ColWdth[i], kColumnWidthDefaults[i]) << kColumnWidthKeys[i];
    EXPECT_EQ(s.ChoiceFiveYrs, Cell(0));
    EXPECT_EQ(s.UpperAgeIntvl, Cell(1));
}

TEST_F(SettingsWriter, ChainWidthsDifferFromTheFilesOnlyInTheThirdColumns) {
    VeskSettings s;
    loadChainDefaultWidths(s);
    EXPECT_EQ(s.ColWdth[ColWdthIndex("VWC3")], 800);
    EXPECT_EQ(s.ColWdth[ColWdthIndex("SIEC3")], 1550);
    EXPECT_EQ(s.ColWdth[ColWdthIndex("VPC1")], 450);
    EXPECT_EQ(kColumnWidthDefaults[ColWdthIndex("VWC3")], 4000);
    EXPECT_EQ(ColWdthIndex("nosuch"), -1);
}

TEST_F(SettingsWriter, MethodOneWithoutLowerLimitSwallowsTheNextTwoLines) {
    install(completeFile());
    openfile();
    settings().LTKFlwrLmt.clear();
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_TRUE(installed().contains("\r\nMethod=1\r\n[OPNCLSAGEINTVL]\r\n"));
    EXPECT_FALSE(installed().contains("KFupprlmt"));

    // The next start: the limits come from the two lines after the method, and [OPNCLSAGEINTVL]
    // goes unseen, its values keeping their former state.
    settings().ChoiceFiveYrs = Cell(7);
    settings().UpperAgeIntvl = Cell(8);
    settings().LifeTblType = 0;
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    EXPECT_TRUE(prompts_.shown().isEmpty()) << prompts_.messages().join(u'\n').toStdString();
    EXPECT_EQ(settings().LTMethod, 1);
    EXPECT_EQ(settings().LTKFlwrLmt, "EINTVL]");           // "[OPNCLSAGEINTVL]" from column 10
    EXPECT_EQ(settings().LTKFupprLmt, "r Five Years] =1"); // "[Choice For Five Years] =1" from column 11
    EXPECT_EQ(settings().ChoiceFiveYrs, Cell(7));
    EXPECT_EQ(settings().UpperAgeIntvl, Cell(8));
    EXPECT_EQ(settings().LifeTblType, 3);
}

TEST_F(SettingsWriter, GrevilleIsWrittenForMethodThreeOnly) {
    install(completeFile());
    openfile();
    settings().LTMethod = 3;
    settings().LTGreval = QStringLiteral("0.25");
    Write_To_Vesk_Stp();
    EXPECT_TRUE(installed().contains("\r\nMethod=3\r\nGreval=0.25\r\n[OPNCLSAGEINTVL]\r\n"));
    settings().LTMethod = 2;
    Write_To_Vesk_Stp();
    EXPECT_TRUE(installed().contains("\r\nMethod=2\r\n[OPNCLSAGEINTVL]\r\n"));
}

TEST_F(SettingsWriter, TableNamesOfTheComboBoxesAreForced) {
    install(completeFile());
    openfile();
    preferences().cmbVESKADW = QStringLiteral("Other");
    preferences().cmbVESKCSMP.clear();
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_EQ(preferences().cmbVESKADW, "DatADW");
    EXPECT_TRUE(installed().contains("\r\nADW   =DatADW\r\nCSM   =DatCSM\r\n"));
}

TEST_F(SettingsWriter, SamplePercentComesFromItsText) {
    install(completeFile());
    openfile();
    preferences().txtSampPct = QStringLiteral("35");
    Write_To_Vesk_Stp();
    EXPECT_EQ(settings().SampPct, 35);
    preferences().txtSampPct.clear();
    Write_To_Vesk_Stp();
    EXPECT_EQ(settings().SampPct, 100);
}

TEST_F(SettingsWriter, ClosedDatabaseLeavesTheObjectLineEmpty) {
    install(completeFile());
    openfile();
    preferences().txtVESKObj.clear();
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_TRUE(installed().contains("\r\nOBJECT=\r\n"));
    EXPECT_FALSE(openfile().SettingsOK);
}

TEST_F(SettingsWriter, EmptyPathIsRefusedAndTheOldFileStays) {
    const QByteArray original = completeFile();
    for (QString PreferencesControls::*path :
         {&PreferencesControls::txtwklocation, &PreferencesControls::txtStatOut,
          &PreferencesControls::txtTempArea}) {
        install(original);
        openfile();
        prompts_.clear();
        preferences().*path = QString();
        settings().NLdCauses = 99;
        EXPECT_EQ(Write_To_Vesk_Stp(), WriteResult::Refused);
        ASSERT_EQ(prompts_.shown().size(), 1);
        EXPECT_EQ(prompts_.shown()[0].text, t::kWriterPathsEmpty);
        EXPECT_EQ(prompts_.shown()[0].icon, Icon::Warning);
        EXPECT_EQ(prompts_.shown()[0].title, "VESK");
        EXPECT_EQ(installed(), original);
    }
}

TEST_F(SettingsWriter, MissingFolderFailsAndWritesNothing) {
    install(completeFile());
    openfile();
    settings().AppPath = root() + "/nosuch";
    EXPECT_EQ(Write_To_Vesk_Stp(), WriteResult::Failed);
    EXPECT_EQ(prompts_.messages(), QStringList{"Path not found"});
    EXPECT_FALSE(QFileInfo::exists(root() + "/nosuch"));
}

TEST_F(SettingsWriter, UnreachableMachineGivesTheNetworkMessage) {
    install(completeFile());
    openfile();
    settings().AppPath = QStringLiteral("//nosuchmachine/share");
    EXPECT_EQ(Write_To_Vesk_Stp(), WriteResult::Failed);
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, t::kMachineMissing);
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Warning);
    EXPECT_EQ(prompts_.shown()[0].title, "VESK Setup Error");
}

// A write that fails half-way (here a file size limit, as a full volume would) leaves the old
// file whole.
TEST_F(SettingsWriter, FailedRewriteLeavesTheOldFileWhole) {
    const QByteArray original = completeFile();
    install(original);
    openfile();
    settings().NLdCauses = 33;
    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    rlimit small = old;
    small.rlim_cur = 256;
    auto previous = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const WriteResult result = Write_To_Vesk_Stp();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, previous);
    EXPECT_EQ(result, WriteResult::Failed);
    EXPECT_EQ(prompts_.messages(), QStringList{"Disk full"});
    EXPECT_EQ(installed(), original);
    EXPECT_EQ(QDir(appDir()).entryList(QDir::Files), QStringList{"Vesk.stp"});
}

TEST_F(SettingsWriter, ReadOnlyFolderLeavesTheOldFileWhole) {
    if (geteuid() == 0)
        GTEST_SKIP() << "running as root: folder permissions do not stop this process";
    const QByteArray original = completeFile();
    install(original);
    openfile();
    QFile::setPermissions(appDir(), QFile::ReadOwner | QFile::ExeOwner);
    const WriteResult result = Write_To_Vesk_Stp();
    QFile::setPermissions(appDir(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(result, WriteResult::Failed);
    EXPECT_EQ(prompts_.messages(), QStringList{"Permission denied"});
    EXPECT_EQ(installed(), original);
}

TEST_F(SettingsWriter, NumericBlocksPassOnUnchangedEvenWhenNotLoaded) {
    const QByteArray original = completeFile();
    install(original);
    openfile();
    // As after a reader stopped early: the tables are taken from the file again.
    settings().MtxLTSWHO = CellArray();
    settings().MtxOAIGD = CellArray();
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_EQ(installed(), original);
}

TEST_F(SettingsWriter, ShortRowsAndUserTableAreWrittenAsHeld) {
    install(completeFile());
    openfile();
    CellArray oaigd = CellArray::fromSizes({2, 5});
    oaigd(0, 0) = Cell("1");
    oaigd(0, 1) = Cell("2");
    oaigd(1, 0) = Cell("3");
    oaigd(1, 1) = Cell("");
    settings().MtxOAIGD = oaigd;
    preferences().userLifeTableLoaded = false;
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    const QByteArray out = installed();
    EXPECT_TRUE(out.contains(
        "\r\n[OAIGD]\r\n----------------------------\r\n1|2\r\n3|\r\n---------------------------\r\n"));
    EXPECT_FALSE(out.contains("[User Defined Life Table]"));
}

// An imported user table holds numbers, not the texts of a file: each is written so that it reads
// back to the same double, and the rewritten file gives the table again.
TEST_F(SettingsWriter, AUserTableOfNumbersRoundTripsExactly) {
    install(completeFile());
    ASSERT_EQ(openfile().outcome, SettingsOutcome::Ok);
    CellArray user = CellArray::fromSizes({101, 3});
    for (int x = 0; x <= 100; ++x) {
        user(x, 0) = Cell(static_cast<double>(x));
        user(x, 1) = Cell(91.94 - 0.9 * x);
        user(x, 2) = Cell(88.5 - 0.85 * x);
    }
    user(99, 1) = Cell(0.1 + 0.2);
    user(100, 1) = Cell(1e-300);
    user(100, 2) = Cell(5e-324);
    preferences().userLifeTable = user;
    preferences().userLifeTableLoaded = true;
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_TRUE(installed().contains("|0.30000000000000004|")) << "seventeen digits where fifteen lose it";
    EXPECT_TRUE(installed().contains("|91.94|") || installed().contains("[EXF]:91.94|"));

    preferences() = PreferencesControls{};
    ASSERT_EQ(openfile().outcome, SettingsOutcome::Ok);
    ASSERT_TRUE(preferences().userLifeTableLoaded);
    const CellArray& back = preferences().userLifeTable;
    ASSERT_EQ(back.size(0), 101);
    for (int x = 0; x <= 100; ++x)
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(back(x, c).toDouble(), user(x, c).toDouble()) << x << "," << c;
    // And a second rewrite of what was read keeps every byte.
    const QByteArray once = installed();
    ASSERT_EQ(Write_To_Vesk_Stp(), WriteResult::Written);
    EXPECT_EQ(installed(), once);
}

TEST_F(SettingsWriter, DriveRootProgramFolderPutsTheFileInTheRoot) {
    // "Q:\" stands for a drive root. Elsewhere than on Windows "Q:" is a relative folder name, so the
    // test runs in this test's folder, where "Q:" plays the drive.
    const QString previous = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root()));
    ASSERT_TRUE(QDir(root()).mkdir(QStringLiteral("Q:")));
    writeFile(root() + "/Q:/Vesk.stp", completeFile());
    const SettingsResult r = InitVESKFilePath(QStringLiteral("Q:\\"));
    EXPECT_EQ(settings().AppPath, "Q:");
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    settings().NLdCauses = 21;
    settings().AppPath = QStringLiteral("Q:\\");
    const WriteResult w = Write_To_Vesk_Stp();
    QDir::setCurrent(previous);
    EXPECT_EQ(w, WriteResult::Written);
    EXPECT_EQ(settings().AppPath, "Q:");
    EXPECT_TRUE(readFile(root() + "/Q:/Vesk.stp").contains("\r\nNleadingCauses =21\r\n"));
}

TEST(SettingsPaths, DriveRootAndFileSystemRoot) {
    EXPECT_EQ(cutDriveRoot(QStringLiteral("Q:\\")), "Q:");
    EXPECT_EQ(cutDriveRoot(QStringLiteral("Q:\\VESK")), "Q:\\VESK");
    EXPECT_EQ(cutDriveRoot(QStringLiteral("/opt/vesk")), "/opt/vesk");
    EXPECT_EQ(appPathFor(QStringLiteral("Q:\\")), "Q:");
#ifndef Q_OS_WIN
    EXPECT_EQ(appPathFor(QStringLiteral("/")), "");
    EXPECT_EQ(settingsFilePath(QString()), "/Vesk.stp");
    EXPECT_EQ(appPathFor(QStringLiteral("/opt/vesk")), "/opt/vesk");
    EXPECT_EQ(settingsFilePath(QStringLiteral("/opt/vesk")), "/opt/vesk/Vesk.stp");
#else
    EXPECT_EQ(appPathFor(QStringLiteral("C:/")), "C:");
    EXPECT_EQ(settingsFilePath(QStringLiteral("C:")), "C:\\Vesk.stp");
#endif
}

} // namespace
} // namespace vesk::test
