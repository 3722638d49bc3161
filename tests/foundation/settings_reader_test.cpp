// The reader of Vesk.stp: what it takes from each line, and the position-based behaviour of its loop.

#include "settings_test_support.h"
#include "foundation/settings_file_io.h"
#include "foundation/settings_texts.h"

namespace vesk::test {
namespace {

namespace t = settings_texts;

class SettingsReader : public StpTest {};

TEST_F(SettingsReader, CompleteFileFillsSettingsAndControls) {
    install(completeFile());
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    EXPECT_TRUE(r.SettingsOK);
    EXPECT_EQ(r.errorNumber, 0);
    EXPECT_TRUE(prompts_.shown().isEmpty()) << prompts_.messages().join(u'\n').toStdString();

    const VeskSettings& s = settings();
    const PreferencesControls& p = preferences();
    EXPECT_EQ(s.DBFullPath, root() + "/Work/study.vdb");
    EXPECT_EQ(p.txtVESKObj, "study.vdb");
    EXPECT_EQ(p.cmbVESKADW, "DatADW");
    EXPECT_EQ(p.cmbVESKCSMP, "DatCSM");
    EXPECT_EQ(s.StatOutPath, root() + "/Output/");
    EXPECT_EQ(p.txtStatOut, s.StatOutPath);
    EXPECT_EQ(s.TempPath, root() + "/Temp");
    EXPECT_EQ(p.txtTempArea, s.TempPath);
    EXPECT_EQ(s.NLdCauses, 12);
    EXPECT_EQ(s.ToolDecPlcs, 3);
    EXPECT_EQ(s.RsltDecPlcs, 1);
    EXPECT_EQ(s.RptDecPlcs, 4);
    EXPECT_EQ(s.LfTbDecPlcs, 5);
    EXPECT_EQ(s.LSumDecPlcs, 1);
    EXPECT_EQ(s.LDthDecPlcs, 2);
    EXPECT_EQ(s.LDaleDecPlcs, 3);
    EXPECT_EQ(s.sLSuccess, root() + "/sounds/success.wav");
    EXPECT_EQ(s.sLBussy, root() + "/sounds/busy.wav");
    EXPECT_EQ(s.sLFailure, root() + "/sounds/failure.wav");
    EXPECT_EQ(s.ColWdth[ColWdthIndex("VWC1")], 901);
    EXPECT_EQ(s.ColWdth[ColWdthIndex("SICC1")], 905);
    EXPECT_EQ(s.ColWdth[ColWdthIndex("SSCC2")], 4501);
    EXPECT_EQ(s.ColWdth[ColWdthIndex("SSCC3")], 702);
    EXPECT_EQ(s.GrpDctTblNm, "Groups");
    EXPECT_EQ(s.MapDctTblNm, "SequelaMap");
    EXPECT_EQ(s.BPUTblNm, "Units");
    EXPECT_EQ(s.PAG2TblNm, "Zones");
    EXPECT_EQ(s.POPTblNm, "Pop5");
    EXPECT_EQ(s.BOTHTblNm, "Both5");
    EXPECT_EQ(s.UsrLTSTblNm, "MyLifeTable");
    EXPECT_EQ(s.MinMaxAge, 50);
    EXPECT_EQ(s.MaxMaxAge, 80);
    EXPECT_EQ(s.LTRadix, 100000);
    EXPECT_EQ(s.LTMethod, 1);
    EXPECT_EQ(s.LTKFlwrLmt, "10");
    EXPECT_EQ(s.LTKFupprLmt, "60");
    EXPECT_EQ(s.ChoiceFiveYrs, Cell(1));
    EXPECT_EQ(s.UpperAgeIntvl, Cell(2));
    EXPECT_EQ(s.LifeTblType, 3);
}

TEST_F(SettingsReader, LifeTablesOaigdAndUserTableAreTextCells) {
    install(completeFile());
    openfile();
    const VeskSettings& s = settings();
    ASSERT_EQ(s.MtxLTSKRO.rank(), 2);
    EXPECT_EQ(s.MtxLTSKRO.size(0), 4);
    EXPECT_EQ(s.MtxLTSKRO.size(1), 3);
    EXPECT_EQ(s.MtxLTSKRO(3, 0), Cell("10"));
    EXPECT_EQ(s.MtxLTSKRO(1, 1), Cell("81.84")); // female
    EXPECT_EQ(s.MtxLTSKRO(1, 2), Cell("79.36")); // male
    EXPECT_EQ(s.MtxLTSWHO.size(0), 3);
    EXPECT_EQ(s.MtxLTSWHO(2, 1), Cell("77.1"));
    ASSERT_EQ(s.MtxOAIGD.size(0), 3);
    EXPECT_EQ(s.MtxOAIGD.size(1), 5);
    EXPECT_EQ(s.MtxOAIGD(1, 2), Cell("-0.3"));
    EXPECT_TRUE(preferences().userLifeTableLoaded);
    EXPECT_EQ(preferences().userLifeTable.size(0), 2);
    EXPECT_EQ(preferences().userLifeTable(1, 2), Cell("69.5"));
}

TEST_F(SettingsReader, PathsKeepTheirCaseWhereTheFileSystemTellsCasesApart) {
    install(completeFile());
    openfile();
#ifdef Q_OS_WIN
    EXPECT_EQ(settings().WorkPath, (root() + "/Work").toUpper());
#else
    EXPECT_EQ(settings().WorkPath, root() + "/Work");
    EXPECT_EQ(settings().ImportPath, root() + "/Import");
    EXPECT_EQ(preferences().txtImpLoc, root() + "/Import");
#endif
    EXPECT_EQ(preferences().txtwklocation, settings().WorkPath);
}

TEST_F(SettingsReader, EmptySoundTakesTheDefault) {
    install(withLine(completeFile(), "sLBussy =" + root().toUtf8() + "/sounds/busy.wav", "sLBussy ="));
    openfile();
    EXPECT_EQ(settings().sLBussy, "C:\\WINDOWS\\MEDIA\\Office97\\Driveby.wav");
    EXPECT_EQ(settings().sLSuccess, root() + "/sounds/success.wav");
}

TEST_F(SettingsReader, EmptyNumbersAndNamesTakeTheirDefaults) {
    QByteArray file = completeFile();
    file = withLine(file, "NleadingCauses =12", "NleadingCauses =");
    file = withLine(file, "RsltDecPlcs = 1", "RsltDecPlcs = ");
    file = withLine(file, "LDaleDecPlcs =3", "LDaleDecPlcs =");
    file = withLine(file, "SGrpDctTblNm=SubGroups", "SGrpDctTblNm=");
    file = withLine(file, "UsrLTSTblNm=MyLifeTable", "UsrLTSTblNm=");
    file = withLine(file, "Radix =100000", "Radix =0");
    file = withLine(file, "[Choice For Five Years] =1", "[Choice For Five Years] =");
    file = withLine(file, "[Upper Age Interval] =2", "[Upper Age Interval] =");
    install(file);
    openfile();
    const VeskSettings& s = settings();
    EXPECT_EQ(s.NLdCauses, 10);
    EXPECT_EQ(s.RsltDecPlcs, 0);
    EXPECT_EQ(s.LDaleDecPlcs, 2);
    EXPECT_EQ(s.ToolDecPlcs, 3);
    EXPECT_EQ(s.SGrpDctTblNm, "_DctBDMSGrps");
    EXPECT_EQ(s.UsrLTSTblNm, "USRLTS");
    EXPECT_EQ(s.LTRadix, 1);
    EXPECT_EQ(s.ChoiceFiveYrs, Cell(0));
    EXPECT_EQ(s.UpperAgeIntvl, Cell(1));
}

TEST_F(SettingsReader, RsltDecPlcsIsReadWithOrWithoutItsBlank) {
    install(withLine(completeFile(), "RsltDecPlcs = 1", "RsltDecPlcs =4"));
    openfile();
    EXPECT_EQ(settings().RsltDecPlcs, 4);
}

TEST_F(SettingsReader, BlankLineInPreferSkipsThatKeyOnly) {
    settings().ToolDecPlcs = 7;
    install(withLine(completeFile(), "ToolDecPlcs =3", ""));
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    EXPECT_EQ(settings().ToolDecPlcs, 7);
    EXPECT_EQ(settings().NLdCauses, 12);
    EXPECT_EQ(settings().RsltDecPlcs, 1);
    EXPECT_EQ(settings().sLFailure, root() + "/sounds/failure.wav");
}

TEST_F(SettingsReader, WidthsTakeDefaultsAndSkipForeignLines) {
    QByteArray file = completeFile();
    file = withLine(file, "VWC1=901", "VWC1=");
    file = withLine(file, "SIEC3=1552", "SIEC3=");
    file = withLine(file, "VDC2=4002", "vdc2=123");
    file = withLine(file, "SSCC1=701", "sscc1=77");
    file = withLine(file, "RDC3=907", "XXXX=5");
    settings().ColWdth[ColWdthIndex("RDC3")] = 555;
    install(file);
    openfile();
    const auto& w = settings().ColWdth;
    EXPECT_EQ(w[ColWdthIndex("VWC1")], 900);
    EXPECT_EQ(w[ColWdthIndex("SIEC3")], 1550);
    EXPECT_EQ(w[ColWdthIndex("VDC2")], 123);
    EXPECT_EQ(w[ColWdthIndex("SSCC1")], 77);
    EXPECT_EQ(w[ColWdthIndex("RDC3")], 555);
    EXPECT_EQ(w[ColWdthIndex("RSC3")], 908);
}

TEST_F(SettingsReader, EmptyObjectLineRejectsTheDatabasePath) {
    install(withLine(completeFile(), "OBJECT=study.vdb", "OBJECT="));
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    EXPECT_FALSE(r.SettingsOK);
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, t::kCheckVeskPath);
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Warning);
    EXPECT_EQ(prompts_.shown()[0].title, "VESK");
    EXPECT_EQ(preferences().txtVESKObj, "");
    // The rest is read all the same.
    EXPECT_EQ(settings().LifeTblType, 3);
}

TEST_F(SettingsReader, MissingDatabaseOrOneWithoutThreeLetterExtensionIsRejected) {
    install(withLine(completeFile(), "OBJECT=study.vdb", "OBJECT=other.vdb"));
    EXPECT_FALSE(openfile().SettingsOK);
    QFile(root() + "/Work/study.sqlite").open(QIODevice::WriteOnly);
    install(withLine(completeFile(), "OBJECT=study.vdb", "OBJECT=study.sqlite"));
    EXPECT_FALSE(openfile().SettingsOK);
    EXPECT_EQ(prompts_.messages(), QStringList({t::kCheckVeskPath, t::kCheckVeskPath}));
}

TEST_F(SettingsReader, VeskLinesCountByPositionNotByKey) {
    QByteArray file = completeFile();
    file = withLine(file, "OBJECT=study.vdb", "XXXXXX=study.vdb");
    file = withLine(file, "ADW   =DatADW", "CSM   =TblOne");
    install(file);
    const SettingsResult r = openfile();
    EXPECT_TRUE(r.SettingsOK);
    EXPECT_EQ(preferences().txtVESKObj, "study.vdb");
    EXPECT_EQ(preferences().cmbVESKADW, "TblOne");
}

TEST_F(SettingsReader, EmptyStatisticalAndTempPathsAreReported) {
    QByteArray file = completeFile();
    file = withLine(file, "PATH  =" + root().toUtf8() + "/Output/", "PATH  =");
    file = withLine(file, "PATH  =" + root().toUtf8() + "/Temp", "PATH  =");
    install(file);
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    ASSERT_EQ(prompts_.shown().size(), 2);
    EXPECT_EQ(prompts_.shown()[0].text, t::kStatOutMissing);
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Warning);
    EXPECT_EQ(prompts_.shown()[0].title, "VESK");
    EXPECT_EQ(prompts_.shown()[1].text, t::kTempMissing);
    EXPECT_EQ(prompts_.shown()[1].title, "VESK");
}

TEST_F(SettingsReader, MinMaxZeroIsKept) {
    QByteArray file = withLine(completeFile(), "[IMINMAXAGE] =50", "[IMINMAXAGE] =");
    install(withLine(file, "[IMAXMAXAGE] =80", "[IMAXMAXAGE] =0"));
    openfile();
    EXPECT_EQ(settings().MinMaxAge, 0);
    EXPECT_EQ(settings().MaxMaxAge, 0);
}

TEST_F(SettingsReader, MissingOaigdRowsEndTheProgramAtOnce) {
    QByteArray file = completeFile();
    for (const char* row : {"1|0.5|-0.25|3.75|85", "2|0.61|-0.3|4.1|90", "3|0.72|-0.35|4.45|95"})
        file = withoutLine(file, row);
    install(file);
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::EndProgram);
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, t::kOaigdMissing);
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Warning);
    EXPECT_TRUE(settings().MtxOAIGD.isEmpty());
    EXPECT_TRUE(preferences().txtwklocation.isEmpty()); // nothing else was read
}

TEST_F(SettingsReader, MissingOaigdSectionEndsTheProgram) {
    QByteArray file = completeFile();
    file.replace("[OAIGD]", "[OAIGX]");
    install(file);
    EXPECT_EQ(openfile().outcome, SettingsOutcome::EndProgram);
    EXPECT_EQ(prompts_.messages(), QStringList{t::kOaigdMissing});
}

// An [OAIGD] block that is there but refused (far wider than the file) ends the program with the
// reader's reason, which names the file, not with the words for a missing block.
TEST_F(SettingsReader, RefusedOaigdSectionEndsTheProgramSayingWhy) {
    QByteArray file = completeFile();
    const qsizetype rule = file.indexOf("----------------------------\r\n", file.indexOf("[OAIGD]"));
    ASSERT_GE(rule, 0);
    file.insert(file.indexOf('\n', rule) + 1,
                QByteArray("1|").repeated(100000) + "1\r\n" + QByteArray("2\r\n").repeated(100000));
    install(file);
    EXPECT_EQ(openfile().outcome, SettingsOutcome::EndProgram);
    ASSERT_EQ(prompts_.messages().size(), 1);
    EXPECT_TRUE(prompts_.messages().at(0).contains(stpPath())) << prompts_.messages().at(0).toStdString();
}

TEST_F(SettingsReader, EmptyLineAfterOpenIntervalEndsTheProgram) {
    install(withLine(completeFile(), "[LIFE TABLE]", ""));
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::EndProgram);
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, t::kValuesMissed);
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Critical);
}

TEST_F(SettingsReader, MissingLifeTableTypeEndsTheProgramWithThePlainText) {
    install(withLine(completeFile(), "[LIFE TABLE TYPE]=3", "[LIFE TABLE KIND]=3"));
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::EndProgram);
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text,
              "Some Values are missed in the STP file,Panel values are not loaded.You can use the copy "
              "of STP, vbCritical");
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::None);
}

TEST_F(SettingsReader, MissingStandardLifeTableEndsTheProgram) {
    QByteArray file = completeFile();
    file.replace("[Standard Life Table-WHO]", "[Standard Life Table-XYZ]");
    install(file);
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::EndProgram);
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, t::kLtsMissing);
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Critical);
}

TEST_F(SettingsReader, NoUserSectionLeavesTheFormsTableAlone) {
    QByteArray file = completeFile();
    file.replace("[User Defined Life Table]\r\n[BAI]:0|1\r\n[EXM]:70|69.5\r\n[EXF]:75|74.4\r\n", "");
    install(file);
    openfile();
    EXPECT_FALSE(preferences().userLifeTableLoaded);
    EXPECT_TRUE(preferences().userLifeTable.isEmpty());
}

TEST_F(SettingsReader, LifeTableTypeOutsideOneToThreeKeepsThePreviousValue) {
    settings().LifeTblType = 2;
    install(withLine(completeFile(), "[LIFE TABLE TYPE]=3", "[LIFE TABLE TYPE]=9"));
    EXPECT_EQ(openfile().outcome, SettingsOutcome::Ok);
    EXPECT_EQ(settings().LifeTblType, 2);
}

TEST_F(SettingsReader, MethodThreeTakesTheNextLineAsGreville) {
    QByteArray file = completeFile();
    file.replace("Method=1\r\nKFlwrlmt=10\r\nKFupprlmt=60\r\n", "Method=3\r\nGreval=0.25\r\n");
    install(file);
    EXPECT_EQ(openfile().outcome, SettingsOutcome::Ok);
    EXPECT_EQ(settings().LTMethod, 3);
    EXPECT_EQ(settings().LTGreval, "0.25");
    EXPECT_EQ(settings().ChoiceFiveYrs, Cell(1));
}

TEST_F(SettingsReader, LineThatIsNotTheMethodFallsToLaterComparisons) {
    QByteArray file = completeFile();
    file.replace("Method=1\r\nKFlwrlmt=10\r\nKFupprlmt=60\r\n", "");
    settings().LTMethod = 2;
    install(file);
    EXPECT_EQ(openfile().outcome, SettingsOutcome::Ok);
    // "[OPNCLSAGEINTVL]" was read in place of the method and still opened its block.
    EXPECT_EQ(settings().LTMethod, 2);
    EXPECT_EQ(settings().ChoiceFiveYrs, Cell(1));
    EXPECT_EQ(settings().LifeTblType, 3);
}

TEST_F(SettingsReader, FileEndingInsideABlockReportsInputPastEnd) {
    // The numeric blocks first, so that [OAIGD] is found, then the keyed lines cut inside [Prefer].
    const QByteArray file = completeFile();
    const qsizetype blocks = file.indexOf("---------------------------\r\n[LTS]");
    install(file.mid(blocks) + file.left(file.indexOf("LfTbDecPlcs")));
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    EXPECT_EQ(r.errorNumber, 62);
    EXPECT_EQ(prompts_.messages(), QStringList{"Input past end of file"});
}

TEST_F(SettingsReader, OverflowOfASixteenBitValueIsReported) {
    install(withLine(completeFile(), "[IMINMAXAGE] =50", "[IMINMAXAGE] =40000"));
    const SettingsResult r = openfile();
    EXPECT_EQ(r.errorNumber, 6);
    EXPECT_EQ(prompts_.messages(), QStringList{"Overflow"});
}

TEST_F(SettingsReader, UnreachableMachineSaysPleaseCheckPath) {
    settings().AppPath = QStringLiteral("//nosuchmachine/share");
    const SettingsResult r = openfile();
    EXPECT_EQ(r.errorNumber, 52);
    ASSERT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, "Please check Path");
    EXPECT_EQ(prompts_.shown()[0].icon, Icon::Warning);
    EXPECT_EQ(prompts_.shown()[0].title, "OpenFile");
}

TEST_F(SettingsReader, MissingFileShowsTheDescription) {
    settings().AppPath = appDir();
    const SettingsResult r = openfile();
    EXPECT_EQ(r.errorNumber, 53);
    EXPECT_EQ(prompts_.messages(), QStringList{"File not found"});
}

TEST_F(SettingsReader, BareLineFeedsAreLineEndsToo) {
    QByteArray file = completeFile();
    file.replace("\r\n", "\n");
    install(file);
    const SettingsResult r = openfile();
    EXPECT_EQ(r.outcome, SettingsOutcome::Ok);
    EXPECT_TRUE(r.SettingsOK);
    EXPECT_EQ(settings().LifeTblType, 3);
    EXPECT_EQ(settings().MtxOAIGD.size(0), 3);
}

// The line splitter on its own: CR LF, a bare CR and a bare LF each end one line; the text after
// the last ending is a line only when it holds something; empty lines between endings stay.
TEST(SettingsLines, EveryEndingEndsOneLineAndNothingElseIsLost) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("lines.stp"));
    const auto linesOf = [&](const QByteArray& bytes) {
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
        f.close();
        QStringList lines{QStringLiteral("stale")};
        EXPECT_TRUE(stp::readLines(path, lines));
        return lines;
    };
    EXPECT_EQ(linesOf(""), QStringList{});
    EXPECT_EQ(linesOf("\n"), QStringList{QString()});
    EXPECT_EQ(linesOf("a"), QStringList{"a"});
    EXPECT_EQ(linesOf("a\n"), QStringList{"a"});
    EXPECT_EQ(linesOf("a\r\nb\rc\nd"), (QStringList{"a", "b", "c", "d"}));
    EXPECT_EQ(linesOf("a\r\r\nb"), (QStringList{"a", "", "b"}));
    EXPECT_EQ(linesOf("a\n\r\nb\n\n"), (QStringList{"a", "", "b", ""}));
    EXPECT_EQ(linesOf("\xe4\xb8\x80 \t\r"), QStringList{QString::fromUtf8("\xe4\xb8\x80 \t")});
    QStringList untouched{QStringLiteral("kept")};
    EXPECT_FALSE(stp::readLines(dir.filePath(QStringLiteral("absent.stp")), untouched));
}

} // namespace
} // namespace vesk::test
