// File -> Import / Export -> Population Units on the demonstration study: each level and all three
// through each kind of file and back, the text file that holds the three levels, the purge question,
// and failures midway that leave the schema as it was.

#include "inputs/foreign_file.h"
#include "inputs/transfer_tables.h"
#include "inputs/transfer_texts.h"
#include "inputs/unit_transfer.h"
#include "transfer_fixture.h"

#include <QFile>

namespace vesk::test {
namespace {

namespace t = transfer_texts;

const QStringList kLevels = {QStringLiteral("_DctBPU"), QStringLiteral("_DctPAG1"),
                             QStringLiteral("_DctPAG2")};

using UnitTransferTest = TransferTest;

TEST_F(UnitTransferTest, AllThreeLevelsGoOutAndComeBackThroughEveryKindOfFile) {
    QMap<QString, std::string> before;
    for (const QString& table : kLevels)
        before.insert(table, sorted(table));
    for (const QString& kind : transferKinds()) {
        const QString file = path(QStringLiteral("units_%1.%1").arg(kind));
        ASSERT_EQ(exportUnits(db(), studyContext().CurBDSId, std::nullopt, file), TransferResult::Done)
            << kind.toStdString() << ' ' << lastMessage().toStdString();
        EXPECT_EQ(lastMessage().toStdString(), std::string(t::kAllUnitsExported));
        answer({Answer::Yes}); // purging the schema there is
        ASSERT_EQ(FnImpPopUntsAll(studyContext(), std::nullopt, file), TransferResult::Done)
            << kind.toStdString() << ' ' << lastMessage().toStdString();
        EXPECT_EQ(lastMessage().toStdString(), std::string(t::kSchemaImported));
        for (const QString& table : kLevels)
            EXPECT_EQ(sorted(table), before[table]) << kind.toStdString() << ' ' << table.toStdString();
        // The lists of the study are loaded again: eight units, three aggregates of level 1.
        EXPECT_EQ(studyContext().VctrBPULst.array().count(), 8u);
        EXPECT_EQ(studyContext().VctrPAGLst.array().count(), 3u);
    }
}

TEST_F(UnitTransferTest, EachLevelGoesOutAndComesBackAfterThePurgeOfTheSchema) {
    QMap<QString, std::string> before;
    for (const QString& table : kLevels)
        before.insert(table, sorted(table));
    for (const QString& kind : transferKinds()) {
        // The aggregates first: an import purges the whole schema of the study when it has units, and
        // a schema without units is not asked about.
        for (UnitLevel level : {UnitLevel::Pag2, UnitLevel::Pag1, UnitLevel::Bpu}) {
            const QString file =
                path(QStringLiteral("%1_%2.%3").arg(kind, unitTableName(level).mid(1), kind));
            ASSERT_EQ(exportUnits(db(), studyContext().CurBDSId, level, file), TransferResult::Done)
                << kind.toStdString() << ' ' << lastMessage().toStdString();
        }
        answer({Answer::Yes});
        ASSERT_EQ(
            FnImpPopUntsAll(studyContext(), UnitLevel::Pag2, path(QStringLiteral("%1_DctPAG2.%1").arg(kind))),
            TransferResult::Done)
            << kind.toStdString() << ' ' << lastMessage().toStdString();
        EXPECT_EQ(lastMessage().toStdString(), std::string(t::kPag2Imported));
        // The purge took the units and the first level with it.
        EXPECT_EQ(sorted(QStringLiteral("_DctBPU")), "");
        EXPECT_EQ(sorted(QStringLiteral("_DctPAG2")), before[QStringLiteral("_DctPAG2")]);
        ASSERT_EQ(
            FnImpPopUntsAll(studyContext(), UnitLevel::Pag1, path(QStringLiteral("%1_DctPAG1.%1").arg(kind))),
            TransferResult::Done);
        EXPECT_EQ(lastMessage().toStdString(), std::string(t::kPag1Imported));
        ASSERT_EQ(
            FnImpPopUntsAll(studyContext(), UnitLevel::Bpu, path(QStringLiteral("%1_DctBPU.%1").arg(kind))),
            TransferResult::Done);
        EXPECT_EQ(lastMessage().toStdString(), std::string(t::kBpuImported));
        EXPECT_EQ(prompts.unanswered(), 0);
        for (const QString& table : kLevels)
            EXPECT_EQ(sorted(table), before[table]) << kind.toStdString() << ' ' << table.toStdString();
    }
}

TEST_F(UnitTransferTest, OneTextFileHoldsTheThreeLevelsEachBehindALineWithItsName) {
    const QString file = path(QStringLiteral("units.txt"));
    ASSERT_EQ(exportUnits(db(), studyContext().CurBDSId, std::nullopt, file), TransferResult::Done);
    const QString content = QString::fromUtf8(readBytes(file));
    EXPECT_TRUE(content.startsWith(QStringLiteral("[_DctBPU]\r\nCAP;Capital City;1;CEN\r\n")));
    EXPECT_TRUE(content.contains(QStringLiteral("SLO;São Lourenço;8;CST\r\n")));
    EXPECT_TRUE(content.contains(QStringLiteral("[_DctPAG1]\r\nCEN;Central Plain;N1\r\n")));
    EXPECT_TRUE(content.contains(QStringLiteral("[_DctPAG2]\r\nN1;Demonstration nation\r\n")));
    // A file written by hand: the name anywhere on its line, the levels in any order.
    ASSERT_TRUE(writeBytes(file,
                           "Level 2 (_DctPAG2)\r\nN1;Nation\r\n-- _DctPAG1 follows --\r\nR1;Region;N1\r\n"
                           "_DctBPU\r\nU1;Unit one;1;R1\r\nU2;Unit two;2;R1\r\n"));
    answer({Answer::Yes});
    ASSERT_EQ(FnImpPopUntsAll(studyContext(), std::nullopt, file), TransferResult::Done)
        << lastMessage().toStdString();
    EXPECT_EQ(sorted(QStringLiteral("_DctBPU")), "DEM|U1|Unit one|1|R1\nDEM|U2|Unit two|2|R1");
    EXPECT_EQ(sorted(QStringLiteral("_DctPAG1")), "DEM|R1|Region|N1");
    EXPECT_EQ(sorted(QStringLiteral("_DctPAG2")), "DEM|N1|Nation");
}

TEST_F(UnitTransferTest, NoToThePurgeAbortsAndLeavesTheSchema) {
    const QString file = path(QStringLiteral("units.txt"));
    ASSERT_EQ(exportUnits(db(), studyContext().CurBDSId, std::nullopt, file), TransferResult::Done);
    const std::string before = dumpAll();
    prompts.clear();
    answer({Answer::No});
    EXPECT_EQ(FnImpPopUntsAll(studyContext(), std::nullopt, file), TransferResult::Declined);
    ASSERT_EQ(prompts.shown().size(), 2);
    EXPECT_EQ(prompts.shown()[0].text.toStdString(),
              "A Population schema already existe for the study DEM. Do you want to purge this schema");
    EXPECT_EQ(prompts.shown()[1].text.toStdString(), std::string(t::kAbortSchema));
    EXPECT_EQ(dumpAll(), before);
}

TEST_F(UnitTransferTest, AMissingLevelGivesItsNotFoundMessage) {
    const QString file = path(QStringLiteral("two.txt"));
    ASSERT_TRUE(writeBytes(file, "[_DctBPU]\r\nU1;Unit one;1;R1\r\n[_DctPAG1]\r\nR1;Region;N1\r\n"));
    const std::string before = dumpAll();
    EXPECT_EQ(FnImpPopUntsAll(studyContext(), std::nullopt, file), TransferResult::Failed);
    EXPECT_EQ(lastMessage().toStdString(), "PAG2 not found");
    EXPECT_EQ(dumpAll(), before);
}

// A table of texts, a row a list.
CellArray table(const QList<QStringList>& rows) {
    CellArray a{static_cast<int>(rows.size()), static_cast<int>(rows[0].size())};
    for (int i = 0; i < rows.size(); ++i)
        for (int c = 0; c < rows[i].size(); ++c)
            a(i, c) = Cell(rows[i][c]);
    return a;
}

TEST_F(UnitTransferTest, ABadRowMidwayLeavesTheSchemaAsItWas) {
    // Two good units, then one whose id is longer than its field.
    const CellArray units = table(
        {{"U1", "Unit one", "1", "R1"}, {"U2", "Unit two", "2", "R1"}, {"DORVA1", "Too long", "3", "R1"}});
    const CellArray pag1 = table({{"R1", "Region", "N1"}});
    const CellArray pag2 = table({{"N1", "Nation"}});
    const std::string before = dumpAll();
    for (const QString& kind : transferKinds()) {
        const QString file = path(QStringLiteral("bad.%1").arg(kind));
        if (kind == QLatin1String("txt")) {
            QString error;
            ASSERT_TRUE(writeSections(
                file, {{"[_DctPAG2]", pag2}, {"[_DctPAG1]", pag1}, {"[_DctBPU]", units}}, &error));
        } else {
            ASSERT_TRUE(
                FnWriteArrFile(pag2, tablePath(file, "_DctPAG2"), "_DctPAG2", {"PAG2Id", "PAG2Name"}));
            ASSERT_TRUE(FnWriteArrFile(pag1, tablePath(file, "_DctPAG1"), "_DctPAG1",
                                       {"PAG1Id", "PAG1Name", "PAG2Id"}));
            ASSERT_TRUE(FnWriteArrFile(units, tablePath(file, "_DctBPU"), "_DctBPU",
                                       {"BPUID", "BPUName", "Prty", "PAG1Id"}));
        }
        answer({Answer::Yes});
        EXPECT_EQ(FnImpPopUntsAll(studyContext(), std::nullopt, file), TransferResult::Failed)
            << kind.toStdString();
        EXPECT_TRUE(lastMessage().startsWith(text(t::kPopRecover) + u'\n')) << lastMessage().toStdString();
        EXPECT_EQ(dumpAll(), before) << kind.toStdString();
        if (kind == QLatin1String("dbf"))
            for (const char* name : {"_DctPAG2.dbf", "_DctPAG1.dbf", "_DctBPU.dbf"})
                QFile::remove(path(QString::fromLatin1(name)));
    }
}

TEST_F(UnitTransferTest, AFileCutShortLeavesTheSchemaAsItWas) {
    const std::string before = dumpAll();
    for (const QString& kind : transferKinds()) {
        const QString file = path(QStringLiteral("cut.%1").arg(kind));
        const bool oneFile = kind != QLatin1String("dbf");
        // A dBase folder holds a file a level: the units' own file is cut.
        const QString cutFile = oneFile ? file : path(QStringLiteral("_DctBPU.dbf"));
        ASSERT_EQ(exportUnits(db(), studyContext().CurBDSId, std::nullopt, file), TransferResult::Done);
        QByteArray bytes = readBytes(cutFile);
        bytes.truncate(kind == QLatin1String("txt") ? bytes.indexOf("Lakeside") + 4 : bytes.size() * 2 / 3);
        QFile::remove(cutFile);
        ASSERT_TRUE(writeBytes(cutFile, bytes));
        answer({Answer::Yes});
        EXPECT_EQ(FnImpPopUntsAll(studyContext(), std::nullopt, file), TransferResult::Failed)
            << kind.toStdString();
        EXPECT_FALSE(lastMessage().isEmpty());
        EXPECT_EQ(dumpAll(), before) << kind.toStdString();
        QFile::remove(cutFile);
    }
}

TEST_F(UnitTransferTest, ANameThatWouldStartALevelIsRefusedByTheTextFile) {
    exec(QStringLiteral("UPDATE _DctBPU SET BPUName = 'Old _DctPAG1 area' WHERE BPUID = 'CAP'"));
    const QString file = path(QStringLiteral("units.txt"));
    EXPECT_EQ(exportUnits(db(), studyContext().CurBDSId, std::nullopt, file), TransferResult::Failed);
    EXPECT_TRUE(lastMessage().contains(QStringLiteral("Old _DctPAG1 area"))) << lastMessage().toStdString();
    EXPECT_FALSE(QFile::exists(file));
}

// A code like 007, a name with ";", quotes and text beyond any code page come back whole, or the kind
// of file that cannot hold them says so and writes nothing.
TEST_F(UnitTransferTest, UglyValuesComeBackWholeOrAreRefused) {
    exec(QStringLiteral("UPDATE _DctBPU SET BPUID = '007', BPUName = ? WHERE BPUID = 'CAP'"),
         {QStringLiteral("Cap; \"quoted\" 一二三 'é'")});
    const std::string before = sorted(QStringLiteral("_DctBPU"));
    for (const QString& kind : transferKinds()) {
        const QString file = path(QStringLiteral("ugly_%1.%1").arg(kind));
        prompts.clear();
        const TransferResult out = exportUnits(db(), QStringLiteral("DEM"), std::nullopt, file);
        if (out != TransferResult::Done) {
            // Only a kind whose text cannot hold the name may refuse it, and it says which value.
            EXPECT_EQ(kind.toStdString(), "dbf");
            EXPECT_TRUE(lastMessage().contains(QStringLiteral("一二三"))) << lastMessage().toStdString();
            continue;
        }
        answer({Answer::Yes});
        ASSERT_EQ(FnImpPopUntsAll(studyContext(), std::nullopt, file), TransferResult::Done)
            << kind.toStdString() << ' ' << lastMessage().toStdString();
        EXPECT_EQ(sorted(QStringLiteral("_DctBPU")), before) << kind.toStdString();
    }
}

} // namespace
} // namespace vesk::test
