// File -> Import -> User Defined Standard Life Table without its dialog: a file of each kind,
// written by the program's own writers, imports its table exactly; a table that fails the
// consistency check, a file that cannot be read and a question answered No leave the old table.

#include "demography/standard_table_texts.h"
#include "demography/user_life_table_import.h"
#include "inputs/foreign_file.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "user_life_tables.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace vesk::test {
namespace {

namespace t = standard_table_texts;

class UserTableImport : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        s.UsrLTSTblNm = QStringLiteral("USRLTS");
        old = exactUserTable();
        old(0, 1) = Cell(77.0);
        p.userLifeTable = old;
        p.userLifeTableLoaded = true;
    }
    QString path(const QString& name) const { return dir.filePath(name); }

    // Imports with the layout question answered Yes.
    vesk::UserTableImport importYes(const QString& file) {
        prompts.answer(Answer::Yes);
        return importUserLifeTable(file, s, p);
    }
    // The table of the preferences equals `want`, value for value as doubles.
    ::testing::AssertionResult holds(const CellArray& want) const {
        const CellArray& got = p.userLifeTable;
        if (!p.userLifeTableLoaded || got.rank() != 2 || got.size(0) != want.size(0) || got.size(1) != 3)
            return ::testing::AssertionFailure() << "the user table is not of the shape wanted";
        for (int i = 0; i < want.size(0); ++i)
            for (int c = 0; c < 3; ++c)
                if (!got(i, c).isNumber() || got(i, c).toDouble() != want(i, c).toDouble())
                    return ::testing::AssertionFailure()
                           << "row " << i << " column " << c << ": " << got(i, c).toString().toStdString()
                           << " instead of " << shortestNumber(want(i, c).toDouble()).toStdString();
        return ::testing::AssertionSuccess();
    }
    QString failedChecks() const {
        QString m = text(t::kFailedChecks);
        for (const char* check : t::kChecks)
            m += u'\n' + text(check);
        return m;
    }

    QTemporaryDir dir;
    ScriptedPrompts prompts;
    ScopedPromptService installed{&prompts};
    VeskSettings s;
    PreferencesControls p;
    CellArray old;
};

// The five kinds (the legacy workbook .xls is read only, so none is written here).
const QStringList kKinds{"user.txt", "user.WK1", "user.xlsx", "USRLTS.dbf", "user.vdb"};

TEST_F(UserTableImport, TheQuestionOfEachKind) {
    EXPECT_EQ(userTableQuestion(ForeignKind::Text),
              "Are you sure the Data in the Text File is in the Format: \n [User Defined Tables]\n"
              "[BAI] delimited by | \n[EXM] delimited by | \n[EXF]  delimited by | ");
    const QString worksheet =
        QStringLiteral("Are you sure the Data in the WK1 File is in the Format: \n"
                       "[Age] [Life Expectancy for Females] [Life Expectancy for Males] ");
    EXPECT_EQ(userTableQuestion(ForeignKind::Wk1), worksheet);
    EXPECT_EQ(userTableQuestion(ForeignKind::Xlsx), worksheet);
    EXPECT_EQ(userTableQuestion(ForeignKind::Xls), worksheet);
    EXPECT_EQ(userTableQuestion(ForeignKind::Dbf),
              "Are you sure the Data in the DBF File is in the Format: \n[Age] [EXF] [EXM] ");
    EXPECT_EQ(userTableQuestion(ForeignKind::Database),
              "Are you sure the Data in the MDB File is in the Format: \n[Age] [EXF] [EXM] ");
}

TEST_F(UserTableImport, EachKindImportsItsTableExactly) {
    const CellArray table = exactUserTable();
    for (const QString& name : kKinds) {
        ASSERT_TRUE(writeUserTable(path(name), table, "USRLTS")) << name.toStdString();
        p.userLifeTable = old;
        prompts.clear();
        EXPECT_EQ(importYes(path(name)), vesk::UserTableImport::Imported) << name.toStdString();
        EXPECT_TRUE(holds(table)) << name.toStdString();
        EXPECT_EQ(prompts.messages(), (QStringList{userTableQuestion(foreignKind(name)), text(t::kImported)}))
            << name.toStdString();
        EXPECT_EQ(prompts.shown().at(0).buttons, Buttons::YesNo);
        EXPECT_EQ(prompts.unanswered(), 0);
    }
}

TEST_F(UserTableImport, AgesUpTo99FailTheLastAgeTestInEachKindAndTheOldTableStays) {
    for (const QString& name : kKinds) {
        const QString file = path(QStringLiteral("short_") + name);
        const QString dbf = path(QStringLiteral("short"));
        if (name.endsWith(".dbf")) { // a folder of its own, so that its USRLTS is this table
            ASSERT_TRUE(QDir(dir.path()).mkpath("short"));
        }
        const QString where = name.endsWith(".dbf") ? dbf + QStringLiteral("/USRLTS.dbf") : file;
        ASSERT_TRUE(writeUserTable(where, exactUserTable(99), "USRLTS")) << name.toStdString();
        prompts.clear();
        EXPECT_EQ(importYes(where), vesk::UserTableImport::FailedChecks) << name.toStdString();
        EXPECT_TRUE(holds(old)) << name.toStdString();
        EXPECT_EQ(prompts.messages(), (QStringList{userTableQuestion(foreignKind(name)), failedChecks()}))
            << name.toStdString();
    }
}

TEST_F(UserTableImport, EachQuestionAnsweredNoLeavesEverythingAsItWas) {
    for (const QString& name : kKinds) {
        ASSERT_TRUE(writeUserTable(path(name), exactUserTable(), "USRLTS")) << name.toStdString();
        prompts.clear();
        prompts.answer(Answer::No);
        EXPECT_EQ(importUserLifeTable(path(name), s, p), vesk::UserTableImport::Declined);
        EXPECT_TRUE(holds(old)) << name.toStdString();
        EXPECT_EQ(prompts.messages(), QStringList{userTableQuestion(foreignKind(name))});
    }
    // Without any table before, none comes.
    p = PreferencesControls{};
    prompts.answer(Answer::No);
    EXPECT_EQ(importUserLifeTable(path("user.txt"), s, p), vesk::UserTableImport::Declined);
    EXPECT_FALSE(p.userLifeTableLoaded);
    EXPECT_EQ(p.userLifeTable.rank(), 0);
}

TEST_F(UserTableImport, TheTextLinesAreReadByTheirTagsWhateverTheirOrder) {
    const CellArray table = exactUserTable();
    ASSERT_TRUE(writeUserTable(path("f_first.txt"), table, "", false));
    EXPECT_EQ(importYes(path("f_first.txt")), vesk::UserTableImport::Imported);
    EXPECT_TRUE(holds(table));
    p.userLifeTable = old;
    ASSERT_TRUE(writeUserTable(path("m_first.txt"), table, "", true));
    EXPECT_EQ(importYes(path("m_first.txt")), vesk::UserTableImport::Imported);
    EXPECT_TRUE(holds(table));
    // Males and females kept apart: the female column is the one tagged [EXF]:.
    EXPECT_EQ(p.userLifeTable(0, 1).toDouble(), 91.94);
    EXPECT_EQ(p.userLifeTable(0, 2).toDouble(), 88.5);
}

TEST_F(UserTableImport, EqualNeighboursPassAndAGapOfTwoYearsFails) {
    CellArray level = exactUserTable();
    level(41, 1) = level(40, 1);
    level(41, 2) = level(40, 2);
    ASSERT_TRUE(writeUserTable(path("level.txt"), level, ""));
    EXPECT_EQ(importYes(path("level.txt")), vesk::UserTableImport::Imported);
    EXPECT_TRUE(holds(level));

    // Ages 0, 2, 4, ..., 100: an abridged table, whose last age is 100 and whose values fall.
    CellArray gap({51, 3});
    for (int i = 0; i <= 50; ++i) {
        gap(i, 0) = Cell(2.0 * i);
        gap(i, 1) = Cell(90.0 - 0.9 * i);
        gap(i, 2) = Cell(88.0 - 0.85 * i);
    }
    ASSERT_TRUE(writeUserTable(path("gap.WK1"), gap, "USRLTS"));
    prompts.clear();
    EXPECT_EQ(importYes(path("gap.WK1")), vesk::UserTableImport::FailedChecks);
    EXPECT_TRUE(holds(level));
    EXPECT_EQ(prompts.messages().last(), failedChecks());

    // A rising expectancy fails as well.
    CellArray rising = exactUserTable();
    rising(60, 2) = Cell(rising(59, 2).toDouble() + 0.5);
    ASSERT_TRUE(writeUserTable(path("rising.xlsx"), rising, "USRLTS"));
    EXPECT_EQ(importYes(path("rising.xlsx")), vesk::UserTableImport::FailedChecks);
    EXPECT_TRUE(holds(level));
}

TEST_F(UserTableImport, TheShippedTablesImportAndPass) {
    const QDir shipped(QStringLiteral(VESK_SOURCE_DIR "/data/standard_tables"));
    const QStringList files = shipped.entryList({"*.txt"}, QDir::Files);
    ASSERT_EQ(files.size(), 3);
    for (const QString& name : files) {
        p.userLifeTable = old;
        EXPECT_EQ(importYes(shipped.filePath(name)), vesk::UserTableImport::Imported) << name.toStdString();
        ASSERT_EQ(p.userLifeTable.size(0), 101) << name.toStdString();
        EXPECT_EQ(p.userLifeTable(100, 0).toDouble(), 100);
    }
    // The WHO frontier table begins at 91.94 for both sexes.
    p.userLifeTable = old;
    ASSERT_EQ(importYes(shipped.filePath("who_ghe_frontier.txt")), vesk::UserTableImport::Imported);
    EXPECT_EQ(p.userLifeTable(0, 1).toDouble(), 91.94);
    EXPECT_EQ(p.userLifeTable(0, 2).toDouble(), 91.94);
}

TEST_F(UserTableImport, ADatabaseFileOrWorksheetWithoutTheConfiguredTableIsReadFromLts) {
    const CellArray table = exactUserTable();
    for (const QString& name :
         {QStringLiteral("lts.vdb"), QStringLiteral("lts.WK1"), QStringLiteral("lts.xlsx")}) {
        ASSERT_TRUE(writeUserTable(path(name), table, "LTS")) << name.toStdString();
        p.userLifeTable = old;
        EXPECT_EQ(importYes(path(name)), vesk::UserTableImport::Imported) << name.toStdString();
        EXPECT_TRUE(holds(table)) << name.toStdString();
    }
    // The configured name comes first.
    CellArray other = exactUserTable();
    other(0, 1) = Cell(95.5);
    ASSERT_TRUE(writeUserTable(path("lts.vdb"), other, "MYTABLE"));
    s.UsrLTSTblNm = QStringLiteral("MYTABLE");
    EXPECT_EQ(importYes(path("lts.vdb")), vesk::UserTableImport::Imported);
    EXPECT_TRUE(holds(other));
}

TEST_F(UserTableImport, ADbfFolderIsReadFromItsConfiguredTableElseFromTheFileChosen) {
    CellArray configured = exactUserTable();
    configured(0, 1) = Cell(93.25);
    ASSERT_TRUE(QDir(dir.path()).mkpath("both"));
    ASSERT_TRUE(writeUserTable(path("both/usrlts.dbf"), configured, ""));
    ASSERT_TRUE(writeUserTable(path("both/mine.dbf"), exactUserTable(99), ""));
    EXPECT_EQ(importYes(path("both/mine.dbf")), vesk::UserTableImport::Imported);
    EXPECT_TRUE(holds(configured));

    ASSERT_TRUE(QDir(dir.path()).mkpath("alone"));
    ASSERT_TRUE(writeUserTable(path("alone/mine.dbf"), exactUserTable(), ""));
    EXPECT_EQ(importYes(path("alone/mine.dbf")), vesk::UserTableImport::Imported);
    EXPECT_TRUE(holds(exactUserTable()));
}

TEST_F(UserTableImport, AFileThatCannotBeReadIsRefusedWithItsReason) {
    const QString because = text(t::kNotImported);
    const auto refusal = [&](const QString& file) {
        prompts.clear();
        EXPECT_EQ(importYes(file), vesk::UserTableImport::Refused) << file.toStdString();
        EXPECT_TRUE(holds(old)) << file.toStdString();
        EXPECT_EQ(prompts.messages().size(), 2);
        return prompts.messages().value(1);
    };
    EXPECT_EQ(refusal(path("missing.txt")), because + "the file " + path("missing.txt") + " does not exist.");

    ASSERT_TRUE(writeTextFile(path("untitled.txt"), "[BAI]:0|1\r\n[EXF]:2|1\r\n[EXM]:2|1\r\n"));
    EXPECT_EQ(refusal(path("untitled.txt")),
              because + "the file " + path("untitled.txt") +
                  " holds no block [User Defined Tables] with the lines [BAI]:, [EXF]: and [EXM]:.");

    CellArray word = exactUserTable();
    word(6, 1) = Cell("abc");
    ASSERT_TRUE(writeTextFile(path("word.txt"), userTableText(word)));
    EXPECT_EQ(refusal(path("word.txt")), because + "the value of EXF in row 7 is no finite number: 'abc'.");

    // A line shorter than the others leaves its last value missing.
    QString shortLine = userTableText(exactUserTable());
    shortLine.replace(QStringLiteral("|1e-300\r\n[EXF]"), QStringLiteral("\r\n[EXF]"));
    ASSERT_TRUE(writeTextFile(path("short.txt"), shortLine));
    EXPECT_EQ(refusal(path("short.txt")), because + "the value of EXM in row 101 is no finite number: ''.");

    ASSERT_TRUE(writeUserTable(path("other.vdb"), exactUserTable(), "ELSEWHERE"));
    EXPECT_EQ(refusal(path("other.vdb")),
              because + "the file " + path("other.vdb") + " holds no table USRLTS nor LTS.");

    CellArray two({2, 2});
    two(0, 0) = Cell(0.0);
    two(0, 1) = Cell(1.0);
    two(1, 0) = Cell(1.0);
    two(1, 1) = Cell(0.5);
    ASSERT_TRUE(FnWriteArrFile(two, path("two.WK1"), "USRLTS", {"Age", "EXF"}));
    EXPECT_EQ(refusal(path("two.WK1")), because + "the table of the file " + path("two.WK1") +
                                            " has 2 fields, and three are needed: [Age] [EXF] [EXM].");
}

TEST_F(UserTableImport, AFileOfNoKnownKindIsRefusedWithoutAQuestion) {
    ASSERT_TRUE(writeTextFile(path("user.csv"), "0,1,2\n"));
    EXPECT_EQ(importUserLifeTable(path("user.csv"), s, p), vesk::UserTableImport::Refused);
    EXPECT_TRUE(holds(old));
    EXPECT_EQ(
        prompts.messages(),
        QStringList{text(t::kNotImported) + path("user.csv") +
                    " is none of the kinds of file that can be read (.txt, .WK1, .xlsx, .xls, .dbf, .vdb, "
                    ".db, .sqlite, .mdb)."});
}

TEST_F(UserTableImport, TheSourceNameIsTheConfiguredOneOrUsrlts) {
    EXPECT_EQ(userTableSourceName(s), "USRLTS");
    s.UsrLTSTblNm = QStringLiteral(" Mine ");
    EXPECT_EQ(userTableSourceName(s), "Mine");
    s.UsrLTSTblNm.clear();
    EXPECT_EQ(userTableSourceName(s), "USRLTS");
}

} // namespace
} // namespace vesk::test
