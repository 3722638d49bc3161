// File -> Zap on the demonstration study: the three purges with their questions, their deletes and
// their messages; the units with linked data named in brackets; the dictionary of studies emptied, so
// that the study's loader finds no entry.

#include "inputs/transfer_texts.h"
#include "inputs/zap.h"
#include "transfer_fixture.h"

namespace vesk::test {
namespace {

namespace t = transfer_texts;

using ZapTest = TransferTest;

std::string count(const DbConnection& db, const QString& table) {
    return queryRows(db, QStringLiteral("SELECT count(*) FROM ") + table).join(QString()).toStdString();
}

TEST_F(ZapTest, TheDictionariesWithDataNameTheUnitsInBracketsAndAskOkOrCancel) {
    EXPECT_EQ(unitsWithLinkedData(db(), QStringLiteral("DEM")).join(u',').toStdString(),
              "Capital City,Merino,Lakeside,Dorva,Highland,Tamsa Valley,Kereni,São Lourenço");
    const std::string before = dumpAll();
    answer({Answer::Cancel});
    EXPECT_EQ(zapDictionaries(db(), QStringLiteral("DEM")), ZapResult::Declined);
    ASSERT_EQ(prompts.shown().size(), 1);
    const PromptRecord& warning = prompts.shown()[0];
    EXPECT_EQ(warning.buttons, Buttons::OkCancel);
    EXPECT_EQ(warning.title.toStdString(), std::string(t::kPurgeTitle));
    EXPECT_TRUE(
        warning.text.startsWith(text(t::kLinkedUnits) + QStringLiteral("\n[Capital City]\n[Merino]\n")));
    EXPECT_TRUE(warning.text.contains(QStringLiteral("\n[São Lourenço]\n")));
    EXPECT_TRUE(warning.text.contains(text(t::kLinkedWarning)));
    EXPECT_TRUE(warning.text.endsWith(text(t::kOkToZap)));
    EXPECT_EQ(dumpAll(), before);

    answer({Answer::Ok});
    EXPECT_EQ(zapDictionaries(db(), QStringLiteral("DEM")), ZapResult::Purged);
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kDictionariesPurged));
    for (const char* table :
         {"_DctBDMGrps", "_DctBDMSGrps", "_DctBDMClstr", "_DctBDM", "_DctBDMSqla", "_MapBDMSqla"})
        EXPECT_EQ(count(db(), table), "0") << table;
    // The data stay; a second zap finds nothing to purge.
    EXPECT_EQ(count(db(), "DatCSM"), "7600");
    EXPECT_EQ(zapDictionaries(db(), QStringLiteral("DEM")), ZapResult::Empty);
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kDictionariesEmpty));
}

TEST_F(ZapTest, TheDictionariesWithoutDataAskYesOrNo) {
    exec(QStringLiteral("DELETE FROM DatADWSqla WHERE BPUID <> 'CAP'"));
    EXPECT_EQ(unitsWithLinkedData(db(), QStringLiteral("DEM")).join(u',').toStdString(), "Capital City");
    exec(QStringLiteral("DELETE FROM DatADWSqla"));
    EXPECT_TRUE(unitsWithLinkedData(db(), QStringLiteral("DEM")).isEmpty());
    answer({Answer::No});
    EXPECT_EQ(zapDictionaries(db(), QStringLiteral("DEM")), ZapResult::Declined);
    EXPECT_EQ(prompts.shown().last().text.toStdString(), std::string(t::kPurgeDictionaries));
    EXPECT_EQ(prompts.shown().last().buttons, Buttons::YesNo);
    EXPECT_EQ(count(db(), "_DctBDM"), "25");
}

TEST_F(ZapTest, AllStudyDataEmptiesTheDataAndResultTablesOnly) {
    answer({Answer::Yes});
    EXPECT_EQ(zapStudyData(db()), ZapResult::Purged);
    EXPECT_EQ(prompts.shown()[0].text.toStdString(), std::string(t::kPurgeData));
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kDataPurged));
    for (const char* table : {"DatAdw", "DatADWSqla", "DatCSM", "DatPop", "DatAsdr", "DatDmgphyPrmtrs",
                              "RsltDALY", "RsltYLD", "RsltYLL"})
        EXPECT_EQ(count(db(), table), "0") << table;
    EXPECT_EQ(count(db(), "DatDwt"), "627");
    EXPECT_EQ(count(db(), "_DctBPU"), "8");
    EXPECT_EQ(zapStudyData(db()), ZapResult::Empty);
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kDataEmpty));
}

TEST_F(ZapTest, TheStudySetupTakesTheStudyWithIt) {
    const std::string before = dumpAll();
    answer({Answer::No});
    EXPECT_EQ(zapStudySetup(db()), ZapResult::Declined);
    EXPECT_EQ(prompts.shown()[0].text.toStdString(), std::string(t::kPurgeSetup) + '\n' + t::kPurgeSetupAlso);
    EXPECT_EQ(dumpAll(), before);
    answer({Answer::Yes});
    EXPECT_EQ(zapStudySetup(db()), ZapResult::Purged);
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kSetupPurged));
    for (const char* table :
         {"_DctPAG1", "_DctPAG2", "_DfnAgeGrps", "_DfnBPUPAGDscrptrs", "DatDwt", "_DctBPU", "_DctBDS"})
        EXPECT_EQ(count(db(), table), "0") << table;
    // The next run of the study's loader finds no study.
    prompts.clear();
    EXPECT_EQ(studyContext().InitBDS().finding, StudyFinding::NoStudyEntry);
    EXPECT_EQ(lastMessage().toStdString(), "No entry in the Dictionary of Studies");
    EXPECT_EQ(zapStudySetup(db()), ZapResult::Empty);
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kSetupEmpty));
}

TEST_F(ZapTest, AFailedDeleteUndoesThePurgeAndSaysWhy) {
    // A trigger that refuses the last delete of the setup: the six before it are undone.
    exec(QStringLiteral(
        "CREATE TRIGGER KeepStudies BEFORE DELETE ON _DctBDS BEGIN SELECT RAISE(ABORT, 'kept'); END"));
    const std::string before = dumpAll();
    answer({Answer::Yes});
    EXPECT_EQ(zapStudySetup(db()), ZapResult::Failed);
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kSetupPurgeError) + "kept");
    EXPECT_EQ(dumpAll(), before);
}

} // namespace
} // namespace vesk::test
