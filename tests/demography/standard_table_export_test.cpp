// File -> Export -> Life Tables -> KRO / WHO without the Save As dialog: each fixed table of the
// settings goes to a file of each kind as the table LTSKRO or LTSWHO and reads back to the same
// numbers; a file that is the table is replaced only when the user says so.

#include "demography/standard_table_export.h"
#include "demography/standard_table_texts.h"
#include "demography/user_life_table_import.h"
#include "inputs/foreign_file.h"
#include "inputs/messages.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "user_life_tables.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <limits>

namespace vesk::test {
namespace {

namespace t = standard_table_texts;

// A fixed table as the settings reader holds it: texts, as they stand in the file.
CellArray asSettingsTexts(const CellArray& numbers) {
    CellArray out({numbers.size(0), 3});
    for (int i = 0; i < numbers.size(0); ++i)
        for (int c = 0; c < 3; ++c)
            out(i, c) = Cell(shortestNumber(numbers(i, c).toDouble()));
    return out;
}

class StandardTableExportTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        kro = exactUserTable();
        who = exactUserTable();
        who(10, 1) = Cell(who(10, 1).toDouble() - 0.125);
        s.MtxLTSKRO = asSettingsTexts(kro);
        s.MtxLTSWHO = asSettingsTexts(who);
    }
    QString path(const QString& name) const { return dir.filePath(name); }

    // The rows of `table` in `file` equal `want`, value for value as numbers.
    ::testing::AssertionResult readsBack(const QString& file, const QString& table, const CellArray& want) {
        QStringList names;
        const CellArray got = FnReadArrFile(file, table, &names);
        if (got.rank() != 2 || got.size(0) != want.size(0) || got.size(1) != 3)
            return ::testing::AssertionFailure() << "no table of 101 rows of three in " << file.toStdString();
        if (foreignKind(file) != ForeignKind::Text && names != userTableFields())
            return ::testing::AssertionFailure() << "fields " << names.join(',').toStdString();
        for (int i = 0; i < want.size(0); ++i)
            for (int c = 0; c < 3; ++c) {
                const Cell& v = got(i, c);
                if (foreignKind(file) != ForeignKind::Text && !v.isNumber())
                    return ::testing::AssertionFailure()
                           << file.toStdString() << ": a text where a number was";
                const double x = v.isNumber() ? v.toDouble() : v.toString().toDouble();
                if (x != want(i, c).toDouble())
                    return ::testing::AssertionFailure() << file.toStdString() << " row " << i << " column "
                                                         << c << ": " << v.toString().toStdString();
            }
        return ::testing::AssertionSuccess();
    }

    QTemporaryDir dir;
    ScriptedPrompts prompts;
    ScopedPromptService installed{&prompts};
    VeskSettings s;
    CellArray kro, who;
};

TEST_F(StandardTableExportTest, TheRowsAreNumbers) {
    const CellArray rows = standardTableRows(s.MtxLTSKRO);
    ASSERT_EQ(rows.size(0), 101);
    EXPECT_TRUE(rows(0, 1).isNumber());
    EXPECT_EQ(rows(0, 1).toDouble(), 91.94);
    EXPECT_EQ(rows(99, 1).toDouble(), 0.1 + 0.2);
    EXPECT_EQ(rows(100, 2).toDouble(), 1e-300);
    CellArray odd = s.MtxLTSKRO;
    odd(3, 2) = Cell("n/a");
    EXPECT_EQ(standardTableRows(odd)(3, 2), Cell("n/a"));
}

TEST_F(StandardTableExportTest, BothTablesInEachKindReadBackToTheSameNumbers) {
    const QList<std::pair<FixedStandardTable, const char*>> tables{{FixedStandardTable::Kro, t::kKroTable},
                                                                   {FixedStandardTable::Who, t::kWhoTable}};
    for (const char* stem : {"lts.txt", "lts.WK1", "lts.xlsx", "lts.vdb"}) {
        for (const auto& [which, name] : tables) {
            // A text file is the table, so each table has a file of its own; the others gain both.
            const QString file = QString::fromLatin1(stem).endsWith(".txt")
                                     ? path(QString::fromLatin1(name) + ".txt")
                                     : path(stem);
            prompts.clear();
            EXPECT_EQ(exportStandardTable(which, file, s), StandardTableExport::Exported) << stem;
            EXPECT_EQ(
                prompts.messages(),
                QStringList{text(which == FixedStandardTable::Kro ? t::kKroExported : t::kWhoExported)});
            EXPECT_TRUE(readsBack(file, name, which == FixedStandardTable::Kro ? kro : who));
        }
    }
    // A dBase table is its file: LTSKRO.dbf and LTSWHO.dbf.
    EXPECT_EQ(exportStandardTable(FixedStandardTable::Kro, path("LTSKRO.dbf"), s),
              StandardTableExport::Exported);
    EXPECT_EQ(exportStandardTable(FixedStandardTable::Who, path("LTSWHO.dbf"), s),
              StandardTableExport::Exported);
    EXPECT_TRUE(readsBack(path("LTSKRO.dbf"), "", kro));
    EXPECT_TRUE(readsBack(path("LTSWHO.dbf"), "", who));
}

TEST_F(StandardTableExportTest, AFileThatIsTheTableIsReplacedOnlyOnYes) {
    QStringList made;
    for (const char* name : {"LTSKRO.dbf", "LTSKRO.txt"}) {
        const QString file = path(name);
        made << QString::fromLatin1(name);
        s.MtxLTSKRO = asSettingsTexts(who);
        ASSERT_EQ(exportStandardTable(FixedStandardTable::Kro, file, s), StandardTableExport::Exported);
        s.MtxLTSKRO = asSettingsTexts(kro);
        prompts.clear();
        prompts.answer(Answer::No);
        EXPECT_EQ(exportStandardTable(FixedStandardTable::Kro, file, s), StandardTableExport::Declined)
            << name;
        EXPECT_EQ(prompts.messages(), QStringList{text(texts::kReplaceExistingFile)});
        EXPECT_TRUE(readsBack(file, "", who)) << name;
        prompts.clear();
        prompts.answer(Answer::Yes);
        EXPECT_EQ(exportStandardTable(FixedStandardTable::Kro, file, s), StandardTableExport::Exported)
            << name;
        EXPECT_EQ(prompts.messages(),
                  (QStringList{text(texts::kReplaceExistingFile), text(t::kKroExported)}));
        EXPECT_TRUE(readsBack(file, "", kro)) << name;
        EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name), made)
            << "nothing left beside " << name;
    }
}

TEST_F(StandardTableExportTest, AFailedReplacementKeepsTheOldDbfTable) {
    ASSERT_EQ(exportStandardTable(FixedStandardTable::Who, path("LTSWHO.dbf"), s),
              StandardTableExport::Exported);
    // A value that a dBase table cannot hold makes the new table fail.
    s.MtxLTSWHO(5, 1) = Cell(std::numeric_limits<double>::infinity());
    prompts.clear();
    prompts.answer(Answer::Yes);
    EXPECT_EQ(exportStandardTable(FixedStandardTable::Who, path("LTSWHO.dbf"), s),
              StandardTableExport::Failed);
    ASSERT_EQ(prompts.messages().size(), 2);
    EXPECT_TRUE(prompts.messages().at(1).startsWith(text(t::kWhoNotExported) + u'\n'))
        << prompts.messages().at(1).toStdString();
    EXPECT_TRUE(readsBack(path("LTSWHO.dbf"), "", who));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(StandardTableExportTest, ATableTheFileHoldsAlreadyIsAFailureWithItsReason) {
    ASSERT_EQ(exportStandardTable(FixedStandardTable::Kro, path("lts.xlsx"), s),
              StandardTableExport::Exported);
    prompts.clear();
    EXPECT_EQ(exportStandardTable(FixedStandardTable::Kro, path("lts.xlsx"), s), StandardTableExport::Failed);
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_TRUE(prompts.messages().at(0).startsWith(text(t::kKroNotExported) + u'\n'));
    EXPECT_TRUE(prompts.messages().at(0).contains("LTSKRO")) << prompts.messages().at(0).toStdString();
    EXPECT_EQ(prompts.shown().at(0).icon, Icon::Critical);
}

TEST_F(StandardTableExportTest, NoTableInTheSettingsIsAFailure) {
    s.MtxLTSWHO = CellArray();
    EXPECT_EQ(exportStandardTable(FixedStandardTable::Who, path("who.WK1"), s), StandardTableExport::Failed);
    EXPECT_EQ(prompts.messages(), QStringList{text(t::kWhoNotExported) +
                                              "\nThe settings hold no table [Standard Life Table-WHO]."});
    EXPECT_FALSE(QFile::exists(path("who.WK1")));
}

// File -> Export -> Life Tables -> User Defined Standard Life Table: the user's table goes out in
// each kind and comes back through File -> Import -> User Defined Standard Life Table, value for value.
TEST_F(StandardTableExportTest, TheUserTableGoesOutAndComesBackThroughItsImportInEachKind) {
    PreferencesControls p;
    p.userLifeTable = kro;
    p.userLifeTableLoaded = true;
    s.UsrLTSTblNm = QStringLiteral("USRLTS");
    for (const char* stem : {"user.txt", "user.WK1", "user.xlsx", "USRLTS.dbf", "user.vdb"}) {
        const QString file = path(QString::fromLatin1(stem));
        prompts.clear();
        ASSERT_EQ(exportUserTable(file, s, p), StandardTableExport::Exported) << stem << ' '
                                                                             << prompts.messages().join('\n').toStdString();
        EXPECT_EQ(prompts.messages(), QStringList{text(t::kUserExported)});
        PreferencesControls back;
        prompts.answer(Answer::Yes); // the layout of the kind
        ASSERT_EQ(importUserLifeTable(file, s, back), UserTableImport::Imported)
            << stem << ' ' << prompts.messages().join('\n').toStdString();
        ASSERT_EQ(back.userLifeTable.size(0), kro.size(0));
        for (int i = 0; i < kro.size(0); ++i)
            for (int c = 0; c < 3; ++c)
                ASSERT_EQ(back.userLifeTable(i, c).toDouble(), kro(i, c).toDouble()) << stem << " row " << i;
    }
}

TEST_F(StandardTableExportTest, WithoutAUserTableItsExportDoesNothing) {
    PreferencesControls p;
    EXPECT_EQ(exportUserTable(path("user.txt"), s, p), StandardTableExport::Declined);
    EXPECT_TRUE(prompts.shown().isEmpty());
    EXPECT_FALSE(QFile::exists(path("user.txt")));
}

} // namespace
} // namespace vesk::test
