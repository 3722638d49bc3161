// File -> Import / Export -> Dictionaries and Maps on the demonstration study: every dictionary and
// all six through each kind of file and back, the overwrite and layout questions, a wrong range
// name, "Yes" / "No" of the causes, and failures midway (a bad row, a file cut short) that must
// leave every table of the study as it was.

#include "inputs/dictionary_transfer.h"
#include "inputs/foreign_file.h"
#include "inputs/transfer_texts.h"
#include "inputs/zap.h"
#include "transfer_fixture.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace vesk::test {
namespace {

namespace t = transfer_texts;

const QStringList kDictionaryTables = {QStringLiteral("_DctBDMGrps"),  QStringLiteral("_DctBDMSGrps"),
                                       QStringLiteral("_DctBDMClstr"), QStringLiteral("_DctBDM"),
                                       QStringLiteral("_DctBDMSqla"),  QStringLiteral("_MapBDMSqla")};

using DictionaryTransferTest = TransferTest;

TEST_F(DictionaryTransferTest, EachDictionaryGoesOutAndComesBackThroughEveryKindOfFile) {
    for (const QString& kind : transferKinds()) {
        // The causes' import empties the map first (the map refers to the causes); a copy of it
        // puts it back.
        const QString mapCopy = path(QStringLiteral("map_copy.%1").arg(kind));
        ASSERT_EQ(exportDictionary(db(), DictionaryTable::Map, mapCopy), TransferResult::Done);
        for (DictionaryTable which : dictionaryTables()) {
            const QString table = dictionaryTableName(which);
            const std::string before = sorted(table);
            ASSERT_FALSE(before.empty()) << table.toStdString();
            const QString file = path(QStringLiteral("%1_%2.%3").arg(kind, table.mid(1), kind));
            prompts.clear();
            ASSERT_EQ(exportDictionary(db(), which, file), TransferResult::Done)
                << kind.toStdString() << ' ' << lastMessage().toStdString();
            const std::string map = sorted(QStringLiteral("_MapBDMSqla"));
            answer({Answer::Yes, Answer::Yes}); // the layout, then overwriting the rows there
            ASSERT_EQ(importDictionary(db(), which, file), TransferResult::Done)
                << kind.toStdString() << ' ' << table.toStdString() << ' ' << lastMessage().toStdString();
            EXPECT_EQ(sorted(table), before) << kind.toStdString() << ' ' << table.toStdString();
            if (which == DictionaryTable::Causes) {
                EXPECT_TRUE(dump(QStringLiteral("_MapBDMSqla")).isEmpty());
                answer({Answer::Yes});
                ASSERT_EQ(importDictionary(db(), DictionaryTable::Map, mapCopy), TransferResult::Done)
                    << lastMessage().toStdString();
                EXPECT_EQ(sorted(QStringLiteral("_MapBDMSqla")), map);
            }
        }
    }
}

TEST_F(DictionaryTransferTest, AllSixGoOutZapAndComeBackThroughEveryKindOfFile) {
    QMap<QString, std::string> before;
    for (const QString& table : kDictionaryTables)
        before.insert(table, sorted(table));
    for (const QString& kind : transferKinds()) {
        const QString file = path(QStringLiteral("all_%1.%1").arg(kind));
        ASSERT_EQ(exportDictionary(db(), std::nullopt, file), TransferResult::Done)
            << kind.toStdString() << ' ' << lastMessage().toStdString();
        EXPECT_EQ(lastMessage().toStdString(), std::string(t::kAllDictionariesExported));
        answer({Answer::Ok}); // the warning naming the units with data
        ASSERT_EQ(zapDictionaries(db(), studyContext().CurBDSId), ZapResult::Purged);
        for (const QString& table : kDictionaryTables)
            ASSERT_TRUE(dump(table).isEmpty()) << table.toStdString();
        ASSERT_EQ(ImpAllDct(db(), file), TransferResult::Done)
            << kind.toStdString() << ' ' << lastMessage().toStdString();
        EXPECT_EQ(lastMessage().toStdString(),
                  std::string(kind == QLatin1String("txt") ? t::kAllUpdated : t::kAllImported));
        for (const QString& table : kDictionaryTables)
            EXPECT_EQ(sorted(table), before[table]) << kind.toStdString() << ' ' << table.toStdString();
    }
}

TEST_F(DictionaryTransferTest, TheTextOfAllSixHoldsASectionForEachTableByItsName) {
    const QString file = path(QStringLiteral("all.txt"));
    ASSERT_EQ(exportDictionary(db(), std::nullopt, file), TransferResult::Done);
    const QString content = QString::fromUtf8(readBytes(file));
    for (const QString& table : kDictionaryTables)
        EXPECT_TRUE(content.contains(QStringLiteral("\r\n[") + table + QStringLiteral("]\r\n")) ||
                    content.startsWith(u'[' + table + QStringLiteral("]\r\n")))
            << table.toStdString();
    // A section is read from its heading to the blank line after it.
    const auto groups = ImpDctTxtAll(file, QStringLiteral("_dctbdmgrps"));
    ASSERT_TRUE(groups && groups->rank() == 2);
    EXPECT_EQ(groups->size(0), 3);
    EXPECT_EQ((*groups)(2, 1).toString(), QStringLiteral("Injuries"));
    // A section that is not there leaves the table empty.
    const auto none = ImpDctTxtAll(file, QStringLiteral("NoSuchTable"));
    ASSERT_TRUE(none.has_value());
    EXPECT_EQ(none->rank(), 0);
}

TEST_F(DictionaryTransferTest, ASectionEndsAtALineOpeningWithABracket) {
    const QString file = path(QStringLiteral("brackets.txt"));
    ASSERT_TRUE(writeBytes(file, "[_DctBDMGrps]\r\n1;One\r\n2;Two\r\n[anything]\r\n3;Three\r\n"));
    const auto groups = ImpDctTxtAll(file, QStringLiteral("_DctBDMGrps"));
    ASSERT_TRUE(groups && groups->rank() == 2);
    EXPECT_EQ(groups->size(0), 2);
}

TEST_F(DictionaryTransferTest, TheCausesFourthColumnIsYesOrNoInATextFile) {
    const QString file = path(QStringLiteral("causes.txt"));
    ASSERT_EQ(exportDictionary(db(), DictionaryTable::Causes, file), TransferResult::Done);
    const QString content = QString::fromUtf8(readBytes(file));
    EXPECT_TRUE(content.contains(QStringLiteral("11011;Tuberculosis;1101;No;")));
    EXPECT_TRUE(content.contains(QStringLiteral(";Yes;")));
    // A file written by hand with "yes" / "NO" in any case stores the Boolean.
    ASSERT_TRUE(writeBytes(file, "11011;Tuberculosis;1101;yes\r\n11012;HIV/AIDS;1101;NO\r\n"));
    answer({Answer::Yes, Answer::Yes});
    ASSERT_EQ(importDictionary(db(), DictionaryTable::Causes, file), TransferResult::Done)
        << lastMessage().toStdString();
    EXPECT_EQ(sorted(QStringLiteral("_DctBDM")),
              "11011|Tuberculosis|1101|-1|<null>\n11012|HIV/AIDS|1101|0|<null>");
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kCausesImported));
}

TEST_F(DictionaryTransferTest, TheLayoutQuestionFollowsTheKindOfFile) {
    EXPECT_EQ(
        dictionaryLayoutQuestion(DictionaryTable::Groups, QStringLiteral("g.txt")).toStdString(),
        std::string("Are you sure the Data in the Text File is in the Format: GroupCode; Description  and "
                    "the Group codes in the first column are single Digit Integers"));
    EXPECT_EQ(
        dictionaryLayoutQuestion(DictionaryTable::SubGroups, QStringLiteral("g.WK1")).toStdString(),
        std::string("Are you sure the Worksheet contains a Named range called _DctBDMSGrps, this range has "
                    "the following three columns: SubGroup Code;Description;GroupCode"));
    EXPECT_EQ(dictionaryLayoutQuestion(DictionaryTable::Map, QStringLiteral("g.dbf")).toStdString(),
              std::string("Are you sure the Data in the MDB/DBF File is in the Format: SequelaCode Cobcode"));
    // No to the layout leaves before anything is read or asked.
    const auto before = dumpAll();
    answer({Answer::No});
    EXPECT_EQ(importDictionary(db(), DictionaryTable::Groups, path(QStringLiteral("none.txt"))),
              TransferResult::Declined);
    EXPECT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(dumpAll(), before);
}

TEST_F(DictionaryTransferTest, NoToOverwritingLeavesTheTableAsItWas) {
    const QString file = path(QStringLiteral("g.txt"));
    ASSERT_TRUE(writeBytes(file, "1;One\r\n"));
    const auto before = dumpAll();
    answer({Answer::Yes, Answer::No});
    EXPECT_EQ(importDictionary(db(), DictionaryTable::Groups, file), TransferResult::Declined);
    ASSERT_EQ(prompts.shown().size(), 2);
    EXPECT_EQ(
        prompts.shown()[1].text.toStdString(),
        std::string("The table _DctBDMGrps already has data . Do U want to overwrite the Data? \nYou can "
                    "delete the already existing data from all the Tables by the menu :  File -> Zap -> "
                    "Default Dictionaries and Maps "));
    EXPECT_EQ(dumpAll(), before);
}

TEST_F(DictionaryTransferTest, AWrongRangeNameGivesTheNotFoundMessageOfTheTable) {
    // A workbook whose range is named otherwise than the settings name the groups' table.
    const QString file = path(QStringLiteral("wrong.xlsx"));
    CellArray rows{1, 2};
    rows(0, 0) = Cell(1.0);
    rows(0, 1) = Cell(QStringLiteral("One"));
    ASSERT_TRUE(FnWriteArrFile(rows, file, QStringLiteral("Groups"),
                               {QStringLiteral("GrpCd"), QStringLiteral("Group")}));
    const auto before = dumpAll();
    answer({Answer::Yes, Answer::Yes});
    EXPECT_EQ(importDictionary(db(), DictionaryTable::Groups, file), TransferResult::Failed);
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kGroupsNotFound));
    answer({Answer::Yes});
    EXPECT_EQ(ImpAllDct(db(), file), TransferResult::Failed);
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kGroupsNotFound));
    EXPECT_EQ(dumpAll(), before);
}

TEST_F(DictionaryTransferTest, ATableMissingFromAllSixStopsTheImportWithItsMessage) {
    const QString file = path(QStringLiteral("five.txt"));
    ASSERT_EQ(exportDictionary(db(), std::nullopt, file), TransferResult::Done);
    QString content = QString::fromUtf8(readBytes(file));
    content.replace(QStringLiteral("[_MapBDMSqla]"), QStringLiteral("[SomethingElse]"));
    ASSERT_TRUE(writeBytes(file, content.toUtf8()));
    const auto before = dumpAll();
    answer({Answer::Yes});
    EXPECT_EQ(ImpAllDct(db(), file), TransferResult::Failed);
    EXPECT_EQ(lastMessage().toStdString(), std::string(t::kMapNotFound));
    EXPECT_EQ(dumpAll(), before);
}

// A failure midway leaves every table as it was, with the message of the write that failed.
TEST_F(DictionaryTransferTest, ABadRowMidwayLeavesEveryTableAsItWas) {
    const QString file = path(QStringLiteral("all.txt"));
    ASSERT_EQ(exportDictionary(db(), std::nullopt, file), TransferResult::Done);
    QString content = QString::fromUtf8(readBytes(file));
    // A cluster code too long for its field, in the fourth table: three are written before it fails.
    content.replace(QStringLiteral("\r\n11011;Tuberculosis;1101;"),
                    QStringLiteral("\r\n11011;Tuberculosis;110199;"));
    ASSERT_TRUE(writeBytes(file, content.toUtf8()));
    const auto before = dumpAll();
    answer({Answer::Yes});
    EXPECT_EQ(ImpAllDct(db(), file), TransferResult::Failed);
    EXPECT_TRUE(lastMessage().startsWith(QStringLiteral("Unable to update the table _DctBDM\n")))
        << lastMessage().toStdString();
    EXPECT_EQ(dumpAll(), before);

    // One dictionary: a group code that is no single digit.
    const QString groups = path(QStringLiteral("groups.txt"));
    ASSERT_TRUE(writeBytes(groups, "1;One\r\n2;Two\r\n12;Twelve\r\n"));
    answer({Answer::Yes, Answer::Yes});
    EXPECT_EQ(importDictionary(db(), DictionaryTable::Groups, groups), TransferResult::Failed);
    EXPECT_EQ(lastMessage().toStdString(),
              std::string("Unable to append to the table _DctBDMGrps\nThe Burden groups should be "
                          "single Digit Integers, you are trying to enter an invalid code for the group"));
    EXPECT_EQ(dumpAll(), before);

    // Groups that leave a subgroup without its group fail at the end, and change nothing.
    ASSERT_TRUE(writeBytes(groups, "1;One\r\n2;Two\r\n"));
    answer({Answer::Yes, Answer::Yes});
    EXPECT_EQ(importDictionary(db(), DictionaryTable::Groups, groups), TransferResult::Failed);
    EXPECT_TRUE(lastMessage().startsWith(QStringLiteral("Unable to append to the table _DctBDMGrps\n")));
    EXPECT_EQ(dumpAll(), before);
}

TEST_F(DictionaryTransferTest, AFileCutShortLeavesEveryTableAsItWas) {
    const auto before = dumpAll();
    for (const QString& kind : transferKinds()) {
        if (kind == QLatin1String("dbf"))
            continue; // a dBase folder's tables are files of their own: see the one-table case below
        const QString file = path(QStringLiteral("cut.%1").arg(kind));
        ASSERT_EQ(exportDictionary(db(), std::nullopt, file), TransferResult::Done) << kind.toStdString();
        QByteArray bytes = readBytes(file);
        // Cut inside the causes' rows, well past the groups.
        const qsizetype at =
            kind == QLatin1String("txt") ? bytes.indexOf("Malaria") + 3 : bytes.size() * 2 / 3;
        bytes.truncate(at);
        QFile::remove(file);
        ASSERT_TRUE(writeBytes(file, bytes));
        answer({Answer::Yes});
        EXPECT_EQ(ImpAllDct(db(), file), TransferResult::Failed) << kind.toStdString();
        EXPECT_FALSE(lastMessage().isEmpty());
        EXPECT_EQ(dumpAll(), before) << kind.toStdString();
        QFile::remove(file);
    }
    // One table in a text file and in a dBase file, each cut in its last row.
    for (const QString& kind : {QStringLiteral("txt"), QStringLiteral("dbf")}) {
        const QString file = path(QStringLiteral("causes.%1").arg(kind));
        ASSERT_EQ(exportDictionary(db(), DictionaryTable::Causes, file), TransferResult::Done);
        QByteArray bytes = readBytes(file);
        bytes.truncate(bytes.size() - 12);
        QFile::remove(file);
        ASSERT_TRUE(writeBytes(file, bytes));
        answer({Answer::Yes, Answer::Yes});
        EXPECT_EQ(importDictionary(db(), DictionaryTable::Causes, file), TransferResult::Failed)
            << kind.toStdString();
        EXPECT_FALSE(lastMessage().isEmpty());
        EXPECT_EQ(dumpAll(), before) << kind.toStdString();
    }
}

TEST_F(DictionaryTransferTest, AValueWithALineBreakIsRefusedBySectionsNotLost) {
    exec(QStringLiteral("UPDATE _DctBDMGrps SET \"Group\" = 'Two\nlines' WHERE GrpCd = 3"));
    const QString file = path(QStringLiteral("all.txt"));
    EXPECT_EQ(exportDictionary(db(), std::nullopt, file), TransferResult::Failed);
    EXPECT_TRUE(lastMessage().startsWith(text(t::kGroupsNotExported)));
    EXPECT_FALSE(QFileInfo::exists(file));
    // One table in its own text file keeps the value between quotes.
    const QString one = path(QStringLiteral("groups.txt"));
    ASSERT_EQ(exportDictionary(db(), DictionaryTable::Groups, one), TransferResult::Done);
    answer({Answer::Yes, Answer::Yes});
    ASSERT_EQ(importDictionary(db(), DictionaryTable::Groups, one), TransferResult::Done);
    EXPECT_EQ(dump(QStringLiteral("_DctBDMGrps")).last().toStdString(), "3|Two\nlines");
}

} // namespace
} // namespace vesk::test
