// Writers write beside their target and put the new file in its place only when the write
// succeeded: a failed write leaves the old file as it was, or no file where there was none, and
// no half-written file or leftover beside it.

#include "inputs/foreign_file.h"
#include "platform/prompts.h"
#include "test_support.h"

#include <QDir>
#include <QFile>

using namespace vesk;
using vesk::test::table;

namespace {

class WriteInPlace : public vesk::test::ScratchTest {
protected:
    QByteArray bytesOf(const QString& name) {
        QFile f(path(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QStringList folder() {
        return QDir(dir_.path()).entryList(QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
};

// More rows than a Lotus worksheet holds: the write fails after the range was made.
CellArray tooManyRows() {
    CellArray a{9000, 1};
    for (int i = 0; i < 9000; ++i)
        a(i, 0) = Cell(i);
    return a;
}

} // namespace

TEST_F(WriteInPlace, AFailedWorksheetWriteLeavesTheOldFile) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("a")}}), path("old.wk1"), "A", {"v"}));
    const QByteArray before = bytesOf("old.wk1");
    EXPECT_FALSE(FnWriteArrFile(tooManyRows(), path("old.wk1"), "BIG", {"v"}));
    EXPECT_EQ(lastForeignError().number, engine_error::kTooLarge);
    EXPECT_EQ(bytesOf("old.wk1"), before);
    EXPECT_EQ(folder(), QStringList{"old.wk1"});
}

TEST_F(WriteInPlace, AFailedWriteMakesNoFile) {
    EXPECT_FALSE(FnWriteArrFile(tooManyRows(), path("new.wk1"), "BIG", {"v"}));
    EXPECT_FALSE(QFile::exists(path("new.wk1")));
    EXPECT_TRUE(folder().isEmpty()) << folder().join(' ').toStdString();
}

TEST_F(WriteInPlace, TheOlderWriterKeepsTheFileItWasToReplaceWhenTheWriteFails) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("a")}}), path("old.wk1"), "A", {"v"}));
    const QByteArray before = bytesOf("old.wk1");
    prompts_.answer(Answer::Yes); // replace the file
    EXPECT_FALSE(FnWriteArr(tooManyRows(), 0, QString(), path("old.wk1")));
    EXPECT_EQ(bytesOf("old.wk1"), before);
    EXPECT_EQ(folder(), QStringList{"old.wk1"});
}

TEST_F(WriteInPlace, ASuccessfulWriteReplacesAndLeavesNothingBeside) {
    const CellArray a = table({{Cell("x"), Cell(1)}});
    for (const QString name : {"t.txt", "t.dbf", "t.xlsx"}) {
        ASSERT_TRUE(FnWriteArrFile(a, path(name), "T", {"k", "v"})) << name.toStdString();
        prompts_.answer(Answer::Yes);
        ASSERT_TRUE(FnWriteArr(table({{Cell("y"), Cell(2)}}), 0, QString(), path(name), "T2"))
            << name.toStdString() << lastForeignError().words.toStdString();
    }
    EXPECT_EQ(folder(), (QStringList{"t.dbf", "t.txt", "t.xlsx"}));
    EXPECT_EQ(FnReadArrFile(path("t.txt"), QString()), table({{Cell("y"), Cell("2")}}));
    EXPECT_EQ(FnReadArrFile(path("t.dbf"), QString())(0, 0).toString(), "y");
}

TEST_F(WriteInPlace, AnExistingWorkbookKeepsItsTablesWhenOneIsAdded) {
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("a")}}), path("w.xlsx"), "A", {"v"}));
    ASSERT_TRUE(FnWriteArrFile(table({{Cell("b")}}), path("w.xlsx"), "B", {"v"}));
    EXPECT_EQ(FnReadArrFile(path("w.xlsx"), "A")(0, 0).toString(), "a");
    EXPECT_EQ(FnReadArrFile(path("w.xlsx"), "B")(0, 0).toString(), "b");
    EXPECT_EQ(folder(), QStringList{"w.xlsx"});
}
