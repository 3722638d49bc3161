// Save As of a result grid: the questions before a file is replaced, a database replaced only when
// the new one is whole and never the open study, a table added to a database under the name asked.

#include "foundation/settings.h"
#include "inputs/foreign_file.h"
#include "inputs/save_results.h"
#include "platform/prompts.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vesk;

namespace {

class SaveResults : public testing::Test {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
    QTemporaryDir dir_;
    QString kept_ = settings().DBFullPath;
    void TearDown() override { settings().DBFullPath = kept_; }

    static CellArray rows(double v) {
        CellArray a({2, 2});
        a(0, 0) = Cell(QStringLiteral("007"));
        a(0, 1) = Cell(v);
        a(1, 0) = Cell(QStringLiteral("x;y \"z\""));
        a(1, 1) = Cell(1e-300);
        return a;
    }
    const QStringList fields{"Code", "Value"};
};

TEST_F(SaveResults, EmptyGridIsNotSaved) {
    EXPECT_FALSE(saveResultsAs(CellArray({0, 2}), fields, "T"));
    EXPECT_EQ(prompts_.messages(), QStringList{"Please check the data on the grid before saving it."});
}

TEST_F(SaveResults, DialogCancelledWritesNothing) {
    prompts_.fileAnswer(std::nullopt);
    EXPECT_FALSE(saveResultsAs(rows(1), fields, "T"));
    EXPECT_EQ(prompts_.shown().size(), 1);
    EXPECT_EQ(prompts_.shown()[0].text, QStringLiteral("Save Results As"));
}

TEST_F(SaveResults, DatabaseReplacedOnYes) {
    const QString path = dir_.filePath("r.vdb");
    ASSERT_TRUE(FnWriteArrFile(rows(1), path, "Old", fields));
    prompts_.answer(Answer::Yes);
    ASSERT_TRUE(saveResultsTo(path, rows(2.5), fields, "T"));
    EXPECT_TRUE(prompts_.messages().first().startsWith("The specified Database already exists in the directory. Click \n"
                                                       "[Yes] to Overwrite it\n"));
    EXPECT_TRUE(FnReadArrFile(path, "Old").isEmpty()); // the file was replaced
    const CellArray back = FnReadArrFile(path, "T");
    ASSERT_EQ(back.size(0), 2);
    EXPECT_EQ(back(0, 0).toString(), QStringLiteral("007"));
    EXPECT_EQ(back(0, 1).toDouble(), 2.5);
    EXPECT_EQ(back(1, 0).toString(), QStringLiteral("x;y \"z\""));
    EXPECT_EQ(back(1, 1).toDouble(), 1e-300);
    EXPECT_FALSE(QFile::exists(dir_.filePath(".~new-r.vdb")));
}

TEST_F(SaveResults, OpenStudyIsNeverReplaced) {
    const QString path = dir_.filePath("study.vdb");
    ASSERT_TRUE(FnWriteArrFile(rows(1), path, "Old", fields));
    settings().DBFullPath = path;
    prompts_.answer(Answer::Yes);
    EXPECT_FALSE(saveResultsTo(path, rows(2), fields, "T"));
    EXPECT_EQ(FnReadArrFile(path, "Old").size(0), 2);
    EXPECT_TRUE(prompts_.messages().last().startsWith("The study database that is open cannot be overwritten"));
}

TEST_F(SaveResults, CancelOnTheDatabaseQuestionLeavesIt) {
    const QString path = dir_.filePath("r.vdb");
    ASSERT_TRUE(FnWriteArrFile(rows(1), path, "Old", fields));
    prompts_.answer(Answer::Cancel);
    EXPECT_FALSE(saveResultsTo(path, rows(2), fields, "T"));
    EXPECT_EQ(FnReadArrFile(path, "Old").size(0), 2);
    EXPECT_TRUE(FnReadArrFile(path, "T").isEmpty());
}

TEST_F(SaveResults, WorksheetOverwrittenOnlyOnYes) {
    const QString path = dir_.filePath("r.xlsx");
    ASSERT_TRUE(saveResultsTo(path, rows(1), fields, "T"));
    prompts_.clear();
    prompts_.answer(Answer::No);
    EXPECT_FALSE(saveResultsTo(path, rows(2), fields, "T"));
    EXPECT_EQ(FnReadArrFile(path, "T")(0, 1).toDouble(), 1.0);
    prompts_.answer(Answer::Yes);
    EXPECT_TRUE(saveResultsTo(path, rows(2), fields, "T"));
    EXPECT_EQ(FnReadArrFile(path, "T")(0, 1).toDouble(), 2.0);
    EXPECT_EQ(prompts_.messages().last(), QStringLiteral("Data exported successfully:") + path);
}

} // namespace
