// The study context loaded from a study file filled by SQL with bound values.

#include "burden/computation.h"
#include "database/study_context.h"
#include "db_test_support.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "shell/loading_chain.h"
#include "shell/menu_state.h"
#include "shell/study_backend.h"

#include <QDir>
#include <QFile>

using namespace vesk;
using vesk::test::DbTest;

namespace {

const QStringList kSixMenus = {"mnu_BPUES", "mnu_studyInp", "mnu_Daly", "mns_lsr", "mnu_Compute", "mnu_res"};

// The menu items switched off, in their order.
class OrderedMenus : public RecordingMenus {
public:
    void setMenuEnabled(const QString& name, bool enabled) override {
        if (!enabled)
            disabled << name;
        RecordingMenus::setMenuEnabled(name, enabled);
    }
    QStringList disabled;
};

// The frame, as far as the loaders reach it: Study Setup.
class SetupFrame : public FrameHost {
public:
    void setTimerEnabled(bool) override {}
    bool isTimerEnabled() const override { return false; }
    void showErrorViewer() override {}
    void showStudySetup(bool newDatabase) override { opened << newDatabase; }
    void endProgram() override {}
    QList<bool> opened;
};

class StudyContextTest : public DbTest {
protected:
    void SetUp() override {
        DbTest::SetUp();
        file = newStudyFile();
        db = openDb(file);
        preferences().txtwklocation = dir.path();
        preferences().txtVESKObj = "study.vdb";
        setMenuSwitch(&menus_);
        setFrameHost(&frame_);
    }
    void TearDown() override {
        setMenuSwitch(nullptr);
        setFrameHost(nullptr);
        db.reset();
        DbTest::TearDown();
    }
    static StudyContext& ctx() { return studyContext(); }
    // A loader's report, applied as the loading chain applies it.
    LoadReport chain(LoadReport report) { return applyLoadReport(report, frame_); }

    void addStudy(const QString& id, int year, const QVariant& scheme, int slct,
                  const QString& title = "Title") {
        exec(*db, "INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES (?, ?, ?, ?, ?)",
             {id, year, title, scheme, slct});
    }
    // A study "S1" of 2001, current, with the scheme "SCH" and its level names.
    void addCurrentStudy() {
        addStudy("S1", 2001, "SCH", 1, "National study");
        exec(*db, "INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES (?, ?, ?, ?)",
             {"SCH", "District", "Province", "Nation"});
    }
    void addCauseColumn(const QString& id) {
        exec(*db, QStringLiteral("ALTER TABLE _DctBDM ADD COLUMN \"%1\" BOOLEAN").arg(id));
    }
    void addCause(const QString& code, int sqla, int inStudy) {
        exec(*db, "INSERT INTO _DctBDM (CobCd, Disease, Sqla, S1) VALUES (?, ?, ?, ?)",
             {code, "Disease " + code, sqla, inStudy});
    }
    QString scalar(const QString& sql) {
        auto q = db->query(sql);
        return q && q->next() ? q->value(0).toString() : QString();
    }

    QString file;
    std::shared_ptr<DbConnection> db;
    OrderedMenus menus_;
    SetupFrame frame_;
    DatabaseStudyBackend backend_;
    QStringList& disabled = menus_.disabled;
    QList<bool>& setupOpened = frame_.opened;
};

TEST_F(StudyContextTest, InitBDSOpensTheDatabaseLazilyAndReadsTheCurrentStudy) {
    addCurrentStudy();
    addStudy("S2", 1999, "SCH", 0);
    ASSERT_FALSE(ctx().StudyDB);
    EXPECT_TRUE(chain(ctx().InitBDS()));
    ASSERT_TRUE(ctx().StudyDB);
    EXPECT_EQ(ctx().StudyDB->path(), file);
    EXPECT_EQ(ctx().CurBDSId, "S1");
    EXPECT_EQ(ctx().CurYear, 2001);
    EXPECT_EQ(ctx().CurBDSTi, "National study");
    EXPECT_EQ(ctx().CurPAGSch, "SCH");
    EXPECT_TRUE(prompts.shown().isEmpty());
    EXPECT_TRUE(disabled.isEmpty());
}

TEST_F(StudyContextTest, AMarkOfMinusOneCountsAsTrue) {
    addStudy("S1", 2001, "SCH", -1);
    EXPECT_TRUE(chain(ctx().InitBDS()));
    EXPECT_EQ(ctx().CurBDSId, "S1");
}

TEST_F(StudyContextTest, ADatabaseWithoutStudiesOpensStudySetup) {
    EXPECT_FALSE(chain(ctx().InitBDS()));
    EXPECT_EQ(prompts.messages(), QStringList({"No entry in the Dictionary of Studies"}));
    EXPECT_EQ(setupOpened, QList<bool>({true})); // with the tabs for a first study
    EXPECT_EQ(disabled, kSixMenus);
}

TEST_F(StudyContextTest, StudiesButNoneCurrent) {
    addStudy("S1", 2001, "SCH", 0);
    EXPECT_FALSE(chain(ctx().InitBDS()));
    EXPECT_EQ(prompts.messages(),
              QStringList({"At least one Study has been defined in the currently open database.\r\n"
                           "But none has been marked as current.\r\n"
                           "Select a study from the Study - Setup menu."}));
    EXPECT_TRUE(setupOpened.isEmpty());
    EXPECT_EQ(disabled, kSixMenus);
    EXPECT_TRUE(ctx().CurBDSId.isEmpty());
}

TEST_F(StudyContextTest, TwoStudiesMarkedCurrentAreBothCleared) {
    addStudy("S1", 2001, "SCH", 1);
    addStudy("S2", 2002, "SCH", 1);
    EXPECT_FALSE(chain(ctx().InitBDS()));
    ASSERT_EQ(prompts.messages().size(), 2);
    EXPECT_EQ(prompts.messages()[0],
              "Too many studies were selected as current. Deselecting all. You will have to "
              "select one study to be current at a time.");
    EXPECT_TRUE(prompts.messages()[1].startsWith("At least one Study has been defined"));
    EXPECT_EQ(scalar("SELECT count(*) FROM _DctBDS WHERE Slct <> 0"), "0");
    EXPECT_TRUE(ctx().CurBDSId.isEmpty());
    // The next start says that none is marked.
    prompts.clear();
    EXPECT_FALSE(chain(ctx().InitBDS()));
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_TRUE(prompts.messages()[0].contains("But none has been marked as current."));
}

TEST_F(StudyContextTest, ACurrentStudyWithoutSchemeDisablesTheStudyMenus) {
    addStudy("S1", 2001, QVariant(), 1);
    EXPECT_FALSE(chain(ctx().InitBDS()));
    EXPECT_EQ(
        prompts.messages(),
        QStringList({" No Population Aggregate Scheme are defined, Please fill up the required defination"}));
    EXPECT_EQ(disabled, kSixMenus);
    EXPECT_EQ(ctx().CurBDSId, "S1");
    EXPECT_TRUE(ctx().CurPAGSch.isEmpty());
}

TEST_F(StudyContextTest, AMissingFileIsTheErrorOfInitBDS) {
    preferences().txtVESKObj = "gone.vdb";
    EXPECT_FALSE(chain(ctx().InitBDS()));
    EXPECT_EQ(prompts.messages(),
              QStringList({" Error from InitBDS  Could not find file '" + path("gone.vdb") + "'."}));
    EXPECT_FALSE(ctx().StudyDB);
    EXPECT_FALSE(QFile::exists(path("gone.vdb")));
}

TEST_F(StudyContextTest, AFileThatIsNoDatabaseIsTheErrorOfInitBDSAndNamesTheFile) {
    QFile text(path("notes.vdb"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("BPUID;YEAR\r\nU1;2000\r\n" + QByteArray(4000, 'x'));
    text.close();
    QFile noise(path("noise.vdb"));
    ASSERT_TRUE(noise.open(QIODevice::WriteOnly));
    QByteArray bytes(8192, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>((i * 7919 + 13) % 251);
    noise.write(bytes);
    noise.close();
    // A study file's header, then noise: a file damaged past reading.
    QFile study(file);
    ASSERT_TRUE(study.open(QIODevice::ReadOnly));
    QFile damaged(path("damaged.vdb"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write(study.read(100) + bytes);
    damaged.close();
    for (const char* name : {"notes.vdb", "noise.vdb", "damaged.vdb"}) {
        prompts.clear();
        preferences().txtVESKObj = name;
        EXPECT_FALSE(chain(ctx().InitBDS())) << name;
        EXPECT_EQ(prompts.messages(),
                  QStringList({" Error from InitBDS  Unrecognized database format '" + path(name) + "'."}));
        EXPECT_FALSE(ctx().StudyDB && ctx().StudyDB->path() == path(name));
    }
    ASSERT_TRUE(QDir(dir.path()).mkdir("folder.vdb"));
    prompts.clear();
    preferences().txtVESKObj = "folder.vdb";
    EXPECT_FALSE(chain(ctx().InitBDS()));
    EXPECT_EQ(prompts.messages(),
              QStringList({" Error from InitBDS  Could not find file '" + path("folder.vdb") + "'."}));
}

TEST_F(StudyContextTest, TheConnectionFollowsTheFileTheSettingsName) {
    addCurrentStudy();
    ASSERT_TRUE(chain(ctx().InitBDS()));
    const auto first = ctx().StudyDB;
    EXPECT_TRUE(chain(ctx().InitBDS()));
    EXPECT_EQ(ctx().StudyDB, first); // the same file: the same connection
    const QString other = newStudyFile("other.vdb");
    {
        auto o = openDb(other);
        exec(*o, "INSERT INTO _DctBDS (BDSId, Year, PAGSch, Slct) VALUES (?, ?, ?, ?)", {"OT", 1990, "P", 1});
    }
    preferences().txtVESKObj = "other.vdb";
    EXPECT_TRUE(chain(ctx().InitBDS()));
    EXPECT_EQ(ctx().StudyDB->path(), other);
    EXPECT_EQ(ctx().CurBDSId, "OT");
}

TEST_F(StudyContextTest, InitYearListsTheYearsOfTheCurrentRows) {
    addCurrentStudy();
    ASSERT_TRUE(chain(ctx().InitBDS()));
    ctx().CurYear = 0;
    ctx().InitYear();
    ASSERT_TRUE(ctx().VctrYrLst.isArray());
    EXPECT_EQ(ctx().VctrYrLst.array().size(), 1);
    EXPECT_EQ(ctx().VctrYrLst.array()(0).toDouble(), 2001);
    EXPECT_EQ(ctx().CurYear, 2001);
}

TEST_F(StudyContextTest, InitPAGSchemeReadsTheLevelNames) {
    addCurrentStudy();
    ASSERT_TRUE(chain(ctx().InitBDS()));
    ctx().InitPAGScheme();
    EXPECT_EQ(ctx().LblBPU, "District");
    EXPECT_EQ(ctx().LblPAG1, "Province");
    EXPECT_EQ(ctx().LblPAG2, "Nation");
    EXPECT_TRUE(prompts.shown().isEmpty());
    const LevelCaptions captions = levelCaptions(ctx());
    EXPECT_EQ(captions.pag2, "Nation");
    EXPECT_EQ(captions.bpu, "District");
    EXPECT_EQ(captions.pag1, "Province");
}

TEST_F(StudyContextTest, InitPAGSchemeMessages) {
    addStudy("S1", 2001, "NONE", 1);
    ASSERT_TRUE(chain(ctx().InitBDS()));
    ctx().InitPAGScheme();
    EXPECT_EQ(prompts.messages(),
              QStringList({" There are no records defined in Population Aggregate Scheme"}));
    prompts.clear();
    ctx().CurPAGSch.clear();
    ctx().CurBDSId = "XX";
    ctx().InitPAGScheme();
    EXPECT_EQ(prompts.messages(),
              QStringList({"Error : Population Aggregate Scheme is not defined in the _DctBDS."}));
    prompts.clear();
    ctx().CurBDSId.clear();
    ctx().InitPAGScheme();
    EXPECT_TRUE(prompts.shown().isEmpty());
    ctx().CurBDSId = "S1";
    ctx().CurPAGSch = "NONE";
    exec(*ctx().StudyDB, "DROP TABLE _DfnBPUPAGDscrptrs");
    ctx().InitPAGScheme();
    EXPECT_EQ(prompts.messages(),
              QStringList({"_DfnBPUPAGDscrptrs table is does not exists in the database, Please "
                           "make sure it exists in the database"}));
}

TEST_F(StudyContextTest, LevelCaptionsFallBackWhenNoSchemeNamesThem) {
    const LevelCaptions captions = levelCaptions(ctx());
    EXPECT_EQ(captions.pag2, "PAG2");
    EXPECT_EQ(captions.bpu, "Detail Tables");
    EXPECT_EQ(captions.pag1, "PAG1");
}

TEST_F(StudyContextTest, InitAgeGrpsKeepsTheRowsAsStored) {
    addCurrentStudy();
    const QVariant null;
    for (const QVariantList& row :
         {QVariantList{"S1", 0, 0, 0}, QVariantList{"S1", 5, 5, 5}, QVariantList{"S1", 15, null, 15},
          QVariantList{"S2", 1, 1, 1}, QVariantList{"S1", 1, 1, 1}})
        exec(*db, "INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)", row);
    ASSERT_TRUE(chain(ctx().InitBDS()));
    loadAgeGroups(backend_, frame_); // the chain's step
    ASSERT_TRUE(ctx().ArrAgeDfn.isArray());
    const CellArray& a = ctx().ArrAgeDfn.array();
    ASSERT_EQ(a.size(0), 4);
    ASSERT_EQ(a.size(1), 3);
    EXPECT_EQ(a(1, 0).toDouble(), 5);
    EXPECT_EQ(a(3, 0).toDouble(), 1);
    EXPECT_TRUE(a(2, 1).isText());
    EXPECT_EQ(a(2, 1).toString(), "");
    ASSERT_TRUE(ctx().VctrPNDAge.isArray());
    EXPECT_EQ(ctx().VctrPNDAge.array().size(), 4);
    EXPECT_EQ(ctx().VctrPNDAge.array()(2).toDouble(), 15);
    // The age-sex group labels are rebuilt from the rows at the same load.
    EXPECT_TRUE(ctx().VctrYLLAsg.isArray());
    EXPECT_TRUE(ctx().VctrYLDAsg.isArray());
    // The entries that need age definitions stay on.
    EXPECT_TRUE(disabled.isEmpty());
}

TEST_F(StudyContextTest, InitAgeGrpsBuildsTheAgeSexGroupLabels) {
    addCurrentStudy();
    const QVariant null;
    for (const QVariantList& row :
         {QVariantList{"S1", 0, 0, 0}, QVariantList{"S1", 1, 1, 1}, QVariantList{"S1", 5, 5, 5},
          QVariantList{"S1", 15, null, 15}, QVariantList{"S1", 45, null, 45}})
        exec(*db, "INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)", row);
    ASSERT_TRUE(chain(ctx().InitBDS()));
    loadAgeGroups(backend_, frame_); // the chain's step
    auto texts = [](const Cell& v) {
        QStringList out;
        for (std::size_t i = 0; i < v.array().count(); ++i)
            out << v.array().flat(i).toString();
        return out;
    };
    ASSERT_TRUE(ctx().VctrYLLAsg.isArray());
    EXPECT_EQ(texts(ctx().VctrYLLAsg), QStringList({"F0", "F01-4", "F05-14", "F15-44", "F45-w", "M0", "M01-4",
                                                    "M05-14", "M15-44", "M45-w"}));
    ASSERT_TRUE(ctx().VctrYLDAsg.isArray());
    EXPECT_EQ(texts(ctx().VctrYLDAsg), QStringList({"F0", "F01-4", "F5-w", "M0", "M01-4", "M5-w"}));
    EXPECT_EQ(texts(ctx().VctrPNDAge), QStringList({"0", "1", "5", "15", "45"}));
}

TEST_F(StudyContextTest, AStudyWithoutAgeDefinitionsKeepsTheFormerOnes) {
    addCurrentStudy();
    ASSERT_TRUE(chain(ctx().InitBDS()));
    CellArray former{1, 3};
    former(0, 0) = Cell(7);
    ctx().ArrAgeDfn = Cell(former);
    loadAgeGroups(backend_, frame_); // the chain's step
    EXPECT_EQ(prompts.messages(), QStringList({"Please define Age definitions for Current Study"}));
    EXPECT_EQ(disabled, kSixMenus);
    ASSERT_TRUE(ctx().ArrAgeDfn.isArray());
    EXPECT_EQ(ctx().ArrAgeDfn.array()(0, 0).toDouble(), 7);
}

TEST_F(StudyContextTest, AStudyIdThatIsNoColumnOfTheCauseDictionaryFailsInitCOB) {
    addCurrentStudy();
    ASSERT_TRUE(chain(ctx().InitBDS()));
    EXPECT_FALSE(chain(ctx().InitCOB()));
    EXPECT_EQ(prompts.messages(), QStringList({"There are no Records in the BDM Dictionary"}));
    EXPECT_EQ(disabled, kSixMenus);
}

TEST_F(StudyContextTest, AStudyWithoutCausesPassesInitCOBAndFailsInitCobcd) {
    addCurrentStudy();
    addCauseColumn("S1");
    addCause("A01", 0, 0);
    ASSERT_TRUE(chain(ctx().InitBDS()));
    EXPECT_TRUE(chain(ctx().InitCOB()));
    EXPECT_TRUE(prompts.shown().isEmpty());
    ctx().InitCobcd();
    ASSERT_EQ(errorStoreCount(), 1);
    EXPECT_EQ(ErrStore().array()(0, 1).toString(), "The Cobcds are not declared in _DctBdm ");
    EXPECT_EQ(ErrStore().array()(0, 2).toString(), "InitCobcd ");
    EXPECT_TRUE(ctx().MtxCobCd.isEmpty());
}

TEST_F(StudyContextTest, AQuietInitCobcdStoresNothing) {
    addCurrentStudy();
    addCauseColumn("S1");
    addCause("A01", 0, 0);
    addCause("C03", 1, 0);
    ASSERT_TRUE(chain(ctx().InitBDS()));
    ctx().InitCobcd(/*quiet=*/true);
    EXPECT_EQ(errorStoreCount(), 0);
    EXPECT_TRUE(ctx().MtxCobCd.isEmpty());
    exec(*db, "UPDATE _DctBDM SET S1 = 1");
    ctx().InitCobcd(/*quiet=*/true);
    EXPECT_EQ(errorStoreCount(), 0); // C03 is flagged without maps
    ASSERT_TRUE(ctx().MtxCobCd.isArray());
    EXPECT_EQ(ctx().MtxCobCd.array().size(0), 2);
}

TEST_F(StudyContextTest, TheStudyColumnIsFoundWithoutRegardToCase) {
    addStudy("s1", 2001, "SCH", 1);
    addCauseColumn("S1");
    addCause("A01", 0, 1);
    ASSERT_TRUE(chain(ctx().InitBDS()));
    EXPECT_TRUE(chain(ctx().InitCOB()));
    ctx().InitCobcd();
    ASSERT_TRUE(ctx().MtxCobCd.isArray());
    EXPECT_EQ(ctx().MtxCobCd.array().size(0), 1);
}

TEST_F(StudyContextTest, InitCobcdListsCausesAndTheirSequelae) {
    addCurrentStudy();
    addCauseColumn("S1");
    addCause("B02", -1, -1); // sequelae mapped
    addCause("A01", 0, 1);   // no sequelae
    addCause("C03", 1, 1);   // Sqla checked, no map
    addCause("D04", 1, 0);   // not in the study
    for (const char* s : {"B02A", "B02B"})
        exec(*db, "INSERT INTO _MapBDMSqla (SqlaCd, cobcd) VALUES (?, ?)", {s, "b02"});
    ASSERT_TRUE(chain(ctx().InitBDS()));
    ctx().InitCobcd();
    ASSERT_TRUE(ctx().MtxCobCd.isArray());
    const CellArray& m = ctx().MtxCobCd.array();
    ASSERT_EQ(m.size(0), 3);
    EXPECT_EQ(m(0, 0).toString(), "A01");
    EXPECT_TRUE(m(0, 1).isEmpty());
    EXPECT_EQ(m(1, 0).toString(), "B02");
    ASSERT_TRUE(m(1, 1).isArray());
    EXPECT_EQ(m(1, 1).array().size(), 2);
    EXPECT_EQ(m(1, 1).array()(0).toString(), "B02A");
    EXPECT_EQ(m(1, 1).array()(1).toString(), "B02B");
    // The cause whose sequelae are not mapped stays, with an empty second index, and an error.
    EXPECT_EQ(m(2, 0).toString(), "C03");
    EXPECT_TRUE(m(2, 1).isEmpty());
    ASSERT_EQ(errorStoreCount(), 1);
    EXPECT_EQ(ErrStore().array()(0, 1).toString(),
              "The Sqla is checked in _DctBdm for cobcd C03  but not defined in _MapBdmSqla");
    EXPECT_EQ(ErrStore().array()(0, 2).toString(), "InitCobcd ");
}

TEST_F(StudyContextTest, InitBPULstInPriorityOrder) {
    addCurrentStudy();
    for (const QVariantList& row : {QVariantList{"S1", "U3", 3}, QVariantList{"S1", "U1", 1},
                                    QVariantList{"S2", "U9", 0}, QVariantList{"S1", "U2", 2}})
        exec(*db, "INSERT INTO _DctBPU (BDSId, BPUID, Prty) VALUES (?, ?, ?)", row);
    ASSERT_TRUE(chain(ctx().InitBDS()));
    chain(ctx().InitBPULst("_DctBPU"));
    ASSERT_TRUE(ctx().VctrBPULst.isArray());
    const CellArray& v = ctx().VctrBPULst.array();
    ASSERT_EQ(v.size(), 3);
    EXPECT_EQ(v(0).toString() + v(1).toString() + v(2).toString(), "U1U2U3");
}

TEST_F(StudyContextTest, NoUnitsOrAggregatesDisableTheirMenus) {
    addCurrentStudy();
    ASSERT_TRUE(chain(ctx().InitBDS()));
    chain(ctx().InitBPULst("_DctBPU"));
    EXPECT_EQ(prompts.messages(), QStringList({"No BPUs defined for the Study S1"}));
    EXPECT_EQ(disabled, QStringList({"mnu_studyInp", "mnu_Daly", "mns_lsr", "mnu_Compute", "mnu_res"}));
    EXPECT_TRUE(ctx().VctrBPULst.isEmpty());
    prompts.clear();
    disabled.clear();
    chain(ctx().InitPAGLst("_DctPAG1"));
    EXPECT_EQ(prompts.messages(), QStringList({"No PAGs defined for the Study S1"}));
    EXPECT_EQ(disabled, QStringList({"mnu_studyInp", "mns_lsr"}));
}

TEST_F(StudyContextTest, InitPAGLstListsEachAggregateOnce) {
    addCurrentStudy();
    for (const QVariantList& row :
         {QVariantList{"S1", "P2", "n1"}, QVariantList{"S1", "P1", "n2"}, QVariantList{"S2", "P9", "n3"}})
        exec(*db, "INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name) VALUES (?, ?, ?)", row);
    for (const QVariantList& row :
         {QVariantList{"S1", "U1", "P2"}, QVariantList{"S1", "U2", "P1"}, QVariantList{"S1", "U3", "P2"}})
        exec(*db, "INSERT INTO _DctBPU (BDSId, BPUID, PAG1Id) VALUES (?, ?, ?)", row);
    ASSERT_TRUE(chain(ctx().InitBDS()));
    chain(ctx().InitPAGLst("_DctBPU"));
    ASSERT_TRUE(ctx().VctrPAGLst.isArray());
    const CellArray& v = ctx().VctrPAGLst.array();
    ASSERT_EQ(v.size(), 2);
    EXPECT_EQ(v(0).toString() + v(1).toString(), "P1P2");
}

TEST_F(StudyContextTest, ATableNameThatIsNoIdentifierIsNotRun) {
    addCurrentStudy();
    ASSERT_TRUE(chain(ctx().InitBDS()));
    chain(ctx().InitBPULst("_DctBPU; DROP TABLE _DctBDS"));
    EXPECT_EQ(prompts.messages(), QStringList({"No BPUs defined for the Study S1"}));
    EXPECT_EQ(scalar("SELECT count(*) FROM _DctBDS"), "1");
}

TEST_F(StudyContextTest, InitDmgphyPrmtrsTakesTheRowsOfTheStudysUnits) {
    addCurrentStudy();
    exec(*db, "INSERT INTO _DctBPU (BDSId, BPUID) VALUES (?, ?)", {"S1", "U1"});
    exec(*db, "INSERT INTO DatDmgphyPrmtrs (BPUID, YEAR, Cdmdl, PGR, IMR) VALUES (?, ?, ?, ?, ?)",
         {"U1", 2001, "West", 0.021, 45.5});
    exec(*db, "INSERT INTO DatDmgphyPrmtrs (BPUID, YEAR, Cdmdl, PGR, IMR) VALUES (?, ?, ?, ?, ?)",
         {"U7", 2001, "North", 0.01, QVariant()});
    ASSERT_TRUE(chain(ctx().InitBDS()));
    ctx().InitDmgphyPrmtrs(ctx().CurBDSId, ctx().MtxDmgphy);
    ASSERT_TRUE(ctx().MtxDmgphy.isArray());
    const CellArray& m = ctx().MtxDmgphy.array();
    ASSERT_EQ(m.size(0), 1);
    ASSERT_EQ(m.size(1), 5);
    EXPECT_EQ(m(0, 0).toString(), "U1");
    EXPECT_EQ(m(0, 1).toDouble(), 2001);
    EXPECT_EQ(m(0, 2).toString(), "West");
    EXPECT_DOUBLE_EQ(m(0, 3).toDouble(), 0.021);
    EXPECT_DOUBLE_EQ(m(0, 4).toDouble(), 45.5);
    ctx().InitDmgphyPrmtrs("S2", ctx().MtxDmgphy);
    EXPECT_TRUE(ctx().MtxDmgphy.isEmpty());
    exec(*ctx().StudyDB, "DROP TABLE DatDmgphyPrmtrs");
    ctx().InitDmgphyPrmtrs("S1", ctx().MtxDmgphy);
    EXPECT_EQ(prompts.messages(), QStringList({"DatDmgphyPrmtrs table is not present in the Database."}));
}

TEST_F(StudyContextTest, BuiltInParameterSetsAndTableNames) {
    ctx().InitDAP();
    EXPECT_EQ(ctx().VctrDAP0, (std::array<double, 5>{0, 0, 0, 0, 0}));
    EXPECT_EQ(ctx().VctrDAP1, (std::array<double, 5>{1, 0.03, 1, 0.04, 0.1658}));
    EXPECT_EQ(ctx().VctrDAP2, (std::array<double, 5>{2, 0, 1, 0.04, 0.1658}));
    EXPECT_EQ(ctx().VctrDAP3, (std::array<double, 5>{3, 0.03, 0, 0, 0}));
    ctx().InitTblNames();
    EXPECT_EQ(ctx().TblNmLst,
              (std::array<QString, 5>{"DatADW", "DatASDR", "DatCSM", "DatDmgphyPrmtrs", "DatPop"}));
}

TEST_F(StudyContextTest, ClearStudyContextEmptiesTheArraysAndLabels) {
    const Cell some(CellArray{2});
    for (Cell* c : {&ctx().MtxDmgphy, &ctx().ArrAgeDfn, &ctx().VctrBPULst, &ctx().MtxCobCd, &ctx().VctrYrLst})
        *c = some;
    ctx().LblBPU = "a";
    ctx().LblPAG1 = "b";
    ctx().LblPAG2 = "c";
    ctx().CurBDSId = "S1";
    ctx().ClearStudyContext();
    // The computation's arrays are emptied through the clear hook (tests/burden/computation_test.cpp).
    for (Cell* c : {&ctx().MtxDmgphy, &ctx().ArrAgeDfn, &ctx().VctrBPULst})
        EXPECT_TRUE(c->isEmpty());
    EXPECT_TRUE(ctx().MtxCobCd.isArray()); // not among what a change of study empties
    EXPECT_TRUE(ctx().VctrYrLst.isArray());
    EXPECT_EQ(ctx().LblBPU + ctx().LblPAG1 + ctx().LblPAG2, "");
    EXPECT_EQ(ctx().CurBDSId, "S1");
}

TEST_F(StudyContextTest, ClearStudyContextRunsTheClearHooksAfterItsOwnMembers) {
    // The hooks stay for the life of the process; each records what it found when it ran.
    static QStringList ran;
    ran.clear();
    StudyContext::onClear([] { ran << "first:" + studyContext().LblBPU; });
    StudyContext::onClear([] { ran << "second"; });
    ctx().LblBPU = "District";
    ctx().ClearStudyContext();
    EXPECT_EQ(ran, QStringList({"first:", "second"}));
    ctx().ClearStudyContext();
    EXPECT_EQ(ran.size(), 4);
}

TEST_F(StudyContextTest, CheckDatpopWantsRowsInBothTables) {
    addCurrentStudy();
    ASSERT_TRUE(chain(ctx().InitBDS()));
    EXPECT_FALSE(ctx().CheckDatpop());
    exec(*db, "INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES (?, ?, ?, ?, ?)", {"U1", 2001, 0, 10, 12});
    EXPECT_FALSE(ctx().CheckDatpop());
    exec(*db, "INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M) VALUES (?, ?, ?, ?, ?)",
         {"U1", 2001, 0, 0.01, 0.02});
    EXPECT_TRUE(ctx().CheckDatpop());
}

TEST_F(StudyContextTest, TheBackendRunsTheChainOnTheContext) {
    addCurrentStudy();
    addCauseColumn("S1");
    addCause("A01", 0, 1);
    exec(*db, "INSERT INTO _DctBPU (BDSId, BPUID, Prty, PAG1Id) VALUES (?, ?, ?, ?)", {"S1", "U1", 1, "P1"});
    exec(*db, "INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)", {"S1", 0, 0, 0});
    DatabaseStudyBackend backend;
    backend.InitTblNames();
    backend.InitDAP();
    ASSERT_TRUE(backend.InitBDS());
    backend.InitYear();
    backend.InitPAGScheme();
    backend.InitAgeGrps();
    ASSERT_TRUE(backend.InitCOB());
    backend.InitCobcd();
    backend.InitBPULst("_DctBPU");
    backend.InitPAGLst("_DctBPU");
    backend.InitDmgphyPrmtrs();
    EXPECT_TRUE(prompts.shown().isEmpty()) << prompts.messages().join("\n").toStdString();
    EXPECT_EQ(errorStoreCount(), 0);
    EXPECT_TRUE(backend.hasBPUList());
    EXPECT_EQ(backend.CurBDSId(), "S1");
    EXPECT_EQ(backend.LblBPU(), "District");
    EXPECT_EQ(backend.LblPAG1(), "Province");
    EXPECT_EQ(backend.LblPAG2(), "Nation");
    EXPECT_TRUE(ctx().ArrAgeDfn.isArray());
    EXPECT_TRUE(ctx().MtxDmgphy.isEmpty());
    computation().MtxDAP = Cell(CellArray{1, 5});
    backend.clearMtxDAP();
    EXPECT_TRUE(computation().MtxDAP.isEmpty());
    backend.releaseStudyDB();
    EXPECT_FALSE(ctx().StudyDB);
}

// The loaders alone: what each found, with no menu switched and no window opened.
TEST_F(StudyContextTest, InitBDSReportsWhatItFoundAndSteersNothing) {
    EXPECT_EQ(ctx().InitBDS().finding, StudyFinding::NoStudyEntry);
    addStudy("S1", 2001, "SCH", 0);
    EXPECT_EQ(ctx().InitBDS().finding, StudyFinding::NoneCurrent);
    addStudy("S2", 2002, "SCH", 1);
    addStudy("S3", 2003, "SCH", 1);
    EXPECT_EQ(ctx().InitBDS().finding, StudyFinding::TooManyStudies);
    exec(*db, "UPDATE _DctBDS SET Slct = 1, PAGSch = NULL WHERE BDSId = 'S1'");
    EXPECT_EQ(ctx().InitBDS().finding, StudyFinding::NoScheme);
    exec(*db, "UPDATE _DctBDS SET PAGSch = 'SCH' WHERE BDSId = 'S1'");
    EXPECT_EQ(ctx().InitBDS().finding, StudyFinding::Loaded);
    EXPECT_EQ(prompts.messages().size(), 5); // too many studies also says that none is current
    EXPECT_TRUE(disabled.isEmpty());
    EXPECT_TRUE(setupOpened.isEmpty());
}

TEST_F(StudyContextTest, InitBDSReportsAFileThatCannotBeOpened) {
    preferences().txtVESKObj = "gone.vdb";
    EXPECT_EQ(ctx().InitBDS().finding, StudyFinding::EngineFailed);
    EXPECT_TRUE(disabled.isEmpty());
}

TEST_F(StudyContextTest, InitAgeGrpsReportsTheDefinitionsAndLeavesTheLabelsToTheStudy) {
    addCurrentStudy();
    ASSERT_TRUE(ctx().InitBDS());
    EXPECT_EQ(ctx().InitAgeGrps(ctx().CurBDSId, ctx().ArrAgeDfn).finding, StudyFinding::NoAgeDefinitions);
    exec(*db, "INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)", {"S1", 0, 0, 0});
    exec(*db, "INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)", {"S1", 5, 5, 5});
    const LoadReport found = ctx().InitAgeGrps(ctx().CurBDSId, ctx().ArrAgeDfn);
    EXPECT_EQ(found.finding, StudyFinding::AgeDefinitionsFound);
    EXPECT_TRUE(found);
    EXPECT_TRUE(ctx().ArrAgeDfn.isArray());
    EXPECT_TRUE(ctx().VctrYLLAsg.isEmpty());
    EXPECT_TRUE(disabled.isEmpty());
}

TEST_F(StudyContextTest, InitCOBAndTheUnitListsReportWhatIsMissing) {
    addCurrentStudy();
    ASSERT_TRUE(ctx().InitBDS());
    EXPECT_EQ(ctx().InitCOB().finding, StudyFinding::NoCauses);
    EXPECT_EQ(ctx().InitBPULst("_DctBPU").finding, StudyFinding::NoUnits);
    EXPECT_EQ(ctx().InitPAGLst("_DctPAG1").finding, StudyFinding::NoAggregates);
    EXPECT_TRUE(disabled.isEmpty());
    addCauseColumn("S1");
    exec(*db, "INSERT INTO _DctPAG1 (BDSId, PAG1Id) VALUES (?, ?)", {"S1", "P1"});
    exec(*db, "INSERT INTO _DctBPU (BDSId, BPUID, Prty, PAG1Id) VALUES (?, ?, ?, ?)", {"S1", "U1", 1, "P1"});
    EXPECT_EQ(ctx().InitCOB().finding, StudyFinding::Loaded);
    EXPECT_EQ(ctx().InitBPULst("_DctBPU").finding, StudyFinding::Loaded);
    EXPECT_EQ(ctx().InitPAGLst("_DctPAG1").finding, StudyFinding::Loaded);
}

// What the chain makes of each finding.
TEST_F(StudyContextTest, TheChainTurnsEachFindingIntoItsMenuChange) {
    const QStringList units = {"mnu_studyInp", "mnu_Daly", "mns_lsr", "mnu_Compute", "mnu_res"};
    const std::vector<std::pair<StudyFinding, QStringList>> cases = {
        {StudyFinding::Loaded, {}},
        {StudyFinding::EngineFailed, {}},
        {StudyFinding::AgeDefinitionsFound, {}},
        {StudyFinding::NoneCurrent, kSixMenus},
        {StudyFinding::TooManyStudies, kSixMenus},
        {StudyFinding::NoScheme, kSixMenus},
        {StudyFinding::NoAgeDefinitions, kSixMenus},
        {StudyFinding::NoCauses, kSixMenus},
        {StudyFinding::NoStudyEntry, kSixMenus},
        {StudyFinding::NoUnits, units},
        {StudyFinding::NoAggregates, {"mnu_studyInp", "mns_lsr"}},
    };
    for (const auto& [finding, switchedOff] : cases) {
        disabled.clear();
        setupOpened.clear();
        chain({finding});
        EXPECT_EQ(disabled, switchedOff) << static_cast<int>(finding);
        EXPECT_EQ(setupOpened.size(), finding == StudyFinding::NoStudyEntry ? 1 : 0)
            << static_cast<int>(finding);
    }
    chain({StudyFinding::AgeDefinitionsFound});
    for (const QString& item : kSixMenus)
        EXPECT_TRUE(menus_.isMenuEnabled(item)) << item.toStdString();
}

} // namespace
