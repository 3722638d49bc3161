// The whole of a study's reference data through each kind of file: the dictionaries, the population
// units and the study data exported, the dictionaries and the data zapped, everything imported back,
// and every row of every table of the study file compared with what it held before.

#include "inputs/dictionary_transfer.h"
#include "inputs/study_data_transfer.h"
#include "inputs/unit_transfer.h"
#include "inputs/zap.h"
#include "transfer_fixture.h"

#include <QDir>

namespace vesk::test {
namespace {

class StudyRoundTripTest : public TransferTest {
protected:
    // Every table of the file, its rows sorted.
    std::string everyTableSorted() const {
        std::string out;
        for (const auto& table : db().tables())
            out += "== " + table.name.toStdString() + '\n' + sorted(table.name) + '\n';
        return out;
    }
};

TEST_F(StudyRoundTripTest, EverythingGoesOutIsZappedAndComesBackRowForRow) {
    const std::string before = everyTableSorted();
    for (const QString& kind : transferKinds()) {
        const QString folder = path(QStringLiteral("backup_") + kind);
        ASSERT_TRUE(QDir().mkpath(folder));
        auto file = [&](const char* stem) { return folder + u'/' + QString::fromLatin1(stem) + u'.' + kind; };
        ASSERT_EQ(exportDictionary(db(), std::nullopt, file("dictionaries")), TransferResult::Done)
            << kind.toStdString();
        ASSERT_EQ(exportUnits(db(), studyContext().CurBDSId, std::nullopt, file("units")),
                  TransferResult::Done);
        ASSERT_EQ(exportStudyData(studyContext(), std::nullopt, file("data")), TransferResult::Done)
            << kind.toStdString() << ' ' << lastMessage().toStdString();

        answer({Answer::Ok, Answer::Yes}); // the dictionaries' warning, the data's question
        ASSERT_EQ(zapDictionaries(db(), studyContext().CurBDSId), ZapResult::Purged);
        ASSERT_EQ(zapStudyData(db()), ZapResult::Purged);
        ASSERT_NE(everyTableSorted(), before);

        answer({Answer::Yes, Answer::Yes}); // purging the units there are, replacing the weights there are
        ASSERT_EQ(ImpAllDct(db(), file("dictionaries")), TransferResult::Done) << lastMessage().toStdString();
        ASSERT_EQ(FnImpPopUntsAll(studyContext(), std::nullopt, file("units")), TransferResult::Done)
            << lastMessage().toStdString();
        ASSERT_EQ(importStudyData(studyContext(), std::nullopt, file("data")), TransferResult::Done)
            << lastMessage().toStdString();
        EXPECT_EQ(prompts.unanswered(), 0);
        EXPECT_EQ(everyTableSorted(), before) << kind.toStdString();
    }
}

} // namespace
} // namespace vesk::test
